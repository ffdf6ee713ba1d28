#include "toolkit/win32/toolbar.h"

#include <stdexcept>

#include "toolkit/win32/scale.h"

namespace declarium::win32 {

Win32Toolbar::Win32Toolbar(Win32Form& form, const ControlDefinition& definition)
    : Win32Control(form, definition,
                   {TOOLBARCLASSNAMEW, WS_CLIPSIBLINGS | TBSTYLE_FLAT | TBSTYLE_TOOLTIPS |
                                           CCS_NORESIZE | CCS_NODIVIDER | CCS_NOPARENTALIGN}),
      buttons_(definition.buttons),
      keys_(*this, definition.buttons) {
  Send(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON));
  LoadPictures();
  AddButtons();
}

void Win32Toolbar::LoadPictures() {
  const int size = SmallIconSize(Dpi());
  UniqueImageList disabled = DrawImageList(size, Look::kDisabled);
  Send(TB_SETBITMAPSIZE, 0, MAKELPARAM(size, size));
  Send(TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(TheForm().SmallPictures()));
  Send(TB_SETDISABLEDIMAGELIST, 0, reinterpret_cast<LPARAM>(disabled.Get()));
  const int side = ToPhysical(24, Dpi());
  Send(TB_SETBUTTONSIZE, 0, MAKELPARAM(side, side));
  disabled_ = std::move(disabled);
}

void Win32Toolbar::AddButtons() {
  std::vector<TBBUTTON> natives;
  for (const ToolbarButtonDefinition& button : buttons_) {
    TBBUTTON& native = natives.emplace_back();
    native.idCommand = static_cast<int>(natives.size()) - 1;
    const bool gap = button.key.empty();
    native.fsStyle = gap ? BTNS_SEP : BTNS_BUTTON;
    native.iBitmap = gap ? 0 : static_cast<int>(button.icon);
    native.fsState = button.enabled ? TBSTATE_ENABLED : 0;
    tips_.emplace_back(button.tooltip);
  }
  Send(TB_ADDBUTTONSW, natives.size(), reinterpret_cast<LPARAM>(natives.data()));
}

void Win32Toolbar::OnResolutionChanged() {
  LoadPictures();
  Win32Control::OnResolutionChanged();
}

int Win32Toolbar::IdOf(std::string_view key) const {
  for (std::size_t id = 0; id < buttons_.size(); ++id) {
    if (!key.empty() && buttons_[id].key == key) return static_cast<int>(id);
  }
  throw std::logic_error(Name() + " has no button " + std::string(key));
}

bool Win32Toolbar::ButtonEnabled(std::string_view key) const {
  return Send(TB_ISBUTTONENABLED, static_cast<WPARAM>(IdOf(key))) != 0;
}

void Win32Toolbar::SetButtonEnabled(std::string_view key, bool enabled) {
  Send(TB_ENABLEBUTTON, static_cast<WPARAM>(IdOf(key)), MAKELPARAM(enabled, 0));
  ShowCurrentButton();
}

void Win32Toolbar::ShowCurrentButton() const {
  if (GetFocus() == Handle()) Send(TB_SETHOTITEM, static_cast<WPARAM>(keys_.Current()));
}

// The keys are not left to the native control, which does not do the same in all versions.
std::optional<LRESULT> Win32Toolbar::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  const auto answer = Win32Control::OnMessage(message, wparam, lparam);
  switch (message) {
    case WM_GETDLGCODE:
      return DLGC_WANTARROWS | DLGC_WANTCHARS;
    case WM_SETFOCUS:
      ShowCurrentButton();
      return answer;
    case WM_KILLFOCUS:
      Send(TB_SETHOTITEM, static_cast<WPARAM>(-1));
      return answer;
    case WM_MOUSELEAVE: {
      const LRESULT result = PassOn(message, wparam, lparam);
      ShowCurrentButton();
      return result;
    }
    case WM_CHAR:  // of a key that has done its work
      return 0;
    case WM_KEYDOWN:
      if (answer || !keys_.Press(static_cast<int>(wparam))) return answer;
      ShowCurrentButton();
      return 0;
    default:
      return answer;
  }
}

void Win32Toolbar::OnButton(int id) {
  if (id < 0 || id >= static_cast<int>(buttons_.size())) return;
  on_button_click.Raise(buttons_[static_cast<std::size_t>(id)].key);
}

std::optional<LRESULT> Win32Toolbar::OnNotify(NMHDR& header) {
  if (header.code != TBN_GETINFOTIPW) return std::nullopt;
  auto& info = reinterpret_cast<NMTBGETINFOTIPW&>(header);
  if (info.iItem >= 0 && info.iItem < static_cast<int>(tips_.size())) {
    lstrcpynW(info.pszText, Wide(tips_[static_cast<std::size_t>(info.iItem)]), info.cchTextMax);
  }
  return 0;
}

}  // namespace declarium::win32
