// A CAD driver of functions in the test program: notes each call and answers as the test says.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "session/CadDriverTable.h"

namespace quillmar::test {

struct FakeCad {
  static FakeCad& Get();

  std::set<std::string> refuses;  // functions that return 0
  // What a function that fills a list answers; "<function> <arguments>" goes before "<function>".
  std::map<std::string, std::string> texts;
  std::map<std::string, int> sizes;  // and the size it asks for before it does so
  double properties[12] = {};
  std::vector<double> camProfile;  // first and second coordinates of the last cam
};

// Binds the required functions.
void BindRequired(CadDriverTable& driver);
// Binds an optional one.
void Offer(CadDriverTable& driver, const std::string& name);

}  // namespace quillmar::test
