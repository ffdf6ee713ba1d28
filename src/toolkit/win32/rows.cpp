#include "toolkit/win32/rows.h"

#include "toolkit/win32/scale.h"

namespace declarium::win32 {

namespace {

constexpr int kComboBorders = 6;  // around the closed combo box's text, in physical pixels

}  // namespace

std::u16string RowWindow::Text(int row) const {
  const int length = row < 0 ? LB_ERR : Send(messages_.get_text_length, row);
  if (length < 0) return {};
  std::u16string text(static_cast<std::size_t>(length), u'\0');
  Send(messages_.get_text, row, reinterpret_cast<LPARAM>(text.data()));
  return text;
}

void RowWindow::Add(std::u16string_view text) {
  const std::u16string terminated(text);
  Send(messages_.add, 0, TextParameter(terminated));
}

// Straight to the control's own procedure: sending each message would take a large part of the
// time of long lists, and a widget has nothing to do when a row is added.
void RowWindow::Add(std::span<const std::u16string_view> rows) {
  const auto control = reinterpret_cast<WNDPROC>(GetClassLongPtrW(window_, GCLP_WNDPROC));
  std::size_t units = 0;
  for (const std::u16string_view row : rows) units += row.size() + 1;
  SendMessageW(window_, WM_SETREDRAW, FALSE, 0);
  Send(messages_.reserve, static_cast<int>(rows.size()),
       static_cast<LPARAM>(units * sizeof(char16_t)));
  std::u16string terminated;
  for (const std::u16string_view row : rows) {
    terminated = row;
    CallWindowProcW(control, window_, messages_.add, 0, TextParameter(terminated));
  }
  SendMessageW(window_, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(window_, nullptr, TRUE);
}

int RowWindow::Find(const std::u16string& text) const {
  // The native search ignores case and goes around the end.
  int previous = -1;
  while (true) {
    const int row = Send(messages_.find, previous, TextParameter(text));
    if (row <= previous) return -1;
    if (Text(row) == text) return row;
    previous = row;
  }
}

Win32ListBox::Win32ListBox(Win32Form& form, const ControlDefinition& definition)
    : Win32Rows(form, definition,
                {L"LISTBOX", WS_VSCROLL | WS_CLIPSIBLINGS | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT,
                 WS_EX_CLIENTEDGE},
                kListBoxMessages) {}

Win32ComboBox::Win32ComboBox(Win32Form& form, const ControlDefinition& definition)
    : Win32Rows(form, definition, {L"COMBOBOX", WS_VSCROLL | WS_CLIPSIBLINGS | CBS_DROPDOWNLIST},
                kComboBoxMessages) {
  FitHeight();
}

void Win32ComboBox::OnResolutionChanged() {
  Win32Rows::OnResolutionChanged();
  FitHeight();
}

void Win32ComboBox::FitHeight() {
  const int height = ToPhysical(PlacedAt().height, Dpi()) - kComboBorders;
  Send(CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), height);
}

}  // namespace declarium::win32
