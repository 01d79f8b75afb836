#include <algorithm>
#include <optional>
#include <utility>

#include "platform/native/CodePage.h"
#include "platform/native/RegistryFile.h"
#include "platform/native/TextFiles.h"

namespace quillmar::platform {
namespace {

constexpr std::u16string_view kHexDigits = u"0123456789abcdef";
constexpr std::u16string_view kDwordMark = u"dword:";
constexpr std::u16string_view kHexMark = u"hex";
constexpr std::u16string_view kCommentMark = u"; ";

// Root key that is another name of a place in a hive.
constexpr std::u16string_view kClassesRoot = u"HKEY_CLASSES_ROOT";
constexpr std::u16string_view kClassesHive = u"HKEY_LOCAL_MACHINE";
constexpr std::u16string_view kClassesPath = u"Software\\Classes";

bool IsBlank(char16_t character) { return character == u' ' || character == u'\t'; }

std::u16string_view TrimLeft(std::u16string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  return text;
}

std::u16string_view Trim(std::u16string_view text) {
  text = TrimLeft(text);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

bool SameText(std::u16string_view left, std::u16string_view right) {
  return Fold(left) == Fold(right);
}

// Takes `mark` off the front of `text` when it is there.
bool TakeMark(std::u16string_view& text, std::u16string_view mark) {
  if (!SameText(text.substr(0, mark.size()), mark)) return false;
  text.remove_prefix(mark.size());
  return true;
}

std::u16string_view WithoutComment(std::u16string_view text) {
  return Trim(text.substr(0, text.find(u';')));
}

std::optional<std::uint32_t> HexNumber(std::u16string_view text) {
  if (text.empty() || text.size() > 8) return std::nullopt;
  std::uint32_t number = 0;
  for (char16_t character : text) {
    std::size_t digit = kHexDigits.find(FoldCharacter(character));
    if (digit == std::u16string_view::npos) return std::nullopt;
    number = number * 16 + static_cast<std::uint32_t>(digit);
  }
  return number;
}

std::string DwordBytes(std::uint32_t number) {
  std::string bytes;
  for (unsigned shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(number >> shift);
  return bytes;
}

// Takes a quoted text with its escapes off the front of `content`.
std::optional<std::u16string> TakeQuoted(std::u16string_view& content) {
  std::u16string result;
  for (std::size_t i = 1; i < content.size(); ++i) {
    char16_t character = content[i];
    if (character == u'"') {
      content.remove_prefix(i + 1);
      return result;
    }
    if (character == u'\\' && i + 1 < content.size()) {
      character = content[++i];
      if (character == u'n') character = u'\n';
      if (character == u'r') character = u'\r';
      if (character == u'0') character = u'\0';
    }
    result += character;
  }
  return std::nullopt;
}

std::vector<std::u16string_view> SplitLines(std::u16string_view text) {
  std::vector<std::u16string_view> lines;
  while (!text.empty()) {
    std::size_t end = std::min(text.find_first_of(u"\r\n"), text.size());
    lines.push_back(text.substr(0, end));
    text.remove_prefix(end);
    text.remove_prefix(text.substr(0, 2) == u"\r\n" ? 2 : std::min<std::size_t>(1, text.size()));
  }
  return lines;
}

class Reader {
 public:
  Reader(std::string_view bytes, std::u16string_view hiveName)
      : text(DecodeText(bytes).text), lines(SplitLines(text)), hive(hiveName) {}

  RegistryDocument Read() {
    while (next < lines.size()) {
      std::size_t line = next++;
      if (Understand(lines[line])) continue;
      // As a comment: beside other neighbours it might mean something that it never meant.
      Keep(std::u16string(kCommentMark).append(lines[line]));
      document.damagedLines.push_back(line + 1);
      // What was taken for its continuation is looked at again: it may be a line of its own.
      next = line + 1;
    }
    return std::move(document);
  }

 private:
  void Keep(std::u16string_view line) {
    (key != nullptr ? key->otherLines : document.otherLines).emplace_back(line);
  }

  bool Understand(std::u16string_view line) {
    std::u16string_view content = Trim(line);
    if (content.empty() || TakeHeader(content)) return true;
    if (content.front() == u'[') return TakeHeading(line, content);
    if (content.front() == u';' || foreignKey) {
      Keep(line);
      return true;
    }
    return key != nullptr && TakeValue(content);
  }

  bool TakeHeader(std::u16string_view content) {
    bool version4 = SameText(content, kRegistryVersion4);
    if (!version4 && !SameText(content, kRegistryVersion5)) return false;
    narrowTexts = version4;
    return true;
  }

  bool TakeHeading(std::u16string_view line, std::u16string_view content) {
    std::size_t end = content.rfind(u']');
    if (end == std::u16string_view::npos) return false;
    std::u16string_view path = content.substr(1, end - 1);
    bool removal = TakeMark(path, u"-");
    std::optional<std::u16string> below = PathInHive(path);
    key = nullptr;
    foreignKey = !below;
    if (!below) {
      Keep(line);
    } else if (removal) {
      document.root.Erase(*below);
    } else {
      key = document.root.Create(*below);
    }
    return foreignKey || removal || key != nullptr;
  }

  std::optional<std::u16string> PathInHive(std::u16string_view path) const {
    std::u16string_view root = path.substr(0, path.find(u'\\'));
    std::u16string_view rest = path.substr(root.size());
    if (SameText(root, hive)) return std::u16string(rest);
    if (SameText(root, kClassesRoot) && hive == kClassesHive) {
      return std::u16string(kClassesPath).append(rest);
    }
    return std::nullopt;
  }

  bool TakeValue(std::u16string_view content) {
    StoredValue value;
    if (content.front() == u'"') {
      std::optional<std::u16string> name = TakeQuoted(content);
      if (!name) return false;
      value.name = std::move(*name);
    } else if (!TakeMark(content, u"@")) {
      return false;
    }
    content = TrimLeft(content);
    if (!TakeMark(content, u"=")) return false;
    content = TrimLeft(content);
    if (WithoutComment(content) == u"-") {
      key->values.erase(Fold(value.name));
      return true;
    }
    if (!TakeData(content, value)) return false;
    key->Set(std::move(value));
    return true;
  }

  bool TakeData(std::u16string_view content, StoredValue& value) {
    if (content.substr(0, 1) == u"\"") {
      std::optional<std::u16string> data = TakeQuoted(content);
      if (!data || !WithoutComment(content).empty()) return false;
      value.type = kRegistryText;
      value.bytes = BytesOfText(*data + u'\0');
      return true;
    }
    if (TakeMark(content, kDwordMark)) {
      std::optional<std::uint32_t> number = HexNumber(WithoutComment(content));
      if (!number) return false;
      value.type = kRegistryDword;
      value.bytes = DwordBytes(*number);
      return true;
    }
    return TakeMark(content, kHexMark) && TakeHexType(content, value.type) &&
           TakeMark(content, u":") && TakeHexBytes(content, value);
  }

  static bool TakeHexType(std::u16string_view& content, std::uint32_t& type) {
    type = kRegistryBinary;
    if (!TakeMark(content, u"(")) return true;
    std::u16string_view digits = content.substr(0, content.find(u')'));
    std::optional<std::uint32_t> number = HexNumber(digits);
    if (!number) return false;
    type = *number;
    content.remove_prefix(digits.size());
    return TakeMark(content, u")");
  }

  // Bytes in hexadecimal, separated by commas; a backslash at the end continues on the next line.
  bool TakeHexBytes(std::u16string_view content, StoredValue& value) {
    std::string bytes;
    content = WithoutComment(content);
    while (!content.empty() && content.back() == u'\\') {
      content.remove_suffix(1);
      if (!AppendHexBytes(content, bytes) || next == lines.size()) return false;
      content = WithoutComment(lines[next++]);
      // A value that breaks off must not become a shorter one.
      if (content.empty()) return false;
    }
    if (!AppendHexBytes(content, bytes)) return false;
    bool narrow = narrowTexts && IsTextType(value.type);
    value.bytes = narrow ? BytesOfText(Widen(bytes)) : std::move(bytes);
    return true;
  }

  static bool AppendHexBytes(std::u16string_view content, std::string& bytes) {
    while (!content.empty()) {
      std::u16string_view digits = content.substr(0, content.find(u','));
      content.remove_prefix(std::min(digits.size() + 1, content.size()));
      digits = Trim(digits);
      if (digits.empty()) continue;
      std::optional<std::uint32_t> byte = HexNumber(digits);
      if (!byte || *byte > 0xFF) return false;
      bytes += static_cast<char>(*byte);
    }
    return true;
  }

  std::u16string text;
  std::vector<std::u16string_view> lines;
  std::u16string_view hive;
  std::size_t next = 0;      // index of the line to be taken next
  bool narrowTexts = false;  // hex texts are bytes of the code page
  bool foreignKey = false;   // the lines belong to a key of another hive
  RegistryNode* key = nullptr;
  RegistryDocument document;
};

}  // namespace

RegistryDocument ParseRegistryFile(std::string_view bytes, std::u16string_view hive) {
  return Reader(bytes, hive).Read();
}

}  // namespace quillmar::platform
