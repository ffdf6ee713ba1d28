#include "library/ui/kind_selector.h"

#include <span>

namespace declarium {

KindSelector::KindSelector(Toolkit& toolkit, const Library& library,
                           const KindSelectorControls& controls)
    : toolkit_(toolkit), library_(library), controls_(controls) {
  controls_.cmbSelector.on_click = [this] { cmbSelector_Click(); };
}

void KindSelector::cmbSelector_Click() {
  controls_.txtInput.SetText(u"");
  controls_.RTB.Clear();
  controls_.txtFind.SetText(u"");
  controls_.lstFind.Clear();
  toolkit_.ProcessPendingEvents();

  const auto kind = SelectedKind();
  if (library_.path.empty() || !kind) return;
  for (const auto any : kKinds) ListOf(any).SetVisible(false);
  FillList(ListOf(*kind), library_[*kind].names);
  select_list_->SetFocus();
}

void KindSelector::FillList(ListBox& list, const StringList& names) {
  select_list_ = &list;
  if (list.RowCount() == 0 && !names.empty()) {
    list.Clear();
    list.SetVisible(false);
    list.AddRows(std::span(names.begin(), names.end()));
    list.SetVisible(true);
    list.Refresh();
  } else {
    list.SetVisible(true);
  }
}

ListBox& KindSelector::ListOf(Kind kind) const noexcept {
  switch (kind) {
    case Kind::kConst:
      return controls_.lstConst;
    case Kind::kDeclare:
      return controls_.lstDeclare;
    case Kind::kType:
      break;
  }
  return controls_.lstType;
}

std::optional<Kind> KindSelector::SelectedKind() const {
  return KindOfCode(controls_.cmbSelector.ListIndex());
}

std::optional<ItemView> KindSelector::SelectedItem(Kind kind) const {
  const auto row = ListOf(kind).ListIndex();
  const auto& lists = library_[kind];
  if (row < 0 || static_cast<std::size_t>(row) >= lists.names.size() || !library_.IsWhole()) {
    return std::nullopt;
  }
  const auto index = static_cast<std::size_t>(row);
  return ItemView{kind, lists.names[index], lists.ItemAt(index)};
}

void KindSelector::ClearLists() {
  for (const auto kind : kKinds) ListOf(kind).Clear();
}

void KindSelector::Reselect() {
  const auto row = controls_.cmbSelector.ListIndex();
  controls_.cmbSelector.SetListIndex(-1);
  controls_.cmbSelector.SetListIndex(row);
}

void KindSelector::Refill() {
  ClearLists();
  Reselect();
}

}  // namespace declarium
