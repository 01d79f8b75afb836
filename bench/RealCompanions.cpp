#include "RealCompanions.h"

#include <cstring>
#include <iterator>
#include <memory>
#include <string>
#include <tuple>

#include "conversion/ProtocolConverter.h"
#include "platform/Profile.h"

namespace quillmar::bench {
namespace {

const StorageTable* realStorage = nullptr;
const LinkTable* realLinks = nullptr;
Recording** recording = nullptr;

// An argument as it must be given again: texts are copied, output buffers are made anew with the
// blanks that the contract asks for, which belong to the raw call as much as to the module's.
template <class T>
struct Again {
  explicit Again(T given) : value(given) {}
  T Give() { return value; }
  T value;
};

template <>
struct Again<const char*> {
  explicit Again(const char* given) : null(given == nullptr), text(null ? "" : given) {}
  const char* Give() { return null ? nullptr : text.c_str(); }
  bool null;
  std::string text;
};

template <>
struct Again<char*> {
  explicit Again(char* given)
      : isIdentifier(given != nullptr && std::strspn(given, " ") < 1024),
        text(given == nullptr ? "" : given) {}
  char* Give() {
    // No function takes more of them at once, and none keeps one.
    static char buffers[8][1025];
    static std::size_t next = 0;
    char* const buffer = buffers[next++ % std::size(buffers)];
    if (isIdentifier) {
      std::memset(buffer, 0, QM_PROTOCOL_ID_BUFFER);
      std::memcpy(buffer, text.data(), std::min<std::size_t>(text.size(), 259));
    } else {
      std::memset(buffer, ' ', 1024);
      buffer[1024] = '\0';
    }
    return buffer;
  }
  bool isIdentifier;
  std::string text;
};

template <>
struct Again<QmStringList*> {
  explicit Again(QmStringList* given) : list(std::make_shared<StringList>(TextsOf(given))) {}
  QmStringList* Give() { return list->Get(); }
  std::shared_ptr<StringList> list;
};

template <class T>
struct Again<T*> {
  explicit Again(T*) {}
  T* Give() { return &place; }
  T place{};
};

template <class Function, class... Arguments>
std::function<void()> MakeCall(const Function& function, Arguments... arguments) {
  return [&function, kept = std::make_tuple(Again<Arguments>(arguments)...)]() mutable {
    std::apply([&](auto&... one) { function(one.Give()...); }, kept);
  };
}

#define QM_RECORD_STORAGE(name, result, parameters, arguments)                       \
  result QM_STDCALL Record_##name parameters {                                       \
    if (*recording != nullptr) {                                                     \
      const auto make = [](auto... a) { return MakeCall(realStorage->name, a...); }; \
      (*recording)->push_back(make arguments);                                       \
    }                                                                                \
    return realStorage->name arguments;                                              \
  }
QM_STORAGE_FUNCTIONS(QM_RECORD_STORAGE)
#undef QM_RECORD_STORAGE

#define QM_RECORD_LINK(name, result, parameters, arguments)                        \
  result QM_STDCALL Record_##name parameters {                                     \
    if (*recording != nullptr) {                                                   \
      const auto make = [](auto... a) { return MakeCall(realLinks->name, a...); }; \
      (*recording)->push_back(make arguments);                                     \
    }                                                                              \
    return realLinks->name arguments;                                              \
  }
QM_LINK_FUNCTIONS(QM_RECORD_LINK)
#undef QM_RECORD_LINK

void CopyImage(const std::filesystem::path& root) {
  std::filesystem::copy(std::filesystem::path(QUILLMAR_IMAGE) / "drive_c" / "Vantorel",
                        root / "drive_c" / "Vantorel", std::filesystem::copy_options::recursive);
}

}  // namespace

RealCompanions::RealCompanions() {
  CopyImage(machine.Root());
  // Waiting for the disk is no matter of the module.
  platform::WriteProfileText("C:\\Vantorel\\Fendrake\\Keelcomm.ini", "Store", "Flush", "0");
  loaded = libraries.Load("C:\\Vantorel\\Fendrake", "Benchmark");
}

RealCompanions::~RealCompanions() { libraries.Free(); }

RecordingTables RecordInto(const StorageTable& storage, const LinkTable& links, Recording*& calls) {
  realStorage = &storage;
  realLinks = &links;
  recording = &calls;
  RecordingTables tables;
#define QM_SET(name, result, parameters, arguments) tables.storage.name.pointer = &Record_##name;
  QM_STORAGE_FUNCTIONS(QM_SET)
#undef QM_SET
#define QM_SET(name, result, parameters, arguments) tables.links.name.pointer = &Record_##name;
  QM_LINK_FUNCTIONS(QM_SET)
#undef QM_SET
  return tables;
}

std::string MakeGear(const ModuleWorld& world, int parameters) {
  VXProtocol protocol(world.Protocols());
  protocol.CreateNew();
  protocol.PutKeyWord("Main", "DataFile", "KeelData|GEAR1");
  protocol.SetTypeOfPart(2);
  protocol.PutGlobalData("Caption", "Gear");
  protocol.PutViewKey("MODEL");
  protocol.SetVersion(kCurrentMajor, 0);
  // Members of groups are erased behind their insert otherwise.
  protocol.PutCadx("DoNotErase", "1");
  for (int i = 0; i < parameters; ++i) {
    protocol.PutDataParam("parameter" + std::to_string(i), "2.5", "mm");
  }
  return protocol.GetProtocolID();
}

void OnRealStorage(benchmark::State& state, const Preparation& prepare,
                   const CadDriverTable& driver, bool throughModule) {
  RealCompanions real;
  if (!real.Loaded()) {
    state.SkipWithError("the storage library is not in the image");
    return;
  }
  Recording calls;
  Recording* recordTo = nullptr;
  const RecordingTables tables = RecordInto(real.Storage(), real.Links(), recordTo);
  const ModuleWorld direct(real.Storage(), real.Links(), driver);
  const Work work = prepare(direct);
  if (throughModule) {
    const Step step = work(direct);
    step();
    for (auto round : state) step();
  } else {
    const ModuleWorld recorded(tables.storage, tables.links, driver);
    const Step step = work(recorded);
    step();
    recordTo = &calls;
    step();
    recordTo = nullptr;
    for (auto round : state) {
      for (auto& call : calls) call();
    }
    state.counters["calls"] = static_cast<double>(calls.size());
  }
}

}  // namespace quillmar::bench
