// Arguments and results of a recorded call as texts.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "quillmar/Conventions.h"
#include "quillmar/StringList.h"

namespace quillmar::recorder {

// A text in quotes, escaped, cut after `limit` characters (0: never).
std::string DescribeText(std::string_view text, std::size_t limit);
std::string DescribeTexts(const QmStringList* list, std::size_t limit);
std::string DescribePairs(const ExtDataPair* pairs, int count, std::size_t limit);
std::string DescribeNumber(double value);

// A result, or an argument that is handed in. Other types get an overload beside their definition.
inline std::string Describe(const char* text, std::size_t limit) {
  return text == nullptr ? "null" : DescribeText(text, limit);
}
inline std::string Describe(std::string_view text, std::size_t limit) {
  return DescribeText(text, limit);
}
inline std::string Describe(const std::string& text, std::size_t limit) {
  return DescribeText(text, limit);
}
inline std::string Describe(const QmStringList* list, std::size_t limit) {
  return DescribeTexts(list, limit);
}
template <typename Value>
requires std::is_arithmetic_v<Value> std::string Describe(Value value, std::size_t) {
  if constexpr (std::is_floating_point_v<Value>) {
    return DescribeNumber(value);
  } else {
    return std::to_string(value);
  }
}
// Any other pointer: only whether there is one.
template <typename Pointed>
requires(!std::is_same_v<std::remove_cv_t<Pointed>, char> &&
         !std::is_same_v<std::remove_cv_t<Pointed>, QmStringList>) std::string
    Describe(Pointed* pointer, std::size_t) {
  return pointer == nullptr ? "null" : "*";
}

// A pointer through which a call gives something back.
template <typename Argument>
inline constexpr bool kIsOutput =
    std::is_pointer_v<Argument> && !std::is_const_v<std::remove_pointer_t<Argument>> &&
    !std::is_void_v<std::remove_pointer_t<Argument>> && !std::is_same_v<Argument, QmStringList*>;

// Puts in `text` what stands behind an output now; leaves the text of another argument.
template <typename Argument>
void DescribeOutput(const Argument& argument, std::size_t limit, std::string& text) {
  if constexpr (kIsOutput<Argument>) {
    if (argument != nullptr) {
      if constexpr (std::is_same_v<Argument, char*>) {
        text = "&" + DescribeText(argument, limit);
      } else {
        text = "&" + Describe(*argument, limit);
      }
    }
  }
}

template <std::size_t Index, typename Arguments>
std::string DescribeInput(const Arguments& arguments, std::size_t limit) {
  using Argument = std::remove_cvref_t<std::tuple_element_t<Index, Arguments>>;
  const auto& argument = std::get<Index>(arguments);
  if constexpr (kIsOutput<Argument>) {
    return argument == nullptr ? "null" : "&";
  } else if constexpr (std::is_same_v<Argument, const ExtDataPair*>) {
    // Its count is the argument behind it.
    return DescribePairs(argument, std::get<Index + 1>(arguments), limit);
  } else {
    return Describe(argument, limit);
  }
}

template <typename... Argument>
std::vector<std::string> DescribeInputs([[maybe_unused]] const std::tuple<Argument...>& arguments,
                                        [[maybe_unused]] std::size_t limit) {
  std::vector<std::string> texts;
  texts.reserve(sizeof...(Argument));
  [&]<std::size_t... Index>(std::index_sequence<Index...>) {
    (texts.push_back(DescribeInput<Index>(arguments, limit)), ...);
  }
  (std::index_sequence_for<Argument...>{});
  return texts;
}

// Replaces the texts of the outputs by what stands there now.
template <typename... Argument>
void DescribeOutputs([[maybe_unused]] const std::tuple<Argument...>& arguments,
                     [[maybe_unused]] std::size_t limit,
                     [[maybe_unused]] std::vector<std::string>& texts) {
  [&]<std::size_t... Index>(std::index_sequence<Index...>) {
    (DescribeOutput(std::get<Index>(arguments), limit, texts[Index]), ...);
  }
  (std::index_sequence_for<Argument...>{});
}

}  // namespace quillmar::recorder
