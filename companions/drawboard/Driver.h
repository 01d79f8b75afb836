// The add-in's functions behind their border. What is exported calls these; a BoardError that
// leaves one becomes result 0 and a line of messages.
#pragma once

#include <string>
#include <string_view>

#include "drawboard/Board.h"
#include "drawboard/MainWindow.h"
#include "quillmar/CadDriver.h"

namespace drawboard {

// What the add-in holds while it is loaded.
struct Addin {
  Addin(QmModule self, const std::string& folder);

  Board board;
  MainWindow window;
};

// The one of this process. Made when it is needed first: attaching must not do more than note the
// library's handle.
Addin& TheAddin();

// Called by the entry point.
void AddinAttached(QmModule self);
void AddinDetached(bool processEnding);

// A list buffer of the caller. *size is 0, plain failure, until an answer is given.
class ListBuffer {
 public:
  // Throws a BoardError without a size.
  ListBuffer(char* buffer, int* size);
  // 1 when the text and its NUL were written, else 0; *size is the text's length either way.
  int Give(std::string_view text);

 private:
  char* buffer;
  int* size;
  int capacity;
};

// Writes a text and its NUL into a buffer of `capacity` bytes. Throws a BoardError, with the
// buffer emptied, when it does not fit.
void GiveText(std::string_view text, char* buffer, std::size_t capacity);

// A text argument; null counts as empty.
inline std::string TextOf(const char* text) { return text != nullptr ? text : ""; }

// The identifier of the objects that a change means: the protocol's own, or that of the protocol
// which it replaces.
inline std::string BearerOf(const char* protocolId, const char* connection) {
  return TheAddin().board.BearerOf(TextOf(protocolId), TextOf(connection));
}

namespace driver {
#define DRAWBOARD_DECLARE(need, name, result, parameters, arguments) result name parameters;
QM_CAD_FUNCTIONS(DRAWBOARD_DECLARE)
QM_CAD_2D_FUNCTIONS(DRAWBOARD_DECLARE)
#undef DRAWBOARD_DECLARE
}  // namespace driver

}  // namespace drawboard
