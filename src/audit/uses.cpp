#include "audit/uses.h"

#include "text/text.h"
#include "vb/name_use.h"

namespace declarium::audit {

Uses::Uses(const Subject& subject, const plan::ProjectModules& modules,
           const std::vector<Row>& rows, const RowFinder& finder)
    : rows_(rows), inside_(rows.size()) {
  for (std::size_t i = 0; i < rows.size(); ++i) {
    AddName(rows[i].declaration->name, i);
    names_of_rows_.push_back(names_.find(lowered_)->second);
    if (const auto* const enumeration = rows[i].declaration->As<vb::Enumeration>()) {
      for (const auto& member : enumeration->members) AddName(member.name, i);
    }
  }
  of_names_.resize(rows_of_.size());
  std::unordered_map<std::u16string, std::size_t> positions;
  for (std::size_t i = 0; i < modules.Size(); ++i)
    positions.try_emplace(LowerCase(modules.NameOf(i)), i);
  for (std::size_t i = 0; i < subject.modules.size(); ++i)
    ReadModule(subject, i, finder, positions);
}

std::size_t Uses::FilterBit(std::u16string_view name) {
  if (name.empty()) return 0;
  const auto middle = LowerCase(name[name.size() / 2]);
  const auto ends = LowerCase(name.front()) * std::size_t{31} + LowerCase(name.back());
  return ((ends * 31 + middle) * 31 + name.size()) % kFilterBits;
}

void Uses::AddName(std::u16string_view name, std::size_t row) {
  LowerCaseInto(vb::WithoutBrackets(name), lowered_);
  filter_[FilterBit(lowered_)] = true;
  const auto [known, is_new] = names_.try_emplace(lowered_, rows_of_.size());
  if (is_new) rows_of_.emplace_back();
  auto& rows = rows_of_[known->second];
  if (rows.empty() || rows.back() != row) rows.push_back(row);
}

void Uses::ReadModule(const Subject& subject, std::size_t module, const RowFinder& finder,
                      const std::unordered_map<std::u16string, std::size_t>& modules) {
  const auto& [name, text, parsed] = subject.modules[module];
  for (const auto& read : vb::ReadNameUses(text, *parsed)) {
    if (!filter_[FilterBit(read.name)]) continue;
    LowerCaseInto(read.name, lowered_);
    const auto known = names_.find(lowered_);
    if (known == names_.end()) continue;
    Use use{known->second, module, {}, finder.Find(module, read.place.offset), read.place.line};
    if (!read.qualifier.empty()) {
      const auto last = read.qualifier.substr(read.qualifier.rfind(u'.') + 1);
      const auto found = modules.find(LowerCase(vb::WithoutBrackets(last)));
      if (found != modules.end()) use.qualifier = found->second;
    }
    of_names_[use.name].push_back(uses_.size());
    if (use.inside != kNoRow) inside_[use.inside].push_back(uses_.size());
    uses_.push_back(use);
  }
}

std::vector<bool> Uses::Needed(const Rest& rest, const std::vector<std::size_t>& kept) const {
  std::vector<bool> is_needed(rows_.size());
  std::vector<std::size_t> open;
  const auto need = [&](std::size_t row) {
    if (is_needed[row]) return;
    is_needed[row] = true;
    open.push_back(row);
  };
  for (std::size_t i = 0; i < rows_.size(); ++i)
    if (rest.is_there[i] && rows_[i].may_be_used_elsewhere) need(i);
  for (const auto row : kept) need(row);
  const Meant meant(*this, rest);
  for (const auto& use : uses_)
    if (use.inside == kNoRow) meant.ForEach(use, need);
  while (!open.empty()) {
    const auto row = open.back();
    open.pop_back();
    for (const auto use : inside_[row]) meant.ForEach(uses_[use], need);
  }
  return is_needed;
}

Meant::Meant(const Uses& uses, const Rest& rest)
    : uses_(uses), rest_(rest), public_rows_(uses.rows_of_.size()) {
  for (std::size_t name = 0; name < public_rows_.size(); ++name)
    for (const auto row : uses.rows_of_[name])
      if (rest.is_there[row] && rest.is_public[row]) public_rows_[name].push_back(row);
}

}  // namespace declarium::audit
