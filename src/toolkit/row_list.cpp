#include "toolkit/row_list.h"

namespace declarium {

bool RowList::SetListIndex(int row) {
  if (row < -1 || row >= RowCount()) return false;
  if (row == ListIndex()) return true;
  ShowSelection(row);
  on_click.Raise();
  return true;
}

std::u16string RowList::Text() const {
  const int selected = ListIndex();
  return selected < 0 ? std::u16string() : Row(selected);
}

bool RowList::SetText(std::u16string_view text) {
  const int row = FindRow(text);
  return row >= 0 && SetListIndex(row);
}

int RowList::FindRow(std::u16string_view text) const {
  const int count = RowCount();
  for (int row = 0; row < count; ++row) {
    if (Row(row) == text) return row;
  }
  return -1;
}

}  // namespace declarium
