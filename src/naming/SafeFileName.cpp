#include "naming/SafeFileName.h"

#include <array>

namespace quillmar {
namespace {

struct Substitution {
  unsigned char from;
  char to;
};

// Letters are bytes of Windows-1250.
constexpr Substitution kSubstitutions[] = {
    {',', '_'},  {'/', '_'},  {'\\', '_'}, {':', '_'},  {'*', '_'},  {'?', '_'},  {'"', '_'},
    {'<', '_'},  {'>', '_'},  {'|', '_'},  {0xE1, 'a'}, {0xE8, 'c'}, {0xF8, 'r'}, {0xEF, 'd'},
    {0xEC, 'e'}, {0xED, 'i'}, {0xF2, 'n'}, {0xF3, 'o'}, {0x9A, 's'}, {0x9D, 't'}, {0xF9, 'u'},
    {0xFD, 'y'}, {0x9E, 'z'}, {0xE9, 'e'}, {0xFA, 'u'}, {0xC1, 'A'}, {0xC8, 'C'}, {0xD8, 'R'},
    {0xCF, 'D'}, {0xCC, 'E'}, {0xCD, 'I'}, {0xD2, 'N'}, {0xD3, 'O'}, {0x8A, 'S'}, {0x8D, 'T'},
    {0xD9, 'U'}, {0xDD, 'Y'}, {0x8E, 'Z'}, {0xC9, 'E'}, {0xDA, 'U'},
};
static_assert(std::size(kSubstitutions) == 40);

// No replacement is itself replaced, so one pass over the text does what forty would.
constexpr std::array<char, 256> MakeByteMap() {
  std::array<char, 256> map{};
  for (std::size_t i = 0; i < map.size(); ++i) map[i] = static_cast<char>(i);
  for (const Substitution& row : kSubstitutions) map[row.from] = row.to;
  return map;
}

constexpr std::array<char, 256> kByteMap = MakeByteMap();

}  // namespace

void MakeSafeFileName(std::string& text) {
  for (char& character : text) character = kByteMap[static_cast<unsigned char>(character)];
}

void EnsureTrailingBackslash(std::string& folder) {
  if (folder.empty() || folder.back() != '\\') folder += '\\';
}

}  // namespace quillmar
