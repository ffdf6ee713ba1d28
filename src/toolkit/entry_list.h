// The entries of a list view and which of them is selected, as every backend keeps them. Positions
// count from 1; -1 means none.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "toolkit/list_view.h"

namespace declarium {

class EntryList {
 public:
  [[nodiscard]] int Count() const;
  // These five are ListView's own. What it forbids throws std::logic_error.
  [[nodiscard]] ListEntry At(int position) const;
  void Insert(int position, const ListEntry& entry);
  void Remove(int position);
  void SetCheck(int position, CheckMark check);
  void Show(std::unique_ptr<const ListEntries> entries);
  void Clear();

  // Switches the check box at the position, when there is one.
  [[nodiscard]] bool SwitchCheck(int position);

  [[nodiscard]] int Selected() const { return selected_; }
  // A position outside the list selects none.
  void Select(int position);

 private:
  struct OwnEntry {
    std::u16string text;
    int icon;
    CheckMark check;
  };

  std::vector<OwnEntry> own_;
  std::unique_ptr<const ListEntries> shown_;  // in place of own_ when not null
  int selected_ = -1;
};

}  // namespace declarium
