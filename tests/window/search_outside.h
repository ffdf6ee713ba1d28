// The search dialog of a running Declarium.exe, beside its main window.
#pragma once

#include <string>
#include <string_view>

#include "shell/settings.h"
#include "window/outside_fixture.h"

namespace declarium {

class SearchOutside : public OutsideTest {
 protected:
  SearchOutside() { Put("win.api", WinLibrary()); }

  void Open() {
    StartAndShow(L"win.api");
    OpenDialog();
  }
  void OpenDialog() {
    ClickToolbar("find");
    find_ = Program().Form("frmFind");
  }
  void CloseDialog() const {
    window_driver::PressButton(In("Command1"));
    window_driver::WaitFor("the dialog's end",
                           [this] { return Program().FindForm("frmFind") == nullptr; });
  }
  [[nodiscard]] HWND Find() const { return find_; }
  [[nodiscard]] HWND In(std::string_view name) const {
    return window_driver::FindControl(find_, name);
  }
  void Search() const { window_driver::PressButton(In("Command2")); }
  [[nodiscard]] bool ResultsBecome(const Rows& rows) const {
    return window_driver::Eventually([&] { return window_driver::Entries(In("LV1")) == rows; });
  }
  // One digit per check box.
  [[nodiscard]] std::string Boxes() const {
    std::string boxes;
    for (int i = 1; i <= 10; ++i) {
      boxes += std::to_string(window_driver::Ask(In("Check" + std::to_string(i)), BM_GETCHECK));
    }
    return boxes;
  }
  [[nodiscard]] std::u16string Stored() const {
    return ReadSetting(store_, setting::kFindCheckBox);
  }

 private:
  HWND find_ = nullptr;
};

}  // namespace declarium
