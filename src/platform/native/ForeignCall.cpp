#include "platform/ForeignCall.h"

#include <array>
#include <utility>

namespace quillmar::platform {
namespace {

constexpr std::size_t kMostWords = 16;
constexpr std::size_t kMostReals = 4;
using Reals = std::array<double, kMostReals>;

template <std::size_t>
using WordAt = std::uintptr_t;

using Caller = int (*)(void* function, const std::uintptr_t* words, const Reals& reals);

// The function's own type is known to the far side only. Reals travel in registers of their own, so
// it does not matter where they stand among the words, nor that some are passed which it does not
// know.
template <std::size_t... Index>
#if defined(__clang__)
__attribute__((no_sanitize("function")))
#endif
int CallWithWords(void* function, [[maybe_unused]] const std::uintptr_t* words, const Reals& reals,
                  std::index_sequence<Index...>) {
  auto typed =
      reinterpret_cast<int (*)(WordAt<Index>..., double, double, double, double)>(function);
  return typed(words[Index]..., reals[0], reals[1], reals[2], reals[3]);
}

template <std::size_t Count>
int CallWithCount(void* function, const std::uintptr_t* words, const Reals& reals) {
  return CallWithWords(function, words, reals, std::make_index_sequence<Count>());
}

template <std::size_t... Count>
constexpr std::array<Caller, sizeof...(Count)> MakeCallers(std::index_sequence<Count...>) {
  return {CallWithCount<Count>...};
}

constexpr auto kCallers = MakeCallers(std::make_index_sequence<kMostWords + 1>());

}  // namespace

int CallForeign(void* function, const std::uintptr_t* words, std::size_t count) {
  if (function == nullptr || count > kMostWords) return 0;
  return kCallers[count](function, words, {});
}

int CallForeign(void* function, std::span<const ForeignArgument> arguments) {
  std::array<std::uintptr_t, kMostWords> words{};
  Reals reals{};
  std::size_t wordCount = 0;
  std::size_t realCount = 0;
  for (const ForeignArgument& argument : arguments) {
    const auto* word = std::get_if<std::uintptr_t>(&argument);
    if (word != nullptr ? wordCount == kMostWords : realCount == kMostReals) return 0;
    if (word != nullptr) {
      words[wordCount++] = *word;
    } else {
      reals[realCount++] = std::get<double>(argument);
    }
  }
  if (function == nullptr) return 0;
  return kCallers[wordCount](function, words.data(), reals);
}

}  // namespace quillmar::platform
