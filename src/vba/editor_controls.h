// The button on the editor's standard toolbar and the entry in its menu.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "host/com/host_calls.h"
#include "host/host_object_model.h"
#include "toolkit/boundary.h"

namespace declarium::vba {

class EditorControls {
 public:
  // Places them; `clicked` is called for clicks on either. What an editor that crashed kept of
  // earlier ones is removed first. A control that cannot be placed, or whose clicks cannot be
  // heard, is left out; one whose picture is refused shows its caption.
  EditorControls(const com::HostObject& application, Boundary& boundary,
                 const std::function<void()>& clicked);
  EditorControls(const EditorControls&) = delete;
  EditorControls& operator=(const EditorControls&) = delete;
  ~EditorControls() { Remove(); }

  // Ends the clicks and removes the controls. Calling it again does nothing.
  void Remove();

 private:
  struct Placed {
    com::HostObject control;
    std::unique_ptr<Subscription> clicks;
  };

  std::vector<Placed> placed_;
};

}  // namespace declarium::vba
