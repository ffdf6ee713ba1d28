#include <algorithm>
#include <array>

#include "check/rule_groups.h"
#include "facts/dll_key.h"
#include "text/text.h"
#include "vb/layout.h"

namespace declarium::check {
namespace {

// A parameter with what a library says of it.
struct Passed {
  const vb::Parameter& parameter;
  const vb::Parameter& known;
  const ValueFacts* facts;  // null where there are none
  CType type;

  [[nodiscard]] bool IsByValue() const { return parameter.passing == vb::Passing::kByValue; }
  [[nodiscard]] bool IsWritten() const { return facts != nullptr && facts->is_out; }
};

bool IsOneOf(const vb::TypeReference& type, std::initializer_list<std::u16string_view> names) {
  return std::ranges::any_of(names, [&](auto name) { return IsType(type, name); });
}

bool IsShort(const vb::TypeReference& type) {
  return IsOneOf(type, {u"Integer", u"Boolean"});
}

bool IsNumber(const ModuleContext& module, const vb::Parameter& parameter) {
  if (parameter.is_array || parameter.is_param_array) return false;
  const auto& type = parameter.type;
  if (IsOneOf(type, {u"Long", u"Integer", u"Byte", u"Boolean", u"Single", u"Double", u"Currency",
                     u"LongPtr", u"LongLong"}))
    return true;
  const auto* const declared = module.whole.FindType(type.name, module.module);
  return declared != nullptr && declared->declaration->As<vb::Enumeration>() != nullptr;
}

// What makes a parameter ByVal: the word put in front of its name, or over ByRef.
Edit WithByVal(const ModuleContext& module, const vb::Parameter& parameter) {
  constexpr std::u16string_view kWord = u"ByRef";
  const auto start = parameter.place.offset;
  if (parameter.is_passing_written) {
    auto at = start;
    while (at > 0 && (module.text[at - 1] == u' ' || module.text[at - 1] == u'\t')) --at;
    if (at >= kWord.size() &&
        EqualIgnoringCase(module.text.substr(at - kWord.size(), kWord.size()), kWord))
      return {at - kWord.size(), kWord.size(), u"ByVal"};
  }
  return {start, 0, u"ByVal "};
}

// Gives the type the name Long, or LongPtr where it is an address that 64-bit systems read.
std::vector<Edit> WithLong(const ModuleContext& module, const vb::Declaration& declaration,
                           const vb::TypeReference& type, CType c_type) {
  if (!type.is_written || !module.Holds(type.name)) return {};
  const bool is_wide = GrowsIn64Bits(c_type) && module.SystemsOf(declaration).Have64Bits();
  if (is_wide && module.SystemsOf(declaration).vb6) return {};
  return {module.Replacing(type.name, is_wide ? u"LongPtr" : u"Long")};
}

void CheckPassing(const ModuleContext& module, const vb::Declaration& declaration,
                  const Passed& passed) {
  const auto& parameter = passed.parameter;
  const auto name = ToUtf8(parameter.name);
  const bool is_value = passed.type == CType::kShort || passed.type == CType::kNumber ||
                        passed.type == CType::kBool || passed.type == CType::kHandle;
  const bool knows_value = is_value && passed.known.passing == vb::Passing::kByValue;
  if (knows_value && !passed.IsByValue() && IsNumber(module, parameter)) {
    auto& finding = module.Report(
        RuleId::kByValMissing, declaration, parameter.place,
        "the procedure takes the value of " + name + ", not its address: ByVal is missing");
    finding.edits = {WithByVal(module, parameter)};
    return;
  }
  const bool is_text = IsType(parameter.type, u"String") && !parameter.is_array;
  if (passed.type == CType::kText && is_text && !passed.IsByValue()) {
    auto& finding = module.Report(RuleId::kTextByReference, declaration, parameter.place,
                                  "the procedure takes the text " + name +
                                      ", not the address of its address: ByVal is missing");
    finding.edits = {WithByVal(module, parameter)};
    return;
  }
  const bool writes_number = passed.known.passing == vb::Passing::kByReference &&
                             IsNumber(module, passed.known) && passed.IsWritten() &&
                             !passed.facts->is_optional;
  if (writes_number && passed.IsByValue() && IsOneOf(parameter.type, {u"Long", u"LongPtr"})) {
    module.Report(RuleId::kByValForResult, declaration, parameter.place,
                  "the procedure writes to the address that " + name + " is");
  }
}

void CheckWidth(const ModuleContext& module, const vb::Declaration& declaration,
                const Passed& passed) {
  const auto& parameter = passed.parameter;
  const auto& type = parameter.type;
  if (parameter.is_array) return;
  const auto name = ToUtf8(parameter.name);
  const bool is_short_bool = passed.type == CType::kBool && IsShort(type);
  const bool is_bool_number = passed.type == CType::kNumber && IsType(type, u"Boolean");
  if (passed.IsByValue() && (is_short_bool || is_bool_number)) {
    auto& finding = module.Report(RuleId::kShortBoolean, declaration, parameter.place,
                                  name + " has 32 bits, " + ToUtf8(type.name) + " has 16");
    finding.edits = WithLong(module, declaration, type, passed.type);
    return;
  }
  const bool is_address = GrowsIn64Bits(passed.type) && passed.type != CType::kWide;
  if (passed.IsByValue() && is_address && (IsShort(type) || IsType(type, u"Byte"))) {
    auto& finding = module.Report(RuleId::kShortHandle, declaration, parameter.place,
                                  name + " is a handle or an address, which has 32 bits");
    finding.edits = WithLong(module, declaration, type, passed.type);
    return;
  }
  const bool writes_long = passed.known.passing == vb::Passing::kByReference &&
                           IsOneOf(passed.known.type, {u"Long", u"Currency", u"Double"}) &&
                           !passed.known.is_array && passed.IsWritten();
  if (writes_long && !passed.IsByValue() && IsShort(type)) {
    module.Report(RuleId::kNarrowVariable, declaration, parameter.place,
                  "the procedure writes " + ToUtf8(passed.known.type.name) + " to " + name +
                      ", which has 2 bytes");
  }
}

long BytesOf(const vb::External& external) {
  long bytes = 0;
  for (const auto& parameter : external.parameters)
    bytes += vb::ArgumentBytes(parameter, vb::Target::kVb6);
  return bytes;
}

// Whether it is known what every argument takes: a type by value that nothing declares may be of
// any size, and a record is refused anyway.
bool KnowsBytes(const ModuleContext& module, const vb::External& external) {
  return std::ranges::all_of(external.parameters, [&](const vb::Parameter& parameter) {
    if (parameter.passing == vb::Passing::kByReference || parameter.is_array) return true;
    if (IsType(parameter.type, u"Any")) return false;
    return vb::BuiltInExtent(parameter.type.name, vb::Target::kVb6) || IsNumber(module, parameter);
  });
}

// Reports arguments that take other bytes; whether they may be compared one by one.
bool CheckBytes(const ModuleContext& module, const vb::Declaration& declaration,
                const vb::External& external, const KnownProcedure& known) {
  const auto count = external.parameters.size();
  const bool is_same_count = count == known.External().parameters.size();
  if (!module.SystemsOf(declaration).Have32Bits() || !KnowsBytes(module, external))
    return is_same_count;
  const auto passed = BytesOf(external);
  const auto taken = BytesOf(known.External());
  if (passed != taken) {
    module.Report(RuleId::kArgumentBytes, declaration, declaration.name_place,
                  std::to_string(passed) + " bytes are passed, " + Quoted(known.Entry()) +
                      " takes " + std::to_string(taken));
    return false;
  }
  return is_same_count;
}

// Where a result comes back.
enum class Place : unsigned char {
  kNone,
  kRegister,
  kTwoRegisters,
  kFloat,
  kText,
  kHidden,
  kOther
};

Place PlaceOfResult(const vb::TypeReference& type) {
  if (type.name.empty()) return Place::kNone;
  if (type.is_array) return Place::kOther;
  if (IsOneOf(type, {u"Long", u"Integer", u"Byte", u"Boolean", u"LongPtr"}))
    return Place::kRegister;
  if (IsOneOf(type, {u"Currency", u"LongLong"})) return Place::kTwoRegisters;
  if (IsOneOf(type, {u"Single", u"Double", u"Date"})) return Place::kFloat;
  if (IsType(type, u"String")) return Place::kText;
  return IsType(type, u"Variant") ? Place::kHidden : Place::kOther;
}

// Procedures of these DLLs return texts that are the caller's.
bool ReturnsOwnText(std::u16string_view dll) {
  constexpr std::u16string_view kDlls[] = {u"oleaut32", u"msvbvm60", u"vba6", u"olepro32"};
  return std::ranges::find(kDlls, dll) != std::end(kDlls);
}

void CheckResult(const ModuleContext& module, const vb::Declaration& declaration,
                 const vb::External& external, const KnownProcedure& known) {
  if (!module.SystemsOf(declaration).Have32Bits()) return;
  const auto place = PlaceOfResult(external.result);
  const auto right = PlaceOfResult(known.External().result);
  const bool is_told = external.result.is_written || external.result.character != 0;
  const bool is_known =
      right == Place::kRegister || right == Place::kTwoRegisters || right == Place::kFloat;
  if (!is_told || !is_known || place == Place::kNone || place == Place::kOther) return;
  const auto part = module.PlaceOf(declaration, external.result.name);
  const auto type = ToUtf8(external.result.name);
  // The lower half of a long result is what many programs want.
  const bool is_lower_half = right == Place::kTwoRegisters && place == Place::kRegister;
  const bool is_own_text = place == Place::kText && ReturnsOwnText(known.Dll());
  if (place != right && !is_lower_half && !is_own_text) {
    module.Report(RuleId::kResultKind, declaration, part,
                  Quoted(known.Entry()) + " returns " + ToUtf8(known.External().result.name) +
                      ", not " + type);
    return;
  }
  // What the callers do with the result would have to change with its type.
  if (place == right && IsShort(external.result) && IsType(known.External().result, u"Long")) {
    module.Report(RuleId::kShortBoolean, declaration, part,
                  "the result has 32 bits, " + type + " has 16");
  }
}

void CheckAnyByValue(const ModuleContext& module, const vb::Declaration& declaration,
                     const vb::External& external) {
  for (const auto& parameter : external.parameters) {
    if (parameter.passing != vb::Passing::kByValue || !IsType(parameter.type, u"Any")) continue;
    module.Report(RuleId::kAnyByValue, declaration, parameter.place,
                  ToUtf8(parameter.name) +
                      " As Any by value: every call decides by itself how "
                      "many bytes are passed");
  }
}

}  // namespace

void CheckFrames(const ModuleContext& module) {
  auto& libraries = module.whole.Libraries();
  for (const auto& declaration : module.parsed.declarations) {
    const auto* const external = declaration.As<vb::External>();
    if (external == nullptr || !module.SystemsOf(declaration).Any()) continue;
    CheckAnyByValue(module, declaration, *external);
    const auto* const known = libraries.FindEntry(
        DllKey(external->library), external->EntryOr(declaration.name), declaration.name);
    if (known == nullptr) continue;
    CheckResult(module, declaration, *external, *known);
    if (!CheckBytes(module, declaration, *external, *known)) continue;
    for (std::size_t i = 0; i < external->parameters.size(); ++i) {
      const Passed passed{external->parameters[i], known->External().parameters[i],
                          known->FactsOf(i), known->TypeOf(i)};
      CheckPassing(module, declaration, passed);
      CheckWidth(module, declaration, passed);
    }
  }
}

}  // namespace declarium::check
