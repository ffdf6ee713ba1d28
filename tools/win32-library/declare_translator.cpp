#include "declare_translator.h"

#include <algorithm>
#include <array>

#include "callable_functions.h"
#include "documented_library.h"
#include "familiar_names.h"
#include "record_members.h"
#include "record_names.h"
#include "vb/name.h"

namespace declarium::win32_library {
namespace {

using Failure = std::unexpected<std::string>;

// Whether an untyped address is meant as the address of anything; a typedef of its own, of the
// address (HANDLE, HINTERNET, PSID) or of what it points to (GpGraphics), makes it a value to pass
// on.
bool IsPlainAddress(const HeaderType& type) {
  static constexpr std::array<std::string_view, 6> kPlain = {"LPVOID", "PVOID",   "LPCVOID",
                                                             "PCVOID", "PVOID64", "SQLPOINTER"};
  const std::vector<std::string>& target = type.target->names;
  if (!target.empty() && target.front() != "VOID" && target.front() != "GLvoid") return false;
  return type.names.empty() || std::ranges::find(kPlain, type.names.front()) != kPlain.end();
}

bool IsScalar(const HeaderType& type) {
  return type.kind == TypeKind::kInteger || (type.kind == TypeKind::kReal && type.size <= 8);
}

// Whether a procedure cannot write to what it gets: a value, or the address of what is constant.
bool IsInput(const HeaderType& type) {
  if (type.kind == TypeKind::kPointer || type.kind == TypeKind::kArray)
    return type.target->is_const;
  return true;
}

std::string ByValue(const std::string& name, const std::string& type) {
  return "ByVal " + name + " As " + type;
}

// The parameters' names of one procedure. The procedure's own name, and Base, which Option Base
// makes a word of the language, are refused by some Basics.
class ParameterNames {
 public:
  explicit ParameterNames(const std::string& procedure) : refused_{vb::Lower(procedure), "base"} {}

  std::string Unique(const std::string& wanted) {
    std::string base = vb::LegalName(wanted);
    if (base.empty()) base = "arg" + std::to_string(names_.size() + 1);
    if (refused_.contains(vb::Lower(base))) base += "_";
    std::string name = base;
    for (int i = 2; !names_.insert(vb::Lower(name)).second; ++i) name = base + std::to_string(i);
    return name;
  }

 private:
  std::set<std::string> refused_;
  std::set<std::string> names_;
};

// Whether the library is a file, not a set of entries that any file may have.
bool IsFile(const std::string& library) {
  return !library.empty() && !library.starts_with("api-ms-");
}

std::string DeclareLine(const std::string& name, const ImportEntry& entry,
                        const std::string& parameters, bool is_function,
                        Platform platform = Platform::kX86) {
  const std::string safe = platform == Platform::kX86 ? "" : "PtrSafe ";
  const std::string kind = safe + (is_function ? "Function " : "Sub ");
  const std::string alias = entry.exported == name ? "" : " Alias \"" + entry.exported + "\"";
  return "Declare " + kind + name + " Lib \"" + entry.library + "\"" + alias + " " + parameters;
}

}  // namespace

DeclareTranslator::DeclareTranslator(const Headers& headers, const Knowledge& knowledge,
                                     RecordTranslator& records)
    : headers_(headers),
      knowledge_(knowledge),
      rules_(headers, knowledge.metadata),
      records_(records) {
  for (const Function& function : headers.functions) function_names_.insert(function.name);
}

std::string DeclareTranslator::AddressType() const {
  return IsX86() ? "Long" : "LongPtr";
}

std::string DeclareTranslator::ScalarType(const HeaderType& type) const {
  const bool real = type.kind == TypeKind::kReal;
  switch (type.size) {
    case 1:
      return "Byte";
    case 2:
      return "Integer";
    case 4:
      return real ? "Single" : "Long";
    default:
      if (real) return "Double";
      return IsX86() ? "Currency" : "LongLong";
  }
}

// The type of a function's result; empty for none. Records of 4 and 8 bytes come back in registers.
std::expected<std::string, std::string> DeclareTranslator::ResultType(
    const HeaderType& type) const {
  if (type.kind == TypeKind::kVoid) return "";
  if (type.kind == TypeKind::kPointer) return AddressType();
  if (IsScalar(type)) return ScalarType(type);
  if (type.kind == TypeKind::kRecord && type.size == 4) return "Long";
  if (type.kind == TypeKind::kRecord && type.size == 8) return IsX86() ? "Currency" : "LongLong";
  return Failure("its result is a record");
}

std::string DeclareTranslator::NameFor(const Function& function) const {
  const std::string& name = function.name;
  if (name.ends_with('A')) {
    const std::string plain = name.substr(0, name.size() - 1);
    if (function_names_.contains(plain + "W") && !function_names_.contains(plain))
      return ProcedureName(plain);
  }
  return ProcedureName(name);
}

// The entry in the documented library. The argument bytes are those of an import library; where
// none knows the procedure, or is wrong about it, they are what its parameters take.
std::optional<ImportEntry> DeclareTranslator::EntryOf(const Function& function) const {
  const MetaFunction* facts = knowledge_.metadata.FindFunction(function.name);
  const std::string documented = facts == nullptr ? "" : DocumentedLibrary(*facts);
  const ImportEntry* known = knowledge_.libraries.Find(function.name, documented);
  if (known != nullptr) {
    ImportEntry entry = *known;
    if (IsFile(documented) && entry.library != documented)
      entry = {documented, function.name, entry.argument_bytes};
    const Override* decided = FindOverride(knowledge_.overrides, "Declare", function.name);
    if (decided != nullptr && decided->side == Side::kMetadata)
      entry.argument_bytes = ImportEntry::kUnknown;
    return entry;
  }
  if (facts == nullptr || !IsCallable(*facts)) return std::nullopt;
  if (IsX86() && knowledge_.libraries.IsUndecorated(function.name)) return std::nullopt;
  return ImportEntry{documented, function.name, ImportEntry::kUnknown};
}

std::expected<DeclareRow, std::string> DeclareTranslator::Translate(const Function& function) {
  const std::optional<ImportEntry> entry = EntryOf(function);
  if ((IsX86() && !function.is_stdcall) || function.is_variadic)
    return Failure("not a stdcall function");
  if (!entry)
    return Failure(knowledge_.libraries.IsUndecorated(function.name)
                       ? "its import library does not tell its argument bytes"
                       : "in none of the import libraries");
  const std::string name = NameFor(function);
  if (name.empty()) return Failure("no legal name");
  const auto result = ResultType(function.result);
  if (!result) return Failure(result.error());
  const Arguments arguments = ArgumentsOf(function);
  if (!arguments) return Failure(arguments.error());
  long bytes = 0;
  std::string list;
  std::vector<RowValue> values;
  for (const Argument& argument : *arguments) {
    list += (list.empty() ? "" : ", ") + argument.declaration;
    bytes += argument.bytes;
    values.push_back(argument.value);
  }
  if (IsX86() && entry->argument_bytes != ImportEntry::kUnknown && bytes != entry->argument_bytes)
    return Failure("the headers and the import library disagree on its arguments");
  const std::string closing = result->empty() ? ")" : ") As " + *result;
  DeclareRow row{
      name,
      DeclareLine(name, *entry, "(" + list + closing, !result->empty(), knowledge_.platform),
      function.header,
      function.name,
      std::move(values),
      {.c_type = function.result.text}};
  if (row.line.size() > kLongestLine) return Failure("longer than a line of VB");
  return row;
}

DeclareTranslator::Arguments DeclareTranslator::ArgumentsOf(const Function& function) {
  ParameterNames names(NameFor(function));
  std::vector<Argument> all;
  for (std::size_t i = 0; i < function.parameters.size(); ++i) {
    const Arguments arguments = ArgumentOf(function, i);
    if (!arguments) return arguments;
    for (Argument argument : *arguments) {
      const std::size_t begin = argument.declaration.starts_with("ByVal ") ? 6 : 0;
      const std::size_t end = argument.declaration.find(" As ");
      const std::string wanted = argument.declaration.substr(begin, end - begin);
      argument.value.name = names.Unique(wanted);
      argument.declaration.replace(begin, end - begin, argument.value.name);
      argument.value.parameter = static_cast<int>(i);
      const HeaderType& type = function.parameters[i].type;
      if (argument.value.c_type.empty()) argument.value.c_type = type.text;
      argument.value.is_input = IsInput(type);
      all.push_back(std::move(argument));
    }
  }
  return all;
}

DeclareTranslator::Arguments DeclareTranslator::ArgumentOf(const Function& function,
                                                           std::size_t index) {
  const std::string name = rules_.NameOf(function, index);
  switch (rules_.Of(function, index)) {
    case Passed::kAsAddress: {
      const HeaderType& type = function.parameters[index].type;
      const bool is_number = type.kind == TypeKind::kInteger && type.size <= 4;
      return std::vector<Argument>{{ByValue(name, is_number ? "Long" : AddressType())}};
    }
    case Passed::kAsText:
      return std::vector<Argument>{{ByValue(name, "String")}};
    case Passed::kAsAnything:
      return std::vector<Argument>{{name + " As Any"}};
    case Passed::kAsDeclared:
      break;
  }
  return ArgumentOf(function.parameters[index].type, name);
}

DeclareTranslator::Arguments DeclareTranslator::ArgumentOf(const HeaderType& type,
                                                           const std::string& name) {
  if (IsScalar(type))
    return std::vector<Argument>{{ByValue(name, ScalarType(type)), type.size == 8 ? 8L : 4L}};
  if (IsWideInteger(type)) {
    return std::vector<Argument>{{ByValue(name, IsX86() ? "Currency" : "LongLong"), 8}};
  }
  if (type.kind == TypeKind::kPointer) return std::vector<Argument>{PointerOf(type, name)};
  if (type.kind == TypeKind::kArray) return std::vector<Argument>{ReferenceTo(*type.target, name)};
  if (type.kind == TypeKind::kFunction)
    return std::vector<Argument>{{ByValue(name, AddressType())}};
  if (type.kind == TypeKind::kRecord) return RecordByValue(type, name);
  return Failure("a parameter of a type that VB does not have");
}

// A record by value is its members one after the other, which VB can pass where each is a Long. In
// 64 bits it is one value where a register holds it, and otherwise the address of a copy.
DeclareTranslator::Arguments DeclareTranslator::RecordByValue(const HeaderType& type,
                                                              const std::string& name) {
  if (type.size == 4) return std::vector<Argument>{{ByValue(name, "Long")}};
  if (!IsX86()) {
    if (type.size == 8) return std::vector<Argument>{{ByValue(name, "LongLong")}};
    if (type.size < 8 && (type.size & (type.size - 1)) == 0)
      return Failure("a small record passed by value");
    return std::vector<Argument>{ReferenceToRecord(type, name)};
  }
  std::vector<Argument> arguments;
  for (const Piece& piece : PiecesOf(headers_, headers_.records[type.record])) {
    const bool scalar = piece.kind == Piece::Kind::kField && piece.size == 4 &&
                        (IsScalar(piece.type) || piece.type.kind == TypeKind::kPointer);
    if (!scalar) return Failure("a record passed by value");
    const std::string type_name = piece.type.kind == TypeKind::kReal ? "Single" : "Long";
    arguments.push_back({.declaration = ByValue(name + piece.name, type_name),
                         .value = {.c_type = piece.type.text}});
  }
  return arguments;
}

DeclareTranslator::Argument DeclareTranslator::PointerOf(const HeaderType& type,
                                                         const std::string& name) {
  const HeaderType& target = *type.target;
  if (target.kind == TypeKind::kVoid)
    return {IsPlainAddress(type) ? name + " As Any" : ByValue(name, AddressType())};
  if (target.IsText() || target.IsNamed("SQLCHAR")) return {ByValue(name, "String")};
  if (target.IsWideText() || target.kind == TypeKind::kFunction)
    return {ByValue(name, AddressType())};
  return ReferenceTo(target, name);
}

DeclareTranslator::Argument DeclareTranslator::ReferenceTo(const HeaderType& target,
                                                           const std::string& name) {
  if (IsWideInteger(target)) return {name + " As Currency"};
  if (target.kind == TypeKind::kArray) return ReferenceTo(*target.target, name);
  if (target.kind == TypeKind::kPointer) return {name + " As " + AddressType()};
  if (target.kind == TypeKind::kRecord) return ReferenceToRecord(target, name);
  if (target.IsWideText()) return {ByValue(name, AddressType())};
  // Bytes are how the headers speak of data of any form: registry values, keys, pixels.
  if (target.IsNamed("BYTE")) return {name + " As Any"};
  if (IsScalar(target)) return {name + " As " + ScalarType(target)};
  return {name + " As Any"};
}

DeclareTranslator::Argument DeclareTranslator::ReferenceToRecord(const HeaderType& target,
                                                                 const std::string& name) {
  const Record& record = headers_.records[target.record];
  if (record.tag == "tagVARIANT") return {name + " As Variant"};
  if (!record.is_complete || IsInterface(record) || IsHandle(record))
    return {ByValue(name, AddressType())};
  if (!records_.FormsOf(target.record).empty()) return {name + " As Any"};
  const std::string type = records_.NameOf(target.record);
  return {name + " As " + (type.empty() ? "Any" : type)};
}

std::vector<DeclareRow> FamiliarRows(const ImportLibraries& libraries, Platform platform) {
  std::vector<DeclareRow> rows;
  for (const FamiliarDeclare& familiar : FamiliarDeclares()) {
    const ImportEntry* entry = libraries.Find(familiar.entry);
    if (entry == nullptr) continue;
    const auto parameters =
        platform == Platform::kX86 ? familiar.parameters : familiar.parameters64;
    rows.push_back({std::string(familiar.name),
                    DeclareLine(std::string(familiar.name), *entry, std::string(parameters),
                                familiar.is_function, platform),
                    std::string(familiar.header)});
  }
  return rows;
}

}  // namespace declarium::win32_library
