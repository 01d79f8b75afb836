/* Numbers of the module's resources: dialog templates, and commands of the toolbar, each of which
 * is also the number of its tooltip in the string table. */
#ifndef QUILLMAR_RESOURCE_H
#define QUILLMAR_RESOURCE_H

#define IDD_CALLBACK_WINDOW 4000 /* receives the suite's messages and is the floating toolbar */
#define IDD_ABOUT 4001           /* its text is control 101 */
#define IDD_HELPER_WINDOW 4002
/* Forms; who shows them knows their controls. */
#define IDD_DEPTHS 4003
#define IDD_FILE_NAME_PAGE 4004
#define IDD_BOM_PAGE 4005
#define IDD_KC_PAGE 4006
#define IDD_USER_PART 4007 /* shown by platform::AskUserPart, which knows its controls */

#define ID_TOOLBAR_OPTIONS 0x8005
#define ID_TOOLBAR_REFRESH_LINKS 0x800C
#define ID_TOOLBAR_UPDATE_DATA 0x800D

#define IDC_USER_PART_NAME 101
#define IDC_USER_PART_VIEWS 102
#define IDC_USER_PART_UNITS 103

#endif /* QUILLMAR_RESOURCE_H */
