#include "search/ui/quick_find_view.h"

#include <string>
#include <utility>
#include <vector>

#include "library/find_item_index.h"
#include "search/quick_find.h"
#include "toolkit/held_flag.h"

namespace declarium {

QuickFindView::QuickFindView(const Library& library, KindSelector& selector,
                             const QuickFindControls& controls,
                             std::function<void(const ItemView&)> add_to_basket)
    : library_(library),
      selector_(selector),
      controls_(controls),
      add_to_basket_(std::move(add_to_basket)) {
  controls_.txtFind.on_key_down = [this](KeyDown& key) { txtFind_KeyDown(key); };
  controls_.lstFind.on_click = [this] { lstFind_Click(); };
  controls_.lstFind.on_got_focus = [this] { lstFind_Click(); };
  controls_.lstFind.on_double_click = [this] { AddSelected(); };
  controls_.lstFind.on_key_down = [this](KeyDown& key) { lstFind_KeyDown(key); };
  controls_.txtInput.on_change = [this] { txtInput_Change(); };
  controls_.txtInput.on_key_down = [this](KeyDown& key) { txtInput_KeyDown(key); };
}

void QuickFindView::txtFind_KeyDown(KeyDown& key) {
  const auto text = controls_.txtFind.Text();
  if (key.code != key::kEnter || text.empty()) return;
  key.Swallow();
  controls_.lstFind.Clear();
  const auto kind = selector_.SelectedKind();
  if (!kind) return;
  const auto& names = library_[*kind].names;
  std::vector<std::u16string_view> hits;
  for (const auto position : FindNames(names, text)) hits.push_back(names[position]);
  controls_.lstFind.AddRows(hits);
}

void QuickFindView::lstFind_Click() {
  if (controls_.lstFind.ListIndex() == -1) return;
  const auto hit = controls_.lstFind.Text();
  if (auto* list = selector_.SelectList()) list->SetText(hit);
  if (const auto kind = selector_.SelectedKind()) {
    selector_.ListOf(*kind).SetListIndex(FindItemIndex(hit, library_[*kind].names));
  }
}

void QuickFindView::lstFind_KeyDown(KeyDown& key) {
  if (key.code != key::kEnter) return;
  key.Swallow();
  AddSelected();
}

void QuickFindView::txtInput_Change() {
  auto* list = selector_.SelectList();
  const auto kind = selector_.SelectedKind();
  if (list == nullptr || !kind) return;
  const auto text = controls_.txtInput.Text();
  if (text == list->Text()) return;
  if (text.empty()) {
    list->SetListIndex(-1);
    return;
  }
  if (const auto row = TypeAheadRow(RowsOf(library_[*kind].names), text)) {
    SelectRow(static_cast<int>(*row));
  }
}

void QuickFindView::SelectRow(int row) {
  const HeldFlag positioning(InputPositioning_);
  selector_.SelectList()->SetListIndex(row);
}

void QuickFindView::txtInput_KeyDown(KeyDown& key) {
  const auto* list = selector_.SelectList();
  if (list == nullptr) return;
  const auto row = list->ListIndex();
  switch (key.code) {
    case key::kUp:
      key.Swallow();
      if (row >= 1) SelectRow(row - 1);
      break;
    case key::kDown:
      key.Swallow();
      if (row + 1 < list->RowCount()) SelectRow(row + 1);
      break;
    case key::kEnter:
      if (AddSelected()) key.Swallow();
      break;
    default:
      break;
  }
}

bool QuickFindView::AddSelected() {
  const auto kind = selector_.SelectedKind();
  if (selector_.SelectList() == nullptr || !kind) return false;
  const auto item = selector_.SelectedItem(*kind);
  if (!item) return false;
  add_to_basket_(*item);
  return true;
}

void QuickFindView::SelectList_Click() {
  if (!InputPositioning_) controls_.txtInput.SetText(selector_.SelectList()->Text());
}

void QuickFindView::SelectList_KeyDown(KeyDown& key) {
  if (key.code == key::kEnter && AddSelected()) key.Swallow();
}

void QuickFindView::SelectList_KeyPress(KeyPress& press) {
  constexpr char16_t kFirstPrintable = 32;
  if (press.character < kFirstPrintable) return;
  controls_.txtInput.SetText(std::u16string_view(&press.character, 1));
  controls_.txtInput.SetCaretToEnd();
  controls_.txtInput.SetFocus();
  press.Swallow();
}

}  // namespace declarium
