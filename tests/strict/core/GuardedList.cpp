#include "core/GuardedList.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace quillmar::strict {
namespace {

constexpr std::size_t kTextAlignment = alignof(QmTextHeader);

std::size_t PagesFor(std::size_t bytes) { return (bytes + kPageSize - 1) / kPageSize; }

std::size_t TextBytes(const std::string& text) { return sizeof(QmTextHeader) + text.size() + 1; }

// Pages of data and the guard page behind them.
std::size_t GuardedPagesFor(std::size_t bytes) { return PagesFor(bytes + kTextAlignment) + 1; }

}  // namespace

GuardedList::GuardedList(const std::vector<std::string>& texts) {
  // The last page is never opened: it stands in for the virtual table, which nobody may use.
  pageCount = GuardedPagesFor(sizeof(QmStringList)) + 1;
  for (const std::string& text : texts) {
    pageCount += GuardedPagesFor(sizeof(QmStringNode)) + GuardedPagesFor(TextBytes(text));
  }
  pages = ReservePages(pageCount);
  if (pages == nullptr) {
    std::fprintf(stderr, "strict companions: no memory for a guarded list\n");
    std::abort();
  }

  list = reinterpret_cast<QmStringList*>(Take(sizeof(QmStringList), alignof(QmStringList)));
  std::vector<QmStringNode*> nodes;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    nodes.push_back(
        reinterpret_cast<QmStringNode*>(Take(sizeof(QmStringNode), alignof(QmStringNode))));
  }
  for (std::size_t i = 0; i < texts.size(); ++i) {
    *nodes[i] = {i + 1 < nodes.size() ? nodes[i + 1] : nullptr, i > 0 ? nodes[i - 1] : nullptr,
                 TakeText(texts[i])};
  }
  *list = {pages + (pageCount - 1) * kPageSize,
           nodes.empty() ? nullptr : nodes.front(),
           nodes.empty() ? nullptr : nodes.back(),
           static_cast<int32_t>(texts.size()),
           nullptr,
           nullptr,
           10};
  for (const Range& range : opened) SetAccess(range.firstPage, range.pages, Access::Read);
}

std::byte* GuardedList::Take(std::size_t bytes, std::size_t alignment) {
  const std::size_t dataPages = PagesFor(bytes + alignment - 1);
  std::byte* first = pages + usedPages * kPageSize;
  SetAccess(first, dataPages, Access::ReadWrite);
  opened.push_back({first, dataPages});
  usedPages += dataPages + 1;
  const std::size_t start = (dataPages * kPageSize - bytes) / alignment * alignment;
  std::memset(first, 0xA5, dataPages * kPageSize);
  return first + start;
}

char* GuardedList::TakeText(const std::string& text) {
  std::byte* place = Take(TextBytes(text), kTextAlignment);
  const auto length = static_cast<int32_t>(text.size());
  const QmTextHeader header{1, length, length};
  std::memcpy(place, &header, sizeof header);
  char* characters = reinterpret_cast<char*>(place + sizeof header);
  std::memcpy(characters, text.c_str(), text.size() + 1);
  return characters;
}

void GuardedList::Expire() { SetAccess(pages, pageCount, Access::None); }

}  // namespace quillmar::strict
