#include "search/ui/wait_window.h"

#include "text/user_texts.h"
#include "toolkit/picture_box.h"

namespace declarium {
namespace {

constexpr Rect kPicture = {14, 20, 32, 32};

constexpr ControlDefinition kWaitControls[] = {
    {.kind = ControlKind::kPictureBox, .name = "picEvent", .bounds = kPicture},
    {.kind = ControlKind::kLabel,
     .name = "Label1",
     .caption = texts::kWaitFreeing,
     .bounds = {60, 10, 226, 17}},
    {.kind = ControlKind::kLabel,
     .name = "Label2",
     .caption = texts::kWaitSeconds,
     .bounds = {60, 28, 226, 17}},
    {.kind = ControlKind::kLabel,
     .name = "Label3",
     .caption = texts::kWaitPlease,
     .bounds = {60, 46, 226, 17}},
};

constexpr FormDefinition kWaitForm = {.name = "frmWait",
                                      .caption = texts::kProgram,
                                      .size = {300, 74},
                                      .border = BorderStyle::kDialog,
                                      .start = StartPosition::kCentreOwner,
                                      .controls = kWaitControls};

}  // namespace

const FormDefinition& WaitWindowDefinition() {
  return kWaitForm;
}

void WaitWindow::MakeForm() {
  frmWait_ = toolkit_.CreateForm(kWaitForm);
  auto& picEvent = frmWait_->Get<PictureBox>("picEvent");
  picEvent.on_paint = [](Canvas& canvas) {
    canvas.DrawPicture({0, 0, kPicture.width, kPicture.height}, Icon::kFind);
  };
  picEvent.on_mouse_down = [this](const MouseEvent&) { frmWait_->Unload(); };
}

void WaitWindow::Show(Form* owner) {
  if (!frmWait_ || !frmWait_->IsLoaded()) MakeForm();
  frmWait_->Show(ShowMode::kModeless, owner);
  toolkit_.ProcessPendingEvents();
  if (frmWait_->IsLoaded()) frmWait_->Get<PictureBox>("picEvent").PostMouseDown();
}

}  // namespace declarium
