// The basket list lstAdd with its popup menu, and the shared-items list lstShare that feeds it.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "basket/basket.h"
#include "library/library.h"
#include "needs/ui/item_display.h"
#include "toolkit/form.h"
#include "toolkit/list_view.h"
#include "toolkit/menu.h"
#include "toolkit/toolbar.h"

namespace declarium {

struct BasketControls {
  Form& frmMain;
  ListView& lstAdd;
  ListView& lstShare;
  Toolbar& Toolbar1;
  MenuItem& mnuPopupAddList;
  MenuItem& mnuDelOnce;
  MenuItem& mnuDelGroup;
  MenuItem& mnuDelAll;
  MenuItem& mnuSaveList;
  MenuItem& mnuInsertMissing;
};

class BasketView {
 public:
  // `has_code_module` returns whether the host has an active code module. Everything must outlive
  // the view.
  BasketView(const Library& library, ItemDisplay& display, const BasketControls& controls,
             std::function<bool()> has_code_module);

  // Adds an item; nothing happens when its group already holds the name.
  void Add(const ItemView& item);
  // Adds the library's item of that name, if there is one.
  void AddByName(Kind kind, std::u16string_view name);

  // Removes the selected entry and shows the one that takes its place.
  void DeleteAddItem();
  // Enables the toolbar buttons that the basket's state allows; also called when the host's active
  // code module comes or goes.
  void SetCEI();

  [[nodiscard]] const Basket& Contents() const noexcept { return basket_; }
  // Shows these contents from now on.
  void Replace(Basket contents);

  [[nodiscard]] std::vector<ItemView> Items() const { return basket_.Items(); }
  [[nodiscard]] std::u16string Text(std::u16string_view scope) const { return basket_.Text(scope); }

 private:
  void lstAdd_ItemClick(int position);
  void lstAdd_KeyDown(KeyDown& key);
  void lstAdd_MouseDown(const MouseEvent& event);
  void ShowPopup(int position);
  void mnuDelGroup_Click();
  void mnuDelAll_Click();
  void lstShare_ItemClick(int position);
  void AddShared(int position);
  void MirrorEntries();

  const Library& library_;
  ItemDisplay& display_;
  BasketControls controls_;
  std::function<bool()> has_code_module_;
  Basket basket_;
};

}  // namespace declarium
