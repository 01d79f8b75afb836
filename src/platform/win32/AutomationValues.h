// Values of automation calls and their COM forms.
#pragma once

#include <string>

#include "platform/Automation.h"
#include "platform/win32/Win32.h"

#include <oleauto.h>

namespace quillmar::platform::win32 {

// A variant that frees what it holds.
class Variant {
 public:
  Variant() { VariantInit(&variant); }
  ~Variant() { VariantClear(&variant); }
  Variant(Variant&& other) noexcept : variant(other.variant) { VariantInit(&other.variant); }
  Variant& operator=(Variant&&) = delete;

  VARIANT* Get() { return &variant; }

 private:
  VARIANT variant;
};

// Texts change between the system code page and COM's; NULs inside are kept.
std::wstring Widen(const std::string& text);
std::string Narrow(const OLECHAR* text, std::size_t length);
std::string Narrow(BSTR text);  // null is an empty text

// The argument's COM form. No value stands for an argument that was left out.
Variant ToVariant(const AutomationValue& value);

// Converts `variant` in place to the type and gives its value; nothing when it cannot be
// converted.
std::optional<AutomationValue> FromVariant(Variant& variant, AutomationType type);

}  // namespace quillmar::platform::win32
