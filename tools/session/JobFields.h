// Reading the fields of a job: whatever is wrong is refused with the field's name.
#pragma once

#include <fmt/format.h>

#include <initializer_list>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "session/Job.h"

namespace session {

using JobJson = nlohmann::ordered_json;

[[noreturn]] void Refuse(const std::string& field, const std::string& expected);
[[noreturn]] void RefuseValue(const std::string& field, const std::string& expected,
                              const JobJson& found);

template <typename Names>
std::string Quoted(const Names& names) {
  std::string text;
  for (const char* name : names) text += fmt::format("{}\"{}\"", text.empty() ? "" : ", ", name);
  return text;
}

void CheckObject(const JobJson& json, const std::string& field,
                 std::initializer_list<const char*> known);

// A text in the code page, without control characters.
std::string Bytes(const std::string& utf8, const std::string& field);

// The field `where` + `key`. A null fallback means that it must be there.
std::string ReadText(const JobJson& json, const std::string& where, const char* key,
                     const char* fallback);
// The same for a text that becomes a file's name.
void CheckFileName(const std::string& name, const std::string& field);
double ReadNumber(const JobJson& json, const std::string& where, const char* key, double fallback);
// One of the words, by its place; the first when the field is missing.
int ReadWord(const JobJson& json, const std::string& where, const char* key,
             const std::vector<const char*>& words);
// A number's text with a point as its decimal sign, its value, and whether two values are the same
// but for what is lost in writing them.
std::string WithPoint(std::string text);
double NumberOf(const std::string& text);
bool AreEqual(double value, double wanted);

// An object with a number for each name, in the field `key`.
Inputs ReadInputs(const JobJson& json, const std::string& where, const char* key = "inputs");

}  // namespace session
