// The find box with its hit list, and the type-ahead box over the current kind's list.
#pragma once

#include <functional>

#include "library/library.h"
#include "library/ui/kind_selector.h"
#include "toolkit/row_list.h"
#include "toolkit/text_box.h"

namespace declarium {

struct QuickFindControls {
  TextBox& txtInput;
  TextBox& txtFind;
  ListBox& lstFind;
};

class QuickFindView {
 public:
  // `add_to_basket` takes the item selected in the current list. Everything must outlive the view.
  QuickFindView(const Library& library, KindSelector& selector, const QuickFindControls& controls,
                std::function<void(const ItemView&)> add_to_basket);

  // The events of whichever list is current.
  void SelectList_Click();
  void SelectList_KeyDown(KeyDown& key);
  void SelectList_KeyPress(KeyPress& press);

  // Puts the selected item into the basket; false when none is selected. What Enter in the
  // type-ahead box, double clicks and the toolbar's "add" do.
  bool AddSelected();

 private:
  void txtFind_KeyDown(KeyDown& key);
  void lstFind_Click();
  void lstFind_KeyDown(KeyDown& key);
  void txtInput_Change();
  void txtInput_KeyDown(KeyDown& key);
  // Selects a row of the current list without copying its name into the type-ahead box.
  void SelectRow(int row);

  const Library& library_;
  KindSelector& selector_;
  QuickFindControls controls_;
  std::function<void(const ItemView&)> add_to_basket_;
  bool InputPositioning_ = false;
};

}  // namespace declarium
