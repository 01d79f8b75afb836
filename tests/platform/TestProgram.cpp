// A program that tests start. What it is to do is its first argument.
//   sleep MS            waits; then writes "ended.txt" into the working folder
//   arguments ...       writes its arguments, one a line, to "arguments.txt" in the working folder
//   load LIBRARY HOW    loads a library by path; frees it when HOW is "free"; exit status 1 when it
//                       cannot be loaded
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>

#include "platform/Modules.h"

namespace {

using quillmar::platform::Library;
using quillmar::platform::LoadLibraryAt;

int Sleep(int milliseconds) {
  std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
  std::ofstream("ended.txt", std::ios::binary) << "sleep\n";
  return 0;
}

int WriteArguments(int count, char** arguments) {
  std::ofstream file("arguments.txt", std::ios::binary);
  for (int i = 0; i < count; ++i) file << arguments[i] << '\n';
  return 0;
}

int Load(const std::string& path, const std::string& how) {
  Library library = std::move(LoadLibraryAt(path).library);
  if (!library) return 1;
  if (how != "free") library.Release();
  return 0;
}

}  // namespace

int main(int count, char** arguments) {
  std::string task = count > 1 ? arguments[1] : "";
  if (task == "sleep" && count == 3) return Sleep(std::atoi(arguments[2]));
  if (task == "arguments") return WriteArguments(count, arguments);
  if (task == "load" && count == 4) return Load(arguments[2], arguments[3]);
  return 2;
}
