// List boxes and combo boxes of the headless backend.
#pragma once

#include <string>
#include <vector>

#include "toolkit/headless/control.h"
#include "toolkit/row_list.h"

namespace declarium::headless {

template <class Base>
class HeadlessRows : public HeadlessControl<Base> {
 public:
  HeadlessRows(FocusOwner& owner, const ControlDefinition& definition)
      : HeadlessControl<Base>(owner, definition) {
    rows_.assign(definition.rows.begin(), definition.rows.end());
  }

  [[nodiscard]] int RowCount() const override { return static_cast<int>(rows_.size()); }
  [[nodiscard]] std::u16string Row(int row) const override {
    return row < 0 || row >= RowCount() ? std::u16string() : rows_[static_cast<std::size_t>(row)];
  }
  void AddRow(std::u16string_view text) override { rows_.emplace_back(text); }
  void AddRows(std::span<const std::u16string_view> rows) override {
    rows_.insert(rows_.end(), rows.begin(), rows.end());
  }
  void Clear() override {
    rows_.clear();
    selected_ = -1;
  }
  [[nodiscard]] int ListIndex() const override { return selected_; }

 private:
  void ShowSelection(int row) override { selected_ = row; }

  std::vector<std::u16string> rows_;
  int selected_ = -1;
};

using HeadlessListBox = HeadlessRows<ListBox>;
using HeadlessComboBox = HeadlessRows<ComboBox>;

}  // namespace declarium::headless
