// Whether the library's form of a declaration can take its place without asking: code that stands
// there compiles and calls what it called, and nothing else is lost.
//
//   Declares   the same procedure of the same DLL, unless the one written is none; Sub or Function
//              as before, as many parameters, and each takes the arguments that it took: the same
//              type, Byte, Integer or Long for each other, ByVal for ByRef of a type of the
//              language
//   constants  a number for a number, a text for a text
//   records    the same members' names, in any order; types as above, arrays for arrays
//
// No form may use names that the declaration does not: they might mean nothing in the project, or
// something else.
#pragma once

#include <optional>
#include <set>
#include <string>

#include "audit/certainty.h"
#include "audit/library_form.h"
#include "check/known_libraries.h"

namespace declarium::audit {

// Answers by row. What is handed over must outlive it.
class Replacing {
 public:
  Replacing(const Subject& subject, plan::ProjectModules& modules, const std::vector<Row>& rows,
            const Certainty& certainty, check::KnownLibraries& libraries)
      : subject_(subject),
        modules_(modules),
        rows_(rows),
        certainty_(certainty),
        libraries_(libraries) {}

  // What keeps the form from taking the row's place. `calls_nothing`: the DLL has no procedure as
  // the row writes it.
  [[nodiscard]] Obstacle ToReplace(std::size_t row, const LibraryForm& form, bool calls_nothing);

 private:
  [[nodiscard]] bool SaysTheSame(std::size_t row, const vb::Declaration& form);
  [[nodiscard]] Obstacle ToReplaceExternal(const vb::Declaration& old, const vb::Declaration& form,
                                           bool calls_nothing);
  [[nodiscard]] Obstacle ToReplaceConstant(std::size_t row, const vb::Declaration& form);
  // Whether code names a parameter that has another name in the form.
  [[nodiscard]] bool LosesNamedArgument(const vb::External& old, const vb::External& form);
  [[nodiscard]] vb::Definitions& NamesFor(std::size_t row);

  const Subject& subject_;
  plan::ProjectModules& modules_;
  const std::vector<Row>& rows_;
  const Certainty& certainty_;
  check::KnownLibraries& libraries_;
  // In lower case, the names in front of ":=" in all modules.
  std::optional<std::set<std::u16string>> named_arguments_;
};

}  // namespace declarium::audit
