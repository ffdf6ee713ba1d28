// List boxes and combo boxes of the headless backend.
#pragma once

#include <string>
#include <vector>

#include "toolkit/headless/control.h"
#include "toolkit/row_list.h"

namespace declarium::headless {

// Rows and which of them is selected (-1 none).
struct RowState {
  std::vector<std::u16string> rows;
  int selected = -1;

  void Remove(int row);
  void Clear();
};

template <class Base>
class HeadlessRows : public HeadlessControl<Base> {
 public:
  HeadlessRows(FocusOwner& owner, const ControlDefinition& definition)
      : HeadlessControl<Base>(owner, definition) {
    state_.rows.assign(definition.rows.begin(), definition.rows.end());
  }

  [[nodiscard]] int RowCount() const override { return static_cast<int>(state_.rows.size()); }
  [[nodiscard]] std::u16string Row(int row) const override {
    return row < 0 || row >= RowCount() ? std::u16string() : state_.rows[Index(row)];
  }
  void AddRow(std::u16string_view text) override { state_.rows.emplace_back(text); }
  void AddRows(std::span<const std::u16string_view> rows) override {
    state_.rows.insert(state_.rows.end(), rows.begin(), rows.end());
  }
  void RemoveRow(int row) override { state_.Remove(row); }
  void Clear() override { state_.Clear(); }
  [[nodiscard]] int ListIndex() const override { return state_.selected; }

 private:
  static std::size_t Index(int row) { return static_cast<std::size_t>(row); }
  void ShowSelection(int row) override { state_.selected = row; }

  RowState state_;
};

using HeadlessListBox = HeadlessRows<ListBox>;
using HeadlessComboBox = HeadlessRows<ComboBox>;

}  // namespace declarium::headless
