#include "parts/ParameterLists.h"

#include <algorithm>
#include <vector>

#include "base/Texts.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

constexpr std::string_view kCommaSent = "<VXCOMMA>";
constexpr std::string_view kCommaReceived = "VXCOMMA";
// A guess that spares most lists from growing while they are built.
constexpr std::size_t kUsualItemLength = 24;

void AppendEscaped(std::string& text, std::string_view value) {
  for (auto comma = value.find(','); comma != std::string_view::npos; comma = value.find(',')) {
    text.append(value.substr(0, comma)).append(kCommaSent);
    value.remove_prefix(comma + 1);
  }
  text.append(value);
}

// A received comma: the word, with or without brackets around it.
void AppendUnescaped(std::string& text, std::string_view token) {
  for (auto word = token.find(kCommaReceived); word != std::string_view::npos;
       word = token.find(kCommaReceived)) {
    const auto after = word + kCommaReceived.size();
    const bool bracketed =
        word > 0 && token[word - 1] == '<' && after < token.size() && token[after] == '>';
    text.append(token.substr(0, bracketed ? word - 1 : word)) += ',';
    token.remove_prefix(bracketed ? after + 1 : after);
  }
  text.append(token);
}

// The tokens of a received list, one after the other. A token that no separator follows is the
// last one; a separator at the end closes the list.
class TokenReader {
 public:
  TokenReader(std::string_view list, char separator) : rest(list), separator(separator) {}

  bool AtEnd() const { return ended || rest.empty(); }

  // False, and an empty token, behind the last one.
  bool Next(std::string& token) {
    token.clear();
    if (ended) return false;
    const auto end = rest.find(separator);
    AppendUnescaped(token, rest.substr(0, end));
    ended = end == std::string_view::npos;
    rest.remove_prefix(ended ? rest.size() : end + 1);
    return true;
  }

 private:
  std::string_view rest;
  char separator;
  bool ended = false;
};

struct ListItem {
  std::string name;
  std::string value;
  std::string unit;
  std::string link;
  std::string description;
};

// False when no complete item is left.
bool NextItem(TokenReader& tokens, bool fiveTokens, ListItem& item) {
  if (tokens.AtEnd() || !tokens.Next(item.name) || !tokens.Next(item.value)) return false;
  if (fiveTokens) {
    tokens.Next(item.unit);
    tokens.Next(item.link);
    tokens.Next(item.description);
  }
  return true;
}

double Number(std::string text) {
  std::replace(text.begin(), text.end(), ',', '.');
  return ParseReal(text);
}

bool Differs(const std::string& left, const std::string& right) {
  if (IsNumber(left) && IsNumber(right)) return Number(left) != Number(right);
  return left != right;
}

// Takes the items of one list over into a protocol. An item that the store does not take does not
// keep out the others.
class ListReceiver {
 public:
  ListReceiver(VXProtocol& protocol, const std::string& prefix)
      : protocol(protocol), prefix(prefix) {}

  void Take(const ListItem& item) {
    if (item.name.empty()) return;
    if (item.value.starts_with('*')) {
      Note(protocol.PutCadx(item.name, item.value.substr(1)));
    } else {
      Store(prefix + item.name, item);
    }
  }

  bool IsComplete() const { return complete; }

  // Names of the parameters that the protocol did not have before, joined by commas.
  const std::string& AddedNames() const { return added; }

 private:
  void Store(const std::string& name, const ListItem& item) {
    std::string oldValue;
    std::string oldUnit;
    const bool exists = protocol.GetDataParam(name, oldValue, oldUnit);
    if (exists && Differs(oldValue, item.value)) {
      Note(protocol.PutGlobalData(global::kDataChanged, "1"));
    }
    if (!exists) added.append(added.empty() ? "" : ",").append(name);
    Note(protocol.PutDataParam(name, item.value, item.unit.empty() ? oldUnit : item.unit));
    if (!item.link.empty() && !IsNumber(item.link)) {
      Note(protocol.WriteLinkParam(name, item.link));
    }
    if (!item.description.empty()) Note(protocol.WriteDescription(name, item.description));
  }

  void Note(bool written) { complete = complete && written; }

  VXProtocol& protocol;
  const std::string& prefix;
  std::string added;
  bool complete = true;
};

// The CAD may have dropped parameters of its own since it sent them last.
void ForgetAddedParameters(VXProtocol& protocol) {
  std::string names;
  if (!protocol.GetCadx(keyword::kCadVars, names)) return;
  for (const std::string& name : SplitKeepingEmpty(names, ',')) {
    if (!name.empty()) protocol.EraseKeyWord(section::kData, name);
  }
}

std::string GroupPrefix(const std::string& group) {
  return group.empty() ? std::string() : std::string(kCadValuePrefix) + group + "_";
}

}  // namespace

bool BuildParameterList(VXProtocol& protocol, ListForm form, const std::string& group,
                        std::string& text) {
  const std::string prefix = GroupPrefix(group);
  text.clear();
  short count = 0;
  if (!protocol.GetDataCount(count)) return false;
  std::string items;
  items.reserve(static_cast<std::size_t>(std::max<short>(count, 0)) * kUsualItemLength);
  std::string name;
  std::string value;
  std::string unit;
  for (int index = 1; index <= count; ++index) {
    if (!protocol.GetDataItem(static_cast<short>(index), name, value, unit)) continue;
    const bool wanted =
        group.empty() ? !name.starts_with(kCadValuePrefix) : name.starts_with(prefix);
    if (!wanted) continue;
    items.append(name, prefix.size(), std::string::npos).append(",");
    if (form == ListForm::Units) {
      items += unit;
    } else {
      AppendEscaped(items, value);
    }
    items += ',';
  }
  if (items.ends_with(',')) items.pop_back();
  if (group.empty()) {
    std::string viewKey;
    protocol.GetViewKey(viewKey);
    items.insert(0, "*view*," + viewKey + ",");
  }
  text = std::move(items);
  return true;
}

bool ApplyParameterList(VXProtocol& protocol, const CadSession& session, std::string_view text,
                        const std::string& group, char separator) {
  const bool keepsTrack = group.empty() && !session.groupManager;
  if (keepsTrack) ForgetAddedParameters(protocol);
  const std::string prefix = GroupPrefix(group);
  ListReceiver receiver(protocol, prefix);
  TokenReader tokens(text, separator);
  for (ListItem item; NextItem(tokens, separator != ',', item);) receiver.Take(item);
  const bool tracked = !keepsTrack || protocol.PutCadx(keyword::kCadVars, receiver.AddedNames());
  return tracked && receiver.IsComplete();
}

}  // namespace quillmar
