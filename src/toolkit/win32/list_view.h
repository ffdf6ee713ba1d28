// The native list view, which asks for the entries that it shows instead of keeping them.
#pragma once

#include <memory>

#include "toolkit/entry_list.h"
#include "toolkit/win32/control.h"
#include "win32/system.h"

namespace declarium::win32 {

class Win32ListView : public Win32Control<ListView> {
 public:
  Win32ListView(Win32Form& form, const ControlDefinition& definition);

  [[nodiscard]] int Count() const override { return entries_.Count(); }
  [[nodiscard]] ListEntry Entry(int position) const override { return entries_.At(position); }
  void Insert(int position, const ListEntry& entry) override;
  void ShowEntries(std::unique_ptr<const ListEntries> entries) override;
  void Remove(int position) override;
  void Clear() override;
  void SetCheck(int position, CheckMark check) override;
  [[nodiscard]] int Selected() const override { return entries_.Selected(); }
  void Select(int position) override;
  void EnsureVisible(int position) override;
  [[nodiscard]] int HitTest(Point at) const override;
  [[nodiscard]] int ColumnWidth() const override { return column_width_; }
  void SetColumnWidth(int width) override;
  void SetDragTarget(Control* target) override { drag_target_ = target; }
  void Refresh() override;

  std::optional<LRESULT> OnNotify(NMHDR& header) override;
  void OnResolutionChanged() override;

 private:
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
  void Press(MouseButton button, WPARAM keys, LPARAM place);
  void SwitchCheck(int position);
  [[nodiscard]] bool IsOnCheckBox(Point at) const;
  std::optional<LRESULT> SpaceBar(UINT message, WPARAM wparam, LPARAM lparam);
  void RedrawEntry(int position) const;
  void FollowDrag(LPARAM place);
  void EndDrag(LPARAM place);
  void GiveText(NMLVDISPINFOW& info) const;
  [[nodiscard]] LRESULT FindBeginning(const NMLVFINDITEMW& wanted) const;
  void ItemChanged(const NMLISTVIEW& change);

  // The native control learns of changes when something depends on it, so that long lists are
  // filled without a notification for each entry.
  void ListChanged();
  void Synchronize() const;
  [[nodiscard]] bool ScrollBarChanges() const;
  void ShowSelected() const;
  void ShowColumnWidth();
  void SetState(int position, UINT state) const;

  EntryList entries_;
  bool has_check_boxes_;
  mutable int marked_ = -1;  // the entry that the native control shows as selected
  int column_width_;
  mutable bool behind_ = false;         // the native control does not know the list as it is
  bool posted_ = false;                 // a notification is on its way
  mutable bool synchronizing_ = false;  // native selection changes are not the user's
  Control* drag_target_ = nullptr;
  int pressed_ = -1;  // entry under the left button while it is held down
  POINT pressed_at_{};
  bool dragging_ = false;
};

}  // namespace declarium::win32
