// The storage library as the host uses it: records of one protocol, opened for the time of one
// operation.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "hexaplan/calculation/Fields.h"
#include "platform/Modules.h"
#include "quillmar/BoundFunction.h"
#include "quillmar/Storage.h"

namespace hexaplan {

// Entry points of the storage library, loaded from the host's own folder.
class ProtocolStore {
 public:
  struct Table {
    QM_STORAGE_FUNCTIONS(QM_BOUND_STDCALL)
  };

  // False when the library or one of its entry points is missing; then nothing is bound.
  bool Load(const std::string& folder);
  const Table& Functions() const { return table; }

  bool Exists(const std::string& protocolId) const;
  // All stored protocols, in the order of their making; none from a library that does not list
  // them.
  std::vector<std::string> Ids() const;
  // Removes a protocol that somebody handed over to the host.
  void Erase(const std::string& protocolId) const;

 private:
  quillmar::platform::Library library;
  Table table;
  int(QM_CDECL* listProtocols)(const char* const**, int*) = nullptr;
};

// An open protocol. Closed at the latest when the object goes.
class ProtocolRecord {
 public:
  // Nothing when the protocol cannot be opened. A protocol that does not exist is not made.
  static std::optional<ProtocolRecord> Open(const ProtocolStore& store, const std::string& id);
  // The same for a protocol that the caller of the host may hold open in this very process: it is
  // left as open as it was found.
  static std::optional<ProtocolRecord> OpenShared(const ProtocolStore& store,
                                                  const std::string& id);
  static std::optional<ProtocolRecord> CreateNew(const ProtocolStore& store);

  ProtocolRecord(ProtocolRecord&& other) noexcept;
  ProtocolRecord& operator=(ProtocolRecord&&) = delete;
  ~ProtocolRecord();

  const std::string& Id() const { return id; }

  // Texts that are missing are empty.
  std::string KeyWord(const char* section, const char* keyword) const;
  std::string Global(const char* item) const;
  std::vector<DataParameter> Parameters() const;
  // Data-file type: the text behind "|" of "Main"/"DataFile", else of "Files"/"DataFile".
  std::string DataFileType() const;
  int MajorVersion() const;
  std::string ModelId() const;
  std::string ViewKey() const;

  void PutKeyWord(const char* section, const char* keyword, const std::string& value);
  void EraseKeyWord(const char* section, const char* keyword);
  void EraseSection(const char* section);
  void PutGlobal(const char* item, const std::string& value);
  void PutParameter(const DataParameter& parameter);
  void PutModel(const std::string& modelId, const std::string& viewKey);
  void SetVersion(int major, int minor);

  // Protocols that this one lists as its members, in their order.
  std::vector<std::string> Members() const;
  void AddMember(const std::string& memberId);

  // False when this or any write before it failed.
  bool Close();

 private:
  ProtocolRecord(const ProtocolStore::Table& functions, std::string id);
  void Note(short result) { allWritten = allWritten && result != 0; }

  const ProtocolStore::Table* functions;
  std::string id;
  bool open = true;
  bool allWritten = true;
};

}  // namespace hexaplan
