// The conformance check of an add-in: what it offers, what is lost, what the trials came to.
#pragma once

#include <chrono>
#include <string>

#include "addin/TryOut.h"

namespace tools {

struct Inspection {
  std::string library;
  std::chrono::seconds limit{10};
  bool trials = true;
  bool interactive = false;  // also functions that wait for the user
  bool verbose = false;      // also what is in order
  bool strict = false;       // warnings count as failures
};

// Tries the add-in in a session, see TryOut.h. Exit status: kFound when its parts did not come.
int TryOut(const std::string& library, const std::string& image, const TryOutPlace& place);

// Exit status: kFound when a required function is missing or a trial failed.
int Inspect(const Inspection& inspection);

}  // namespace tools
