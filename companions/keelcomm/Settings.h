// Settings of the library, from "Keelcomm.ini" beside it:
//
//   [Store]
//   Database=Protocols.db   the database file; a name without a drive is relative to the library
//   Wait=2000               milliseconds to wait for another program that keeps the database locked
//   Flush=1                 1: what was closed is on the disk; 0: it survives the program's death
//   only
#pragma once

#include <string>

#include "keelcomm/Database.h"

namespace quillmar::keelcomm {

struct Settings {
  std::string file;  // full Windows path
  DatabaseSettings use;
};

// Throws StoreError when this library lies outside the machine.
Settings ReadSettings();

}  // namespace quillmar::keelcomm
