// Outgoing links: which protocols take their values from this one.
#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "keelcomm/GrowingText.h"
#include "keellink/LinkFunctions.h"
#include "keellink/RecordAccess.h"
#include "platform/System.h"

namespace quillmar::keellink::functions {
namespace {

using keelcomm::WriteGrowing;

constexpr char kLinks[] = "LinksTo";

std::string EscapedName(std::string_view name) {
  std::string escaped;
  for (const char character : name) {
    if (character == '%') {
      escaped += "%25";
    } else if (character == ',') {
      escaped += "%2C";
    } else {
      escaped += character;
    }
  }
  return escaped;
}

std::string PlainName(std::string_view escaped) {
  std::string name;
  while (!escaped.empty()) {
    if (escaped.starts_with("%25") || escaped.starts_with("%2C")) {
      name += escaped[2] == '5' ? '%' : ',';
      escaped.remove_prefix(3);
    } else {
      name += escaped.front();
      escaped.remove_prefix(1);
    }
  }
  return name;
}

std::vector<std::string> SplitNames(std::string_view joined) {
  std::vector<std::string> names;
  for (std::size_t begin = 0; begin <= joined.size();) {
    const std::size_t end = std::min(joined.find(',', begin), joined.size());
    names.push_back(PlainName(joined.substr(begin, end - begin)));
    begin = end + 1;
  }
  return names;
}

std::string JoinNames(const std::vector<std::string>& names) {
  std::string joined;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (i > 0) joined += ',';
    joined += EscapedName(names[i]);
  }
  return joined;
}

auto FindName(std::vector<std::string>& names, const char* name) {
  return std::find_if(names.begin(), names.end(), [name](const std::string& other) {
    return platform::EqualsNoCase(name, other);
  });
}

bool IsGiven(const char* text) { return text != nullptr && *text != '\0'; }

// Names of the links that lead to a protocol; none when there is no link to it.
std::vector<std::string> NamesTo(const RecordAccess& records, const char* protocolId,
                                 const char* target) {
  const char* joined = nullptr;
  if (!records.Keelcomm_GetText(protocolId, kLinks, target, &joined)) return {};
  return SplitNames(joined);
}

struct Link {
  std::string name;
  std::string target;
};

std::vector<Link> AllLinks(const RecordAccess& records, const char* protocolId) {
  std::vector<Link> links;
  const char* target = nullptr;
  const char* joined = nullptr;
  for (int i = 0; records.Keelcomm_GetTextAt(protocolId, kLinks, i, &target, &joined); ++i) {
    for (std::string& name : SplitNames(joined)) links.push_back({std::move(name), target});
  }
  return links;
}

}  // namespace

int Link_GetLinksToCount(const char* protocolId) {
  const RecordAccess* records = FindRecordAccess();
  return records == nullptr ? 0 : static_cast<int>(AllLinks(*records, protocolId).size());
}

short Link_GetLinkTo(const char* protocolId, int index, char* first, char* second) {
  const RecordAccess* records = FindRecordAccess();
  if (records == nullptr || index < 1) return 0;
  const std::vector<Link> links = AllLinks(*records, protocolId);
  const auto place = static_cast<std::size_t>(index - 1);
  return place < links.size() && WriteGrowing(first, links[place].name) &&
         WriteGrowing(second, links[place].target);
}

short Link_SetLinkTo(const char* protocolId, const char* first, const char* second) {
  const RecordAccess* records = FindRecordAccess();
  if (records == nullptr || first == nullptr || !IsGiven(second)) return 0;
  std::vector<std::string> names = NamesTo(*records, protocolId, second);
  if (FindName(names, first) == names.end()) names.emplace_back(first);
  return records->Keelcomm_PutText(protocolId, kLinks, second, JoinNames(names).c_str());
}

short Link_DeleteLinkTo(const char* protocolId, const char* first, const char* second) {
  const RecordAccess* records = FindRecordAccess();
  if (records == nullptr || first == nullptr || !IsGiven(second)) return 0;
  std::vector<std::string> names = NamesTo(*records, protocolId, second);
  const auto found = FindName(names, first);
  if (found == names.end()) return 0;
  names.erase(found);
  return records->Keelcomm_PutText(protocolId, kLinks, second,
                                   names.empty() ? nullptr : JoinNames(names).c_str());
}

// Link texts have one language here: nothing changes.
short Link_Translate(char* text, int capacity) { return text != nullptr && capacity >= 0; }

}  // namespace quillmar::keellink::functions
