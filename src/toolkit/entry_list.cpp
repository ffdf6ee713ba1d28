#include "toolkit/entry_list.h"

#include <stdexcept>
#include <utility>

namespace declarium {

int EntryList::Count() const {
  return shown_ ? shown_->Count() : static_cast<int>(own_.size());
}

ListEntry EntryList::At(int position) const {
  if (position < 1 || position > Count()) throw std::logic_error("no such entry");
  if (shown_) return shown_->At(position);
  const auto& [text, icon, check] = own_[static_cast<std::size_t>(position - 1)];
  return {text, icon, check};
}

void EntryList::Insert(int position, const ListEntry& entry) {
  if (shown_) throw std::logic_error("the entries are kept elsewhere");
  if (position < 1 || position > Count() + 1) throw std::logic_error("no such place");
  own_.insert(own_.begin() + (position - 1), {std::u16string(entry.text), entry.icon, entry.check});
  if (selected_ >= position) ++selected_;
}

void EntryList::Remove(int position) {
  if (shown_) throw std::logic_error("the entries are kept elsewhere");
  if (position < 1 || position > Count()) throw std::logic_error("no such entry");
  own_.erase(own_.begin() + (position - 1));
  if (selected_ == position) {
    selected_ = -1;
  } else if (selected_ > position) {
    --selected_;
  }
}

void EntryList::SetCheck(int position, CheckMark check) {
  if (shown_) throw std::logic_error("the entries are kept elsewhere");
  if (position < 1 || position > Count()) throw std::logic_error("no such entry");
  own_[static_cast<std::size_t>(position - 1)].check = check;
}

bool EntryList::SwitchCheck(int position) {
  if (shown_ || position < 1 || position > Count()) return false;
  auto& check = own_[static_cast<std::size_t>(position - 1)].check;
  if (check == CheckMark::kNone) return false;
  check = check == CheckMark::kChecked ? CheckMark::kClear : CheckMark::kChecked;
  return true;
}

void EntryList::Show(std::unique_ptr<const ListEntries> entries) {
  Clear();
  shown_ = std::move(entries);
}

void EntryList::Clear() {
  own_.clear();
  shown_.reset();
  selected_ = -1;
}

void EntryList::Select(int position) {
  selected_ = position >= 1 && position <= Count() ? position : -1;
}

}  // namespace declarium
