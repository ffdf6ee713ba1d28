// What a declaration written for 32 bits is in 64: from the facts of a library where they know the
// procedure or the record, else read from names and types with care, which is a guess.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "facts/facts_file.h"
#include "vb/module.h"

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
  std::u16string wide_entry;            // to be called by DeclareWide instead; empty for the same
  std::u16string missing;               // why there is none in 64 bits; empty when there is one
  std::vector<std::u16string> guessed;  // the parameters and members taken for addresses by name

  [[nodiscard]] bool IsSame() const;
  // Whether some type is LongLong, so that 32 bits need another text.
  [[nodiscard]] bool HasLongLong() const;
};

// Which entries of a DLL take the texts of Declares: those of ANSI, or for DeclareWide those of
// UTF-16.
enum class TextEntries : unsigned char { kAnsi, kWide };

// Finds what is known of a declaration.
class KnowledgeOf64 {
 public:
  // Of several files that know a declaration the first counts.
  explicit KnowledgeOf64(std::vector<FactsFile> facts, TextEntries entries = TextEntries::kAnsi)
      : facts_(std::move(facts)), entries_(entries) {}

  // Of a Declare or a Type, which the facts know when library, entry point and the number of
  // parameters agree, or the name and the number of members. Of anything else the form is the same.
  [[nodiscard]] FormFor64 Of(const vb::Declaration& declaration) const;
  // Of all declarations of the module, in their order.
  [[nodiscard]] std::vector<FormFor64> FormsOf(const vb::Module& module) const;

 private:
  std::vector<FactsFile> facts_;
  TextEntries entries_;
};

}  // namespace declarium
