#include "conversion/ShaftConverter.h"

#include "conversion/ShaftProtocol.h"

namespace quillmar {

int ShaftConverter::Convert(int fromMajor, int toMajor, int, int toMinor) {
  const bool up = fromMajor == kOldMajor && toMajor == kCurrentMajor;
  const bool down = fromMajor == kCurrentMajor && toMajor == kOldMajor;
  if (up && !ConvertUp()) return 1;
  if (down && !ConvertDown()) return 1;
  if (protocol.SetVersion(toMajor, toMinor) && (up || down)) MapViewKey(fromMajor, toMajor);
  return 1;
}

bool ShaftConverter::ConvertUp() {
  const std::optional<shaft::Shaft> shaft = shaft::ReadOld(protocol);
  return shaft && shaft::WriteCurrent(protocol, *shaft);
}

bool ShaftConverter::ConvertDown() {
  const std::optional<shaft::Shaft> shaft = shaft::ReadCurrent(protocol);
  return shaft && shaft::WriteOld(protocol, *shaft);
}

}  // namespace quillmar
