// A list of entries with a small icon each, in one column. Positions count from 1; -1 means none.
// Made for lists of many thousand entries: filling and emptying do not stall.
#pragma once

#include <memory>
#include <string_view>

#include "toolkit/control.h"

namespace declarium {

// The check box in front of an entry, in lists that have them.
enum class CheckMark { kNone, kClear, kChecked };

struct ListEntry {
  std::u16string_view text;
  int icon = 0;  // 1 Const, 2 Declare, 3 Type
  CheckMark check = CheckMark::kNone;
  bool operator==(const ListEntry&) const = default;
};

// Entries that are kept outside of the list, which asks for those that it needs.
class ListEntries {
 public:
  virtual ~ListEntries() = default;
  [[nodiscard]] virtual int Count() const = 0;
  // `position` is 1..Count(). The text must hold as long as this object.
  [[nodiscard]] virtual ListEntry At(int position) const = 0;
};

class ListView : public Control {
 public:
  [[nodiscard]] virtual int Count() const = 0;
  // `position` must be 1..Count(). The text holds until the list changes.
  [[nodiscard]] virtual ListEntry Entry(int position) const = 0;
  // Inserts a copy before the entry at `position`; Count() + 1 appends. The selection stays with
  // its entry.
  virtual void Insert(int position, const ListEntry& entry) = 0;
  void Append(const ListEntry& entry) { Insert(Count() + 1, entry); }
  // Shows these entries in place of its own, and none as selected. Nothing can be inserted or
  // removed then before Clear. Takes the same time for any number of entries.
  virtual void ShowEntries(std::unique_ptr<const ListEntries> entries) = 0;
  // The selection stays with its entry, and is lost when that entry is the removed one.
  virtual void Remove(int position) = 0;
  virtual void Clear() = 0;

  // Changes the check box of one of its own entries; changing it from code raises no
  // on_item_check.
  virtual void SetCheck(int position, CheckMark check) = 0;

  [[nodiscard]] virtual int Selected() const = 0;
  // Selects an entry, or none with -1. Selecting from code raises no on_item_click.
  virtual void Select(int position) = 0;
  virtual void EnsureVisible(int position) = 0;
  // The entry at a point of the control, -1 when there is none.
  [[nodiscard]] virtual int HitTest(Point at) const = 0;

  [[nodiscard]] virtual int ColumnWidth() const = 0;
  virtual void SetColumnWidth(int width) = 0;

  // Entries of this list can be dragged and dropped on `target`, whose on_drop is raised; nullptr
  // ends that. `target` must live as long as this control.
  virtual void SetDragTarget(Control* target) = 0;

  // The user selected the entry at this position, by mouse (either button) or keyboard, or clicked
  // the selected one again. A press raises it before on_mouse_down; a press on empty space leaves
  // the selection and raises on_mouse_down only.
  Event<int> on_item_click;
  // The user switched the check box of the entry at this position, with a click on the box or with
  // the space bar on the selected entry. The entry has the new mark already. A click on the box
  // selects the entry first.
  Event<int> on_item_check;

 protected:
  using Control::Control;
};

}  // namespace declarium
