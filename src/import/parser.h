// Recognizes Const, Declare and Type declarations in source text, line by line and by first words,
// and packs them into items. Everything else (Enum blocks, Global and Dim lines, procedures,
// comments) is passed over; the rest of a declaration is taken as text, its syntax is not checked.
// It reads words between blanks, not the tokens of vb/token.h: items are kept to the character,
// blanks and comments included, and most lines are dismissed by their first letters alone.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "import/line_reader.h"
#include "library/kind.h"
#include "library/string_list.h"
#include "library/text_arena.h"

namespace declarium {

enum class SkipReason {
  kTooFewWords,  // the line lacks a word that its declaration needs
  kNoName,       // two blanks stand where the name should
  kTooLong,      // one of many records that run on to the end of a long text, see records.h
};

// A line that begins a declaration but gave no item.
struct SkippedLine {
  std::size_t number;   // 1-based, in the file
  std::u16string text;  // as it stands in the source, continued lines joined
  SkipReason reason;
};

[[nodiscard]] std::string_view ReasonText(SkipReason reason);

struct ParsedItems {
  struct Lists {
    StringList names;
    StringList items;
  };
  std::array<Lists, kKindCount> lists;  // in source order
  std::vector<SkippedLine> skipped;     // in source order
  bool all_storable = true;             // whether IsStorable holds for every name and item

  [[nodiscard]] const Lists& operator[](Kind kind) const {
    return lists[static_cast<std::size_t>(kind)];
  }
};

// Joins continued lines and reads every declaration. The lines inside a record are members and are
// also read as ordinary lines, so a member line that begins like a declaration counts twice. A
// record ends only at a line that is exactly "End Type" in any case, or at the end of the text.
[[nodiscard]] ParsedItems ParseDeclarations(SourceText source);

// Everything that importing a file does with its bytes: the same as
//   auto source = ReadSource(bytes); JoinContinuedLines(source); ParseDeclarations(source)
// without a copy of the file, and decoding nothing but its declarations.
[[nodiscard]] ParsedItems ParseSourceFile(std::string_view bytes);

}  // namespace declarium
