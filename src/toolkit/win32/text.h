// The native text box, and the colored display over the system's rich-text control.
#pragma once

#include "toolkit/rich_text.h"
#include "toolkit/text_box.h"
#include "toolkit/win32/control.h"

namespace declarium::win32 {

class Win32TextBox : public Win32Control<TextBox> {
 public:
  Win32TextBox(Win32Form& form, const ControlDefinition& definition);

  [[nodiscard]] std::u16string Text() const override { return WindowText(Handle()); }
  [[nodiscard]] int SelectionStart() const override;
  [[nodiscard]] int SelectionLength() const override;
  void Select(int start, int length) override;
  void OnCommand(int code) override;

 private:
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
  void TypeOver(std::u16string_view text) override;
  void ShowText(std::u16string_view text) override;

  bool showing_ = false;  // the native change notification is not the user's
};

class Win32RichText : public Win32Control<RichText> {
 public:
  Win32RichText(Win32Form& form, const ControlDefinition& definition);

  void SetVisible(bool visible) override;
  void Clear() override;
  void SetInsertionColor(Color color) override;
  void Insert(std::u16string_view text) override { pending_ += text; }
  void SetCaretToStart() override;
  [[nodiscard]] std::u16string Text() const override;
  [[nodiscard]] std::vector<ColoredRun> Runs() const override;
  void Refresh() override;

 private:
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
  void PaintBorder() const;
  // Takes the background from the user's color scheme, and the text's colors with it.
  void FollowColorScheme();
  // Writes the pieces that were inserted in one color at once.
  void Flush() const;
  [[nodiscard]] Color ColorAt(int position) const;

  mutable std::u16string pending_;
  mutable std::vector<ColoredRun> written_;  // in the colors that they were inserted in
  Color color_ = kBlack;
  Color background_ = kWhite;
};

}  // namespace declarium::win32
