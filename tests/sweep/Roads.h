// The roads through the library, written down call by call with what each failure has to report.
#pragma once

#include "Procedure.h"

namespace quillmar::test {

// --- a shaft that the host reports ---

Procedure PlainInsert();
Procedure InsertWithViews();  // two
Procedure ClipboardInsert();
Procedure ChildInsert();
Procedure LoopInsert();
Procedure PlainUpdate();
Procedure UpdateWithView();
Procedure OtherCode();  // a code that asks for no CAD action
Procedure OldGear();    // the same for a gear of the older layout
Procedure OldShaft();   // and for a shaft

// --- commands on the selected object ---

Procedure ReplaceCommand();
Procedure UpdateCommand();
Procedure CopyCommand();

// --- exports ---

Procedure CopyOfProtocol();
Procedure TypeOfProtocol();
Procedure BoltedProtocols();
Procedure ObtainedProtocol();
Procedure UserProtocol();
Procedure PartProtocol();

}  // namespace quillmar::test
