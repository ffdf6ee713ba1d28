// The editor as a COM object, for the program.
#pragma once

#include <optional>

#include "host/com/com_object.h"
#include "vba/editor.h"

namespace declarium::vba {

class EditorObject final : public com::DispatchObject<IDispatch> {
 public:
  explicit EditorObject(com::HostObject application) : editor_(std::move(application)) {}

  // Gives everything of the editor back; from now on every call fails with CO_E_OBJNOTCONNECTED.
  void Leave() noexcept;

  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) noexcept override {
    return DISP_E_UNKNOWNNAME;
  }
  // A failure comes with the editor's own words.
  STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT*) noexcept override;

 private:
  [[nodiscard]] void* Find(REFIID iid) noexcept override;
  [[nodiscard]] HostResult<com::Variant> Answer(DISPID member, const DISPPARAMS& parameters);

  std::optional<Editor> editor_;
  int answering_ = 0;
  bool left_ = false;
};

}  // namespace declarium::vba
