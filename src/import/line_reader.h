// The line routines below the declaration parser: continuation lines, normalizing a declaration
// line, the rest of a line behind its n-th blank, and the sort that orders a library. They do not
// stand on vb/token.h: what they do counts single blanks and takes any apostrophe for a comment,
// inside a string too, and libraries hold its results to the character.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace declarium {

// A source text with CR LF line ends, and where its continued lines were joined, so that a message
// can name the line of the file.
struct SourceText {
  std::u16string text;
  std::vector<std::size_t> joins;  // positions in `text`, ascending, where a line end was removed

  // How many line ends were removed up to `position` (0-based) in `text`.
  [[nodiscard]] std::size_t JoinsUpTo(std::size_t position) const;
};

// The source text in the bytes of a file, or in pasted text. A text without any CR LF gets CR LF
// for its bare line ends: it passed through tools that write them.
[[nodiscard]] SourceText ReadSource(std::string_view bytes);
[[nodiscard]] SourceText ReadSource(std::u16string text);

// The same bytes with CR LF for bare line ends; nothing when they need no change.
[[nodiscard]] std::optional<std::string> CrLfForBareLineEnds(std::string_view bytes);

// Removes every "_" followed by CR LF, together with it. The blank before the "_" stays.
void JoinContinuedLines(SourceText& source);

// The first CR LF at or behind `from`, npos when there is none.
[[nodiscard]] std::size_t FindLineEnd(std::u16string_view text, std::size_t from) noexcept;
[[nodiscard]] std::size_t FindLineEnd(std::string_view bytes, std::size_t from) noexcept;

// Replaces tabs by blanks and removes leading blanks; then, in a line with an apostrophe, removes
// the blanks behind the first one and, while a double blank stands before where that apostrophe was
// found, folds double blanks in the whole line. An apostrophe inside quotes counts, and a line
// without one keeps its runs of blanks.
[[nodiscard]] std::u16string NormalizeLine(std::u16string_view line);

// The part of NormalizeLine that begins with the apostrophe, for the line that stands in `line`
// from `start` on.
void NormalizeComment(std::u16string& line, std::size_t start = 0);

// What stands behind the n-th blank. A round that finds no further blank starts the next one at the
// beginning of the line; when the last round finds none the result is empty. Refers into `line`.
[[nodiscard]] std::u16string_view RestAfterBlank(std::u16string_view line, int n);

// Where the texts stand (0-based) in the order of their code units, ascending and stable: "B" comes
// before "a".
[[nodiscard]] std::vector<std::size_t> SortedPositions(std::span<const std::u16string_view> texts);

}  // namespace declarium
