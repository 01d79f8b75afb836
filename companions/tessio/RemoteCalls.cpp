#include "tessio/RemoteCalls.h"

#include <algorithm>
#include <cstring>

namespace quillmar::tessio {

RemoteCalls& RemoteCalls::Instance() {
  static RemoteCalls calls;
  return calls;
}

int RemoteCalls::Create(const char* functionName) {
  if (functionName == nullptr || *functionName == '\0') return 0;
  calls[++last];
  return last;
}

int RemoteCalls::AddParameter(int call, const void* value, int size) {
  const auto found = calls.find(call);
  if (found == calls.end() || value == nullptr || size < 0) return 0;
  found->second.emplace_back(static_cast<const char*>(value), static_cast<std::size_t>(size));
  return 1;
}

int RemoteCalls::GetParameter(int call, int index, void* value, int size) const {
  const auto found = calls.find(call);
  if (found == calls.end() || value == nullptr || size < 0 || index < 0) return 0;
  const auto place = static_cast<std::size_t>(index);
  if (place >= found->second.size()) return 0;
  const std::string& stored = found->second[place];
  std::memcpy(value, stored.data(), std::min(stored.size(), static_cast<std::size_t>(size)));
  return 1;
}

}  // namespace quillmar::tessio
