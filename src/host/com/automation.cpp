#include "host/com/automation.h"

#include <algorithm>
#include <iterator>
#include <new>

#include "win32/wide.h"

namespace declarium::com {

std::u16string TextOf(BSTR text) {
  return text ? win32::FromWide({text, SysStringLen(text)}) : std::u16string();
}

Variant::Variant(std::int32_t number) : Variant() {
  value_.vt = VT_I4;
  value_.lVal = number;
}

Variant::Variant(std::u16string_view text) : Variant() {
  value_.bstrVal =
      SysAllocStringLen(win32::WideString(text).data(), static_cast<UINT>(text.size()));
  if (!value_.bstrVal) throw std::bad_alloc();
  value_.vt = VT_BSTR;
}

Variant::Variant(IDispatch* object) : Variant() {
  value_.vt = VT_DISPATCH;
  value_.pdispVal = object;
  if (object) object->AddRef();
}

Variant::Variant(const Variant& other) : Variant() {
  if (FAILED(VariantCopy(&value_, other.Borrow()))) throw std::bad_alloc();
}

Variant Variant::Boolean(bool truth) {
  Variant boolean;
  boolean.value_.vt = VT_BOOL;
  boolean.value_.boolVal = truth ? VARIANT_TRUE : VARIANT_FALSE;
  return boolean;
}

Variant Variant::Missing() {
  Variant missing;
  missing.value_.vt = VT_ERROR;
  missing.value_.scode = DISP_E_PARAMNOTFOUND;
  return missing;
}

Variant Variant::Dereferenced(const VARIANT& value) {
  Variant copy;
  VariantCopyInd(&copy.value_, const_cast<VARIANT*>(&value));
  return copy;
}

namespace {

bool IsNumber(VARTYPE type) {
  static constexpr VARTYPE kNumbers[] = {VT_I1,  VT_I2,  VT_I4,  VT_I8,     VT_INT,
                                         VT_UI1, VT_UI2, VT_UI4, VT_UI8,    VT_UINT,
                                         VT_R4,  VT_R8,  VT_CY,  VT_DECIMAL};
  return std::ranges::find(kNumbers, type) != std::end(kNumbers);
}

}  // namespace

HRESULT Variant::ToNumber(std::int32_t& number) const {
  if (!IsNumber(value_.vt)) return DISP_E_TYPEMISMATCH;
  Variant changed;
  const HRESULT result = VariantChangeType(&changed.value_, Borrow(), 0, VT_I4);
  if (SUCCEEDED(result)) number = changed.value_.lVal;
  return result;
}

HRESULT Variant::ToText(std::u16string& text) const {
  Variant changed;
  const HRESULT result = VariantChangeType(&changed.value_, Borrow(), 0, VT_BSTR);
  if (SUCCEEDED(result)) text = TextOf(changed.value_.bstrVal);
  return result;
}

ComPtr<IDispatch> Variant::ToObject() const {
  if (value_.vt == VT_DISPATCH) return ComPtr<IDispatch>(value_.pdispVal);
  if (value_.vt == VT_UNKNOWN)
    return ComPtr<IUnknown>(value_.punkVal).Query<IDispatch>(IID_IDispatch);
  return {};
}

}  // namespace declarium::com
