#include "keelcomm/Store.h"

#include <algorithm>
#include <chrono>
#include <random>

#include "keelcomm/Settings.h"

namespace quillmar::keelcomm {
namespace {

constexpr char kBase36[] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";

// The last `digits` digits of a number, to the base 36.
std::string Base36(std::uint64_t number, int digits) {
  std::string text(static_cast<std::size_t>(digits), '0');
  for (auto digit = text.rbegin(); digit != text.rend(); ++digit, number /= 36) {
    *digit = kBase36[number % 36];
  }
  return text;
}

// The time orders identifiers; chance keeps those of several processes apart.
std::string ProposeId() {
  static std::mt19937_64 chance{std::random_device{}()};
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  const auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
  return "P" + Base36(static_cast<std::uint64_t>(milliseconds), 8) + Base36(chance(), 6);
}

}  // namespace

Store& Store::Instance() {
  static Store store;
  return store;
}

Database& Store::OpenDatabase() {
  if (!database) {
    const Settings settings = ReadSettings();
    database = std::make_unique<Database>(DatabaseName(settings.file), settings.use);
  }
  return *database;
}

OpenProtocol* Store::Find(std::string_view id) {
  if (lastFound != nullptr && lastFound->id == id) return lastFound;
  const auto found = open.find(id);
  if (found == open.end()) return nullptr;
  lastFound = found->second.get();
  return lastFound;
}

OpenProtocol* Store::FindToWrite(std::string_view id) {
  OpenProtocol* protocol = Find(id);
  if (protocol != nullptr && OpenDatabase().IsReadOnly()) {
    throw StoreError("the database is read-only");
  }
  return protocol;
}

OpenProtocol& Store::Keep(std::string_view id) {
  auto& place = open[std::string(id)];
  place = std::make_unique<OpenProtocol>();
  place->id = id;
  return *place;
}

OpenProtocol& Store::Open(std::string_view id) {
  if (OpenProtocol* protocol = Find(id)) return *protocol;
  auto stored = OpenDatabase().Load(id);
  if (!stored && OpenDatabase().IsReadOnly()) throw StoreError("the database is read-only");
  OpenProtocol& protocol = Keep(id);
  if (stored) {
    protocol.number = stored->number;
    protocol.record = std::move(stored->record);
  }
  return protocol;
}

OpenProtocol& Store::OpenNew() { return Open(MakeUniqueId()); }

OpenProtocol* Store::OpenCopy(std::string_view sourceId) {
  Record contents;
  if (const OpenProtocol* source = Find(sourceId)) {
    contents.ReplaceBy(source->record);
  } else {
    const auto stored = OpenDatabase().Load(sourceId);
    if (!stored) return nullptr;
    contents.ReplaceBy(stored->record);
  }
  OpenProtocol& copy = OpenNew();
  copy.record = std::move(contents);
  return &copy;
}

bool Store::Save(OpenProtocol& protocol) {
  if (protocol.number != 0 && !protocol.record.IsChanged()) return true;
  const auto number = OpenDatabase().Save(protocol.id, protocol.number, protocol.record);
  if (!number) return false;
  protocol.number = *number;
  protocol.record.MarkStored();
  return true;
}

void Store::Refresh(OpenProtocol& protocol) {
  auto stored = OpenDatabase().Load(protocol.id);
  if (!stored) return;
  protocol.number = stored->number;
  protocol.record.ChangeOver(std::move(stored->record));
}

void Store::Close(OpenProtocol& protocol) {
  const bool isSaved = Save(protocol);
  if (protocol.hasOwner) OpenDatabase().RemoveOwner(protocol.id);
  const std::string id = protocol.id;
  lastFound = nullptr;
  open.erase(id);
  if (!isSaved) throw StoreError("protocol " + id + " was erased by another program");
}

bool Store::Erase(std::string_view id) {
  const bool isStored = OpenDatabase().Erase(id);
  lastFound = nullptr;
  const auto found = open.find(id);
  if (found == open.end()) return isStored;
  open.erase(found);
  return true;
}

bool Store::IsStored(std::string_view id) { return OpenDatabase().Exists(id); }

std::optional<Owner> Store::FindOwner(std::string_view id) {
  auto owner = OpenDatabase().FindOwner(id);
  if (owner && !IsAlive(owner->process)) owner.reset();
  return owner;
}

void Store::SetOwner(OpenProtocol& protocol, std::uint32_t window) {
  if (window == 0 && !protocol.hasOwner) return;
  if (window == 0) {
    OpenDatabase().RemoveOwner(protocol.id);
  } else {
    OpenDatabase().SetOwner(protocol.id, {window, ThisProcess()});
  }
  protocol.hasOwner = window != 0;
}

std::string Store::MakeUniqueId() {
  std::string id;
  do {
    id = ProposeId();
  } while (Find(id) != nullptr || IsStored(id));
  return id;
}

}  // namespace quillmar::keelcomm
