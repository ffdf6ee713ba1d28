#include "audit/alike.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "plan/meaning.h"
#include "text/text.h"

namespace declarium::audit {
namespace {

constexpr auto kTarget = vb::Target::kVb6;

bool HaveSameMembers(const vb::Enumeration& a, const vb::Enumeration& b, vb::Definitions& a_names,
                     vb::Definitions& b_names) {
  return std::ranges::equal(a.members, b.members, [&](const auto& each, const auto& other) {
    if (!EqualIgnoringCase(each.name, other.name)) return false;
    const auto value = a_names.ValueOf(each.name);
    const auto other_value = b_names.ValueOf(other.name);
    return value && other_value && plan::IsSameValue(*value, *other_value);
  });
}

class Comparer {
 public:
  Comparer(plan::ProjectModules& modules, const std::vector<Row>& rows)
      : modules_(modules), rows_(rows) {}

  bool MeanTheSame(std::size_t a, std::size_t b) {
    const auto& [declaration, other] = Declarations(a, b);
    const auto* const enumeration = declaration->As<vb::Enumeration>();
    if (enumeration != nullptr)
      return HaveSameMembers(*enumeration, *other->As<vb::Enumeration>(), NamesFor(a), NamesFor(b));
    return plan::MeanTheSame({declaration, &NamesFor(a)}, {other, &NamesFor(b)});
  }

  // Of rows that mean the same, as far as what is used inside does not matter.
  bool CanExchange(std::size_t a, std::size_t b) {
    const auto& [declaration, other] = Declarations(a, b);
    if (const auto* const constant = declaration->As<vb::Constant>()) {
      const auto value = NamesFor(a).ValueOf(*constant);
      const auto other_value = NamesFor(b).ValueOf(*other->As<vb::Constant>());
      return value && other_value && value->type == other_value->type;
    }
    if (const auto* const external = declaration->As<vb::External>()) {
      return std::ranges::equal(external->parameters, other->As<vb::External>()->parameters,
                                [](const auto& each, const auto& another) {
                                  return EqualIgnoringCase(each.name, another.name);
                                });
    }
    return true;
  }

 private:
  [[nodiscard]] std::pair<const vb::Declaration*, const vb::Declaration*> Declarations(
      std::size_t a, std::size_t b) const {
    return {rows_[a].declaration, rows_[b].declaration};
  }
  vb::Definitions& NamesFor(std::size_t row) {
    return modules_.DefinitionsOf(rows_[row].module, kTarget);
  }

  plan::ProjectModules& modules_;
  const std::vector<Row>& rows_;
};

using Groups = std::map<std::pair<std::size_t, Sort>, std::vector<std::size_t>>;

Groups GroupsOf(const std::vector<Row>& rows, const Uses& uses, const Rest& rest) {
  Groups groups;
  for (std::size_t i = 0; i < rows.size(); ++i)
    if (rest.is_there[i]) groups[{uses.NameOf(i), rows[i].sort}].push_back(i);
  std::erase_if(groups, [](const auto& group) { return group.second.size() < 2; });
  return groups;
}

// What the names inside a row stand for, by the numbers of what is meant.
using Inside = std::set<std::pair<std::size_t, std::size_t>>;

std::vector<Inside> InsideOf(const Uses& uses, const Rest& rest,
                             const std::vector<std::size_t>& numbers) {
  std::vector<Inside> inside(numbers.size());
  const Meant meant(uses, rest);
  for (const auto& use : uses.All()) {
    if (use.inside == kNoRow) continue;
    // What the project does not tell counts by its name.
    inside[use.inside].insert({use.name, kNoRow});
    meant.ForEach(use,
                  [&](std::size_t row) { inside[use.inside].insert({use.name, numbers[row]}); });
  }
  return inside;
}

}  // namespace

Likeness LikenessOf(plan::ProjectModules& modules, const std::vector<Row>& rows, const Uses& uses,
                    const Rest& rest) {
  Likeness likeness;
  for (std::size_t i = 0; i < rows.size(); ++i) likeness.meaning.push_back(i);
  likeness.exchange = likeness.meaning;
  const auto groups = GroupsOf(rows, uses, rest);
  Comparer comparer(modules, rows);
  for (const auto& [name, group] : groups) {
    for (std::size_t i = 1; i < group.size(); ++i) {
      for (std::size_t j = 0; j < i; ++j) {
        const auto first = group[j];
        if (likeness.meaning[first] != first && likeness.exchange[first] != first) continue;
        if (!comparer.MeanTheSame(first, group[i])) continue;
        if (likeness.meaning[group[i]] == group[i])
          likeness.meaning[group[i]] = likeness.meaning[first];
        if (!comparer.CanExchange(first, group[i])) continue;
        likeness.exchange[group[i]] = likeness.exchange[first];
        break;
      }
    }
  }
  // Parting some rows may part those that use them.
  for (bool is_changed = true; is_changed;) {
    is_changed = false;
    const auto inside = InsideOf(uses, rest, likeness.exchange);
    auto parted = likeness.exchange;
    for (const auto& [name, group] : groups) {
      std::map<std::pair<std::size_t, Inside>, std::size_t> firsts;
      for (const auto row : group)
        parted[row] = firsts.try_emplace({likeness.exchange[row], inside[row]}, row).first->second;
    }
    is_changed = parted != likeness.exchange;
    likeness.exchange = std::move(parted);
  }
  return likeness;
}

}  // namespace declarium::audit
