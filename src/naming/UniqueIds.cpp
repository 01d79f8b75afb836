#include "naming/UniqueIds.h"

#include <cstdint>

#include "platform/System.h"

namespace quillmar {
namespace {

constexpr const char* kVolume = "c:\\";
constexpr std::uint32_t kBase = 36;
constexpr int kTickDigits = 7;

char Digit(std::uint32_t value) { return "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"[value % kBase]; }

// Seven digits of the clock, the most significant first, and one of the machine.
std::string MakeDigits(std::uint32_t ticks, std::uint32_t serial) {
  std::string digits(kTickDigits + 1, '0');
  digits[kTickDigits] = Digit(serial);
  for (int place = kTickDigits - 1; place >= 0; --place, ticks /= kBase) {
    digits[static_cast<std::size_t>(place)] = Digit(ticks);
  }
  return digits;
}

}  // namespace

std::string UniqueIds::MakeUniqueId(const std::string& prefix) {
  const std::string front = prefix.empty() ? std::string() : "PROF" + prefix;
  std::string identifier;
  do {
    const std::uint32_t serial = platform::VolumeSerial(kVolume);
    identifier = front + MakeDigits(platform::TickCount(), serial);
  } while (identifier == last);
  last = identifier;
  return identifier;
}

}  // namespace quillmar
