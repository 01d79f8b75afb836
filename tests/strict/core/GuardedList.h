// A list of texts in memory that catches every misuse: each node, each text and the list itself
// end where an inaccessible page begins, nothing can be written, and after Expire nothing can be
// read either.
#pragma once

#include <string>
#include <vector>

#include "core/Pages.h"
#include "quillmar/StringList.h"

namespace quillmar::strict {

class GuardedList {
 public:
  explicit GuardedList(const std::vector<std::string>& texts);

  QmStringList* Get() { return list; }
  void Expire();
  // Gives the memory back; the list is not used any more.
  void Free() { FreePages(pages, pageCount); }

 private:
  struct Range {
    std::byte* firstPage;
    std::size_t pages;
  };

  // The next `bytes` bytes, as close to the next guard page as the alignment allows.
  std::byte* Take(std::size_t bytes, std::size_t alignment);
  char* TakeText(const std::string& text);

  std::byte* pages = nullptr;
  std::size_t pageCount = 0;
  std::size_t usedPages = 0;
  std::vector<Range> opened;
  QmStringList* list = nullptr;
};

}  // namespace quillmar::strict
