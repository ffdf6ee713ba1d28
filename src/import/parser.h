// Recognizes Const, Declare and Type declarations in source text, line by line and by first words,
// and packs them into items. Everything else (Enum blocks, Global and Dim lines, procedures,
// comments) is passed over; the rest of a declaration is taken as text, its syntax is not checked.
// It reads words between blanks, not the tokens of vb/token.h: items are kept to the character,
// blanks and comments included, and most lines are dismissed by their first letters alone.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "import/line_reader.h"
#include "import/lost_character.h"
#include "library/kind.h"
#include "library/string_list.h"
#include "text/encoding.h"

namespace declarium {

enum class SkipReason {
  kTooFewWords,  // the line lacks a word that its declaration needs
  kNoName,       // two blanks stand where the name should
  kTooLong,      // one of many records that run on to the end of a long text, see records.h
  kSeparator,    // a character 0, 1 or 2, which would tear the library's file apart
  kForeign,      // a character outside the library's code page, not in a comment
};

// A line that begins a declaration but gave no item.
struct SkippedLine {
  std::size_t number;   // 1-based, in the file
  std::u16string text;  // as it stands in the source, continued lines joined
  SkipReason reason;
  std::optional<LostCharacter> character;  // of kSeparator and kForeign
};

// The reason for which a declaration with such a character in its code is left out.
[[nodiscard]] SkipReason SkipReasonOf(Loss loss);
[[nodiscard]] std::string_view ReasonText(SkipReason reason);

struct ParsedItems {
  struct Lists {
    StringList names;
    StringList items;
  };
  std::array<Lists, kKindCount> lists;  // in source order
  std::vector<SkippedLine> skipped;     // in source order
  // Characters that became "?" because they stand in the comments of items, in source order.
  std::vector<LostCharacter> replaced;

  [[nodiscard]] const Lists& operator[](Kind kind) const {
    return lists[static_cast<std::size_t>(kind)];
  }
};

// Joins continued lines and reads every declaration that a library can keep. The lines inside a
// record are members and are also read as ordinary lines, so a member line that begins like a
// declaration counts twice. A record ends only at a line that is exactly "End Type" in any case, or
// at the end of the text.
[[nodiscard]] ParsedItems ParseDeclarations(SourceText source);

// Everything that importing a file does with its bytes: the same as
//   auto source = ReadSource(DecodeText(bytes, encoding));
//   JoinContinuedLines(source);
//   ParseDeclarations(source)
// A file in the code page of libraries is not copied, and only its declarations are decoded.
[[nodiscard]] ParsedItems ParseSourceFile(std::string_view bytes,
                                          const Encoding& encoding = kLibraryEncoding);

}  // namespace declarium
