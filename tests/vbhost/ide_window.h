// The stand-in IDE's own window: a toolbar with the controls of "Standard", a menu with those of
// "Add-Ins" and the code of the active component. Buttons and entries can be clicked.
#pragma once

#include <functional>
#include <windows.h>

#include "vbhost/ide.h"

namespace declarium::vbhost {

class IdeWindow {
 public:
  // `clicked` is called for clicks; `run_posted` for each WM_APP message that arrives.
  IdeWindow(Ide& ide, std::function<void(std::shared_ptr<Control>)> clicked,
            std::function<void()> run_posted);
  IdeWindow(const IdeWindow&) = delete;
  IdeWindow& operator=(const IdeWindow&) = delete;
  ~IdeWindow();

  [[nodiscard]] HWND handle() const noexcept { return window_; }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wide, LPARAM last);
  bool Handle(UINT message, WPARAM wide, LPARAM last);
  void Paint();
  void PaintCode(HDC device);
  void RebuildMenu();
  [[nodiscard]] Bar* BarNamed(std::u16string_view name) const;

  Ide& ide_;
  std::function<void(std::shared_ptr<Control>)> clicked_;
  std::function<void()> run_posted_;
  HWND window_ = nullptr;
  HMENU add_ins_menu_ = nullptr;
};

}  // namespace declarium::vbhost
