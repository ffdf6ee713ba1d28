#include "toolkit/tab_order.h"

#include <algorithm>

namespace declarium {

void TabOrder::Append(const ControlDefinition& definition, Control& control) {
  entries_.push_back({&definition, &control});
}

Control* TabOrder::Find(const Control* from, std::size_t stride) const {
  if (entries_.empty()) return nullptr;
  const auto found = std::ranges::find(entries_, from, &Entry::control);
  std::size_t index = found == entries_.end() ? Count() - stride
                                              : static_cast<std::size_t>(found - entries_.begin());
  for (std::size_t step = 0; step < Count(); ++step) {
    index = (index + stride) % Count();
    const Entry& entry = entries_[index];
    if (entry.control == from || !IsTabStop(*entry.definition)) continue;
    if (entry.control->Visible() && entry.control->Enabled()) return entry.control;
  }
  return nullptr;
}

Control* TabOrder::WithRole(ButtonRole role) const {
  const auto found = std::ranges::find_if(
      entries_, [role](const Entry& entry) { return entry.definition->role == role; });
  return found == entries_.end() ? nullptr : found->control;
}

bool TabOrder::TakesEnter(const Control& control) const {
  const auto found = std::ranges::find(entries_, &control, &Entry::control);
  if (found == entries_.end()) return false;
  return found->definition->takes_enter ||
         found->definition->kind == ControlKind::kMultiLineTextBox;
}

}  // namespace declarium
