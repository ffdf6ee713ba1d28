// A module of Visual Basic source as data: what it is, what it declares, where its procedures are.
// Reading goes on behind an error.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "vb/conditions.h"
#include "vb/declaration.h"

namespace declarium::vb {

enum class ModuleKind : unsigned char {
  kStandard,      // .bas, and a code pane
  kClass,         // .cls, and the code of a designer, .dsr
  kForm,          // .frm
  kControl,       // .ctl
  kDocument,      // .dob
  kPropertyPage,  // .pag
};

struct Attribute {
  std::u16string_view name;   // "VB_Name", "Item.VB_UserMemId"
  std::u16string_view value;  // as written, a text in its quotes
  Place place;
};

struct OptionLine {
  std::u16string_view text;  // "Option Explicit"
  Place place;
};

struct Procedure {
  enum class Kind : unsigned char { kSub, kFunction, kPropertyGet, kPropertyLet, kPropertySet };
  Kind kind = Kind::kSub;
  Scope scope = Scope::kPublic;
  bool is_friend = false;  // public in the project alone
  std::u16string_view name;
  std::u16string_view head;  // the statement with its parameters and result
  std::uint32_t condition = 0;
  Place place;
  std::uint32_t end_line = 1;  // of End Sub, or where the module ends without one
};

// What else has a name at the level of the module.
struct ModuleMember {
  enum class Kind : unsigned char { kVariable, kEvent, kControl };
  Kind kind = Kind::kVariable;
  Scope scope = Scope::kPrivate;
  std::u16string_view name;
  Place place;
  std::uint32_t condition = 0;
};

// #Const
struct CompilerConstant {
  std::u16string_view name;
  std::u16string_view value;
  Place place;
  std::uint32_t condition = 0;
};

// A line that opens, changes or closes a branch of #If.
struct BranchLine {
  std::uint32_t line = 1;
  std::uint32_t condition = 0;  // of what follows
  bool is_inside = false;       // whether what follows stands in a branch
};

struct Module {
  ModuleKind kind = ModuleKind::kStandard;
  std::vector<Attribute> attributes;
  std::vector<OptionLine> options;
  std::vector<CompilerConstant> compiler_constants;
  std::vector<Declaration> declarations;  // in the order of the source
  std::vector<ModuleMember> members;      // a control array has one for each control
  std::vector<Procedure> procedures;
  std::vector<SyntaxError> errors;
  std::vector<Condition> conditions = {{}};  // of #If; the first, for no branch, is empty
  std::vector<BranchLine> branch_lines;      // in the order of the source
  std::uint32_t header_end = 0;              // the last line of a designer's header
  bool is_header_open = false;         // that header has no End, which is the first of the errors
  std::uint32_t declarations_end = 0;  // the last line in front of the first procedure
  std::uint32_t lines = 0;

  // The value of VB_Name without quotes; empty without one.
  [[nodiscard]] std::u16string_view Name() const;
};

// The kind that a file name's extension tells; kStandard for any other.
[[nodiscard]] ModuleKind ModuleKindOf(std::u16string_view file_name);
// Whether the extension is one of those above.
[[nodiscard]] bool IsModuleFile(std::u16string_view file_name);
[[nodiscard]] std::string_view ModuleKindText(ModuleKind kind);

// `text` must outlive the module.
[[nodiscard]] Module ReadModule(std::u16string_view text, ModuleKind kind = ModuleKind::kStandard);

}  // namespace declarium::vb
