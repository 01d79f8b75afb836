// The store of this process: the protocols that are open in it, over the database.
//
// An open protocol is held in memory, so that reading and writing it costs no database call;
// closing it writes what was changed, durably. What was not closed is not stored. Opening is not
// counted: a protocol is open or it is not, and one close closes it for everybody in the process.
//
// Used on one thread.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "keelcomm/Database.h"
#include "keelcomm/Record.h"
#include "quillmar/StringList.h"

namespace quillmar::keelcomm {

inline constexpr std::size_t kLongestProtocolId = 25;

struct OpenProtocol {
  std::string id;
  ProtocolNumber number = 0;  // 0: not in the database yet
  Record record;
  bool hasOwner = false;  // a calculation window of this process was named as its owner
  std::unique_ptr<StringList> handedOut;  // the buffer that the last reader looks at
};

class Store {
 public:
  static Store& Instance();

  // Null when the protocol is not open in this process.
  OpenProtocol* Find(std::string_view id);
  // The same for a caller that will write: a database that cannot be written to is a StoreError, as
  // is every other refusal of the database below.
  OpenProtocol* FindToWrite(std::string_view id);

  // Opens a stored protocol, or makes it; it is stored when it is closed.
  OpenProtocol& Open(std::string_view id);
  OpenProtocol& OpenNew();
  // A new protocol, open, with the contents of an open or stored one; null when there is no source.
  OpenProtocol* OpenCopy(std::string_view sourceId);
  // After a refusal the protocol is still open, with all that was written to it.
  void Close(OpenProtocol& protocol);
  // Stores what was changed in a protocol that stays open. False when another process has erased
  // it.
  bool Save(OpenProtocol& protocol);
  // Takes in what other processes have stored since the protocol was read.
  void Refresh(OpenProtocol& protocol);
  // False when there is no such protocol, open or stored.
  bool Erase(std::string_view id);

  bool IsStored(std::string_view id);
  // The window of a living process that holds the protocol open for a calculation.
  std::optional<Owner> FindOwner(std::string_view id);
  // Window 0 ends the hold. Takes effect at once, for other processes too.
  void SetOwner(OpenProtocol& protocol, std::uint32_t window);

  // What the database says of itself; see Database.
  std::vector<std::string> StoredIds() { return OpenDatabase().Ids(); }
  std::string CheckDatabase() { return OpenDatabase().Check(); }

  // An identifier that no protocol has.
  std::string MakeUniqueId();

 private:
  struct IdHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view id) const { return std::hash<std::string_view>{}(id); }
  };

  Database& OpenDatabase();
  OpenProtocol& Keep(std::string_view id);

  std::unique_ptr<Database> database;
  std::unordered_map<std::string, std::unique_ptr<OpenProtocol>, IdHash, std::equal_to<>> open;
  OpenProtocol* lastFound = nullptr;  // most calls follow a call for the same protocol
};

}  // namespace quillmar::keelcomm
