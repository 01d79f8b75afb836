// The companions of one installation, loaded from a folder of the test machine and called through
// their exports.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/Modules.h"
#include "quillmar/Ipc.h"
#include "quillmar/Links.h"
#include "quillmar/Storage.h"
#include "support/TestMachine.h"
#include "tessio/Receivers.h"

namespace quillmar::test {

struct StorageTable {
#define QM_MEMBER(name, result, parameters, names) result(QM_STDCALL* name) parameters = nullptr;
  QM_STORAGE_FUNCTIONS(QM_MEMBER)
};

struct LinkTable {
  QM_LINK_FUNCTIONS(QM_MEMBER)
};

struct IpcTable {
#define QM_IPC_MEMBER(name, convention, result, parameters, names) \
  result(convention* name) parameters = nullptr;
  QM_IPC_FUNCTIONS(QM_IPC_MEMBER)
#undef QM_IPC_MEMBER
#undef QM_MEMBER
#define QM_MEMBER(name, result, parameters, names) result(QM_CDECL* name) parameters = nullptr;
  TESSIO_RECEIVER_FUNCTIONS(QM_MEMBER)
#undef QM_MEMBER
};

// What a growing output holds after a call; nothing when the call failed.
using Text = std::optional<std::string>;

// Installs the companions in "<machine's folder>\<name>" and gives that folder. `settings` is the
// text of Keelcomm.ini.
std::string InstallSuite(const TestMachine& machine, const std::string& name,
                         const std::string& settings = "");

class Suite {
 public:
  // Loads the companions that are installed in a folder of the machine.
  explicit Suite(const std::string& folder);

  // Unloads and loads again, as the next session would.
  void Reload();

  const std::string& Folder() const { return folder; }

  StorageTable storage;
  LinkTable links;
  IpcTable ipc;

  // Calls of the storage library with room enough for the answer.
  bool Open(std::string id) const;
  std::string OpenNew() const;
  bool Close(const std::string& id) const;
  bool Put(const std::string& id, const char* section, const char* keyword,
           const char* value) const;
  Text Get(const std::string& id, const char* section, const char* keyword) const;
  Text KeyList(const std::string& id, const char* section) const;
  std::vector<std::string> Buffer(const std::string& id) const;
  bool PutBuffer(const std::string& id, const std::vector<std::string>& items) const;

 private:
  void Load();

  std::string folder;
  platform::Library storageLibrary, linkLibrary, ipcLibrary;
};

// Blanks of a capacity, and the text that a call leaves in them.
class Growing {
 public:
  explicit Growing(std::size_t capacity = 4096) : buffer(capacity, ' ') {}
  operator char*() { return buffer.data(); }
  std::string Text() const { return buffer.c_str(); }

 private:
  std::string buffer;
};

}  // namespace quillmar::test
