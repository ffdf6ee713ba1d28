// Rewrites the declarations of a module for a target and leaves everything else as it is.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "target/form_for_64.h"
#include "vb/audience.h"
#include "vb/module.h"

namespace declarium {

struct DeclarationChange {
  std::uint32_t line = 1;  // of the source, 1-based
  std::u16string name;
  bool is_record = false;
  std::string reason;  // for people
  std::u16string before;
  std::u16string after;  // empty for a declaration that is left as it was
  bool is_guess = false;
  std::string missing;  // why 64 bits do not have it; empty when they do
};

// Whole lines of the source that become others.
struct Replacement {
  std::size_t begin = 0;  // offsets in the source, 0-based, in UTF-16 units
  std::size_t end = 0;
  std::u16string text;
};

struct Rewriting {
  std::u16string text;
  std::vector<Replacement> replacements;   // in the order of the source
  std::vector<DeclarationChange> changes;  // in the order of the source
};

// The module `text` with the declarations that 64-bit VBA compiles as `target` wants them: PtrSafe,
// LongPtr for addresses, LongLong under #If Win64, each with its VB6 form under #Else where the
// target keeps that. Declarations on lines of their own that follow each other share one #If. What
// is right already stays to the letter, so the result rewritten again is the same. For VB6 nothing
// changes. A declaration that shares its line with others is left, and listed.
// `forms` has one for each declaration of the module, which was read from the text.
[[nodiscard]] Rewriting RewriteDeclarations(std::u16string_view text, const vb::Module& module,
                                            vb::Audience target, std::span<const FormFor64> forms);
// The same for a text alone.
[[nodiscard]] Rewriting RewriteDeclarations(std::u16string_view text, vb::ModuleKind kind,
                                            vb::Audience target, const KnowledgeOf64& knowledge);

}  // namespace declarium
