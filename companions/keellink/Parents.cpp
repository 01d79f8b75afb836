#include "keellink/Parents.h"

#include <algorithm>

namespace quillmar::keellink {
namespace {

constexpr char kExpressionMark = '#';
constexpr char kReferenceMark = '@';
constexpr std::string_view kWordEnds = " \t\r\n()[]{}+-*/^=<>,;:!&|?\"'#@";

}  // namespace

void ParentList::AddParentsOf(std::string_view linkText) {
  if (!linkText.starts_with(kExpressionMark)) {
    Add(linkText.substr(0, linkText.find(kReferenceMark)));
    return;
  }
  for (std::size_t mark = linkText.find(kReferenceMark); mark != std::string_view::npos;
       mark = linkText.find(kReferenceMark, mark + 1)) {
    // The expression's own mark ends a word, so there is always an end in front.
    const std::size_t before = linkText.find_last_of(kWordEnds, mark - 1);
    Add(linkText.substr(before + 1, mark - before - 1));
  }
}

void ParentList::Add(std::string_view id) {
  if (id.empty() || std::find(ids.begin(), ids.end(), id) != ids.end()) return;
  ids.emplace_back(id);
}

std::string ParentList::Joined() const {
  std::string joined;
  for (const std::string& id : ids) {
    if (!joined.empty()) joined += ',';
    joined += id;
  }
  return joined;
}

}  // namespace quillmar::keellink
