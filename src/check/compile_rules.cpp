#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "check/rule_groups.h"
#include "text/scan.h"
#include "text/text.h"

namespace declarium::check {
namespace {

constexpr std::size_t kLongestLine = 1023;
constexpr std::size_t kMostLines = 25;
constexpr std::size_t kMostParameters = 60;

// Types that every project knows without declaring them: the language's own, and classes of the
// libraries that it always refers to.
constexpr std::u16string_view kCommonTypes[] = {u"any",
                                                u"iunknown",
                                                u"idispatch",
                                                u"collection",
                                                u"control",
                                                u"form",
                                                u"mdiform",
                                                u"picturebox",
                                                u"textbox",
                                                u"label",
                                                u"combobox",
                                                u"listbox",
                                                u"commandbutton",
                                                u"checkbox",
                                                u"optionbutton",
                                                u"frame",
                                                u"timer",
                                                u"image",
                                                u"picture",
                                                u"ipicture",
                                                u"ipicturedisp",
                                                u"stdpicture",
                                                u"stdfont",
                                                u"ifont",
                                                u"ifontdisp",
                                                u"font",
                                                u"ole_color",
                                                u"ole_handle",
                                                u"ole_cancelbool",
                                                u"errobject",
                                                u"screen",
                                                u"app",
                                                u"clipboard",
                                                u"printer",
                                                u"usercontrol",
                                                u"userdocument",
                                                u"propertypage",
                                                u"propertybag",
                                                u"menu",
                                                u"data",
                                                u"ole",
                                                u"line",
                                                u"shape",
                                                u"guid",
                                                u"ienumvariant",
                                                u"workbook",
                                                u"worksheet",
                                                u"range",
                                                u"decimal",
                                                u"ole_xpos_pixels",
                                                u"ole_ypos_pixels",
                                                u"ole_xsize_pixels",
                                                u"ole_ysize_pixels",
                                                u"ole_tristate",
                                                u"ole_optexclusive",
                                                u"ole_enabledefaultbool"};

bool IsOwnType(std::u16string_view name) {
  return vb::BuiltInExtent(name, vb::Target::kVba7x64) ||
         std::ranges::find(kCommonTypes, LowerCase(name)) != std::end(kCommonTypes);
}

void CheckSyntax(const ModuleContext& module) {
  for (const auto& error : module.parsed.errors) {
    auto message = "expected " + std::string(error.expected);
    if (!error.found.empty()) message += ", found " + Quoted(error.found.substr(0, 60));
    module.Report(RuleId::kSyntax, error.place, {}, std::move(message));
  }
}

// Names of one scope, in lower case, with what they were declared by.
class Scope {
 public:
  // The declaration or member of this name that the same systems compile; nothing for the first.
  bool Add(std::u16string_view name, const Systems& systems) {
    auto& known = names_[LowerCase(name)];
    const bool is_twice =
        std::ranges::any_of(known, [&](const Systems& other) { return other.Share(systems); });
    known.push_back(systems);
    return is_twice;
  }

 private:
  std::map<std::u16string, std::vector<Systems>> names_;
};

void ReportTwice(const ModuleContext& module, const vb::Declaration& declaration,
                 std::u16string_view name, const vb::Place& place, std::string_view where) {
  module.Report(RuleId::kDuplicateName, declaration, place,
                Quoted(name) + " is declared twice in " + std::string(where));
}

template <class Parts>
void CheckParts(const ModuleContext& module, const vb::Declaration& declaration, const Parts& parts,
                std::string_view where) {
  Scope scope;
  for (const auto& part : parts) {
    const auto& systems = [&]() -> const Systems& {
      if constexpr (requires { part.condition; }) return module.SystemsOf(part.condition);
      return module.SystemsOf(declaration);
    }();
    if (scope.Add(part.name, systems))
      ReportTwice(module, declaration, part.name, part.place, where);
  }
}

void CheckNamesInside(const ModuleContext& module, const vb::Declaration& declaration) {
  if (const auto* const external = declaration.As<vb::External>())
    CheckParts(module, declaration, external->parameters, "the procedure");
  if (const auto* const record = declaration.As<vb::Record>())
    CheckParts(module, declaration, record->members, "the record");
  if (const auto* const enumeration = declaration.As<vb::Enumeration>())
    CheckParts(module, declaration, enumeration->members, "the enumeration");
}

// The procedure that a line stands in, by its number from 1; 0 for none.
std::size_t ProcedureAt(const vb::Module& module, std::uint32_t line) {
  const auto found = std::ranges::upper_bound(
      module.procedures, line, {}, [](const vb::Procedure& each) { return each.place.line; });
  return static_cast<std::size_t>(found - module.procedures.begin());
}

// Values and procedures share a scope, types and enumerations another; constants inside procedures
// have that of the procedure.
void CheckDuplicates(const ModuleContext& module) {
  Scope values;
  Scope types;
  std::map<std::size_t, Scope> locals;
  for (const auto& procedure : module.parsed.procedures)
    values.Add(procedure.name, module.SystemsOf(procedure.condition));
  for (const auto& declaration : module.parsed.declarations) {
    const auto& systems = module.SystemsOf(declaration);
    CheckNamesInside(module, declaration);
    const bool is_type =
        declaration.As<vb::Record>() != nullptr || declaration.As<vb::Enumeration>() != nullptr;
    const bool is_local = declaration.scope == vb::Scope::kLocal;
    auto& scope = is_local  ? locals[ProcedureAt(module.parsed, declaration.place.line)]
                  : is_type ? types
                            : values;
    if (scope.Add(declaration.name, systems)) {
      ReportTwice(module, declaration, declaration.name, declaration.name_place,
                  is_local ? "the procedure" : "the module");
    }
  }
}

void CheckType(const ModuleContext& module, const vb::Declaration& declaration,
               const vb::TypeReference& type) {
  const auto& subject = module.whole.Checked();
  const bool is_elsewhere = !type.is_written || type.name.contains(u'.') || IsOwnType(type.name);
  if (is_elsewhere || module.whole.FindType(type.name, module.module) != nullptr) return;
  const bool is_known = module.whole.Libraries().FindRecord(type.name) != nullptr;
  // Most types of other names are classes, of which nothing is known here.
  if (!is_known && declaration.As<vb::Record>() != nullptr &&
      subject.form != Subject::Form::kProject)
    return;
  auto& finding =
      module.Report(RuleId::kUnknownType, declaration, module.PlaceOf(declaration, type.name),
                    "nothing declares the type " + ToUtf8(type.name) +
                        (is_known ? "; the library has a record of this name" : ""));
  if (subject.form != Subject::Form::kProject || subject.may_have_other_types)
    finding.level = Level::kNote;
}

void CheckTypes(const ModuleContext& module, const vb::Declaration& declaration) {
  if (const auto* const external = declaration.As<vb::External>()) {
    for (const auto& parameter : external->parameters)
      CheckType(module, declaration, parameter.type);
    CheckType(module, declaration, external->result);
  }
  if (const auto* const record = declaration.As<vb::Record>()) {
    for (const auto& member : record->members) CheckType(module, declaration, member.type);
  }
}

bool IsExposed(const vb::Module& module) {
  return std::ranges::any_of(module.attributes, [](const vb::Attribute& attribute) {
    return EqualIgnoringCase(attribute.name, u"VB_Exposed") &&
           EqualIgnoringCase(attribute.value, u"True");
  });
}

std::u16string_view FirstWord(std::u16string_view text) {
  return text.substr(0, text.find_first_of(u" \t"));
}

// The word in front of a declaration decides; without one a Declare and a Type are public.
void CheckScope(const ModuleContext& module, const vb::Declaration& declaration) {
  if (module.parsed.kind == vb::ModuleKind::kStandard || declaration.scope == vb::Scope::kLocal ||
      declaration.As<vb::Enumeration>() != nullptr)
    return;
  const auto word = FirstWord(declaration.text);
  const bool is_const = declaration.As<vb::Constant>() != nullptr;
  const bool is_record = declaration.As<vb::Record>() != nullptr;
  const bool says_public = EqualIgnoringCase(word, u"Public") || EqualIgnoringCase(word, u"Global");
  const bool says_nothing = EqualIgnoringCase(word, u"Declare") ||
                            EqualIgnoringCase(word, u"Type") ||
                            EqualIgnoringCase(word, u"DeclareWide");
  if (!(says_public || (says_nothing && !is_const)) || (is_record && IsExposed(module.parsed)))
    return;
  auto& finding = module.Report(RuleId::kPublicInObjectModule, declaration, declaration.place,
                                ToUtf8(declaration.name) + " is public in a " +
                                    std::string(vb::ModuleKindText(module.parsed.kind)));
  if (says_public) {
    finding.edits = {module.Replacing(word, u"Private")};
  } else {
    finding.edits = {module.Behind(word.substr(0, 0), u"Private ")};
  }
}

void CheckForwardRecords(const ModuleContext& module) {
  if (module.whole.Checked().form == Subject::Form::kLibrary ||
      module.whole.Wanted().audience == Audience::kTwinBasic)
    return;
  std::map<std::u16string, const vb::Declaration*> below;
  for (const auto& declaration : module.parsed.declarations) {
    if (declaration.As<vb::Record>() != nullptr)
      below.insert_or_assign(LowerCase(declaration.name), &declaration);
  }
  for (const auto& declaration : module.parsed.declarations) {
    const auto* const record = declaration.As<vb::Record>();
    if (record == nullptr) continue;
    for (const auto& member : record->members) {
      const auto found = below.find(LowerCase(member.type.name));
      const bool is_below = found != below.end() &&
                            found->second->place.offset >= declaration.place.offset &&
                            module.SystemsOf(*found->second).Share(module.SystemsOf(declaration));
      if (!is_below) continue;
      // One of another branch may stand above.
      const bool is_above = std::ranges::any_of(module.parsed.declarations, [&](const auto& other) {
        return other.place.offset < declaration.place.offset &&
               other.template As<vb::Record>() != nullptr &&
               EqualIgnoringCase(other.name, member.type.name);
      });
      if (is_above) continue;
      module.Report(RuleId::kForwardRecord, declaration, member.place,
                    "the record " + ToUtf8(member.type.name) + " must stand above " +
                        ToUtf8(declaration.name));
    }
  }
}

void CheckLengths(const ModuleContext& module, const vb::Declaration& declaration) {
  if (module.whole.Wanted().audience == Audience::kTwinBasic) return;
  const auto report = [&](std::string message) {
    module.Report(RuleId::kTooLong, declaration, declaration.place, std::move(message));
  };
  std::size_t lines = 0;
  for (auto line : Split(declaration.text, u'\n')) {
    if (line.ends_with(u'\r')) line.remove_suffix(1);
    if (line.size() > kLongestLine)
      report("a line of " + std::to_string(line.size()) + " characters; 1023 are possible");
    ++lines;
  }
  const bool is_statement =
      declaration.As<vb::External>() != nullptr || declaration.As<vb::Constant>() != nullptr;
  if (is_statement && lines > kMostLines)
    report("a statement of " + std::to_string(lines) + " lines; 25 are possible");
  const auto* const external = declaration.As<vb::External>();
  if (external != nullptr && external->parameters.size() > kMostParameters)
    report(std::to_string(external->parameters.size()) + " parameters; 60 are possible");
}

void CheckExternal(const ModuleContext& module, const vb::Declaration& declaration,
                   const vb::External& external) {
  for (const auto& parameter : external.parameters) {
    if (EqualIgnoringCase(parameter.name, declaration.name)) {
      module.Report(RuleId::kParameterNamedLikeProcedure, declaration, parameter.place,
                    "the parameter is named like the procedure");
    }
    const bool is_record = parameter.passing == vb::Passing::kByValue &&
                           module.whole.FindRecord(parameter.type.name, module.module) != nullptr;
    if (is_record) {
      module.Report(RuleId::kRecordByValue, declaration, parameter.place,
                    "the record " + ToUtf8(parameter.type.name) + " cannot be passed by value");
    }
  }
}

void CheckConstant(ModuleContext& module, const vb::Declaration& declaration,
                   const vb::Constant& constant) {
  const auto value = module.Definitions32().ValueOf(constant);
  if (value || (value.error() != "overflow" && value.error() != "it refers to itself")) return;
  module.Report(RuleId::kValueDoesNotFit, declaration, module.PlaceOf(declaration, constant.value),
                value.error() == "overflow" ? "the value is beyond the constant's type"
                                            : "the value needs the constant itself");
}

bool IsOnlyInVba7(const ModuleContext& module, const vb::TypeReference& type) {
  const bool is_word =
      EqualIgnoringCase(type.name, u"LongPtr") || EqualIgnoringCase(type.name, u"LongLong");
  // Programs declare an Enum LongPtr to have one source for both.
  return is_word && module.whole.FindType(type.name, module.module) == nullptr;
}

void CheckVisualBasic6(const ModuleContext& module, const vb::Declaration& declaration) {
  if (!module.SystemsOf(declaration).vb6) return;
  const auto report = [&](const vb::Place& place, std::string_view word) {
    module.Report(RuleId::kNotInVisualBasic6, declaration, place,
                  "Visual Basic 6.0 reads this line and has no " + std::string(word));
  };
  if (const auto* const external = declaration.As<vb::External>()) {
    if (external->is_ptr_safe) return report(declaration.place, "PtrSafe");
    if (IsOnlyInVba7(module, external->result)) report(declaration.place, "LongPtr or LongLong");
    for (const auto& parameter : external->parameters) {
      if (IsOnlyInVba7(module, parameter.type))
        report(parameter.place, ToUtf8(parameter.type.name));
    }
  }
  if (const auto* const record = declaration.As<vb::Record>()) {
    for (const auto& member : record->members) {
      const bool is_read = module.SystemsOf(member.condition).vb6;
      if (is_read && IsOnlyInVba7(module, member.type))
        report(member.place, ToUtf8(member.type.name));
    }
  }
}

// Whether a procedure or record that others see may not show the type.
bool IsHidden(const ModuleContext& module, std::u16string_view name) {
  const auto* const type = module.whole.FindType(name, module.module);
  if (type == nullptr) return false;
  if (type->declaration->scope == vb::Scope::kPrivate) return true;
  const auto& subject = module.whole.Checked();
  const auto kind_of = [&](std::size_t position) { return subject.modules[position].parsed->kind; };
  return subject.form == Subject::Form::kProject &&
         type->declaration->As<vb::Record>() != nullptr &&
         kind_of(module.module) != vb::ModuleKind::kStandard &&
         kind_of(type->module) == vb::ModuleKind::kStandard;
}

void CheckPublicProcedure(const ModuleContext& module, const vb::Procedure& procedure) {
  const auto end = procedure.place.offset + procedure.head.size();
  vb::Tokenizer tokens(module.text, procedure.place);
  bool is_behind_as = false;
  for (auto token = tokens.NextSignificant(); token.place.offset < end;
       token = tokens.NextSignificant()) {
    const bool is_type = std::exchange(is_behind_as, token.IsWord(u"as"));
    if (!is_type || token.kind != vb::TokenKind::kName || !IsHidden(module, token.text)) continue;
    const auto behind = tokens.NextSignificant();
    if (behind.IsOperator(u'.')) continue;  // of a library or module that is named
    module.Report(RuleId::kHiddenTypeInPublic, token.place, procedure.name,
                  ToUtf8(procedure.name) + " is public and shows " + ToUtf8(token.text));
  }
}

void CheckPublicRecord(const ModuleContext& module, const vb::Declaration& declaration) {
  const auto* const record = declaration.As<vb::Record>();
  if (record == nullptr || declaration.scope != vb::Scope::kPublic) return;
  for (const auto& member : record->members) {
    if (member.type.name.contains(u'.') || !IsHidden(module, member.type.name)) continue;
    module.Report(RuleId::kHiddenTypeInPublic, declaration, member.place,
                  ToUtf8(declaration.name) + " is public and shows " + ToUtf8(member.type.name));
  }
}

// In lower case.
std::vector<std::u16string> PrivateTypes(const vb::Module& module) {
  std::vector<std::u16string> names;
  for (const auto& declaration : module.declarations) {
    const bool is_type =
        declaration.As<vb::Record>() != nullptr || declaration.As<vb::Enumeration>() != nullptr;
    if (is_type && declaration.scope == vb::Scope::kPrivate)
      names.push_back(LowerCase(declaration.name));
  }
  return names;
}

// What others see of the module names no type that they do not.
void CheckPublicSignatures(const ModuleContext& module) {
  if (module.whole.Wanted().audience == Audience::kTwinBasic) return;
  const bool is_object = module.parsed.kind != vb::ModuleKind::kStandard;
  const bool shows_others = is_object && module.whole.Checked().form == Subject::Form::kProject;
  const auto hidden = PrivateTypes(module.parsed);
  if (hidden.empty() && !shows_others) return;
  // Most procedures show none of the module's few own types; then nothing is cut into tokens.
  const auto may_show = [&](const vb::Procedure& procedure) {
    return shows_others || std::ranges::any_of(hidden, [&](const auto& name) {
             return FindIgnoringCase(procedure.head, name) != procedure.head.npos;
           });
  };
  for (const auto& procedure : module.parsed.procedures) {
    const bool is_public = procedure.scope == vb::Scope::kPublic && !procedure.is_friend;
    if (is_public && module.SystemsOf(procedure.condition).Any() && may_show(procedure))
      CheckPublicProcedure(module, procedure);
  }
  for (const auto& declaration : module.parsed.declarations)
    if (module.SystemsOf(declaration).Any()) CheckPublicRecord(module, declaration);
}

}  // namespace

void CheckCompiles(ModuleContext& module) {
  CheckSyntax(module);
  CheckDuplicates(module);
  CheckForwardRecords(module);
  CheckPublicSignatures(module);
  for (const auto& declaration : module.parsed.declarations) {
    if (!module.SystemsOf(declaration).Any()) continue;
    CheckTypes(module, declaration);
    CheckScope(module, declaration);
    CheckLengths(module, declaration);
    CheckVisualBasic6(module, declaration);
    if (const auto* const external = declaration.As<vb::External>())
      CheckExternal(module, declaration, *external);
    if (const auto* const constant = declaration.As<vb::Constant>())
      CheckConstant(module, declaration, *constant);
  }
}

}  // namespace declarium::check
