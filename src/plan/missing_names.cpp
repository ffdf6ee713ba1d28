#include "plan/missing_names.h"

#include <algorithm>
#include <map>
#include <set>

#include "plan/meaning.h"
#include "source/item_text.h"
#include "text/text.h"
#include "vb/layout.h"
#include "vb/runtime_names.h"

namespace declarium::plan {
namespace {

using vb::UseKind;

// What the uses of one name say about it.
struct Asked {
  const vb::NameUse* first;
  std::set<Kind> kinds;  // what it can be by its uses so far
  bool is_variable = false;
};

std::set<Kind> KindsOf(UseKind use) {
  switch (use) {
    case UseKind::kType:
      return {Kind::kType};
    case UseKind::kCall:
      return {Kind::kDeclare};
    case UseKind::kMeasured:
      return {Kind::kConst, Kind::kType};
    case UseKind::kValue:
      return {Kind::kConst, Kind::kDeclare};
    case UseKind::kAssigned:
      break;
  }
  return {};
}

// Whether both items mean the same by themselves, read as source.
bool AreAlike(const ItemView& a, const ItemView& b) {
  if (a.kind != b.kind) return false;
  const auto a_text = ItemText(a.kind, a.name, a.item);
  const auto b_text = ItemText(b.kind, b.name, b.item);
  const auto a_module = vb::ReadModule(a_text);
  const auto b_module = vb::ReadModule(b_text);
  if (a_module.declarations.empty() || b_module.declarations.empty()) return a_text == b_text;
  vb::Definitions a_definitions(vb::Target::kVb6);
  vb::Definitions b_definitions(vb::Target::kVb6);
  return MeanTheSame({&a_module.declarations.front(), &a_definitions},
                     {&b_module.declarations.front(), &b_definitions});
}

class Finder {
 public:
  Finder(ProjectModules& project, std::size_t module, std::span<const Library* const> libraries,
         vb::Audience target)
      : project_(project),
        module_(module),
        libraries_(libraries),
        branches_(project.BranchesOf(
            module, target == vb::Audience::kVb6 ? vb::Target::kVb6 : vb::Target::kVba7x64)),
        is_designer_(project.At(module).parsed->kind != vb::ModuleKind::kStandard) {}

  std::vector<MissingName> Find() {
    const auto& module = project_.At(module_);
    const auto uses = vb::ReadNameUses(module.text, *module.parsed);
    for (const auto& use : uses) Take(use);
    std::vector<MissingName> missing;
    for (const auto& key : order_) {
      const auto& asked = asked_.at(key);
      if (asked.is_variable) continue;
      auto candidates = CandidatesFor(*asked.first, asked.kinds);
      if (!candidates.empty())
        missing.push_back(
            {std::u16string(asked.first->name), asked.first->place, std::move(candidates)});
    }
    return missing;
  }

 private:
  // Types and values are names of their own.
  using NameKey = std::pair<bool, std::u16string>;

  void Take(const vb::NameUse& use) {
    if (!use.qualifier.empty() || branches_[use.condition] == vb::Branch::kLeftOut) return;
    const bool is_type = use.kind == UseKind::kType;
    const NameKey key(is_type, LowerCase(use.name));
    const auto known = asked_.find(key);
    if (known != asked_.end()) return Narrow(known->second, use.kind);
    if (known_.contains(key)) return;
    if (IsKnown(use)) {
      known_.insert(key);
      return;
    }
    order_.push_back(key);
    Narrow(asked_.emplace(key, Asked{&use, {}, false}).first->second, use.kind);
  }

  static void Narrow(Asked& asked, UseKind use) {
    if (use == UseKind::kAssigned) asked.is_variable = true;
    const auto kinds = KindsOf(use);
    if (asked.kinds.empty()) {
      asked.kinds = kinds;
      return;
    }
    std::set<Kind> both;
    std::ranges::set_intersection(asked.kinds, kinds, std::inserter(both, both.end()));
    // Uses that contradict each other: a procedure may be called with and without arguments, and
    // nothing else fits both.
    if (both.empty()) {
      asked.is_variable = true;
    } else {
      asked.kinds = both;
    }
  }

  // Whether the language, the runtime or the project declares it.
  [[nodiscard]] bool IsKnown(const vb::NameUse& use) const {
    if (!project_.Names().MeaningsOf(module_, use).empty()) return true;
    if (use.kind == UseKind::kType)
      return vb::BuiltInExtent(use.name, vb::Target::kVba7x64) || vb::IsRuntimeType(use.name);
    return vb::IsRuntimeValue(use.name) || (is_designer_ && vb::IsMemberOfDesigner(use.name));
  }

  [[nodiscard]] std::vector<Candidate> CandidatesFor(const vb::NameUse& use,
                                                     const std::set<Kind>& kinds) const {
    std::vector<Candidate> candidates;
    for (std::size_t i = 0; i < libraries_.size(); ++i) {
      for (const auto kind : kinds) {
        const auto item = FindItem(*libraries_[i], kind, use.name);
        if (!item) continue;
        const bool is_known = std::ranges::any_of(
            candidates, [&](const Candidate& other) { return AreAlike(other.item, *item); });
        if (!is_known) candidates.push_back({i, *item});
      }
    }
    return candidates;
  }

  ProjectModules& project_;
  std::size_t module_;
  std::span<const Library* const> libraries_;
  const std::vector<vb::Branch>& branches_;
  bool is_designer_;
  std::map<NameKey, Asked> asked_;
  std::set<NameKey> known_;
  std::vector<NameKey> order_;
};

}  // namespace

std::vector<MissingName> FindMissing(ProjectModules& project, std::size_t module,
                                     std::span<const Library* const> libraries,
                                     vb::Audience target) {
  return Finder(project, module, libraries, target).Find();
}

std::vector<ItemView> CertainItems(std::span<const MissingName> missing) {
  std::vector<ItemView> items;
  for (const auto& name : missing)
    if (!name.IsAmbiguous()) items.push_back(name.candidates.front().item);
  return items;
}

}  // namespace declarium::plan
