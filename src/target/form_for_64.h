// What a declaration written for 32 bits is in 64: from the facts of a library where they know the
// procedure or the record, else read from names and types with care, which is a guess.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "facts/facts_file.h"
#include "vb/declaration.h"

namespace declarium {

struct FormFor64 {
  // The types that differ, one for each parameter or member in order; empty for the same. LongPtr,
  // and LongLong, which 32 bits do not have.
  std::vector<std::u16string> types;
  std::u16string result;  // of a Function, likewise
  // Where more than types differ: the parameters in their brackets with a result behind them; or
  // the members of the record, one each.
  std::u16string signature;
  std::u16string alias;  // in the facts' declaration; of use with a signature only
  std::vector<std::u16string> members;
  std::u16string missing;               // why there is none in 64 bits; empty when there is one
  std::vector<std::u16string> guessed;  // the parameters and members taken for addresses by name

  [[nodiscard]] bool IsSame() const;
  // Whether some type is LongLong, so that 32 bits need another text.
  [[nodiscard]] bool HasLongLong() const;
};

// Finds what is known of a declaration.
class KnowledgeOf64 {
 public:
  // Of several files that know a declaration the first counts.
  explicit KnowledgeOf64(std::vector<FactsFile> facts) : facts_(std::move(facts)) {}

  // Of a Declare or a Type, which the facts know when library, entry point and the number of
  // parameters agree, or the name and the number of members. Of anything else the form is the same.
  [[nodiscard]] FormFor64 Of(const vb::Declaration& declaration) const;

 private:
  std::vector<FactsFile> facts_;
};

}  // namespace declarium
