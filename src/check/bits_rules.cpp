#include <algorithm>

#include "check/rule_groups.h"
#include "facts/dll_key.h"
#include "text/text.h"
#include "vb/number.h"

namespace declarium::check {
namespace {

void CheckPtrSafe(const ModuleContext& module, const vb::Declaration& declaration,
                  const vb::External& external) {
  const auto& systems = module.SystemsOf(declaration);
  if (!systems.vba64 || external.is_ptr_safe) return;
  auto& finding = module.Report(RuleId::kPtrSafeMissing, declaration, declaration.place,
                                "64-bit Office wants PtrSafe behind Declare");
  // Visual Basic 6.0 would refuse the word in a line that it reads too.
  if (systems.vb6) return;
  const auto at = LowerCase(declaration.text).find(u"declare");
  finding.edits = {module.Behind(declaration.text.substr(at, 7), u" PtrSafe")};
}

// What mends a type for 64 bits; nothing where Visual Basic 6.0 reads the line too.
std::vector<Edit> WithLongPtr(const ModuleContext& module, const vb::Declaration& declaration,
                              const vb::TypeReference& type) {
  if (module.SystemsOf(declaration).vb6 || !type.is_written || !module.Holds(type.name)) return {};
  return {module.Replacing(type.name, u"LongPtr")};
}

void ReportLong(const ModuleContext& module, const vb::Declaration& declaration,
                const vb::Place& place, std::string message, std::vector<Edit> edits) {
  auto& finding = module.Report(RuleId::kLongForAddress, declaration, place, std::move(message));
  finding.edits = std::move(edits);
}

void CheckParameter(const ModuleContext& module, const vb::Declaration& declaration,
                    const vb::Parameter& parameter, const vb::Parameter& known,
                    const ValueFacts& facts) {
  if (parameter.is_array) return;
  const bool is_by_value = parameter.passing == vb::Passing::kByValue;
  const bool is_address = facts.type64.ends_with('*');
  // What stands at an address that is passed by reference, or else what is passed.
  const bool grows =
      is_by_value ? is_address || facts.type64 == "LongPtr" : facts.type64 == "LongPtr*";
  const auto what = ToUtf8(parameter.name) + " (" + std::string(facts.c_type) + ")";
  if (IsType(parameter.type, u"Long") && grows) {
    // The callers' variables must have the type of what is passed by reference.
    ReportLong(
        module, declaration, parameter.place, what + " has 64 bits there: LongPtr",
        is_by_value ? WithLongPtr(module, declaration, parameter.type) : std::vector<Edit>());
  }
  const bool is_number = facts.type64 == "*" && IsType(known.type, u"Long") &&
                         known.passing == vb::Passing::kByReference;
  if (!is_by_value && is_number && IsType(parameter.type, u"LongPtr")) {
    module.Report(RuleId::kLongPtrForNumber, declaration, parameter.place,
                  what + " is a number of 32 bits: Long");
  }
}

void CheckResult(const ModuleContext& module, const vb::Declaration& declaration,
                 const vb::External& external, const KnownProcedure& known) {
  if (!IsType(external.result, u"Long") || known.Result64() != "LongPtr") return;
  ReportLong(module, declaration, module.PlaceOf(declaration, external.result.name),
             "the result has 64 bits there: LongPtr", {});
}

void CheckExternalFor64(const ModuleContext& module, const vb::Declaration& declaration,
                        const vb::External& external) {
  CheckPtrSafe(module, declaration, external);
  const auto* const known = module.whole.Libraries().FindEntry(
      DllKey(external.library), external.EntryOr(declaration.name), declaration.name);
  if (known == nullptr || !known->HasFactsFor64()) return;
  CheckResult(module, declaration, external, *known);
  const auto& parameters = known->External().parameters;
  if (parameters.size() != external.parameters.size()) return;
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    if (const auto* const facts = known->FactsOf(i))
      CheckParameter(module, declaration, external.parameters[i], parameters[i], *facts);
  }
}

void CheckRecord(const ModuleContext& module, const vb::Declaration& declaration,
                 const vb::Record& record) {
  const auto* const row = module.whole.Libraries().FindRecord(declaration.name);
  if (row == nullptr || !row->HasFactsFor64()) return;
  for (const auto& member : record.members) {
    const auto known = std::ranges::find_if(row->facts->values, [&](const ValueFacts& value) {
      return EqualIgnoringCase(FromUtf8(value.name), member.name);
    });
    const bool grows = known != row->facts->values.end() && known->type64 == "LongPtr";
    if (!grows || member.is_array || !IsType(member.type, u"Long")) continue;
    module.Report(RuleId::kLongMemberForAddress, declaration, member.place,
                  ToUtf8(member.name) + " (" + std::string(known->c_type) +
                      ") has 64 bits in the library's record: LongPtr");
  }
}

void CheckAddresses(const ModuleContext& module, const vb::Code& code) {
  for (const auto& address : code.addresses) {
    const bool is_assigned = address.how == vb::AddressInLong::How::kAssigned;
    module.Report(RuleId::kAddressIntoLong, address.place, address.variable,
                  ToUtf8(address.source) +
                      (is_assigned ? " has 64 bits there, " : " writes 64 bits there, ") +
                      ToUtf8(address.variable) + " is a Long");
  }
}

void CheckSizes(ModuleContext& module, const vb::Code& code) {
  for (const auto& size : code.sizes) {
    const auto* const record = module.FindSizedRecord(size.record, size.member);
    if (record == nullptr || !size.IsNumber()) continue;
    const auto small = module.Definitions32().LayoutOf(*record);
    const auto large = module.Definitions64().LayoutOf(*record);
    if (!small || !large || small->extent.size == large->extent.size) continue;
    const bool is_right_there = Val(size.value) == static_cast<double>(large->extent.size);
    if (is_right_there && !module.SystemsOf(size.condition).Have32Bits()) continue;
    module.Report(RuleId::kSizeAsNumber, size.place, size.record,
                  ToUtf8(size.record) + " has " + std::to_string(small->extent.size) +
                      " bytes in 32 bits and " + std::to_string(large->extent.size) + " in 64");
  }
}

}  // namespace

void CheckBits(ModuleContext& module, const vb::Code& code) {
  if (!module.whole.Checks64Bits()) return;
  for (const auto& declaration : module.parsed.declarations) {
    if (!module.SystemsOf(declaration).Have64Bits()) continue;
    if (const auto* const external = declaration.As<vb::External>())
      CheckExternalFor64(module, declaration, *external);
    if (const auto* const record = declaration.As<vb::Record>())
      CheckRecord(module, declaration, *record);
  }
  CheckAddresses(module, code);
  CheckSizes(module, code);
}

}  // namespace declarium::check
