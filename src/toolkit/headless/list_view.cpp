#include "toolkit/headless/list_view.h"

#include <stdexcept>

namespace declarium::headless {

const ListEntry& HeadlessListView::Entry(int position) const {
  if (position < 1 || position > Count()) throw std::logic_error(Name() + ": no such entry");
  return entries_[static_cast<std::size_t>(position - 1)];
}

void HeadlessListView::Insert(int position, ListEntry entry) {
  if (position < 1 || position > Count() + 1) throw std::logic_error(Name() + ": no such place");
  entries_.insert(entries_.begin() + (position - 1), std::move(entry));
  if (selected_ >= position) ++selected_;
}

void HeadlessListView::Remove(int position) {
  if (position < 1 || position > Count()) throw std::logic_error(Name() + ": no such entry");
  entries_.erase(entries_.begin() + (position - 1));
  if (selected_ == position) {
    selected_ = -1;
  } else if (selected_ > position) {
    --selected_;
  }
}

void HeadlessListView::Clear() {
  entries_.clear();
  selected_ = -1;
}

void HeadlessListView::Select(int position) {
  selected_ = position >= 1 && position <= Count() ? position : -1;
}

int HeadlessListView::HitTest(Point at) const {
  if (at.x < 0 || at.y < 0 || at.y >= Count() * kEntryHeight) return -1;
  return at.y / kEntryHeight + 1;
}

Point HeadlessListView::PointOf(int position) {
  return {kEntryHeight, (position - 1) * kEntryHeight + kEntryHeight / 2};
}

}  // namespace declarium::headless
