#include "keelcomm/Names.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "platform/System.h"

namespace quillmar::keelcomm {
namespace {

using FoldTable = std::array<char, 256>;

FoldTable MakeFoldTable() {
  std::string all(256, '\0');
  for (int i = 0; i < 256; ++i) all[static_cast<std::size_t>(i)] = static_cast<char>(i);
  FoldTable table;
  // A NUL would end the text for the system.
  table[0] = '\0';
  const std::string upper = platform::UpperCase(std::string_view(all).substr(1));
  std::copy_n(upper.begin(), 255, table.begin() + 1);
  return table;
}

const FoldTable& Table() {
  static const FoldTable table = MakeFoldTable();
  return table;
}

char Fold(const FoldTable& table, char character) {
  return table[static_cast<unsigned char>(character)];
}

}  // namespace

std::string FoldedName(std::string_view name) {
  const FoldTable& table = Table();
  std::string folded(name);
  for (char& character : folded) character = Fold(table, character);
  return folded;
}

std::size_t NameHash::operator()(std::string_view name) const {
  const FoldTable& table = Table();
  std::uint32_t hash = 2166136261u;  // FNV-1a
  for (const char character : name) {
    hash = (hash ^ static_cast<unsigned char>(Fold(table, character))) * 16777619u;
  }
  return hash;
}

bool NameEqual::operator()(std::string_view left, std::string_view right) const {
  if (left.size() != right.size()) return false;
  const FoldTable& table = Table();
  return std::equal(left.begin(), left.end(), right.begin(), [&](char one, char other) {
    return one == other || Fold(table, one) == Fold(table, other);
  });
}

}  // namespace quillmar::keelcomm
