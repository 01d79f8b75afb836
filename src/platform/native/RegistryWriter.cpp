#include <algorithm>
#include <optional>

#include "platform/native/CodePage.h"
#include "platform/native/RegistryFile.h"
#include "platform/native/TextFiles.h"

namespace quillmar::platform {
namespace {

constexpr std::u16string_view kLineEnd = u"\r\n";
constexpr std::u16string_view kContinued = u"\\\r\n  ";
constexpr std::u16string_view kHexDigits = u"0123456789abcdef";
constexpr std::size_t kBytesInLine = 25;
constexpr std::size_t kDwordSize = 4;

bool AllFit(const std::vector<std::u16string>& lines) {
  return std::all_of(lines.begin(), lines.end(), FitsCodePage);
}

bool ValueFits(const StoredValue& value) {
  if (!FitsCodePage(value.name)) return false;
  if (!IsTextType(value.type)) return true;
  return value.bytes.size() % 2 == 0 && FitsCodePage(TextOfBytes(value.bytes));
}

bool NodeFits(const RegistryNode& node) {
  return FitsCodePage(node.name) && AllFit(node.otherLines) &&
         std::all_of(node.values.begin(), node.values.end(),
                     [](const auto& value) { return ValueFits(value.second); }) &&
         std::all_of(node.children.begin(), node.children.end(),
                     [](const auto& child) { return NodeFits(child.second); });
}

// The text of a value that can stand between quotes on one line.
std::optional<std::u16string> PlainText(const StoredValue& value) {
  if (value.type != kRegistryText || value.bytes.size() < 2 || value.bytes.size() % 2 != 0) {
    return std::nullopt;
  }
  std::u16string text = TextOfBytes(value.bytes);
  if (text.back() != u'\0') return std::nullopt;
  text.pop_back();
  bool plain = std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit >= u' '; });
  return plain ? std::optional(text) : std::nullopt;
}

class Writer {
 public:
  explicit Writer(bool narrowTexts) : narrow(narrowTexts) {
    text.append(narrow ? kRegistryVersion4 : kRegistryVersion5).append(kLineEnd);
  }

  void WriteLines(const std::vector<std::u16string>& lines) {
    for (const std::u16string& line : lines) text.append(line).append(kLineEnd);
  }

  // Keys that hold nothing but other keys need no heading of their own.
  void WriteNode(const RegistryNode& node, const std::u16string& path) {
    if (!node.values.empty() || !node.otherLines.empty() || node.children.empty()) {
      text.append(kLineEnd).append(u"[").append(path).append(u"]").append(kLineEnd);
      WriteLines(node.otherLines);
      for (const auto& [folded, value] : node.values) WriteValue(value);
    }
    for (const auto& [folded, child] : node.children) WriteNode(child, path + u'\\' + child.name);
  }

  const std::u16string& Text() const { return text; }

 private:
  void WriteValue(const StoredValue& value) {
    if (value.name.empty()) {
      text += u'@';
    } else {
      WriteQuoted(value.name);
    }
    text += u'=';
    if (std::optional<std::u16string> plain = PlainText(value)) {
      WriteQuoted(*plain);
    } else if (value.type == kRegistryDword && value.bytes.size() == kDwordSize) {
      text.append(u"dword:");
      for (std::size_t i = kDwordSize; i > 0; --i) WriteByte(value.bytes[i - 1]);
    } else {
      WriteHex(value);
    }
    text.append(kLineEnd);
  }

  void WriteQuoted(const std::u16string& content) {
    text += u'"';
    for (char16_t character : content) {
      if (character == u'\\' || character == u'"') text += u'\\';
      if (character == u'\n') {
        text.append(u"\\n");
      } else if (character == u'\r') {
        text.append(u"\\r");
      } else {
        text += character;
      }
    }
    text += u'"';
  }

  void WriteHex(const StoredValue& value) {
    bool ofCodePage = narrow && IsTextType(value.type);
    std::string bytes = ofCodePage ? Narrow(TextOfBytes(value.bytes)) : value.bytes;
    text.append(u"hex");
    if (value.type != kRegistryBinary) {
      text += u'(';
      WriteNumber(value.type);
      text += u')';
    }
    text += u':';
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      if (i > 0) text += u',';
      if (i > 0 && i % kBytesInLine == 0) text.append(kContinued);
      WriteByte(bytes[i]);
    }
  }

  void WriteNumber(std::uint32_t number) {
    if (number >= 16) WriteNumber(number / 16);
    text += kHexDigits[number % 16];
  }

  void WriteByte(char byte) {
    auto number = static_cast<unsigned char>(byte);
    text += kHexDigits[number / 16];
    text += kHexDigits[number % 16];
  }

  bool narrow;
  std::u16string text;
};

}  // namespace

std::string FormatRegistryFile(const RegistryDocument& document, std::u16string_view hive) {
  bool narrow = AllFit(document.otherLines) && NodeFits(document.root);
  Writer writer(narrow);
  writer.WriteLines(document.otherLines);
  writer.WriteNode(document.root, std::u16string(hive));
  return EncodeText(writer.Text(), narrow ? TextEncoding::CodePage : TextEncoding::Utf16);
}

}  // namespace quillmar::platform
