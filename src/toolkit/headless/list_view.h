// The headless list view: entries stand under each other, kEntryHeight high.
#pragma once

#include <memory>
#include <utility>

#include "toolkit/entry_list.h"
#include "toolkit/headless/control.h"
#include "toolkit/list_view.h"

namespace declarium::headless {

class HeadlessListView : public HeadlessControl<ListView> {
 public:
  static constexpr int kEntryHeight = 17;

  using HeadlessControl::HeadlessControl;

  [[nodiscard]] int Count() const override { return entries_.Count(); }
  [[nodiscard]] ListEntry Entry(int position) const override { return entries_.At(position); }
  void Insert(int position, const ListEntry& entry) override { entries_.Insert(position, entry); }
  void ShowEntries(std::unique_ptr<const ListEntries> entries) override {
    entries_.Show(std::move(entries));
  }
  void Remove(int position) override { entries_.Remove(position); }
  void Clear() override { entries_.Clear(); }
  void SetCheck(int position, CheckMark check) override { entries_.SetCheck(position, check); }

  [[nodiscard]] int Selected() const override { return entries_.Selected(); }
  void Select(int position) override { entries_.Select(position); }
  void EnsureVisible(int position) override { last_made_visible_ = position; }
  [[nodiscard]] int HitTest(Point at) const override;

  [[nodiscard]] int ColumnWidth() const override { return column_width_; }
  void SetColumnWidth(int width) override { column_width_ = width; }
  void SetDragTarget(Control* target) override { drag_target_ = target; }

  // The user switches the check box of the entry, if it has one.
  void SwitchCheck(int position);
  [[nodiscard]] Control* DragTarget() const { return drag_target_; }
  // The position last given to EnsureVisible, -1 when there was none.
  [[nodiscard]] int LastMadeVisible() const { return last_made_visible_; }
  // A point inside the entry, for mouse events.
  [[nodiscard]] static Point PointOf(int position);

 private:
  EntryList entries_;
  int column_width_ = 100;
  int last_made_visible_ = -1;
  Control* drag_target_ = nullptr;
};

}  // namespace declarium::headless
