#include "platform/ForeignCall.h"

#include <array>
#include <utility>

namespace quillmar::platform {
namespace {

constexpr std::size_t kMostWords = 16;

template <std::size_t>
using WordAt = std::uintptr_t;

using Caller = int (*)(void* function, const std::uintptr_t* words);

// The function's own type is known to the far side only.
template <std::size_t... Index>
#if defined(__clang__)
__attribute__((no_sanitize("function")))
#endif
int CallWithWords(void* function, [[maybe_unused]] const std::uintptr_t* words,
                  std::index_sequence<Index...>) {
  auto typed = reinterpret_cast<int (*)(WordAt<Index>...)>(function);
  return typed(words[Index]...);
}

template <std::size_t Count>
int CallWithCount(void* function, const std::uintptr_t* words) {
  return CallWithWords(function, words, std::make_index_sequence<Count>());
}

template <std::size_t... Count>
constexpr std::array<Caller, sizeof...(Count)> MakeCallers(std::index_sequence<Count...>) {
  return {CallWithCount<Count>...};
}

constexpr auto kCallers = MakeCallers(std::make_index_sequence<kMostWords + 1>());

}  // namespace

int CallForeign(void* function, const std::uintptr_t* words, std::size_t count) {
  if (function == nullptr || count > kMostWords) return 0;
  return kCallers[count](function, words);
}

}  // namespace quillmar::platform
