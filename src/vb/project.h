// A project as its file lists it: .vbp, or .mak of Visual Basic 1 to 3; and a group of projects,
// .vbg. Every view refers into the text; paths are as the file has them, with backslashes, relative
// to its folder.
//
//   Module=Name; Path                                        a standard module
//   Class=Name; Path                                         a class
//   Form=Path  UserControl=Path  UserDocument=Path  PropertyPage=Path  Designer=Path
//   Reference=*\G{GUID}#2.0#0#Path#Description               a type library
//   Reference=*\APath                                        another project
//   Object={GUID}#1.2#0; Path                                a library of controls
//   CondComp="Debugging = -1 : Limit = 2"                    constants for #If in every module
//   Name="Project1"
//   Path                                                     in a .mak: a module, or controls
//   (.vbx)
//
// Other keys say nothing about modules; nor do the sections that add-ins keep at the end, "[Name]"
// and what follows.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "vb/module.h"

namespace declarium::vb {

struct ProjectModule {
  std::u16string_view name;  // empty where only the module's file has it
  std::u16string_view path;
  ModuleKind kind = ModuleKind::kStandard;
  Place place;  // of the path
};

struct Reference {
  std::u16string_view id;  // "{GUID}#2.0#0": the library, its version and language; may be empty
  std::u16string_view path;
  std::u16string_view description;
  Place place;
};

struct Project {
  std::u16string_view name;
  std::vector<ProjectModule> modules;
  std::vector<Reference> references;
  std::vector<CompilerConstant> constants;
  std::vector<SyntaxError> errors;
};

struct GroupedProject {
  std::u16string_view path;
  Place place;
};

struct ProjectGroup {
  std::vector<GroupedProject> projects;  // each once, in the order of the file
  std::vector<SyntaxError> errors;
};

enum class ProjectFileKind { kProject, kGroup };

// What a file name's extension tells; nullopt for any other than those above.
[[nodiscard]] std::optional<ProjectFileKind> ProjectFileKindOf(std::u16string_view file_name);

// `text` must outlive what is returned. Reading goes on behind an error.
[[nodiscard]] Project ReadProject(std::u16string_view text);
[[nodiscard]] ProjectGroup ReadProjectGroup(std::u16string_view text);

}  // namespace declarium::vb
