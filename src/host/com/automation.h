// Automation values: owned strings and variants.
#pragma once

#include <string>
#include <string_view>
#include <windows.h>
#include <oleauto.h>

#include "win32/com_ptr.h"

namespace declarium::com {

using win32::ComPtr;

// The characters of a BSTR, which may be null.
[[nodiscard]] std::u16string TextOf(BSTR text);

class Variant {
 public:
  Variant() { VariantInit(&value_); }
  explicit Variant(std::int32_t number);
  explicit Variant(std::u16string_view text);
  explicit Variant(IDispatch* object);
  Variant(const Variant& other);
  Variant(Variant&& other) noexcept : value_(other.value_) { VariantInit(&other.value_); }
  Variant& operator=(Variant other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }
  ~Variant() { VariantClear(&value_); }

  [[nodiscard]] static Variant Boolean(bool truth);

  // An argument that is left out.
  [[nodiscard]] static Variant Missing();

  // A copy of the value, or of what it refers to; empty when it cannot be copied.
  [[nodiscard]] static Variant Dereferenced(const VARIANT& value);

  [[nodiscard]] const VARIANT& Get() const noexcept { return value_; }
  // For functions that only read the value and take it without const.
  [[nodiscard]] VARIANT* Borrow() const noexcept { return const_cast<VARIANT*>(&value_); }
  // For functions that return a value through a pointer; a held value is cleared first.
  [[nodiscard]] VARIANT* Receive() noexcept {
    VariantClear(&value_);
    return &value_;
  }

  // The value as another type; DISP_E_TYPEMISMATCH and the like when it has none. Empty, a truth
  // value, a date and a text are no number.
  [[nodiscard]] HRESULT ToNumber(std::int32_t& number) const;
  [[nodiscard]] HRESULT ToText(std::u16string& text) const;
  // Null for Nothing and for a value that is no object.
  [[nodiscard]] ComPtr<IDispatch> ToObject() const;

 private:
  VARIANT value_;
};

}  // namespace declarium::com
