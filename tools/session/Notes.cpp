#include "session/Notes.h"

#include "drawboard/CodePage.h"
#include "session/Units.h"

namespace session {
namespace {

using drawboard::FromUtf8;

std::string Bytes(const std::string& utf8) { return FromUtf8(utf8).value_or(std::string()); }

}  // namespace

Notes::Notes(const std::string& reference) {
  const std::string bytes = Bytes(reference);
  units = UnitsOfReference(bytes);
  meanings = KeywordsOfReference(bytes, "VarDescriptions");
  formulas = KeywordsOfReference(bytes, "VarFormulas");
}

std::string Notes::Unit(const std::string& name) const { return Find(units, name); }
std::string Notes::Meaning(const std::string& name) const { return OfRow(meanings, name); }
std::string Notes::Formula(const std::string& name) const { return OfRow(formulas, name); }

std::string Notes::Find(const Texts& texts, const std::string& name) {
  const auto found = texts.find(Bytes(name));
  return found != texts.end() ? drawboard::ToUtf8(found->second) : std::string();
}

// A numbered row is described as a whole, under "<name>_i".
std::string Notes::OfRow(const Texts& texts, const std::string& name) {
  const std::string own = Find(texts, name);
  const auto end = name.find_last_not_of("0123456789");
  const bool row = end != std::string::npos && end + 1 < name.size() && name[end] == '_';
  return own.empty() && row ? Find(texts, name.substr(0, end + 1) + "i") : own;
}

}  // namespace session
