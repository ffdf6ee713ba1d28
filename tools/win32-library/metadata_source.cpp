#include "metadata_source.h"

#include <algorithm>
#include <set>
#include <unordered_map>

#include "callable_functions.h"
#include "metadata_constants.h"
#include "record_certainty.h"

namespace declarium::win32_library {
namespace {

// The native types, under the names that the translation knows. WIN32 is a name of the metadata and
// of the compiler.
constexpr std::string_view kPrelude = R"(
#undef WIN32
typedef signed char SByte;
typedef unsigned char BYTE;
typedef BYTE Byte;
typedef unsigned char Boolean;
typedef short Int16;
typedef unsigned short UInt16;
typedef unsigned short WCHAR;
typedef WCHAR Char;
typedef int Int32;
typedef unsigned int UInt32;
typedef long long Int64;
typedef unsigned long long UInt64;
typedef float Single;
typedef double Double;
typedef __INTPTR_TYPE__ IntPtr;
typedef __UINTPTR_TYPE__ UIntPtr;
typedef void Void;
typedef char CHAR;
typedef char *PSTR;
typedef WCHAR *PWSTR;
typedef WCHAR *BSTR;
typedef long long LARGE_INTEGER;
typedef unsigned long long ULARGE_INTEGER;

#line 1 "metadata/Foundation"
typedef struct _GUID { UInt32 Data1; UInt16 Data2; UInt16 Data3; BYTE Data4[8]; } GUID;
typedef GUID Guid;
)";

// Words of C and the names of the prelude.
const std::set<std::string, std::less<>> kKeywords = {
    "auto",    "break",  "case",     "char",   "const",    "continue", "default",
    "do",      "double", "else",     "enum",   "extern",   "float",    "for",
    "goto",    "if",     "inline",   "int",    "long",     "register", "restrict",
    "return",  "short",  "signed",   "sizeof", "static",   "struct",   "switch",
    "typedef", "union",  "unsigned", "void",   "volatile", "while"};
const std::set<std::string, std::less<>> kBuiltIn = {
    "SByte",          "BYTE",    "Byte",   "Boolean", "Int16",  "UInt16", "WCHAR",
    "Char",           "Int32",   "UInt32", "Int64",   "UInt64", "Single", "Double",
    "IntPtr",         "UIntPtr", "Void",   "CHAR",    "PSTR",   "PWSTR",  "LARGE_INTEGER",
    "ULARGE_INTEGER", "GUID",    "Guid",   "BSTR"};

bool IsKeyword(std::string_view name) {
  return kKeywords.contains(name);
}

bool IsBuiltIn(std::string_view name) {
  return kBuiltIn.contains(name);
}

std::string CName(const std::string& name) {
  return IsKeyword(name) ? "_" + name : name;
}

// What stands around the name in a declaration of the type.
std::string Declarator(const std::string& type, const std::string& inner) {
  if (type.starts_with('*')) return Declarator(type.substr(1), "*" + inner);
  if (!type.starts_with('[')) return inner;
  const std::size_t end = type.find(']') + 1;
  const std::string held = inner.starts_with('*') ? "(" + inner + ")" : inner;
  return Declarator(type.substr(end), held + type.substr(0, end));
}

// An untyped address is C's own: the translation takes a typedef of it for a handle.
std::string CType(const std::string& type) {
  const std::string base = BaseOf(type);
  return base == "Void" ? "void" : base;
}

std::string Declaration(const std::string& type, const std::string& name) {
  return CType(type) + " " + Declarator(type, name);
}

const std::string kUncertainPrefix(kUncertainFolder.substr(kMetadataFolder.size()));

class Source {
 public:
  Source(const Metadata& metadata, const Overrides& overrides)
      : metadata_(metadata),
        overrides_(overrides),
        text_(kPrelude),
        uncertain_(UncertainRecords(metadata)) {
    for (const MetaRecord& record : metadata.records) records_.emplace(record.name, &record);
    for (const MetaFunction& function : metadata.functions) NeedTypesOf(function);
    for (const MetaRecord& record : metadata.records)
      if (IsDecidedFor("Type", record.name)) Need(record.name);
  }

  // All records are needed, and nothing else.
  std::string MakeRecords() {
    for (const MetaRecord& record : metadata_.records) Need(record.name);
    AddTypedefs();
    for (const MetaRecord& record : metadata_.records) AddRecord(record);
    return std::move(text_);
  }

  std::string Make() {
    AddTypedefs();
    for (const MetaRecord& record : metadata_.records)
      if (needed_.contains(record.name)) AddRecord(record);
    for (const MetaFunction& function : metadata_.functions) AddFunction(function);
    names_.insert(kKeywords.begin(), kKeywords.end());
    names_.insert(kBuiltIn.begin(), kBuiltIn.end());
    names_.insert({"WIN32", "WINNT", "i386"});  // macros of the compiler
    return std::move(text_) + ConstantsSource(metadata_, std::move(names_));
  }

 private:
  void NeedTypesOf(const MetaFunction& function) {
    if (!IsCallable(function)) return;
    Need(BaseOf(function.result));
    for (const MetaValue& parameter : function.parameters) Need(BaseOf(parameter.type));
  }

  // Notes a type with all that it consists of and points to.
  void Need(const std::string& type) {
    if (!needed_.insert(type).second) return;
    if (const auto record = records_.find(type); record != records_.end())
      NeedMembersOf(*record->second);
  }

  void NeedMembersOf(const MetaRecord& record) {
    for (const MetaValue& member : record.members) Need(BaseOf(member.type));
    for (const MetaRecord& nested : record.nested) NeedMembersOf(nested);
  }

  bool IsDecidedFor(const std::string& kind, const std::string& name) const {
    const Override* decided = FindOverride(overrides_, kind, name);
    return decided != nullptr && decided->side == Side::kMetadata;
  }

  void AddTypedefs() {
    for (const MetaEnum& item : metadata_.enums)
      if (IsNew(item.name)) text_ += "typedef " + item.base + " " + item.name + ";\n";
    for (const MetaTypedef& item : metadata_.typedefs) {
      if (!IsNew(item.name)) continue;
      if (item.is == "callback")
        text_ += "typedef void (__stdcall *" + item.name + ")(void);\n";
      else if (item.is == "interface")
        text_ += "typedef void *" + item.name + ";\n";
      else
        text_ += "typedef " + Declaration(item.is, item.name) + ";\n";
    }
    for (const MetaRecord& record : metadata_.records)
      if (needed_.contains(record.name) && IsNew(record.name)) {
        const std::string tag = record.name == "VARIANT" ? "tagVARIANT" : record.name;
        const std::string kind = record.is_union ? "union " : "struct ";
        text_ += "typedef " + kind + tag + " " + record.name + ";\n";
        opened_.insert(record.name);
      }
  }

  bool IsNew(const std::string& name) { return !IsBuiltIn(name) && names_.insert(name).second; }

  void At(const std::string& area) {
    text_ += "\n#line 1 \"" + std::string(kMetadataFolder) + area + "\"\n";
  }

  void AddRecord(const MetaRecord& record) {
    if (!opened_.contains(record.name) || !written_.insert(record.name).second) return;
    if (!HoldsKnownTypes(record)) return;
    AddHeldRecords(record);
    bit_fields_ = 0;
    At(uncertain_.contains(record.name) ? kUncertainPrefix + record.area : record.area);
    BeginPacking(record);
    text_ += record.is_union ? "union " : "struct ";
    text_ += record.name == "VARIANT" ? "tagVARIANT" : record.name;
    AddMembers(record);
    text_ += ";\n";
    EndPacking(record);
  }

  // A record stands behind those that are its members.
  void AddHeldRecords(const MetaRecord& record) {
    for (const MetaValue& member : record.members)
      if (!HoldsAddresses(member.type))
        if (const auto held = records_.find(BaseOf(member.type)); held != records_.end())
          AddRecord(*held->second);
    for (const MetaRecord& nested : record.nested) AddHeldRecords(nested);
  }

  // A record that holds what the metadata does not declare stays without members.
  bool HoldsKnownTypes(const MetaRecord& record) const {
    return std::ranges::all_of(record.members,
                               [&](const MetaValue& member) {
                                 const std::string base = BaseOf(member.type);
                                 return HoldsAddresses(member.type) || IsBuiltIn(base) ||
                                        names_.contains(base) ||
                                        std::ranges::find(record.nested, base, &MetaRecord::name) !=
                                            record.nested.end();
                               }) &&
           std::ranges::all_of(
               record.nested, [this](const MetaRecord& nested) { return HoldsKnownTypes(nested); });
  }

  // An address of what the metadata does not declare is the address of anything.
  std::string MemberDeclaration(const MetaValue& member) {
    const std::string base = BaseOf(member.type);
    std::string name = CName(member.name);
    if (name == "_bitfield" && bit_fields_++ > 0) name += std::to_string(bit_fields_);
    if (IsBuiltIn(base) || names_.contains(base)) return Declaration(member.type, name);
    return "void " + Declarator(member.type, name);
  }

  void AddMembers(const MetaRecord& record) {
    text_ += " {";
    for (const MetaValue& member : record.members) {
      const auto nested = std::ranges::find(record.nested, BaseOf(member.type), &MetaRecord::name);
      if (nested == record.nested.end() || HoldsAddresses(member.type))
        text_ += "\n  " + MemberDeclaration(member) + ";";
      else
        AddNestedRecord(*nested, member);
    }
    text_ += "\n}";
  }

  void AddNestedRecord(const MetaRecord& nested, const MetaValue& member) {
    BeginPacking(nested);
    text_ += nested.is_union ? "\n  union" : "\n  struct";
    AddMembers(nested);
    if (!member.name.starts_with("Anonymous"))
      text_ += " " + Declarator(member.type, CName(member.name));
    text_ += ";";
    EndPacking(nested);
  }

  void BeginPacking(const MetaRecord& record) {
    if (record.pack != 0) text_ += "\n#pragma pack(push, " + std::to_string(record.pack) + ")\n";
  }

  void EndPacking(const MetaRecord& record) {
    if (record.pack != 0) text_ += "\n#pragma pack(pop)\n";
  }

  void AddFunction(const MetaFunction& function) {
    if (!IsCallable(function) || !names_.insert(function.name).second) return;
    std::string parameters;
    for (const MetaValue& parameter : function.parameters) {
      if (parameter.type.find('?') != std::string::npos) return;
      parameters += (parameters.empty() ? "" : ", ") +
                    Declaration(parameter.type, ParameterName(parameter.name));
    }
    At(function.area);
    text_ += CType(function.result) + " " + Declarator(function.result, "") +
             " __attribute__((stdcall)) " + function.name + "(" +
             (parameters.empty() ? "void" : parameters) + ");\n";
  }

  // A parameter must not hide a type that the next one has.
  std::string ParameterName(const std::string& name) const {
    return names_.contains(name) || IsBuiltIn(name) ? "_" + name : CName(name);
  }

  const Metadata& metadata_;
  const Overrides& overrides_;
  std::string text_;
  std::unordered_map<std::string, const MetaRecord*> records_;
  std::set<std::string> uncertain_;
  std::set<std::string> needed_;   // types
  std::set<std::string> names_;    // of the file level
  int bit_fields_ = 0;             // of the record at hand
  std::set<std::string> opened_;   // records that have a typedef
  std::set<std::string> written_;  // records that have their members
};

}  // namespace

std::string RecordsSource(const Metadata& metadata) {
  return Source(metadata, {}).MakeRecords();
}

std::string MetadataSource(const Metadata& metadata, const Overrides& overrides) {
  return Source(metadata, overrides).Make();
}

}  // namespace declarium::win32_library
