// Ownership of the system's component objects and their texts, for Windows.
#ifndef ZELVREG_KEYS_COM_SUPPORT_H
#define ZELVREG_KEYS_COM_SUPPORT_H

#include <windows.h>

// These two need the one before.
#include <oleauto.h>
#include <unknwn.h>

#include <memory>
#include <string>
#include <string_view>

namespace zelvreg {

struct ReleaseObject {
  void operator()(IUnknown* object) const { object->Release(); }
};
template <class Interface>
using ComPointer = std::unique_ptr<Interface, ReleaseObject>;

// A text of the component system.
class ComText {
 public:
  explicit ComText(std::wstring_view text)
      : text(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {}
  ComText(const ComText&) = delete;
  ComText& operator=(const ComText&) = delete;
  ~ComText() { SysFreeString(text); }
  [[nodiscard]] BSTR get() const { return text; }

 private:
  BSTR text;
};

// A value of the component system.
class ComVariant {
 public:
  ComVariant() { VariantInit(&value); }
  explicit ComVariant(LONG number) : ComVariant() {
    value.vt = VT_I4;
    value.lVal = number;
  }
  explicit ComVariant(std::wstring_view text) : ComVariant() {
    value.vt = VT_BSTR;
    value.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  }
  ComVariant(const ComVariant&) = delete;
  ComVariant& operator=(const ComVariant&) = delete;
  ~ComVariant() { VariantClear(&value); }
  [[nodiscard]] VARIANT* get() { return &value; }
  [[nodiscard]] const VARIANT& operator*() const { return value; }

 private:
  VARIANT value{};
};

std::wstring comText(std::string_view text);
std::string textOf(const BSTR& text);

}  // namespace zelvreg

#endif
