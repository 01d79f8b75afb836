// The strict host of the Windows target: a local automation server in a process of its own.
#include <windows.h>
// After windows.h.
#include <oleauto.h>

#include <string>

#include "host/HostBrain.h"
#include "quillmar/CalculationHost.h"

namespace {

using quillmar::platform::AutomationArguments;
using quillmar::platform::AutomationValue;
using quillmar::strict::HostBrain;

BSTR ToBstr(const std::string& text) {
  const int size = static_cast<int>(text.size());
  const int length = MultiByteToWideChar(CP_ACP, 0, text.data(), size, nullptr, 0);
  const BSTR wide = SysAllocStringLen(nullptr, static_cast<UINT>(length));
  MultiByteToWideChar(CP_ACP, 0, text.data(), size, wide, length);
  return wide;
}

std::string FromWide(const wchar_t* wide, int length) {
  const int size = WideCharToMultiByte(CP_ACP, 0, wide, length, nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_ACP, 0, wide, length, text.data(), size, nullptr, nullptr);
  return text;
}

AutomationValue FromVariant(const VARIANTARG& variant) {
  switch (V_VT(&variant)) {
    case VT_I4:
      return static_cast<int>(V_I4(&variant));
    case VT_I2:
      return V_I2(&variant);
    case VT_BOOL:
      return V_BOOL(&variant) != VARIANT_FALSE;
    case VT_BSTR:
      return FromWide(V_BSTR(&variant), static_cast<int>(SysStringLen(V_BSTR(&variant))));
    default:
      return {};
  }
}

struct ToVariant {
  VARIANT* out;
  void operator()(quillmar::platform::NoValue) const { V_VT(out) = VT_EMPTY; }
  void operator()(int value) const {
    V_VT(out) = VT_I4;
    V_I4(out) = value;
  }
  void operator()(std::int16_t value) const {
    V_VT(out) = VT_I2;
    V_I2(out) = value;
  }
  void operator()(bool value) const {
    V_VT(out) = VT_BOOL;
    V_BOOL(out) = value ? VARIANT_TRUE : VARIANT_FALSE;
  }
  void operator()(const std::string& value) const {
    V_VT(out) = VT_BSTR;
    V_BSTR(out) = ToBstr(value);
  }
};

// The one object of the program, alive as long as the program.
class Server final : public IDispatch {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** out) override {
    if (out == nullptr) return E_POINTER;
    const bool known = IsEqualIID(wanted, IID_IUnknown) || IsEqualIID(wanted, IID_IDispatch);
    *out = known ? static_cast<IDispatch*>(this) : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                          DISPID* identifiers) override {
    if (count != 1) return DISP_E_UNKNOWNNAME;
    const auto found = brain.FindMember(FromWide(names[0], static_cast<int>(wcslen(names[0]))));
    identifiers[0] = found ? *found : DISPID_UNKNOWN;
    return found ? S_OK : DISP_E_UNKNOWNNAME;
  }

  HRESULT STDMETHODCALLTYPE Invoke(DISPID identifier, REFIID, LCID, WORD, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* exception, UINT*) override {
    // Arguments arrive last one first.
    AutomationArguments arguments;
    for (UINT i = parameters->cArgs; i > 0; --i) {
      arguments.push_back(FromVariant(parameters->rgvarg[i - 1]));
    }
    const HostBrain::Reply reply = brain.Call(static_cast<int>(identifier), arguments);
    switch (reply.outcome) {
      case HostBrain::Outcome::Done:
        if (result != nullptr) std::visit(ToVariant{result}, reply.value);
        return S_OK;
      case HostBrain::Outcome::Raised:
        if (exception != nullptr) {
          *exception = {};
          exception->wCode = 1000;
          exception->bstrSource = ToBstr(QM_HOST_PROGRAM);
          exception->bstrDescription = ToBstr(reply.description);
        }
        return DISP_E_EXCEPTION;
      case HostBrain::Outcome::UnknownMember:
        return DISP_E_MEMBERNOTFOUND;
      case HostBrain::Outcome::Failed:
        return DISP_E_TYPEMISMATCH;
      case HostBrain::Outcome::Dies:
        TerminateProcess(GetCurrentProcess(), 1);
        break;
      case HostBrain::Outcome::Ends:
        PostQuitMessage(0);
        return S_OK;
    }
    return E_FAIL;
  }

 private:
  static HWND WindowOf(std::uint32_t number) {
    return reinterpret_cast<HWND>(static_cast<std::uintptr_t>(number));
  }

  // The caller waits for the call and takes messages of other programs meanwhile.
  static bool Refused(std::uint32_t window, int identifier) {
    constexpr UINT kPatience = 60000;  // milliseconds
    DWORD_PTR answer = 0;
    return window != 0 &&
           SendMessageTimeoutA(WindowOf(window), quillmar::strict::kHostAsksMessage,
                               static_cast<WPARAM>(identifier), 0, SMTO_NORMAL, kPatience,
                               &answer) != 0 &&
           answer != 0;
  }

  HostBrain brain{[](std::uint32_t window) {
                    return PostMessageA(WindowOf(window),
                                        RegisterWindowMessageA(QM_MESSAGE_CALLBACK), 0, 0) != FALSE;
                  },
                  &Refused};
};

class Factory final : public IClassFactory {
 public:
  explicit Factory(Server& server) : server(server) {}
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** out) override {
    if (out == nullptr) return E_POINTER;
    const bool known = IsEqualIID(wanted, IID_IUnknown) || IsEqualIID(wanted, IID_IClassFactory);
    *out = known ? static_cast<IClassFactory*>(this) : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID wanted, void** out) override {
    return outer != nullptr ? CLASS_E_NOAGGREGATION : server.QueryInterface(wanted, out);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

 private:
  Server& server;
};

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, char*, int) {
  CLSID classId;
  if (FAILED(CoInitialize(nullptr)) || FAILED(CLSIDFromString(L"" QM_HOST_CLASS_ID, &classId))) {
    return 1;
  }
  Server server;
  Factory factory(server);
  DWORD registeredClass = 0;
  DWORD registeredObject = 0;
  if (FAILED(CoRegisterClassObject(classId, &factory, CLSCTX_LOCAL_SERVER, REGCLS_MULTIPLEUSE,
                                   &registeredClass)) ||
      FAILED(RegisterActiveObject(&server, classId, ACTIVEOBJECT_WEAK, &registeredObject))) {
    return 2;
  }
  MSG message;
  while (GetMessageA(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
  RevokeActiveObject(registeredObject, nullptr);
  CoRevokeClassObject(registeredClass);
  CoUninitialize();
  return 0;
}
