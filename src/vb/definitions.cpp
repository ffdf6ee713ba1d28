#include "vb/definitions.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "text/text.h"

namespace declarium::vb {
namespace {

// What stands behind the last dot, lower-cased; without the brackets of "[a name]".
std::u16string Key(std::u16string_view name) {
  if (const auto dot = name.rfind(u'.'); dot != name.npos) name.remove_prefix(dot + 1);
  if (name.starts_with(u'[') && name.ends_with(u']')) name = name.substr(1, name.size() - 2);
  return LowerCase(name);
}

// Any number but 0 is true; nothing without a number.
std::optional<bool> IsTrue(const Evaluated& value) {
  if (!value || value->type == Value::Type::kString) return std::nullopt;
  return value->type == Value::Type::kDouble ? value->real != 0 : value->whole != 0;
}

constexpr int kMostInside = 200;
constexpr const char* kRefersToItself = "it refers to itself";

}  // namespace

std::vector<Branch> BranchesOf(const Module& module, Target target, ProjectConstants constants) {
  const NameLookup none = [](std::u16string_view) -> Evaluated {
    return std::unexpected("not known");
  };
  const NameLookup lookup = [&](std::u16string_view name) -> Evaluated {
    for (const auto& known : {ProjectConstants(module.compiler_constants), constants}) {
      const auto found = std::ranges::find_if(known, [name](const CompilerConstant& constant) {
        return EqualIgnoringCase(constant.name, name);
      });
      // A value of other names would have to be followed through them; it counts as unknown.
      if (found != known.end()) return Evaluate(found->value, none);
    }
    const auto value = CompilerConstantOf(target, name);
    return value ? Evaluated(Value::Integer(*value)) : none(name);
  };
  std::vector<Branch> branches;
  for (const auto& condition : module.conditions) {
    auto branch = Branch::kCompiled;
    for (const auto& part : condition.parts) {
      const auto holds = IsTrue(Evaluate(part.expression, lookup));
      if (holds && *holds != part.is_true) branch = Branch::kLeftOut;
      if (!holds && branch == Branch::kCompiled) branch = Branch::kUnknown;
    }
    branches.push_back(branch);
  }
  return branches;
}

void Definitions::Add(const Module& module, ProjectConstants constants) {
  const auto branches = BranchesOf(module, target_, constants);
  for (const auto& declaration : module.declarations) {
    if (declaration.scope == Scope::kLocal || branches[declaration.condition] == Branch::kLeftOut)
      continue;
    if (const auto* const constant = declaration.As<Constant>()) {
      values_.try_emplace(Key(declaration.name), Named{constant, nullptr, 0, 0, {}, false});
    } else if (const auto* const record = declaration.As<Record>()) {
      records_.try_emplace(Key(declaration.name), NamedRecord{record, {}, false});
    } else if (const auto* const enumeration = declaration.As<Enumeration>()) {
      records_.try_emplace(Key(declaration.name), NamedRecord{});
      AddMembers(*enumeration, branches);
    }
  }
}

void Definitions::AddMembers(const Enumeration& enumeration, const std::vector<Branch>& branches) {
  std::size_t base = 0;
  for (std::size_t i = 0; i < enumeration.members.size(); ++i) {
    if (!enumeration.members[i].value.empty()) base = i;
    if (branches[enumeration.members[i].condition] == Branch::kLeftOut) continue;
    values_.try_emplace(Key(enumeration.members[i].name),
                        Named{nullptr, &enumeration, base, i - base, {}, false});
  }
}

Evaluated Definitions::ValueOf(std::u16string_view name) {
  const auto found = values_.find(Key(name));
  if (found != values_.end()) return Compute(found->second);
  if (outer_ != nullptr) return outer_->ValueOf(name);
  return std::unexpected("\"" + ToUtf8(name) + "\" is not known");
}

Evaluated Definitions::ValueOf(const Constant& constant) {
  auto value = Evaluate(constant.value);
  return value ? ConvertTo(constant.type.name, *value) : value;
}

Evaluated Definitions::Compute(Named& named) {
  if (named.value) return *named.value;
  if (depth_ == kMostInside) return std::unexpected("too many constants in a row");
  if (std::exchange(named.is_open, true)) return std::unexpected(kRefersToItself);
  ++depth_;
  auto value = named.constant != nullptr ? ValueOf(*named.constant) : ValueOfMember(named);
  --depth_;
  named.is_open = false;
  named.value = value;
  return value;
}

Evaluated Definitions::ValueOfMember(const Named& named) {
  const auto& written = named.enumeration->members[named.base].value;
  auto value = written.empty() ? Evaluated(Value::Long(0)) : Evaluate(written);
  if (value) value = ConvertTo(u"Long", *value);
  if (!value) return value;
  return ConvertTo(
      u"Long", Value::Double(static_cast<double>(value->whole) + static_cast<double>(named.above)));
}

Evaluated Definitions::Evaluate(std::u16string_view expression) {
  return vb::Evaluate(expression, [this](std::u16string_view name) { return ValueOf(name); });
}

std::expected<RecordLayout, std::string> Definitions::LayoutOf(const Record& record) {
  return LayOut(
      record, target_,
      [this](std::u16string_view expression) -> std::optional<long> {
        const auto value = Evaluate(expression);
        const auto whole = value ? ConvertTo(u"Long", *value) : value;
        return whole ? std::optional(static_cast<long>(whole->whole)) : std::nullopt;
      },
      [this](std::u16string_view name) { return RecordOf(name); });
}

std::optional<RecordLayout> Definitions::RecordOf(std::u16string_view name) {
  const auto found = records_.find(Key(name));
  if (found == records_.end()) return outer_ != nullptr ? outer_->RecordOf(name) : std::nullopt;
  auto& named = found->second;
  if (named.record == nullptr) return RecordLayout{{4, 4}, {}, {4, 4}, 4};
  if (named.layout) return *named.layout;
  if (depth_ == kMostInside || std::exchange(named.is_open, true)) return std::nullopt;
  ++depth_;
  const auto layout = LayoutOf(*named.record);
  --depth_;
  named.is_open = false;
  named.layout = layout ? std::optional(*layout) : std::nullopt;
  return *named.layout;
}

}  // namespace declarium::vb
