// The contracts' functions as a caller binds them by name.
#pragma once

#include "quillmar/CadDriver.h"
#include "quillmar/Links.h"
#include "quillmar/Storage.h"

namespace quillmar::strict {

#define STRICT_STDCALL_MEMBER(name, result, parameters, arguments) \
  result(QM_STDCALL* name) parameters = nullptr;
#define STRICT_BIND_MEMBER(name, result, parameters, arguments) \
  bound.name = reinterpret_cast<decltype(bound.name)>(find(#name));

struct StorageFunctions {
  QM_STORAGE_FUNCTIONS(STRICT_STDCALL_MEMBER)
};
struct LinkFunctions {
  QM_LINK_FUNCTIONS(STRICT_STDCALL_MEMBER)
};

// `find` gives the address of a function by its name.
template <class Find>
StorageFunctions BindStorage(Find find) {
  StorageFunctions bound;
  QM_STORAGE_FUNCTIONS(STRICT_BIND_MEMBER)
  return bound;
}

template <class Find>
LinkFunctions BindLinks(Find find) {
  LinkFunctions bound;
  QM_LINK_FUNCTIONS(STRICT_BIND_MEMBER)
  return bound;
}

#undef STRICT_STDCALL_MEMBER
#undef STRICT_BIND_MEMBER

}  // namespace quillmar::strict
