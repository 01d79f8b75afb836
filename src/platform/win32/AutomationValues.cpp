#include "platform/win32/AutomationValues.h"

#include <new>

namespace quillmar::platform::win32 {
namespace {

struct VariantMaker {
  VARIANT& variant;

  void operator()(NoValue) const {
    variant.vt = VT_ERROR;
    variant.scode = DISP_E_PARAMNOTFOUND;
  }
  void operator()(int value) const {
    variant.vt = VT_I4;
    variant.lVal = value;
  }
  void operator()(std::int16_t value) const {
    variant.vt = VT_I2;
    variant.iVal = value;
  }
  void operator()(bool value) const {
    variant.vt = VT_BOOL;
    variant.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
  }
  void operator()(const std::string& value) const {
    const std::wstring text = Widen(value);
    variant.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    if (variant.bstrVal == nullptr) throw std::bad_alloc();
    variant.vt = VT_BSTR;
  }
};

VARTYPE VariantTypeOf(AutomationType type) {
  switch (type) {
    case AutomationType::Int:
      return VT_I4;
    case AutomationType::Short:
      return VT_I2;
    case AutomationType::Bool:
      return VT_BOOL;
    case AutomationType::Text:
      return VT_BSTR;
    case AutomationType::None:
      break;
  }
  return VT_EMPTY;
}

}  // namespace

std::wstring Widen(const std::string& text) {
  const auto size = static_cast<int>(text.size());
  const int length = MultiByteToWideChar(CP_ACP, 0, text.data(), size, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(CP_ACP, 0, text.data(), size, wide.data(), length);
  return wide;
}

std::string Narrow(const OLECHAR* text, std::size_t length) {
  const auto size = static_cast<int>(length);
  const int bytes = WideCharToMultiByte(CP_ACP, 0, text, size, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(bytes), '\0');
  WideCharToMultiByte(CP_ACP, 0, text, size, narrow.data(), bytes, nullptr, nullptr);
  return narrow;
}

std::string Narrow(BSTR text) { return Narrow(text, SysStringLen(text)); }

Variant ToVariant(const AutomationValue& value) {
  Variant variant;
  std::visit(VariantMaker{*variant.Get()}, value);
  return variant;
}

std::optional<AutomationValue> FromVariant(Variant& variant, AutomationType type) {
  if (type == AutomationType::None) return AutomationValue{};
  VARIANT& value = *variant.Get();
  // The neutral locale: how a text is read as a number must not depend on the user's settings.
  if (FAILED(VariantChangeTypeEx(&value, &value, LOCALE_INVARIANT, 0, VariantTypeOf(type)))) {
    return std::nullopt;
  }
  switch (type) {
    case AutomationType::Int:
      return AutomationValue(static_cast<int>(value.lVal));
    case AutomationType::Short:
      return AutomationValue(static_cast<std::int16_t>(value.iVal));
    case AutomationType::Bool:
      return AutomationValue(value.boolVal != VARIANT_FALSE);
    default:
      return AutomationValue(Narrow(value.bstrVal));
  }
}

}  // namespace quillmar::platform::win32
