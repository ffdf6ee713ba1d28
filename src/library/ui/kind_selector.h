// The kind selector and the three list boxes that show the names of the kinds.
#pragma once

#include <optional>

#include "library/library.h"
#include "toolkit/rich_text.h"
#include "toolkit/row_list.h"
#include "toolkit/text_box.h"
#include "toolkit/toolkit.h"

namespace declarium {

struct KindSelectorControls {
  ComboBox& cmbSelector;
  ListBox& lstConst;
  ListBox& lstDeclare;
  ListBox& lstType;
  TextBox& txtInput;
  RichText& RTB;
  TextBox& txtFind;
  ListBox& lstFind;
};

class KindSelector {
 public:
  // Everything must outlive the selector.
  KindSelector(Toolkit& toolkit, const Library& library, const KindSelectorControls& controls);

  // A kind was chosen: empties the boxes of the other kind and shows its list.
  void cmbSelector_Click();

  // Makes `list` the current list and shows it. An empty list box is filled with the names, so row
  // i is item i; one that holds rows is not filled again.
  void FillList(ListBox& list, const StringList& names);

  // The list box filled last, on which commands act; nullptr before the first.
  [[nodiscard]] ListBox* SelectList() const noexcept { return select_list_; }
  [[nodiscard]] ListBox& ListOf(Kind kind) const noexcept;
  // The kind of the selected row.
  [[nodiscard]] std::optional<Kind> SelectedKind() const;
  // The item of the row selected in the list of `kind`.
  [[nodiscard]] std::optional<ItemView> SelectedItem(Kind kind) const;

  void ClearLists();
  // Selects nothing and then the old row again, which fills the current kind's list if it is empty.
  void Reselect();
  // What every change of a kind's names asks for.
  void Refill();

 private:
  Toolkit& toolkit_;
  const Library& library_;
  KindSelectorControls controls_;
  ListBox* select_list_ = nullptr;
};

}  // namespace declarium
