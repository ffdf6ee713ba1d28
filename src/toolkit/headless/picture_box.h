// The headless picture box paints into memory, so that tests can look at its pixels.
#pragma once

#include <functional>

#include "toolkit/headless/canvas.h"
#include "toolkit/headless/control.h"
#include "toolkit/picture_box.h"

namespace declarium::headless {

class HeadlessPictureBox : public HeadlessControl<PictureBox> {
 public:
  // Puts an action into the toolkit's queue of pending events.
  using Post = std::function<void(std::function<void()>)>;

  HeadlessPictureBox(FocusOwner& owner, const ControlDefinition& definition, Post post);

  [[nodiscard]] Color BackColor() const override { return back_color_; }
  void SetBackColor(Color color) override;
  void Invalidate() override { must_paint_ = true; }
  void PostMouseDown() override;
  void Refresh() override;

  // What was painted last.
  [[nodiscard]] const PixelCanvas& Surface() const { return surface_; }
  // Paints when something waits to be painted.
  void PaintIfNeeded();

 private:
  Color back_color_;
  Post post_;
  bool must_paint_ = true;
  PixelCanvas surface_;
};

}  // namespace declarium::headless
