// A list of entries with a small icon each, in one column. Positions count from 1; -1 means none.
// Made for lists of many thousand entries: filling and emptying do not stall.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "toolkit/control.h"

namespace declarium {

struct ListEntry {
  std::u16string text = {};
  int icon = 0;  // 1 Const, 2 Declare, 3 Type
  bool operator==(const ListEntry&) const = default;
};

class ListView : public Control {
 public:
  [[nodiscard]] virtual int Count() const = 0;
  // `position` must be 1..Count(). The reference holds until the list changes.
  [[nodiscard]] virtual const ListEntry& Entry(int position) const = 0;
  // Inserts before the entry at `position`; Count() + 1 appends. The selection stays with its
  // entry.
  virtual void Insert(int position, ListEntry entry) = 0;
  void Append(ListEntry entry) { Insert(Count() + 1, std::move(entry)); }
  // Appends all at once, which is what long lists are filled with.
  virtual void AppendAll(std::vector<ListEntry> entries);
  // The selection stays with its entry, and is lost when that entry is the removed one.
  virtual void Remove(int position) = 0;
  virtual void Clear() = 0;

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

 protected:
  using Control::Control;
};

}  // namespace declarium
