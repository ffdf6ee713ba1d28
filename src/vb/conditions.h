// The branches of #If around what is being read, as expressions of the language.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace declarium::vb {

// What must hold for a branch.
struct Condition {
  // One expression behind #If or #ElseIf, which must be true or, for a later branch, false. The
  // language takes any number but 0 for true, and its Not changes bits, so the text alone would
  // say something else for a constant of 1.
  struct Part {
    std::u16string_view expression;
    bool is_true = true;
  };

  std::u16string text;  // for people: "VBA7 And Not Win64"
  std::vector<Part> parts;
};

class Conditions {
 public:
  // The directives, in the order of the source. One that lacks its #If is passed over; false then.
  void If(std::u16string_view expression);
  bool ElseIf(std::u16string_view expression);
  bool Else();
  bool EndIf();

  [[nodiscard]] bool IsOpen() const { return !open_.empty(); }
  // The number of the branch here, 0 outside all.
  [[nodiscard]] std::uint32_t Current() const { return open_.empty() ? 0 : open_.back().branch; }
  // What must hold for the branches, by number; the first, for no branch, is empty.
  [[nodiscard]] std::vector<Condition> TakeAll() { return std::move(all_); }

 private:
  struct Open {
    Condition outer;          // of the branches around the #If
    Condition others_failed;  // the outer one and that no branch so far was taken
    Condition inner;          // the outer of an #If in this branch
    std::uint32_t branch = 0;
  };

  // The number of the condition.
  std::uint32_t Add(const Condition& condition);

  std::vector<Open> open_;
  std::vector<Condition> all_ = {{}};
};

}  // namespace declarium::vb
