// What the compiler says about the records of the headers.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "rows.h"
#include "toolchain.h"
#include "vb/target.h"

namespace declarium::win32_library_test {

struct FieldFact {
  long offset = 0;
  long size = 0;
  bool is_real = false;
};

struct RecordFact {
  long size = 0;
  std::map<std::string, FieldFact> fields;  // by the path that C takes
};

using RecordFacts = std::map<std::string, RecordFact>;  // by the row's name

// What a member line stands for in the headers.
struct Meaning {
  enum class Kind { kField, kFiller, kUnion, kBits };
  Kind kind = Kind::kField;
  std::vector<std::string> paths;  // the field, or all alternatives or bit fields
};
[[nodiscard]] Meaning MeaningOf(const MemberRow& member);

// The facts about all fields that the rows speak of. Throws when one does not exist.
[[nodiscard]] RecordFacts CompileRecords(const Rows& rows, const Toolchain& toolchain,
                                         const UnitMap& units,
                                         const std::map<std::string, std::size_t>& provenance);

// Gives the rows of x64 the names that their records have there: where the headers for x86 declare
// ADDRESS, those for x64 have a macro of that name for ADDRESS64.
void RenameFor64(Rows& rows, const UnitMap& units,
                 const std::map<std::string, std::size_t>& provenance, const Toolchain& x86,
                 const Toolchain& x64);

// The rows whose layout in the language on that system is not the compiler's: the size, or the
// place or size of a member, or a fraction where the headers have none.
[[nodiscard]] Mismatches CheckRecords(const Rows& rows, const RecordFacts& facts,
                                      vb::Target target = vb::Target::kVb6);

}  // namespace declarium::win32_library_test
