// Walks the lines of a source. The parser reads two sorts: text whose continued lines were joined
// before, and the bytes of a file, whose continued lines are joined on the way, so that a whole
// file is neither copied nor decoded to find the few lines that matter.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "import/line_reader.h"

namespace declarium {

// Of a text that went through JoinContinuedLines.
class TextCursor {
 public:
  using Unit = char16_t;
  using Source = SourceText;
  static constexpr bool kKnowsPlaces = true;  // FileLineOf and FileColumnOf

  TextCursor(const SourceText& source, std::size_t position) : source_(source), next_(position) {}

  // Goes to the first line, then to the next; false behind the last. A text always ends in a line,
  // though an empty one.
  bool Next();

  // At least the line's beginning.
  [[nodiscard]] std::u16string_view Beginning() const { return line_; }
  [[nodiscard]] std::u16string_view Line() { return line_; }
  // Where the line starts, and where the one behind it does.
  [[nodiscard]] std::size_t Start() const { return start_; }
  [[nodiscard]] std::size_t NextStart() const { return next_; }
  // 1-based, in the file, for a walk that started at position 0.
  [[nodiscard]] std::size_t FileLine() const { return FileLineOf(0); }
  // The same for a position (0-based) in the line, whose pieces may stand in several lines of the
  // file; and how many characters stand before it in its own, plus 1.
  [[nodiscard]] std::size_t FileLineOf(std::size_t position) const {
    return lines_ + source_.JoinsUpTo(start_ + position);
  }
  [[nodiscard]] std::size_t FileColumnOf(std::size_t position) const;
  // Whether joining line by line could differ from joining the whole text.
  [[nodiscard]] bool IsUncertain() const { return false; }

 private:
  const SourceText& source_;
  std::u16string_view line_;
  std::size_t start_ = 0;
  std::size_t next_;
  std::size_t lines_ = 0;
};

// Of a file in the code page of libraries with CR LF line ends; the same members but for those of
// places.
class FileCursor {
 public:
  using Unit = char;
  using Source = std::string_view;
  static constexpr bool kKnowsPlaces = false;

  FileCursor(std::string_view bytes, std::size_t position) : bytes_(bytes), next_(position) {}

  bool Next();

  // For a continued line its first piece with the "_".
  [[nodiscard]] std::string_view Beginning() const { return beginning_; }
  // Valid until the next call of Next.
  [[nodiscard]] std::string_view Line();
  [[nodiscard]] std::size_t Start() const { return start_; }
  [[nodiscard]] std::size_t NextStart() const { return next_; }
  [[nodiscard]] std::size_t FileLine() const { return lines_ - continuations_.size(); }
  // A piece that is nothing but "_", or has another "_" or a CR before it, may form a continuation
  // or a line end of its own with what follows.
  [[nodiscard]] bool IsUncertain() const { return is_uncertain_; }

 private:
  std::size_t ReadPiece(std::size_t from);

  std::string_view bytes_;
  std::string_view beginning_;
  std::size_t start_ = 0;
  std::size_t next_;
  std::size_t lines_ = 0;                   // of the file, up to the end of this line
  std::vector<std::size_t> continuations_;  // where the "_" of this line's continued pieces stand
  std::string joined_;
  bool is_uncertain_ = false;
};

}  // namespace declarium
