#include "platform/Automation.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/win32/AutomationValues.h"
#include "platform/win32/SpareWorker.h"

#include <objbase.h>

namespace quillmar::platform {
namespace {

using win32::FromVariant;
using win32::Narrow;
using win32::ToVariant;
using win32::Variant;
using win32::Widen;

// Failures that mean that the object, or its program, is no longer there.
constexpr HRESULT kServerGone[] = {
    HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE),
    HRESULT_FROM_WIN32(RPC_S_CALL_FAILED),
    HRESULT_FROM_WIN32(RPC_S_CALL_FAILED_DNE),
    // A new program may have got the old one's place and know nothing of the object.
    HRESULT_FROM_WIN32(RPC_S_UNKNOWN_IF),
    RPC_E_DISCONNECTED,
    RPC_E_SERVER_DIED,
    RPC_E_SERVER_DIED_DNE,
    RPC_E_INVALID_OBJECT,
    CO_E_OBJNOTCONNECTED,
};

// What an object says about an error that it raised.
class RaisedError {
 public:
  RaisedError() = default;
  ~RaisedError() {
    SysFreeString(info.bstrSource);
    SysFreeString(info.bstrDescription);
    SysFreeString(info.bstrHelpFile);
  }
  RaisedError(const RaisedError&) = delete;
  RaisedError& operator=(const RaisedError&) = delete;

  EXCEPINFO* Get() { return &info; }
  std::string Description() {
    if (info.pfnDeferredFillIn != nullptr) info.pfnDeferredFillIn(&info);
    return Narrow(info.bstrDescription);
  }

 private:
  EXCEPINFO info{};
};

// COM takes arguments from the last to the first.
class ComArguments {
 public:
  explicit ComArguments(const AutomationArguments& arguments) {
    owners.reserve(arguments.size());
    std::transform(arguments.rbegin(), arguments.rend(), std::back_inserter(owners), ToVariant);
    // The called object only borrows them.
    for (Variant& owner : owners) variants.push_back(*owner.Get());
  }

  DISPPARAMS Parameters() {
    return {variants.data(), nullptr, static_cast<UINT>(variants.size()), 0};
  }

 private:
  std::vector<Variant> owners;
  std::vector<VARIANT> variants;
};

// A counted reference for the time of one call.
class Reference {
 public:
  explicit Reference(IDispatch* object) : object(object) { object->AddRef(); }
  ~Reference() { object->Release(); }
  Reference(const Reference&) = delete;
  Reference& operator=(const Reference&) = delete;
  IDispatch* operator->() const { return object; }

 private:
  IDispatch* object;
};

AutomationStatus StatusOf(HRESULT failure) {
  if (failure == DISP_E_EXCEPTION) return AutomationStatus::Raised;
  if (failure == DISP_E_MEMBERNOTFOUND || failure == DISP_E_UNKNOWNNAME) {
    return AutomationStatus::UnknownMember;
  }
  const bool gone =
      std::find(std::begin(kServerGone), std::end(kServerGone), failure) != std::end(kServerGone);
  return gone ? AutomationStatus::ServerGone : AutomationStatus::Failed;
}

AutomationResult ResultOf(Variant& answer, AutomationType type) {
  auto value = FromVariant(answer, type);
  if (!value) return {};
  return {AutomationStatus::Done, std::move(*value), {}};
}

class DispatchObject final : public AutomationObject {
 public:
  explicit DispatchObject(IDispatch* owned) : dispatch(owned) { win32::SetWorkerAside(); }
  ~DispatchObject() override {
    if (dispatch != nullptr) dispatch->Release();
  }
  DispatchObject(const DispatchObject&) = delete;
  DispatchObject& operator=(const DispatchObject&) = delete;

  AutomationResult Call(int identifier, const AutomationArguments& arguments,
                        AutomationType result) override;
  std::optional<int> FindMember(const std::string& name) override;
  void Abandon() override { dispatch = nullptr; }

 private:
  IDispatch* dispatch;
};

// COM dispatches messages while it waits for the answer: this object may be abandoned or
// destroyed meanwhile, and is not touched after the call.
AutomationResult DispatchObject::Call(int identifier, const AutomationArguments& arguments,
                                      AutomationType result) {
  if (dispatch == nullptr) return {AutomationStatus::ServerGone, {}, {}};
  const Reference called(dispatch);
  ComArguments comArguments(arguments);
  DISPPARAMS parameters = comArguments.Parameters();
  Variant answer;
  RaisedError error;
  const HRESULT status =
      called->Invoke(identifier, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                     result == AutomationType::None ? nullptr : answer.Get(), error.Get(), nullptr);
  if (SUCCEEDED(status)) return ResultOf(answer, result);
  return {StatusOf(status), {}, status == DISP_E_EXCEPTION ? error.Description() : std::string()};
}

std::optional<int> DispatchObject::FindMember(const std::string& name) {
  if (dispatch == nullptr) return std::nullopt;
  const Reference called(dispatch);
  std::wstring wideName = Widen(name);
  LPOLESTR names[] = {wideName.data()};
  DISPID identifier = DISPID_UNKNOWN;
  if (FAILED(called->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &identifier))) {
    return std::nullopt;
  }
  return static_cast<int>(identifier);
}

// The table of active objects keeps a program that died for a moment, and a proxy of it that this
// process still has is handed out without asking: only a call tells whether anybody is there.
bool IsAlive(IDispatch* object) {
  UINT count = 0;
  const HRESULT status = object->GetTypeInfoCount(&count);
  return SUCCEEDED(status) || StatusOf(status) != AutomationStatus::ServerGone;
}

std::optional<CLSID> ToClass(const std::string& classId) {
  CLSID identifier;
  if (FAILED(CLSIDFromString(Widen(classId).c_str(), &identifier))) return std::nullopt;
  return identifier;
}

}  // namespace

void InitializeAutomation() {
  // One initialisation of our own lasts, so that the host's end of COM is not ours.
  static thread_local bool initialized = false;
  if (!initialized) initialized = SUCCEEDED(CoInitialize(nullptr));
}

std::optional<std::string> FindAutomationClass(const std::string& progId) {
  CLSID identifier;
  if (FAILED(CLSIDFromProgID(Widen(progId).c_str(), &identifier))) return std::nullopt;
  std::array<OLECHAR, 39> text;  // 38 characters and a NUL
  StringFromGUID2(identifier, text.data(), static_cast<int>(text.size()));
  return Narrow(text.data(), text.size() - 1);
}

std::unique_ptr<AutomationObject> FindActiveObject(const std::string& classId) {
  const auto identifier = ToClass(classId);
  IUnknown* object = nullptr;
  if (!identifier || FAILED(GetActiveObject(*identifier, nullptr, &object))) return nullptr;
  void* dispatch = nullptr;
  const HRESULT status = object->QueryInterface(IID_IDispatch, &dispatch);
  object->Release();
  if (FAILED(status)) return nullptr;
  auto found = std::make_unique<DispatchObject>(static_cast<IDispatch*>(dispatch));
  return IsAlive(static_cast<IDispatch*>(dispatch)) ? std::move(found) : nullptr;
}

std::unique_ptr<AutomationObject> CreateAutomationObject(const std::string& classId) {
  const auto identifier = ToClass(classId);
  void* dispatch = nullptr;
  if (!identifier || FAILED(CoCreateInstance(*identifier, nullptr, CLSCTX_LOCAL_SERVER,
                                             IID_IDispatch, &dispatch))) {
    return nullptr;
  }
  return std::make_unique<DispatchObject>(static_cast<IDispatch*>(dispatch));
}

}  // namespace quillmar::platform
