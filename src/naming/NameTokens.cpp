#include "naming/NameTokens.h"

#include <cstdint>

#include "naming/NameTemplate.h"
#include "platform/System.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

constexpr std::size_t kSizeCodeLength = 10;
// Values that the calculation fixes for the CAD.
constexpr const char* kFixedValuePrefix = "VXP_ED_";

std::string Global(VXProtocol& protocol, TextRef item) {
  std::string value;
  protocol.GetGlobalData(item, value);
  return value;
}

std::string KeyWord(VXProtocol& protocol, const char* section, const char* keyword) {
  std::string value;
  protocol.GetKeyWord(section, keyword, value);
  return value;
}

std::string GeneralLookup(VXProtocol& protocol, const std::string& token) {
  std::string value;
  std::string unit;
  if (protocol.GetDataParam(kFixedValuePrefix + token, value, unit) ||
      protocol.GetGlobalData(token, value) || protocol.GetDataParam(token, value, unit)) {
    return value;
  }
  protocol.GetKeyWord(section::kMaterial, token, value);
  return value;
}

std::string ModelName(VXProtocol& protocol, UniqueIds&, const std::string&) {
  return Global(protocol, global::kModel);
}

// Models whose name ends so are variants with a data-file name of their own.
bool IsVariantModel(const std::string& model) {
  return model.size() >= 2 && platform::EqualsNoCase(model.substr(model.size() - 2), "_S");
}

std::string DataFileName(VXProtocol& protocol, UniqueIds&, const std::string&) {
  std::string name;
  protocol.GetDataFileName(name);
  if (IsVariantModel(Global(protocol, global::kModel))) name += 'S';
  return name;
}

std::string SizeId(VXProtocol& protocol, UniqueIds&, const std::string&) {
  return SizeCode(Global(protocol, "BOM2"));
}

std::string Caption(VXProtocol& protocol, UniqueIds&, const std::string&) {
  std::string caption;
  if (KeyWord(protocol, section::kGrupova, "UseUserDescription") == "1") {
    caption = KeyWord(protocol, section::kGrupova, "UserDescription");
  }
  if (caption.empty()) caption = KeyWord(protocol, section::kObject, keyword::kCadDescription);
  if (caption.empty()) caption = Global(protocol, global::kCaption);
  if (!caption.empty()) return caption;
  const std::string first = Global(protocol, "Bom1");
  const std::string second = Global(protocol, "Bom2");
  return first + " " + second + " " + Global(protocol, "Bom3");
}

std::string UniqueId(VXProtocol&, UniqueIds& ids, const std::string&) {
  return ids.MakeUniqueId({});
}

// A field that the user has written himself goes before the calculation's.
std::string BomField(VXProtocol& protocol, UniqueIds&, const std::string& token) {
  const std::string value = Global(protocol, token + "USER");
  return value.empty() ? GeneralLookup(protocol, token) : value;
}

struct TokenRow {
  const char* token;
  std::string (*valueOf)(VXProtocol& protocol, UniqueIds& ids, const std::string& token);
};

constexpr TokenRow kTokens[] = {
    {"MODELNAME", ModelName}, {"CBFNAME", DataFileName}, {"SIZEID", SizeId}, {"CAPTION", Caption},
    {"UNIQUEID", UniqueId},   {"BOM1", BomField},        {"BOM2", BomField}, {"BOM3", BomField},
};

}  // namespace

std::string TokenValueOf(VXProtocol& protocol, UniqueIds& ids, const std::string& token) {
  for (const TokenRow& row : kTokens) {
    if (platform::EqualsNoCase(token, row.token)) return row.valueOf(protocol, ids, token);
  }
  return GeneralLookup(protocol, token);
}

std::string ExpandNameTemplate(const std::string& text, VXProtocol& protocol, UniqueIds& ids) {
  return ExpandNameTemplate(
      text, [&](const std::string& token) { return TokenValueOf(protocol, ids, token); });
}

// The leading digits of a 64-bit Fowler-Noll-Vo hash, mixed once more so that texts that differ
// only at their end differ in front.
std::string SizeCode(const std::string& size) {
  if (size.empty()) return {};
  std::uint64_t hash = 14695981039346656037ull;
  for (const char character : size) {
    hash = (hash ^ static_cast<unsigned char>(character)) * 1099511628211ull;
  }
  hash = (hash ^ (hash >> 32)) * 0x9E3779B97F4A7C15ull;
  std::string code;
  for (; code.size() < kSizeCodeLength; hash /= 36) {
    code += "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"[hash % 36];
  }
  return code;
}

}  // namespace quillmar
