#include "import/records.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <string>
#include <unordered_map>

namespace declarium {
namespace {

ParsedItems::Lists& TypesOf(ParsedItems& parsed) {
  return parsed.lists[static_cast<std::size_t>(Kind::kType)];
}

}  // namespace

NestedRecord Records::AddNested(const RecordLine& line, std::u16string_view name,
                                std::u16string_view head, Keepable header, ParsedItems& parsed) {
  if (members_.empty() || line.start < members_.front().line_start || line.start >= end_) {
    return NestedRecord::kOutside;
  }
  if (header == Keepable::kNo || last_unkeepable_ >= line.next) return NestedRecord::kUnkeepable;
  auto& [names, items] = TypesOf(parsed);
  const auto first = std::ranges::lower_bound(members_, line.next, {}, &Member::line_start);
  Nested record = {line, names.size(), arena_->Store(head), {}};
  if (first == members_.end()) {
    record.head.remove_suffix(1);  // the separator goes with the members
  } else {
    record.members = outermost_.substr(first->offset);
  }
  nested_.push_back(record);
  names.AddKept(arena_->Store(name));
  items.AddKept({});
  return NestedRecord::kAdded;
}

void Records::AddOutermost(std::size_t end, Keepable whole, std::u16string_view name,
                           std::u16string_view item, ParsedItems& parsed) {
  end_ = end;
  outermost_ = arena_->Store(item.substr(0, item.size() - 1));
  if (whole == Keepable::kNo) return;
  auto& [names, items] = TypesOf(parsed);
  names.AddKept(arena_->Store(name));
  items.AddKept(outermost_);
}

void Records::Make(const Nested& record, StringList& items) {
  const auto room = arena_->Allocate(record.Size());
  const auto behind_head = std::ranges::copy(record.head, room.begin()).out;
  std::ranges::copy(record.members, behind_head);
  items.ReplaceKept(record.position, {room.data(), room.size()});
}

std::vector<Records::Nested> Records::Survivors(const StringList& names) const {
  // Of equal names the merge keeps the one whose position comes last as text.
  std::unordered_map<std::u16string_view, std::string> last;
  for (std::size_t i = 0; i < names.size(); ++i) {
    auto& position = last[names[i]];
    position = std::max(position, std::to_string(i + 1));
  }
  std::vector<Nested> survivors;
  std::ranges::copy_if(nested_, std::back_inserter(survivors), [&](const Nested& record) {
    return last[names[record.position]] == std::to_string(record.position + 1);
  });
  std::ranges::stable_sort(survivors, {}, &Nested::Size);
  return survivors;
}

void Records::RemoveUnmade(ParsedItems& parsed) const {
  auto& lists = TypesOf(parsed);
  ParsedItems::Lists left;
  left.names.Keep(arena_);
  left.items.Keep(arena_);
  auto record = nested_.begin();
  for (std::size_t i = 0; i < lists.names.size(); ++i) {
    const bool is_nested = record != nested_.end() && record->position == i;
    const bool is_unmade = is_nested && lists.items[i].data() == nullptr;
    if (is_nested) ++record;
    if (is_unmade) continue;
    left.names.AddKept(lists.names[i]);
    left.items.AddKept(lists.items[i]);
  }
  lists = std::move(left);
}

std::vector<RecordLine> Records::Finish(ParsedItems& parsed) {
  auto& [names, items] = TypesOf(parsed);
  // More than the addresses of a 32-bit process can come together.
  const auto total =
      std::accumulate(nested_.begin(), nested_.end(), std::uint64_t{0},
                      [](std::uint64_t sum, const Nested& record) { return sum + record.Size(); });
  auto kept = total <= limit_ ? nested_ : Survivors(names);
  std::size_t used = 0;
  const auto too_long = std::ranges::find_if(kept, [&](const Nested& record) {
    used += record.Size();
    return used > limit_;
  });
  for (auto record = kept.begin(); record != too_long; ++record) Make(*record, items);
  if (too_long == kept.end()) return {};

  std::vector<RecordLine> dropped;
  for (auto record = too_long; record != kept.end(); ++record) dropped.push_back(record->line);
  // Positions change now anyway, so what was left empty goes too.
  RemoveUnmade(parsed);
  return dropped;
}

}  // namespace declarium
