#include "platform/native/Programs.h"

#include <dlfcn.h>
#include <elf.h>
#include <link.h>

#include <algorithm>
#include <cstring>
#include <fstream>

#include "platform/Modules.h"
#include "platform/native/Machine.h"

namespace quillmar::platform {
namespace {

using StartFunction = int (*)(const char* commandLine);

bool IsBlank(char character) { return character == ' ' || character == '\t'; }

std::string TakeProgramName(const std::string& line, std::size_t& position) {
  std::string name;
  bool quoted = false;
  for (; position < line.size() && (quoted || !IsBlank(line[position])); ++position) {
    if (line[position] == '"') {
      quoted = !quoted;
    } else {
      name += line[position];
    }
  }
  return name;
}

std::string TakeArgument(const std::string& line, std::size_t& position) {
  std::string argument;
  bool quoted = false;
  while (position < line.size() && (quoted || !IsBlank(line[position]))) {
    std::size_t slashes = 0;
    while (position < line.size() && line[position] == '\\') ++position, ++slashes;
    bool atQuote = position < line.size() && line[position] == '"';
    argument.append(atQuote ? slashes / 2 : slashes, '\\');
    if (!atQuote) {
      if (slashes == 0) argument += line[position++];
      continue;
    }
    ++position;
    if (slashes % 2 == 1) {
      argument += '"';
    } else if (quoted && position < line.size() && line[position] == '"') {
      argument += '"';  // a doubled quote inside quotes
      ++position;
    } else {
      quoted = !quoted;
    }
  }
  return argument;
}

}  // namespace

InProcessPrograms::~InProcessPrograms() {
  for (QmModule module : modules) dlclose(module);
}

bool InProcessPrograms::Start(const std::filesystem::path& program,
                              const std::string& commandLine) {
  void* module = dlopen(program.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (module == nullptr) return false;
  {
    std::lock_guard guard(mutex);
    modules.push_back(module);
  }
  auto start = reinterpret_cast<StartFunction>(FindFunction(module, kInProcessProgramStart));
  bool started = false;
  try {
    started = start != nullptr && start(commandLine.c_str()) != 0;
  } catch (...) {
    started = false;
  }
  if (!started) {
    std::lock_guard guard(mutex);
    modules.erase(std::find(modules.begin(), modules.end(), module));
    dlclose(module);
  }
  return started;
}

bool InProcessPrograms::Contains(QmModule module) const {
  std::lock_guard guard(mutex);
  return std::find(modules.begin(), modules.end(), module) != modules.end();
}

bool IsSharedObject(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  ElfW(Ehdr) header{};
  if (!stream.read(reinterpret_cast<char*>(&header), sizeof header)) return false;
  if (std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 || header.e_type != ET_DYN) return false;
  if (header.e_phentsize != sizeof(ElfW(Phdr))) return false;
  stream.seekg(static_cast<std::streamoff>(header.e_phoff));
  for (unsigned i = 0; i < header.e_phnum; ++i) {
    ElfW(Phdr) segment{};
    if (!stream.read(reinterpret_cast<char*>(&segment), sizeof segment)) return false;
    if (segment.p_type == PT_INTERP) return false;
  }
  return true;
}

std::vector<std::string> SplitCommandLine(const std::string& commandLine) {
  std::vector<std::string> arguments;
  std::size_t position = 0;
  arguments.push_back(TakeProgramName(commandLine, position));
  for (;;) {
    while (position < commandLine.size() && IsBlank(commandLine[position])) ++position;
    if (position >= commandLine.size()) return arguments;
    arguments.push_back(TakeArgument(commandLine, position));
  }
}

}  // namespace quillmar::platform
