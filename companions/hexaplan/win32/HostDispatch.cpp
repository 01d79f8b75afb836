#include "hexaplan/win32/HostDispatch.h"

#include <algorithm>
#include <atomic>

#include "platform/win32/AutomationValues.h"
#include "quillmar/CalculationHost.h"

#include <objbase.h>

namespace hexaplan {

namespace {

namespace win32 = quillmar::platform::win32;
using quillmar::platform::AutomationArguments;
using quillmar::platform::AutomationResult;
using quillmar::platform::AutomationStatus;
using quillmar::platform::AutomationType;

CLSID HostClass() {
  CLSID identifier;
  CLSIDFromString(win32::Widen(QM_HOST_CLASS_ID).c_str(), &identifier);
  return identifier;
}

// Counts references; deletes itself with the last one.
template <typename Interface>
class Counted : public Interface {
 public:
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references;
    if (left == 0) delete this;
    return left;
  }

 protected:
  virtual ~Counted() = default;
  HRESULT Answer(REFIID wanted, REFIID own, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (!IsEqualIID(wanted, IID_IUnknown) && !IsEqualIID(wanted, own)) return E_NOINTERFACE;
    *object = static_cast<Interface*>(this);
    AddRef();
    return S_OK;
  }

 private:
  std::atomic<ULONG> references{1};
};

// The arguments in the host's order; nothing when one cannot be understood.
std::optional<AutomationArguments> ArgumentsOf(const DISPPARAMS& parameters) {
  AutomationArguments arguments;
  for (UINT i = parameters.cArgs; i-- > 0;) {
    win32::Variant copy;
    if (FAILED(VariantCopyInd(copy.Get(), &parameters.rgvarg[i]))) return std::nullopt;
    const auto type = copy.Get()->vt == VT_BSTR ? AutomationType::Text : AutomationType::Int;
    auto value = win32::FromVariant(copy, type);
    if (!value) return std::nullopt;
    arguments.push_back(std::move(*value));
  }
  return arguments;
}

void Describe(const std::string& description, EXCEPINFO* error) {
  if (error == nullptr) return;
  *error = {};
  error->wCode = 1001;
  error->bstrSource = SysAllocString(L"Hexaplan");
  error->bstrDescription = SysAllocString(win32::Widen(description).c_str());
}

class HostDispatch final : public Counted<IDispatch> {
 public:
  explicit HostDispatch(HostObject& host) : host(host) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override {
    return Answer(wanted, IID_IDispatch, object);
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                          DISPID* identifiers) override {
    if (count == 0) return S_OK;
    std::fill_n(identifiers, count, DISPID_UNKNOWN);
    const auto member = host.FindMember(win32::Narrow(names[0], std::wcslen(names[0])));
    if (!member) return DISP_E_UNKNOWNNAME;
    identifiers[0] = *member;
    return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
  }

  HRESULT STDMETHODCALLTYPE Invoke(DISPID identifier, REFIID, LCID, WORD, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* error, UINT*) override {
    const auto arguments = ArgumentsOf(*parameters);
    if (!arguments) return DISP_E_TYPEMISMATCH;
    const AutomationResult answer = host.Call(identifier, *arguments);
    switch (answer.status) {
      case AutomationStatus::Done:
        if (result != nullptr) VariantCopy(result, AnswerOf(answer).Get());
        return S_OK;
      case AutomationStatus::Raised:
        Describe(answer.description, error);
        return DISP_E_EXCEPTION;
      case AutomationStatus::UnknownMember:
        return DISP_E_MEMBERNOTFOUND;
      default:
        return DISP_E_TYPEMISMATCH;
    }
  }

 private:
  // A method without a result leaves the variant empty.
  static win32::Variant AnswerOf(const AutomationResult& answer) {
    if (std::holds_alternative<quillmar::platform::NoValue>(answer.value)) return {};
    return win32::ToVariant(answer.value);
  }

  HostObject& host;
};

class HostFactory final : public Counted<IClassFactory> {
 public:
  explicit HostFactory(IDispatch* object) : object(object) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** found) override {
    return Answer(wanted, IID_IClassFactory, found);
  }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID wanted, void** made) override {
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    return object->QueryInterface(wanted, made);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

 private:
  IDispatch* object;  // outlives every call: the registration holds it
};

}  // namespace

HostRegistration::HostRegistration(HostObject& host)
    : object(new HostDispatch(host)), factory(new HostFactory(object)) {
  const CLSID identifier = HostClass();
  // The active object first: a client that waits for it then finds the factory there too.
  registered =
      SUCCEEDED(CoRegisterClassObject(identifier, factory, CLSCTX_LOCAL_SERVER, REGCLS_MULTIPLEUSE,
                                      &classCookie)) &&
      SUCCEEDED(RegisterActiveObject(object, identifier, ACTIVEOBJECT_WEAK, &activeCookie));
}

HostRegistration::~HostRegistration() {
  if (activeCookie != 0) RevokeActiveObject(activeCookie, nullptr);
  if (classCookie != 0) CoRevokeClassObject(classCookie);
  // Clients in other processes may still hold references.
  CoDisconnectObject(object, 0);
  factory->Release();
  object->Release();
}

}  // namespace hexaplan
