// What the roads meet in the store and in the CAD.
#pragma once

#include <string>
#include <vector>

namespace quillmar::contract {

struct Keyword {
  const char* section;
  std::string keyword;
  std::string value;
};
using Keywords = std::vector<Keyword>;

// What the CAD answers; see Strict_SetAnswer.
void Answer(const std::string& key, const std::string& answer);

// A calculated shaft of the store with further keywords; its identifier.
std::string MakeShaft(const Keywords& more = {});
// Reference text of one that the CAD alone has, and the same text with the other markers.
std::string Reference(const Keywords& more = {});
std::string Alternate(std::string reference);
// One that the CAD finds by its identifier, which is returned.
std::string PutIntoCad(const Keywords& more = {});
// The user has selected the object of a spring.
void Select(const Keywords& more = {});

}  // namespace quillmar::contract
