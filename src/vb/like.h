// The host language's Like operator in binary comparison mode.
//
//   ?        one character            *   zero or more characters        #   one digit 0-9
//   [list]   one character of list    [!list]   one character not in list
//
// A list holds single characters and ranges low-high; "!" negates only as the first character of a
// list, so "[!a-z!0-9]" is one character that is not a-z, not "!" and not 0-9. "-" first, last or
// right behind a range is a member; "[", "*", "?" and "#" are ordinary inside a list. "]" always
// closes a list and is ordinary outside one. "[]" matches the empty text, "[!]" the character "!".
// A pattern with an unclosed list, or with a range whose low end is above its high end, matches
// nothing at all.
//
// Characters are UTF-16 units compared by code: case matters, callers lower-case both sides.
// Matching costs at most (length of text) x (length of pattern) steps and no memory; a pattern that
// is a plain text between two stars costs one substring search.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace declarium {

class LikePattern {
 public:
  // Compiles the pattern; `pattern` need not outlive the call.
  explicit LikePattern(std::u16string_view pattern);

  [[nodiscard]] bool Matches(std::u16string_view text) const noexcept;
  // Whether it matches nothing at all, as told above.
  [[nodiscard]] bool IsMalformed() const noexcept { return malformed_; }

  // Whether the lower-case form of `text` matches. Makes that form, in `scratch`, only where a
  // plain search does not do.
  [[nodiscard]] bool MatchesLowerCaseOf(std::u16string_view text, std::u16string& scratch) const;

 private:
  enum class Step : unsigned char { kUnit, kAnyUnit, kAnyRun, kDigit, kInList, kNotInList };
  struct Range {
    char16_t low;
    char16_t high;
  };
  struct Element {
    Step step;
    char16_t unit;            // kUnit
    std::size_t first_range;  // kInList, kNotInList: ranges_[first_range, last_range)
    std::size_t last_range;
  };

  void Compile(std::u16string_view pattern);
  // Reads the list whose "[" stands at `position`; moves behind its "]". False when malformed.
  bool CompileList(std::u16string_view pattern, std::size_t& position);
  void FindPlainText();
  [[nodiscard]] bool Accepts(const Element& element, char16_t unit) const noexcept;
  [[nodiscard]] bool MatchesElements(std::u16string_view text) const noexcept;

  std::vector<Element> elements_;
  std::vector<Range> ranges_;
  std::u16string contained_;  // the text between the stars when is_contained_text_
  bool is_contained_text_ = false;
  bool malformed_ = false;
};

// Whether `text` matches `pattern`; compiles the pattern for one use.
[[nodiscard]] bool Matches(std::u16string_view text, std::u16string_view pattern);

}  // namespace declarium
