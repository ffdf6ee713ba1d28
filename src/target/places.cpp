#include "target/places.h"

#include <algorithm>

#include "check/context.h"
#include "text/text.h"

namespace declarium {
namespace {

constexpr std::u16string_view kLongPtr = u"LongPtr";

// As the Declare is in its new form.
vb::AddressPassing PassingOf(const vb::External& external, const FormFor64& form) {
  if (!form.signature.empty()) {
    const auto text =
        (external.is_function ? u"Declare Function F Lib \"\" " : u"Declare Sub F Lib \"\" ") +
        form.signature;
    const auto module = vb::ReadModule(text);
    if (!module.declarations.empty())
      return vb::AddressPassingOf(*module.declarations.front().As<vb::External>());
  }
  auto passing = vb::AddressPassingOf(external);
  passing.returns_address = passing.returns_address || form.result == kLongPtr;
  for (std::size_t i = 0; i < form.types.size() && i < external.parameters.size(); ++i) {
    const auto& parameter = external.parameters[i];
    if (form.types[i] == kLongPtr && !parameter.is_array &&
        parameter.passing == vb::Passing::kByReference)
      passing.by_reference[i] = true;
  }
  return passing;
}

// "Name As Type"
vb::MemberType MemberIn(std::u16string_view text) {
  constexpr std::u16string_view kAs = u" As ";
  const auto as = text.find(kAs);
  if (as == text.npos) return {text, {}};
  return {text.substr(0, std::min(as, text.find(u'('))), text.substr(as + kAs.size())};
}

std::vector<bool> BranchesToRead(const vb::Module& module, vb::Target target,
                                 vb::ProjectConstants constants) {
  std::vector<bool> is_read;
  for (const auto branch : vb::BranchesOf(module, target, constants))
    is_read.push_back(branch != vb::Branch::kLeftOut);
  return is_read;
}

PlaceToLookAt PlaceOf(const vb::AddressInLong& found) {
  const auto variable = ToUtf8(found.variable);
  const auto source = ToUtf8(found.source);
  const bool is_assigned = found.how == vb::AddressInLong::How::kAssigned;
  return {found.place, found.variable,
          is_assigned ? source + " gives an address, " + variable + " is a Long"
                      : source + " writes an address to " + variable + ", which is a Long",
          found.statement};
}

// A number that a member gets which holds no size is just a number.
bool IsSize(const vb::RecordSize& found) {
  return !found.IsNumber() || check::IsSizeMember(found.member);
}

PlaceToLookAt PlaceOf(const vb::RecordSize& found) {
  const auto record = ToUtf8(found.record);
  return {found.place, found.record,
          ToUtf8(found.value) + (found.IsNumber() ? " is a size of " : " measures ") + record +
              ", whose layout changes",
          found.statement};
}

}  // namespace

Places::Places(std::vector<ModuleWithForms> modules, vb::Target target,
               vb::ProjectConstants constants)
    : modules_(std::move(modules)) {
  check::WatchAddresses(names_);
  for (const auto& module : modules_)
    branches_.push_back(BranchesToRead(*module.parsed, target, constants));
  for (std::size_t i = 0; i < modules_.size(); ++i) {
    AddDeclarations(i);
    if (modules_[i].parsed->kind == vb::ModuleKind::kStandard)
      vb::AddPublicVariables({modules_[i].text, *modules_[i].parsed, branches_[i]},
                             surroundings_.PublicVariables());
  }
  check::WatchVariables(surroundings_.PublicVariables(), names_);
  FollowChanges();
  if (changed_.empty()) return;
  names_.Watch(u"Len", check::Watched::kAddresses);
  names_.Watch(u"LenB", check::Watched::kAddresses);
}

void Places::AddDeclarations(std::size_t module) {
  const auto& [text, parsed, forms] = modules_[module];
  for (std::size_t i = 0; i < parsed->declarations.size(); ++i) {
    const auto& declaration = parsed->declarations[i];
    if (!branches_[module][declaration.condition]) continue;
    if (const auto* const external = declaration.As<vb::External>()) {
      auto passing = PassingOf(*external, forms[i]);
      if (passing.IsAny()) names_.Watch(declaration.name, check::Watched::kAddresses);
      surroundings_.AddProcedure(module, declaration, std::move(passing));
    }
    if (const auto* const record = declaration.As<vb::Record>())
      AddRecord(module, declaration, *record, forms[i]);
  }
}

void Places::AddRecord(std::size_t module, const vb::Declaration& declaration,
                       const vb::Record& record, const FormFor64& form) {
  vb::MemberTypes members;
  for (const auto& member : form.members) members.push_back(MemberIn(member));
  for (std::size_t i = 0; form.members.empty() && i < record.members.size(); ++i) {
    const auto& member = record.members[i];
    const bool is_other = i < form.types.size() && !form.types[i].empty();
    members.push_back(
        {member.name, is_other ? std::u16string_view(form.types[i]) : member.type.name});
  }
  check::WatchMembers(members, names_);
  const auto lowered = LowerCase(declaration.name);
  if (!form.IsSame()) changed_.insert(lowered);
  records_.emplace_back(lowered, members);
  surroundings_.AddRecord(module, declaration, std::move(members));
}

// A record that holds one which changes does so too.
void Places::FollowChanges() {
  if (changed_.empty()) return;
  for (bool is_more = true; is_more;) {
    is_more = false;
    for (const auto& [name, members] : records_) {
      const bool holds_changed = std::ranges::any_of(
          members, [&](const auto& member) { return changed_.contains(LowerCase(member.type)); });
      is_more = (holds_changed && changed_.insert(name).second) || is_more;
    }
  }
}

std::vector<PlaceToLookAt> Places::In(std::size_t module) {
  const auto text = modules_[module].text;
  const auto watched = check::CountNames(text, names_);
  if (watched.addresses.empty()) return {};
  const auto code = vb::ReadCode({text, *modules_[module].parsed, branches_[module]}, surroundings_,
                                 module, watched.addresses);
  std::vector<PlaceToLookAt> places;
  places.reserve(code.addresses.size() + code.sizes.size());
  for (const auto& address : code.addresses) places.push_back(PlaceOf(address));
  for (const auto& size : code.sizes)
    if (IsSize(size) && changed_.contains(LowerCase(size.record))) places.push_back(PlaceOf(size));
  std::ranges::sort(places, {}, [](const auto& each) { return each.place.offset; });
  return places;
}

}  // namespace declarium
