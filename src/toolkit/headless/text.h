// Text boxes and the colored display of the headless backend.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "toolkit/headless/control.h"
#include "toolkit/rich_text.h"
#include "toolkit/text_box.h"

namespace declarium::headless {

class HeadlessTextBox : public HeadlessControl<TextBox> {
 public:
  HeadlessTextBox(FocusOwner& owner, const ControlDefinition& definition);

  [[nodiscard]] std::u16string Text() const override { return text_; }
  [[nodiscard]] int SelectionStart() const override { return start_; }
  [[nodiscard]] int SelectionLength() const override { return length_; }
  void Select(int start, int length) override;

  [[nodiscard]] bool IsMultiLine() const { return multi_line_; }
  // What a typed or pasted text does: it replaces the selection, the caret goes behind it, and
  // on_change is raised when something changed.
  void ReplaceSelection(std::u16string_view text);
  // Extends an empty selection by one unit to the left, or to the right.
  void SelectBefore();
  void SelectBehind();

 private:
  void TypeOver(std::u16string_view text) override { ReplaceSelection(text); }
  void ShowText(std::u16string_view text) override;

  std::u16string text_;
  bool multi_line_;
  int start_ = 0;
  int length_ = 0;
};

class HeadlessRichText : public HeadlessControl<RichText> {
 public:
  using HeadlessControl::HeadlessControl;

  void Clear() override;
  void SetInsertionColor(Color color) override { color_ = color; }
  void Insert(std::u16string_view text) override;
  void SetCaretToStart() override { caret_at_start_ = true; }
  [[nodiscard]] std::u16string Text() const override;
  [[nodiscard]] std::vector<ColoredRun> Runs() const override { return runs_; }

  [[nodiscard]] bool CaretAtStart() const { return caret_at_start_; }

 private:
  Color color_ = kBlack;
  std::vector<ColoredRun> runs_;
  bool caret_at_start_ = true;
};

}  // namespace declarium::headless
