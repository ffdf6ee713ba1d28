#include "basket/ui/basket_view.h"

#include <utility>

#include "basket/recorded_items.h"
#include "text/user_texts.h"

namespace declarium {
namespace {

std::u16string WithName(std::u16string_view caption, std::u16string_view name) {
  return std::u16string(caption).append(u" '").append(name).append(u"'");
}

}  // namespace

BasketView::BasketView(const Library& library, ItemDisplay& display, const BasketControls& controls,
                       std::function<bool()> has_code_module)
    : library_(library),
      display_(display),
      controls_(controls),
      has_code_module_(std::move(has_code_module)) {
  auto& [frmMain, lstAdd, lstShare, Toolbar1, mnuPopup, mnuDelOnce, mnuDelGroup, mnuDelAll,
         mnuSaveList, mnuInsertMissing] = controls_;
  lstAdd.on_item_click = [this](int position) { lstAdd_ItemClick(position); };
  lstAdd.on_key_down = [this](KeyDown& key) { lstAdd_KeyDown(key); };
  lstAdd.on_context_menu = [this] { ShowPopup(controls_.lstAdd.Selected()); };
  lstAdd.on_mouse_down = [this](const MouseEvent& event) { lstAdd_MouseDown(event); };
  lstAdd.on_drop = [this](const Drop& drop) { AddShared(drop.position); };
  lstShare.SetDragTarget(&lstAdd);
  lstShare.on_item_click = [this](int position) { lstShare_ItemClick(position); };
  lstShare.on_double_click = [this] { AddShared(controls_.lstShare.Selected()); };
  lstShare.on_key_down = [this](KeyDown& key) {
    if (key.code != key::kEnter) return;
    key.Swallow();
    AddShared(controls_.lstShare.Selected());
  };
  mnuDelOnce.on_click = [this] { DeleteAddItem(); };
  mnuDelGroup.on_click = [this] { mnuDelGroup_Click(); };
  mnuDelAll.on_click = [this] { mnuDelAll_Click(); };
}

void BasketView::Add(const ItemView& item) {
  const auto position = basket_.Add(item.kind, item.name, item.item);
  if (!position) return;
  try {
    controls_.lstAdd.Insert(*position, {item.name, IconOf(item.kind)});
  } catch (...) {
    basket_.Remove(*position);  // or it would count as there the next time
    throw;
  }
  controls_.lstAdd.EnsureVisible(*position);
  SetCEI();
}

void BasketView::AddByName(Kind kind, std::u16string_view name) {
  if (const auto item = FindItem(library_, kind, name)) Add(*item);
}

void BasketView::AddShared(int position) {
  if (position < 1) return;
  const auto entry = controls_.lstShare.Entry(position);
  if (const auto kind = KindOfIcon(entry.icon)) AddByName(*kind, entry.text);
}

void BasketView::SetCEI() {
  const bool has_entries = !basket_.Empty();
  for (const auto* key : {"delete", "copy", "export"}) {
    controls_.Toolbar1.SetButtonEnabled(key, has_entries);
  }
  const bool can_insert = has_entries && has_code_module_();
  controls_.Toolbar1.SetButtonEnabled("insert", can_insert);
  controls_.Toolbar1.SetButtonEnabled("insert-missing", can_insert);
  controls_.mnuInsertMissing.SetEnabled(can_insert);
  controls_.mnuSaveList.SetEnabled(has_entries);
}

void BasketView::DeleteAddItem() {
  const auto selected = controls_.lstAdd.Selected();
  if (selected < 1) return;
  const auto next = basket_.Remove(selected);
  controls_.lstAdd.Remove(selected);
  if (next) {
    controls_.lstAdd.Select(*next);
    lstAdd_ItemClick(*next);
  }
  SetCEI();
}

void BasketView::mnuDelGroup_Click() {
  const auto selected = controls_.lstAdd.Selected();
  if (selected < 1) return;
  basket_.RemoveGroup(controls_.lstAdd.Entry(selected).icon);
  MirrorEntries();
  SetCEI();
}

void BasketView::mnuDelAll_Click() {
  basket_.RemoveAll();
  MirrorEntries();
  SetCEI();
}

void BasketView::Replace(Basket contents) {
  basket_ = std::move(contents);
  MirrorEntries();
  SetCEI();
}

void BasketView::MirrorEntries() {
  controls_.lstAdd.Clear();
  for (const auto& [text, icon] : basket_.Entries()) controls_.lstAdd.Append({text, icon});
}

void BasketView::lstAdd_ItemClick(int position) {
  const auto& entry = basket_.Entries()[static_cast<std::size_t>(position - 1)];
  if (const auto item = RecordedItems(basket_.Record()).Find(entry)) display_.Show(*item);
}

void BasketView::lstAdd_KeyDown(KeyDown& key) {
  if (key.code != key::kDelete) return;
  key.Swallow();
  DeleteAddItem();
}

void BasketView::lstAdd_MouseDown(const MouseEvent& event) {
  if (event.button == MouseButton::kRight) ShowPopup(controls_.lstAdd.HitTest(event.at));
}

void BasketView::ShowPopup(int position) {
  const bool on_entry = position >= 1;
  controls_.mnuDelOnce.SetEnabled(on_entry);
  controls_.mnuDelGroup.SetEnabled(on_entry);
  if (on_entry) {
    const auto entry = controls_.lstAdd.Entry(position);
    controls_.mnuDelOnce.SetCaption(WithName(texts::kDeleteOnce, entry.text));
    controls_.mnuDelGroup.SetCaption(
        WithName(texts::kDeleteGroup, KindName(KindOfIcon(entry.icon).value_or(Kind::kConst))));
  } else {
    controls_.mnuDelOnce.SetCaption(texts::kDeleteOnce);
    controls_.mnuDelGroup.SetCaption(texts::kDeleteGroup);
  }
  controls_.frmMain.ShowPopupMenu(controls_.mnuPopupAddList);
}

void BasketView::lstShare_ItemClick(int position) {
  const auto entry = controls_.lstShare.Entry(position);
  const auto kind = KindOfIcon(entry.icon);
  if (!kind) return;
  if (const auto item = FindItem(library_, *kind, entry.text)) display_.ShowCode(*item);
}

}  // namespace declarium
