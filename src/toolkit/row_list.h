// List boxes and drop-down combo boxes: rows of text, at most one of them selected. Rows count from
// 0; -1 means none.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "toolkit/control.h"

namespace declarium {

class RowList : public Control {
 public:
  [[nodiscard]] virtual int RowCount() const = 0;
  // The row's text; empty when there is no such row.
  [[nodiscard]] virtual std::u16string Row(int row) const = 0;
  // Appends.
  virtual void AddRow(std::u16string_view text) = 0;
  // Appends all at once, which is what long lists are filled with.
  virtual void AddRows(std::span<const std::u16string_view> rows) = 0;
  // Removes all rows; the index becomes -1 without an event.
  virtual void Clear() = 0;

  [[nodiscard]] virtual int ListIndex() const = 0;
  // Selects a row, or none with -1, and raises on_click as a user's choice does; when the row is
  // selected already nothing is raised. Returns false and changes nothing when there is no such
  // row.
  bool SetListIndex(int row);

  // The selected row's text, empty when none is selected.
  [[nodiscard]] std::u16string Text() const;
  // SetListIndex of the first row with exactly this text; false and no change when there is none.
  bool SetText(std::u16string_view text);

  // The selected row changed, by the user or from code. The user choosing the selected row again
  // raises it too.
  Event<> on_click;

 protected:
  using Control::Control;

 private:
  // Shows the selection, scrolled into view, without raising an event. `row` exists or is -1.
  virtual void ShowSelection(int row) = 0;
  // First row with exactly this text or -1.
  [[nodiscard]] virtual int FindRow(std::u16string_view text) const;
};

class ListBox : public RowList {
 protected:
  using RowList::RowList;
};

// The user chooses from the list and cannot type.
class ComboBox : public RowList {
 protected:
  using RowList::RowList;
};

}  // namespace declarium
