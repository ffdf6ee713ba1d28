// Native list boxes and combo boxes.
#pragma once

#include "toolkit/row_list.h"
#include "toolkit/win32/control.h"

namespace declarium::win32 {

// The messages by which the two native controls do the same things.
struct RowMessages {
  UINT count, add, clear, get_selection, set_selection, get_text, get_text_length, find, reserve;
  int chosen;  // notification code
};

inline constexpr RowMessages kListBoxMessages{
    LB_GETCOUNT, LB_ADDSTRING,  LB_RESETCONTENT,    LB_GETCURSEL,   LB_SETCURSEL,
    LB_GETTEXT,  LB_GETTEXTLEN, LB_FINDSTRINGEXACT, LB_INITSTORAGE, LBN_SELCHANGE};
inline constexpr RowMessages kComboBoxMessages{
    CB_GETCOUNT,  CB_ADDSTRING,    CB_RESETCONTENT,    CB_GETCURSEL,   CB_SETCURSEL,
    CB_GETLBTEXT, CB_GETLBTEXTLEN, CB_FINDSTRINGEXACT, CB_INITSTORAGE, CBN_SELCHANGE};

// Speaks the messages with one native window.
class RowWindow {
 public:
  RowWindow(const RowMessages& messages, HWND window) : messages_(messages), window_(window) {}

  [[nodiscard]] int Count() const { return Send(messages_.count); }
  [[nodiscard]] std::u16string Text(int row) const;
  void Add(std::u16string_view text);
  void Add(std::span<const std::u16string_view> rows);
  void Clear() { Send(messages_.clear); }
  [[nodiscard]] int Selection() const { return Send(messages_.get_selection); }
  void Select(int row) { Send(messages_.set_selection, row); }
  [[nodiscard]] int Find(const std::u16string& text) const;
  [[nodiscard]] int ChosenCode() const { return messages_.chosen; }

 private:
  int Send(UINT message, int wparam = 0, LPARAM lparam = 0) const {
    return static_cast<int>(SendMessageW(window_, message, static_cast<WPARAM>(wparam), lparam));
  }

  const RowMessages& messages_;
  HWND window_;
};

template <class Base>
class Win32Rows : public Win32Control<Base> {
 public:
  Win32Rows(Win32Form& form, const ControlDefinition& definition, const NativeClass& native,
            const RowMessages& messages)
      : Win32Control<Base>(form, definition, native), window_(messages, this->Handle()) {
    for (const std::u16string_view row : definition.rows) window_.Add(row);
  }

  [[nodiscard]] int RowCount() const override { return window_.Count(); }
  [[nodiscard]] std::u16string Row(int row) const override { return window_.Text(row); }
  void AddRow(std::u16string_view text) override { window_.Add(text); }
  void AddRows(std::span<const std::u16string_view> rows) override { window_.Add(rows); }
  void Clear() override { window_.Clear(); }
  [[nodiscard]] int ListIndex() const override { return window_.Selection(); }
  void OnCommand(int code) override {
    if (code == window_.ChosenCode()) this->on_click.Raise();
  }

 private:
  void ShowSelection(int row) override { window_.Select(row); }
  [[nodiscard]] int FindRow(std::u16string_view text) const override {
    return window_.Find(std::u16string(text));
  }

  RowWindow window_;
};

class Win32ListBox : public Win32Rows<ListBox> {
 public:
  Win32ListBox(Win32Form& form, const ControlDefinition& definition);
};

class Win32ComboBox : public Win32Rows<ComboBox> {
 public:
  Win32ComboBox(Win32Form& form, const ControlDefinition& definition);
  void OnResolutionChanged() override;

 private:
  void FitHeight();
};

}  // namespace declarium::win32
