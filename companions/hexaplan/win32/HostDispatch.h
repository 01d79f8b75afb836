// The host's object as COM sees it, and the factory that hands it out.
#pragma once

#include "hexaplan/host/HostObject.h"
#include "platform/win32/Win32.h"

#include <oaidl.h>

namespace hexaplan {

// Makes the object known to the system as the running object of its class for as long as this
// object lives.
class HostRegistration {
 public:
  explicit HostRegistration(HostObject& host);
  ~HostRegistration();
  HostRegistration(const HostRegistration&) = delete;
  HostRegistration& operator=(const HostRegistration&) = delete;

  bool IsRegistered() const { return registered; }

 private:
  IDispatch* object;
  IClassFactory* factory;
  DWORD classCookie = 0;
  DWORD activeCookie = 0;
  bool registered = false;
};

}  // namespace hexaplan
