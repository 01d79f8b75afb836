// Settings of the library, from "Keelcomm.ini" beside it:
//
//   [Store]
//   Database=Protocols.db   the database file; a name without a drive is relative to the library
//   Wait=2000               milliseconds to wait for another program that keeps the database locked
#pragma once

#include <string>

namespace quillmar::keelcomm {

struct Settings {
  std::string database;  // full Windows path
  int busyMilliseconds = 0;
};

Settings ReadSettings();

}  // namespace quillmar::keelcomm
