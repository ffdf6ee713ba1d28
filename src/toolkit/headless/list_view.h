// The headless list view: entries stand under each other, kEntryHeight high.
#pragma once

#include <vector>

#include "toolkit/headless/control.h"
#include "toolkit/list_view.h"

namespace declarium::headless {

class HeadlessListView : public HeadlessControl<ListView> {
 public:
  static constexpr int kEntryHeight = 17;

  using HeadlessControl::HeadlessControl;

  [[nodiscard]] int Count() const override { return static_cast<int>(entries_.size()); }
  [[nodiscard]] const ListEntry& Entry(int position) const override;
  void Insert(int position, ListEntry entry) override;
  void Remove(int position) override;
  void Clear() override;

  [[nodiscard]] int Selected() const override { return selected_; }
  void Select(int position) override;
  void EnsureVisible(int position) override { last_made_visible_ = position; }
  [[nodiscard]] int HitTest(Point at) const override;

  [[nodiscard]] int ColumnWidth() const override { return column_width_; }
  void SetColumnWidth(int width) override { column_width_ = width; }
  void SetDragTarget(Control* target) override { drag_target_ = target; }

  [[nodiscard]] Control* DragTarget() const { return drag_target_; }
  // The position last given to EnsureVisible, -1 when there was none.
  [[nodiscard]] int LastMadeVisible() const { return last_made_visible_; }
  // A point inside the entry, for mouse events.
  [[nodiscard]] static Point PointOf(int position);

 private:
  std::vector<ListEntry> entries_;
  int selected_ = -1;
  int column_width_ = 100;
  int last_made_visible_ = -1;
  Control* drag_target_ = nullptr;
};

}  // namespace declarium::headless
