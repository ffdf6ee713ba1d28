#include "check/name_counts.h"

#include <algorithm>
#include <array>

#include "check/context.h"
#include "text/text.h"
#include "vb/code.h"
#include "vb/token.h"

namespace declarium::check {
namespace {

constexpr auto kModule = &std::pair<std::size_t, std::ptrdiff_t>::first;

}  // namespace

std::size_t NameCounts::FilterBit(std::u16string_view name) {
  if (name.empty()) return 0;
  // The same for upper and lower case; other alphabets all look alike.
  const auto fold = [](char16_t unit) -> std::size_t { return unit < 0x80 ? unit | 0x20 : 0; };
  auto bit = name.size();
  for (const auto position : {std::size_t{0}, name.size() / 3, name.size() / 2, name.size() - 1})
    bit = bit * 131 + fold(name[position]);
  return bit % kFilterBits;
}

void NameCounts::Declare(std::u16string_view name, std::size_t module) {
  filter_[FilterBit(name)] = true;
  auto& [all, by_module, watched] = counts_[LowerCase(name)];
  --all;
  if (by_module.empty() || by_module.back().first != module) by_module.emplace_back(module, 0);
  --by_module.back().second;
}

void NameCounts::Watch(std::u16string_view name, Watched what) {
  filter_[FilterBit(name)] = true;
  auto& watched = counts_[LowerCase(name)].watched;
  watched = watched | what;
}

Watched NameCounts::Count(std::u16string_view name) {
  if (!filter_[FilterBit(name)]) return Watched::kNothing;
  LowerCaseInto(name, lowered_);
  const auto found = counts_.find(std::u16string_view(lowered_));
  if (found == counts_.end()) return Watched::kNothing;
  auto& [all, by_module, watched] = found->second;
  ++all;
  const auto here = std::ranges::lower_bound(by_module, module_, {}, kModule);
  if (here != by_module.end() && here->first == module_) ++here->second;
  return watched;
}

bool NameCounts::IsUsed(std::u16string_view name) const {
  const auto found = counts_.find(LowerCase(name));
  return found != counts_.end() && found->second.all > 0;
}

bool NameCounts::IsDeclaredTwice(std::u16string_view name) const {
  const auto found = counts_.find(LowerCase(name));
  return found != counts_.end() && found->second.by_module.size() > 1;
}

bool NameCounts::IsUsedIn(std::size_t module, std::u16string_view name) const {
  const auto found = counts_.find(LowerCase(name));
  if (found == counts_.end()) return false;
  const auto& by_module = found->second.by_module;
  const auto here = std::ranges::lower_bound(by_module, module, {}, kModule);
  return here != by_module.end() && here->first == module && here->second > 0;
}

WatchedPlaces CountNames(std::u16string_view text, NameCounts& counts) {
  WatchedPlaces places;
  std::size_t position = 0;
  const auto pass_to = [&](std::u16string_view ends) {
    position = std::min(text.find_first_of(ends, position + 1), text.size());
  };
  while (position < text.size()) {
    const char16_t unit = text[position];
    if (vb::StartsName(unit)) {
      const auto start = position;
      while (position < text.size() && vb::ContinuesName(text[position])) ++position;
      const auto name = text.substr(start, position - start);
      const auto watched = counts.Count(name);
      const bool is_size = start > 0 && text[start - 1] == u'.' && IsSizeMember(name);
      if (is_size || Has(watched, Watched::kAddresses)) places.addresses.push_back(start);
      places.has_ambiguous = places.has_ambiguous || Has(watched, Watched::kAmbiguous);
      continue;
    }
    if (unit == u'\'') pass_to(u"\r\n");
    if (unit == u'"') pass_to(u"\"\r\n");
    ++position;
  }
  return places;
}

void WatchAddresses(NameCounts& names) {
  for (const auto name : vb::AddressFunctions()) names.Watch(name, Watched::kAddresses);
  names.Watch(u"LongPtr", Watched::kAddresses);
}

void WatchVariables(const vb::Variables& variables, NameCounts& names) {
  for (const auto& name : variables.NamesOfType(u"LongPtr")) names.Watch(name, Watched::kAddresses);
}

void WatchMembers(const vb::MemberTypes& members, NameCounts& names) {
  for (const auto& [name, type] : members)
    if (EqualIgnoringCase(type, u"LongPtr")) names.Watch(name, Watched::kAddresses);
}

}  // namespace declarium::check
