#include "RealCompanions.h"

#include <cstring>
#include <string>
#include <tuple>

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
  char buffer[1025];
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

}  // namespace quillmar::bench
