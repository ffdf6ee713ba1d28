#include "toolkit/headless/text.h"

#include <algorithm>

namespace declarium::headless {

HeadlessTextBox::HeadlessTextBox(FocusOwner& owner, const ControlDefinition& definition)
    : HeadlessControl(owner, definition),
      text_(definition.caption),
      multi_line_(definition.kind == ControlKind::kMultiLineTextBox) {}

void HeadlessTextBox::Select(int start, int length) {
  const int size = static_cast<int>(text_.size());
  start_ = std::clamp(start, 0, size);
  length_ = std::clamp(length, 0, size - start_);
}

void HeadlessTextBox::ShowText(std::u16string_view text) {
  text_ = text;
  start_ = length_ = 0;
}

void HeadlessTextBox::ReplaceSelection(std::u16string_view text) {
  if (text.empty() && length_ == 0) return;
  text_.replace(static_cast<std::size_t>(start_), static_cast<std::size_t>(length_), text);
  start_ += static_cast<int>(text.size());
  length_ = 0;
  on_change.Raise();
}

void HeadlessTextBox::SelectBefore() {
  if (length_ == 0 && start_ > 0) Select(start_ - 1, 1);
}

void HeadlessTextBox::SelectBehind() {
  if (length_ == 0) Select(start_, 1);
}

void HeadlessRichText::Clear() {
  runs_.clear();
  caret_at_start_ = true;
}

void HeadlessRichText::Insert(std::u16string_view text) {
  if (text.empty()) return;
  caret_at_start_ = false;
  if (!runs_.empty() && runs_.back().color == color_) {
    runs_.back().text += text;
  } else {
    runs_.push_back({color_, std::u16string(text)});
  }
}

std::u16string HeadlessRichText::Text() const {
  std::u16string text;
  for (const ColoredRun& run : runs_) text += run.text;
  return text;
}

}  // namespace declarium::headless
