#include "shell/ui/splash.h"

#include "text/user_texts.h"
#include "toolkit/picture_box.h"
#include "toolkit/timer.h"

namespace declarium {

namespace {

constexpr Size kSize{420, 180};
constexpr int kShownMilliseconds = 2000;

constexpr ControlDefinition kSplashControls[] = {
    {.kind = ControlKind::kPictureBox,
     .name = "picSplash",
     .bounds = {0, 0, kSize.width, kSize.height},
     .accessible_name = texts::kProgram,
     .tab_stop = TabStop::kYes,
     .back_color = kWindowColor},
    {.kind = ControlKind::kTimer, .name = "tmrUnload", .interval = kShownMilliseconds}};

constexpr FormDefinition kSplashForm = {.name = "frmSplash",
                                        .caption = texts::kProgram,
                                        .size = kSize,
                                        .border = BorderStyle::kNone,
                                        .start = StartPosition::kCentreScreen,
                                        .controls = kSplashControls};

void FrameEdge(Canvas& canvas) {
  const auto [width, height] = canvas.Extent();
  canvas.Fill({0, 0, width, 1}, kGrayTextColor);
  canvas.Fill({0, height - 1, width, 1}, kGrayTextColor);
  canvas.Fill({0, 0, 1, height}, kGrayTextColor);
  canvas.Fill({width - 1, 0, 1, height}, kGrayTextColor);
}

void Paint(Canvas& canvas) {
  constexpr int kTextLeft = 140;
  constexpr int kTextWidth = kSize.width - kTextLeft - 16;
  FrameEdge(canvas);
  canvas.DrawPicture({28, 42, 96, 96}, Icon::kApplication);
  canvas.WriteText({kTextLeft, 40, kTextWidth, 40}, texts::kProgram, FontRole::kHeading,
                   kWindowTextColor, Alignment::kLeft);
  canvas.Fill({kTextLeft, 84, kTextWidth, 2}, kHighlightColor);
  canvas.WriteText({kTextLeft, 92, kTextWidth, 20}, texts::kSplashLine, FontRole::kText,
                   kWindowTextColor, Alignment::kLeft);
  canvas.WriteText({kTextLeft, 114, kTextWidth, 20}, texts::kSplashVersion, FontRole::kText,
                   kWindowTextColor, Alignment::kLeft);
}

}  // namespace

const FormDefinition& SplashFormDefinition() {
  return kSplashForm;
}

Splash::Splash(Toolkit& toolkit) : form_(toolkit.CreateForm(kSplashForm)) {
  auto& timer = form_->Get<Timer>("tmrUnload");
  auto& picture = form_->Get<PictureBox>("picSplash");
  timer.on_timer = [this] { form_->Unload(); };
  picture.on_paint = Paint;
  picture.on_mouse_down = [this](const MouseEvent&) { form_->Unload(); };
  picture.on_key_down = [this](KeyDown&) { form_->Unload(); };
  form_->on_unload = [&timer](bool&) { timer.SetEnabled(false); };
}

void Splash::Show() {
  form_->SetTopmost();
  form_->Show();
}

}  // namespace declarium
