// The flat texts that cross the border: "name,value" lists, reference texts, numbers.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "quillmar/Conventions.h"

namespace drawboard {

struct NamedText {
  std::string name;
  std::string value;
  bool operator==(const NamedText&) const = default;
};
using NamedTexts = std::vector<NamedText>;

// A received parameter list: the view key of its "*view*" head, which may be missing, and the
// parameters in order, commas back in their values.
struct ParameterList {
  std::string view;
  NamedTexts parameters;
};
ParameterList ParseParameters(std::string_view text);

// "name,value,name,value"; a comma inside a value is written "<VXCOMMA>".
std::string FormatList(const NamedTexts& items);

// "name,name"; for lists whose items hold no commas.
std::string JoinNames(const std::vector<std::string>& names);

// Copies of pairs that belong to the caller; null texts count as empty.
NamedTexts CopyPairs(const ExtDataPair* pairs, int count);

// Value of a name, compared as written; null when it is not there.
const std::string* FindText(const NamedTexts& items, std::string_view name);
// Sets the value of a name, which is added at the end when it is new.
void PutText(NamedTexts& items, const std::string& name, const std::string& value);

// Adds a name to a list that does not hold it yet.
void AddName(std::vector<std::string>& names, std::string name);

// `fresh` followed by those of `former` that it lacks and whose names are in `kept`.
NamedTexts RenewTexts(NamedTexts fresh, const NamedTexts& former,
                      const std::vector<std::string>& kept);

// The protocol identifier in front of a reference text's marker; empty when there is no marker.
std::string IdentifierOf(std::string_view connection);

// A real with 8 significant digits, whatever the locale of the process; an infinite value and NaN
// are texts that ParseNumber refuses.
std::string FormatNumber(double value);
// Nothing when the whole text is no finite number.
std::optional<double> ParseNumber(std::string_view text);

}  // namespace drawboard
