#include "vba/editor_object.h"

#include <vector>

#include "win32/wide.h"

namespace declarium::vba {

void* EditorObject::Find(REFIID iid) noexcept {
  const bool has = iid == IID_IUnknown || iid == IID_IDispatch;
  return has ? static_cast<IDispatch*>(this) : nullptr;
}

void EditorObject::Leave() noexcept {
  left_ = true;
  // The editor may end the connection from within a call that it answers.
  if (answering_ == 0) editor_.reset();
}

HostResult<com::Variant> EditorObject::Answer(DISPID member, const DISPPARAMS& parameters) {
  if (left_) {
    return std::unexpected(HostError{static_cast<std::int32_t>(CO_E_OBJNOTCONNECTED)});
  }
  std::vector<com::Variant> arguments;
  for (UINT i = parameters.cArgs; i > 0; --i) {
    arguments.push_back(com::Variant::Dereferenced(parameters.rgvarg[i - 1]));
  }
  ++answering_;
  auto answer = editor_->Answer(member, arguments);
  if (--answering_ == 0 && left_) editor_.reset();
  return answer;
}

STDMETHODIMP EditorObject::Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* parameters,
                                  VARIANT* result, EXCEPINFO* exception, UINT*) noexcept {
  if (!parameters) return E_POINTER;
  try {
    const win32::ComPtr<EditorObject> self(this);
    const auto answer = Answer(member, *parameters);
    if (answer) return result ? VariantCopy(result, answer->Borrow()) : S_OK;
    const auto& error = answer.error();
    if (!exception || error.description.empty()) return error.code;
    exception->scode = error.code;
    exception->bstrDescription = SysAllocString(win32::WideString(error.description).c_str());
    return DISP_E_EXCEPTION;
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace declarium::vba
