// Calls with parameters between programs: made, filled and read back here. No program of this suite
// offers a function to be called, so a call never succeeds.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace quillmar::tessio {

class RemoteCalls {
 public:
  static RemoteCalls& Instance();

  // A number for the functions below.
  int Create(const char* functionName);
  // 0 for an unknown call.
  int AddParameter(int call, const void* value, int size);
  // Parameter `index` from 0, as much of it as fits.
  int GetParameter(int call, int index, void* value, int size) const;

 private:
  std::map<int, std::vector<std::string>> calls;
  int last = 0;
};

}  // namespace quillmar::tessio
