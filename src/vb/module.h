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
  std::u16string_view name;
  Place place;
  std::uint32_t end_line = 1;  // of End Sub, or where the module ends without one
};

// #Const
struct CompilerConstant {
  std::u16string_view name;
  std::u16string_view value;
  Place place;
  std::uint32_t condition = 0;
};

struct Module {
  ModuleKind kind = ModuleKind::kStandard;
  std::vector<Attribute> attributes;
  std::vector<OptionLine> options;
  std::vector<CompilerConstant> compiler_constants;
  std::vector<Declaration> declarations;  // in the order of the source
  std::vector<Procedure> procedures;
  std::vector<SyntaxError> errors;
  std::vector<Condition> conditions = {{}};  // of #If; the first, for no branch, is empty
  std::uint32_t declarations_end = 0;        // the last line in front of the first procedure
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

// A name that code uses.
struct NameUse {
  std::u16string_view name;
  Place place;
};

// All names in the source that are no words of the language and do not stand behind "." or "!", in
// order; what declares them is among them.
[[nodiscard]] std::vector<NameUse> NamesUsed(std::u16string_view text);

}  // namespace declarium::vb
