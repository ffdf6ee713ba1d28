#include <algorithm>
#include <cmath>

#include "check/rule_groups.h"
#include "facts/dll_key.h"
#include "text/text.h"
#include "vb/layout.h"
#include "vb/token.h"

namespace declarium::check {
namespace {

using vb::Value;

double NumberOf(const Value& value) {
  return value.type == Value::Type::kDouble ? value.real : static_cast<double>(value.whole);
}

// Whether both are the same 32 bits, whatever their sign.
bool SayTheSame(const Value& a, const Value& b) {
  constexpr double kAll = 4294967296.0;
  const auto difference = std::abs(NumberOf(a) - NumberOf(b));
  return difference == 0 || difference == kAll;
}

std::string ValueText(const Value& value) {
  return value.type == Value::Type::kDouble ? std::to_string(value.real)
                                            : std::to_string(value.whole);
}

// Whether a literal is 16 bits with the highest set and does not say that it is a Long.
bool IsNegativeHexadecimal(std::u16string_view literal) {
  if (literal.size() < 6 || !EqualIgnoringCase(literal.substr(0, 2), u"&H")) return false;
  auto digits = literal.substr(2);
  while (digits.size() > 1 && digits.front() == u'0') digits.remove_prefix(1);
  const auto is_hexadecimal = [](char16_t unit) {
    return IsDigit(unit) || (LowerCase(unit) >= u'a' && LowerCase(unit) <= u'f');
  };
  return digits.size() == 4 && std::ranges::all_of(digits, is_hexadecimal) &&
         !(IsDigit(digits.front()) && digits.front() < u'8');
}

bool IsLongType(const vb::TypeReference& type) {
  constexpr std::u16string_view kTypes[] = {u"Long", u"LongPtr", u"LongLong", u"Currency",
                                            u"Double"};
  return std::ranges::any_of(kTypes, [&](auto name) { return IsType(type, name); });
}

// Where the literals of the constant's value stand that are negative without saying so.
std::vector<std::u16string_view> NegativeLiterals(const vb::Constant& constant) {
  std::vector<std::u16string_view> literals;
  vb::Tokenizer tokens(constant.value);
  for (auto token = tokens.NextSignificant(); token.kind != vb::TokenKind::kEnd;
       token = tokens.NextSignificant()) {
    if (token.kind == vb::TokenKind::kNumber && IsNegativeHexadecimal(token.text))
      literals.push_back(token.text);
  }
  return literals;
}

void CheckConstant(ModuleContext& module, const vb::Declaration& declaration,
                   const vb::Constant& constant) {
  const auto known = module.whole.Libraries().ValueOf(declaration.name);
  const auto value = module.Definitions32().ValueOf(constant);
  const bool is_text = value && value->type == Value::Type::kString;
  const bool is_known_text = known && known->type == Value::Type::kString;
  const bool compares = known && value && !is_text && !is_known_text;
  const bool agrees = compares && SayTheSame(*known, *value);
  if (agrees) return;
  const auto literals = NegativeLiterals(constant);
  constexpr double kUnsigned = 65536;
  // One without a type may well be meant as 16 bits, unless the library says otherwise.
  const bool is_meant_positive =
      compares && literals.size() == 1 && NumberOf(*known) == NumberOf(*value) + kUnsigned;
  if (!literals.empty() && (IsLongType(constant.type) || is_meant_positive)) {
    for (const auto literal : literals) {
      auto& finding = module.Report(
          RuleId::kNegativeHexadecimal, declaration, module.PlaceOf(declaration, literal),
          ToUtf8(literal) + " is negative; " + ToUtf8(literal) + "& is not");
      finding.edits = {module.Behind(literal, u"&")};
    }
    return;
  }
  if (!compares || declaration.scope == vb::Scope::kLocal) return;
  module.Report(RuleId::kConstantDiffers, declaration, declaration.name_place,
                ToUtf8(declaration.name) + " is " + ValueText(*value) + " here and " +
                    ValueText(*known) + " in the library");
}

std::size_t MemberNamed(const vb::Record& record, std::u16string_view name) {
  const auto found = std::ranges::find_if(record.members, [name](const vb::Member& member) {
    return EqualIgnoringCase(member.name, name);
  });
  return static_cast<std::size_t>(found - record.members.begin());
}

// Compares a record with the library's of its name. Old versions end earlier, so only places count,
// and a size beyond the library's.
void CheckRecord(ModuleContext& module, const vb::Declaration& declaration,
                 const vb::Record& record) {
  if (!module.SystemsOf(declaration).Have32Bits()) return;
  auto& libraries = module.whole.Libraries();
  const auto* const row = libraries.FindRecord(declaration.name);
  if (row == nullptr) return;
  const auto layout = module.Definitions32().LayoutOf(record);
  const auto known = libraries.LayoutOf(declaration.name, vb::Target::kVb6);
  if (!layout || !known) return;
  const auto& known_record = *row->declaration->As<vb::Record>();
  std::size_t matched = 0;
  for (std::size_t i = 0; i < record.members.size(); ++i) {
    const auto other = MemberNamed(known_record, record.members[i].name);
    if (other == known_record.members.size()) continue;
    ++matched;
    if (layout->places[i].offset == known->places[other].offset) continue;
    module.Report(RuleId::kRecordDiffers, declaration, record.members[i].place,
                  ToUtf8(record.members[i].name) + " is at byte " +
                      std::to_string(layout->places[i].offset) + " here and at " +
                      std::to_string(known->places[other].offset) + " in the library");
    return;
  }
  const bool has_same_members =
      matched == record.members.size() && matched == known_record.members.size();
  if (!has_same_members || layout->extent.size <= known->extent.size) return;
  module.Report(RuleId::kRecordDiffers, declaration, declaration.name_place,
                ToUtf8(declaration.name) + " has " + std::to_string(layout->extent.size) +
                    " bytes here and " + std::to_string(known->extent.size) + " in the library");
}

// Whether the procedure is told how long its records are, or the record says it.
bool TellsSize(const vb::External& external, const vb::Record& known) {
  const auto& last = known.members.back();
  return IsSizeMember(known.members.front().name) || last.is_array ||
         std::ranges::any_of(external.parameters, [](const vb::Parameter& parameter) {
           const auto name = LowerCase(parameter.name);
           return IsSizeMember(name) || name.contains(u"len") || name.contains(u"count");
         });
}

void CheckPassedRecords(ModuleContext& module, const vb::Declaration& declaration,
                        const vb::External& external) {
  auto& libraries = module.whole.Libraries();
  const auto* const known = libraries.FindEntry(
      DllKey(external.library), external.EntryOr(declaration.name), declaration.name);
  if (known == nullptr || known->External().parameters.size() != external.parameters.size() ||
      !module.SystemsOf(declaration).Have32Bits())
    return;
  for (std::size_t i = 0; i < external.parameters.size(); ++i) {
    const auto& parameter = external.parameters[i];
    const auto* const facts = known->FactsOf(i);
    const auto& right = known->External().parameters[i];
    const auto* const record = module.whole.FindRecord(parameter.type.name, module.module);
    const auto* const row = libraries.FindRecord(right.type.name);
    const bool is_written = facts != nullptr && facts->is_out;
    if (record == nullptr || row == nullptr || !is_written || parameter.is_array ||
        parameter.passing == vb::Passing::kByValue)
      continue;
    const auto& known_record = *row->declaration->As<vb::Record>();
    const auto layout = module.Definitions32().LayoutOf(*record);
    const auto wanted = libraries.LayoutOf(right.type.name, vb::Target::kVb6);
    if (!layout || !wanted || known_record.members.empty() ||
        layout->extent.size >= wanted->extent.size || TellsSize(known->External(), known_record))
      continue;
    module.Report(RuleId::kRecordTooSmall, declaration, parameter.place,
                  ToUtf8(parameter.type.name) + " has " + std::to_string(layout->extent.size) +
                      " bytes, and " + std::to_string(wanted->extent.size) + " are written (" +
                      ToUtf8(right.type.name) + ")");
  }
}

// Whether Len leaves out bytes of the record.
bool IsPadded(const vb::Record& record, vb::Definitions& definitions) {
  const auto layout = definitions.LayoutOf(record);
  return layout && layout->written != layout->extent.size;
}

bool LenBIsSize(const vb::Record& record, vb::Definitions& definitions) {
  const auto layout = definitions.LayoutOf(record);
  return layout && layout->in_memory.size == layout->extent.size;
}

void CheckSizes(ModuleContext& module, const vb::Code& code) {
  const bool has_32 = module.SystemsOf(0).Have32Bits();
  const bool has_64 = module.SystemsOf(0).Have64Bits();
  for (const auto& size : code.sizes) {
    const auto* const record = module.FindSizedRecord(size.record, size.member);
    if (record == nullptr || !EqualIgnoringCase(size.value, u"Len")) continue;
    const bool is_padded = (has_32 && IsPadded(*record, module.Definitions32())) ||
                           (has_64 && IsPadded(*record, module.Definitions64()));
    if (!is_padded) continue;
    auto& finding =
        module.Report(RuleId::kLenOfPaddedRecord, size.place, size.record,
                      "Len leaves out bytes between the members of " + ToUtf8(size.record));
    if (LenBIsSize(*record, module.Definitions32()))
      finding.edits = {module.Replacing(size.value, u"LenB")};
  }
}

}  // namespace

void CheckValues(ModuleContext& module, const vb::Code& code) {
  for (const auto& declaration : module.parsed.declarations) {
    if (!module.SystemsOf(declaration).Any()) continue;
    if (const auto* const constant = declaration.As<vb::Constant>())
      CheckConstant(module, declaration, *constant);
    if (const auto* const record = declaration.As<vb::Record>())
      CheckRecord(module, declaration, *record);
    if (const auto* const external = declaration.As<vb::External>())
      CheckPassedRecords(module, declaration, *external);
  }
  CheckSizes(module, code);
}

}  // namespace declarium::check
