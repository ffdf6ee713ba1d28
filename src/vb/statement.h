// Puts the tokens of a source together to statements: what stands between line ends and ":".
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "vb/token.h"

namespace declarium::vb {

struct Statement {
  std::vector<Token> tokens;     // without spaces and the comment; may be none
  std::optional<Token> comment;  // behind the tokens

  // The source from the first token to the end of the last; needs a token.
  [[nodiscard]] std::u16string_view Text() const;
};

class StatementReader {
 public:
  // `text` must outlive the reader and what it read. `start` is where a statement begins.
  explicit StatementReader(std::u16string_view text, Place start = {})
      : text_(text), tokenizer_(text, start) {}

  // Reads the next statement with a token or a comment over `statement`; false at the end.
  bool Next(Statement& statement);

  // The same, but passes over lines of which `is_wanted` does not want the first word (in lower
  // case, empty for a line without one) and that hold no ":". Most lines of a procedure are passed
  // over without being cut into tokens.
  template <class IsWanted>
  bool NextWanted(Statement& statement, const IsWanted& is_wanted) {
    while (at_line_start_ && !AtEnd() && CanPass(is_wanted)) {
    }
    return Next(statement);
  }

  // Passes over the rest of the physical line.
  void SkipLine();
  [[nodiscard]] Place Here() const { return tokenizer_.Here(); }

 private:
  static constexpr std::size_t kLongestWord = 12;

  // A line with its continuations, and what decides whether it is read.
  struct Line {
    std::size_t end;  // behind its line end
    std::uint32_t count;
    bool has_colon;
  };

  [[nodiscard]] bool AtEnd() const { return tokenizer_.Here().offset >= text_.size(); }
  // The first word from `position`, lowered into `word`; empty for another beginning.
  [[nodiscard]] std::u16string_view FirstWord(char16_t (&word)[kLongestWord]) const;
  [[nodiscard]] Line LineFrom(std::size_t position);
  void PassTo(const Line& line);
  // Where the line end at or behind `position` starts.
  [[nodiscard]] std::size_t FindLineEnd(std::size_t position);

  template <class IsWanted>
  bool CanPass(const IsWanted& is_wanted) {
    char16_t letters[kLongestWord];
    if (is_wanted(FirstWord(letters))) return false;
    const Line line = LineFrom(tokenizer_.Here().offset);
    if (line.has_colon) return false;
    PassTo(line);
    return true;
  }

  std::u16string_view text_;
  Tokenizer tokenizer_;
  bool at_line_start_ = true;
  std::size_t next_cr_ = 0;  // the first CR and LF at or behind where lines were looked for
  std::size_t next_lf_ = 0;
  bool knows_line_ends_ = false;
};

}  // namespace declarium::vb
