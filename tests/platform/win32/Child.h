// What the child program of these tests is told on its command line:
//   wait MILLISECONDS             becomes idle, waits, ends
//   load LIBRARY LOG VERDICT END  loads the library and ends; the library's attach ends with
//                                 VERDICT (accept, refuse, throw); END is "free" to unload it
//                                 first, or "exit"
// The log receives one letter for each event: A attach, D detach, E detach at the end of the
// process, F the load failed.
#pragma once

#define QM_CHILD_PROGRAM "platform_win32_child.exe"
#define QM_CHILD_LIBRARY "platform_win32_library.dll"

// Exported by the child: notes an event; for an attach the answer is the first letter of VERDICT.
#define QM_CHILD_EVENT "ChildEvent"
