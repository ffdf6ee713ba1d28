// A picture box: a window of our own class, painted through a bitmap.
#pragma once

#include "toolkit/picture_box.h"
#include "toolkit/win32/control.h"
#include "toolkit/win32/fonts.h"

namespace declarium::win32 {

class DeviceCanvas : public Canvas {
 public:
  DeviceCanvas(HDC device, Size extent, int dpi, const Fonts& fonts)
      : device_(device), extent_(extent), dpi_(dpi), fonts_(fonts) {}

  [[nodiscard]] Size Extent() const override { return extent_; }
  void Fill(const Rect& area, Color color) override;
  void Invert(const Rect& area) override;
  void WriteText(const Rect& area, std::u16string_view text, FontRole font, Color color,
                 Alignment alignment) override;
  void DrawPicture(const Rect& area, Icon icon) override;

 private:
  HDC device_;
  Size extent_;
  int dpi_;
  const Fonts& fonts_;
};

class Win32PictureBox : public Win32Control<PictureBox> {
 public:
  Win32PictureBox(Win32Form& form, const ControlDefinition& definition);

  [[nodiscard]] Color BackColor() const override { return back_color_; }
  void SetBackColor(Color color) override;
  void Invalidate() override { InvalidateRect(Handle(), nullptr, FALSE); }
  void PostMouseDown() override;

 private:
  [[nodiscard]] bool IsInput(UINT message) const override;
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
  void Paint();
  void CaptureWhileHeld() const;

  Color back_color_;
};

}  // namespace declarium::win32
