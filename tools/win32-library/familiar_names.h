// The names under which VB programmers know some procedures, where these are not the headers'.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace declarium::win32_library {

// A procedure that the headers declare as a macro, or under a name that VB programs do not use.
struct FamiliarDeclare {
  std::string_view name;
  std::string_view entry;       // in the import library
  std::string_view parameters;  // with the closing "As ..." of a function
  std::string_view parameters64;
  std::string_view header;  // where the headers speak of it
  bool is_function;
};

[[nodiscard]] std::span<const FamiliarDeclare> FamiliarDeclares();

// The name in the library of the procedure that the headers call `name` (without the A of an ANSI
// entry). A name that the language has itself gets "API" behind it: GetObjectAPI, SetFocusAPI,
// BeepAPI, selectAPI; leading underscores are dropped. Empty when no legal name results.
[[nodiscard]] std::string ProcedureName(std::string_view name);

}  // namespace declarium::win32_library
