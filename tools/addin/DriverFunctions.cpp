#include "addin/DriverFunctions.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <tuple>
#include <type_traits>

#include "quillmar/CadDriver.h"

namespace tools {
namespace {

constexpr std::size_t kGuard = 4096;
constexpr char kGuardByte = '\x5A';
constexpr std::size_t kRoomyCapacity = 65536;
constexpr std::size_t kReals = 16;

struct FixedBuffers {
  std::string_view function;
  std::array<std::size_t, 2> bytes;
};

constexpr FixedBuffers kFixedBuffers[] = {
    {"GetPart", {1024, 0}},         {"GetAssembly", {1024, 260}}, {"GetAssemblyName", {260, 0}},
    {"GetAssemblyPath", {1024, 0}}, {"GetDataWD", {0, 10000}},
};

constexpr std::array<std::size_t, 2> FixedBuffersOf(std::string_view function) {
  for (const FixedBuffers& row : kFixedBuffers) {
    if (row.function == function) return row.bytes;
  }
  return {};
}

template <typename Argument>
Argument Make([[maybe_unused]] const DriverFunction& function, const Pattern& pattern,
              [[maybe_unused]] CallMemory& memory) {
  if constexpr (std::is_same_v<Argument, int>) {
    return pattern.number;
  } else if constexpr (std::is_same_v<Argument, double>) {
    return pattern.number;
  } else {
    if (!pattern.hasPointers) return nullptr;
    if constexpr (std::is_same_v<Argument, const char*>) {
      return pattern.text.c_str();
    } else if constexpr (std::is_same_v<Argument, char*>) {
      const std::size_t index = memory.buffers.size();
      const auto& fixed = function.fixedBuffers;
      const std::size_t bytes = index < fixed.size() ? fixed[index] : 0;
      return memory.Buffer(bytes != 0 ? bytes : kRoomyCapacity + 1);
    } else if constexpr (std::is_same_v<Argument, int*>) {
      return &memory.sizes.emplace_back(static_cast<int>(kRoomyCapacity));
    } else if constexpr (std::is_same_v<Argument, QmWindow*>) {
      return &memory.windows.emplace_back(0);
    } else if constexpr (std::is_same_v<Argument, const ExtDataPair*>) {
      return nullptr;  // as the module does when it has none
    } else {
      return memory.reals.emplace_back(kReals).data();
    }
  }
}

template <typename... Argument>
int CallWith(int(QM_CDECL* address)(Argument...), [[maybe_unused]] const DriverFunction& function,
             [[maybe_unused]] const Pattern& pattern, [[maybe_unused]] CallMemory& memory) {
  // In braces, so that the buffers are made in the order of the arguments.
  return std::apply(address, std::tuple<Argument...>{Make<Argument>(function, pattern, memory)...});
}

#define QM_IS_REQUIRED true
#define QM_IS_OPTIONAL false
#define QM_ROW(need, name, result, parameters, arguments, drawing)                                 \
  {#name, QM_IS_##need, drawing, FixedBuffersOf(#name),                                            \
   [](void* address, const DriverFunction& function, const Pattern& pattern, CallMemory& memory) { \
     return CallWith(reinterpret_cast<result(QM_CDECL*) parameters>(address), function, pattern,   \
                     memory);                                                                      \
   }},
#define QM_MODEL_ROW(need, name, result, parameters, arguments) \
  QM_ROW(need, name, result, parameters, arguments, false)
#define QM_DRAWING_ROW(need, name, result, parameters, arguments) \
  QM_ROW(need, name, result, parameters, arguments, true)
const DriverFunction kFunctions[] = {QM_CAD_FUNCTIONS(QM_MODEL_ROW)
                                         QM_CAD_2D_FUNCTIONS(QM_DRAWING_ROW)};
#undef QM_MODEL_ROW
#undef QM_DRAWING_ROW
#undef QM_ROW

}  // namespace

GuardedBuffer::GuardedBuffer(std::size_t capacity)
    : room(capacity + 1), bytes(room + kGuard, kGuardByte) {}

bool GuardedBuffer::IsOverrun() const {
  return std::any_of(bytes.begin() + static_cast<std::ptrdiff_t>(room), bytes.end(),
                     [](char byte) { return byte != kGuardByte; });
}

bool GuardedBuffer::IsTerminated() const { return ::strnlen(bytes.data(), room) < room; }

std::string GuardedBuffer::Text() const {
  return std::string(bytes.data(), ::strnlen(bytes.data(), room));
}

char* CallMemory::Buffer(std::size_t bytes) {
  char* buffer = buffers.emplace_back(bytes - 1).Get();
  *buffer = '\0';
  return buffer;
}

bool CallMemory::IsOverrun() const {
  return std::ranges::any_of(buffers, &GuardedBuffer::IsOverrun);
}

bool CallMemory::IsTerminated() const {
  return std::ranges::all_of(buffers, &GuardedBuffer::IsTerminated);
}

std::span<const DriverFunction> DriverFunctions() { return kFunctions; }

const DriverFunction* FindDriverFunction(const std::string& name) {
  for (const DriverFunction& function : kFunctions) {
    if (function.name == name) return &function;
  }
  return nullptr;
}

}  // namespace tools
