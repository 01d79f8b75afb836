// The database file of the store: reads a protocol's record whole and writes its changes in one
// durable transaction, and knows which calculation windows hold protocols open.
//
// Several processes use one file at the same time. Only what a record changed is written, keyword
// by keyword, so two processes that had the same protocol open both keep what they wrote.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "keelcomm/HostSystem.h"
#include "keelcomm/Record.h"
#include "keelcomm/Sqlite.h"

namespace quillmar::keelcomm {

// A protocol's row. Erasing a protocol and making it anew gives another number.
using ProtocolNumber = std::int64_t;

struct StoredProtocol {
  ProtocolNumber number = 0;
  Record record;
};

// A calculation window that holds a protocol open, and the process that it belongs to.
struct Owner {
  std::uint32_t window = 0;
  ProcessIdentity process;
};

struct DatabaseSettings {
  // The longest wait for another process that keeps the file locked.
  int busyMilliseconds = 0;
  // A change that succeeded has reached the disk. Otherwise it survives the death of the process,
  // but not of the machine.
  bool isFlushed = true;
};

class Database {
 public:
  // Opens the file, making it when it is missing. Throws StoreError, as all operations below do.
  Database(const std::string& file, const DatabaseSettings& settings);
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  bool IsReadOnly() const { return isReadOnly; }

  bool Exists(std::string_view id);
  std::optional<StoredProtocol> Load(std::string_view id);
  // Makes the protocol (number 0) or writes what was changed in it; its number. Nothing when
  // another process has erased the protocol meanwhile; nothing is written then.
  std::optional<ProtocolNumber> Save(std::string_view id, ProtocolNumber number,
                                     const Record& record);
  // False when there was nothing to erase.
  bool Erase(std::string_view id);

  // All protocols, in the order of their making.
  std::vector<std::string> Ids();
  // What is wrong with the file and its tables, a line each; empty when nothing is.
  std::string Check();

  std::optional<Owner> FindOwner(std::string_view id);
  void SetOwner(std::string_view id, const Owner& owner);
  void RemoveOwner(std::string_view id);

 private:
  class Transaction;

  void MakeTables(bool isFlushed);
  void Flush(bool everyChange);
  void Prepare();
  std::optional<ProtocolNumber> NumberToWrite(std::string_view id, ProtocolNumber known);
  void WriteVersion(ProtocolNumber number, const Record& record);
  void WriteTexts(ProtocolNumber number, const Record& record);
  void WriteForeignTexts(ProtocolNumber number, const Record& record);

  Connection connection;
  bool isReadOnly = false;
  Statement begin, beginWriting, commit, rollback;
  Statement findProtocol, hasNumber, readTexts;
  Statement addProtocol, setVersion, removeProtocol;
  Statement addText, removeText, removeAllTexts;
  Statement findOwner, setOwner, removeOwner;
};

}  // namespace quillmar::keelcomm
