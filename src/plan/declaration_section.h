// The lines of a module in front of its first procedure, and where lines can be put between them.
//
// A place is told by the line that it stands behind, 0 for the start of the text. It is open unless
// it is inside a Type, an Enum, a branch of #If or a continued line, in the header of a designer,
// in front of an Attribute line, in front of an Option or Def line, or between the first procedure
// and the comments directly above it.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <vector>

#include "library/kind.h"
#include "vb/module.h"

namespace declarium::plan {

inline constexpr std::uint32_t kNoLimit = std::numeric_limits<std::uint32_t>::max();

// The kind of the library's items that the declaration is; nullopt for an enumeration.
[[nodiscard]] std::optional<Kind> KindOf(const vb::Declaration& declaration);

class DeclarationSection {
 public:
  // Both must outlive the section; `module` is the text as ReadModule read it.
  DeclarationSection(std::u16string_view text, const vb::Module& module);

  // The source of the section.
  [[nodiscard]] std::u16string_view Text() const { return text_; }

  // The open place for a declaration of the kind that is neither above `low` nor below `high`: the
  // last one behind a declaration of its kind, else behind the last line of code, else the nearest
  // to it. `low` counts where both cannot hold.
  [[nodiscard]] std::uint32_t PlaceFor(Kind kind, std::uint32_t low, std::uint32_t high) const;

  // Whether the line is blank, or no line.
  [[nodiscard]] bool IsBlank(std::uint32_t line) const;
  // Whether there is nothing on the line but declarations of the kind, whole.
  [[nodiscard]] bool IsOf(Kind kind, std::uint32_t line) const;

 private:
  enum class Line : unsigned char { kBlank, kComment, kCode };

  void ReadLines();
  void Join(std::uint32_t first, std::uint32_t last);
  void FindOpenPlaces();
  [[nodiscard]] std::uint32_t FindDefault() const;
  [[nodiscard]] std::uint32_t Nearest(std::uint32_t place, std::uint32_t low,
                                      std::uint32_t high) const;

  std::u16string_view text_;
  const vb::Module& module_;
  std::uint32_t lines_count_;            // of the section
  std::uint32_t first_open_ = 0;         // behind headers, Option and Def lines
  std::vector<Line> lines_;              // by number
  std::vector<bool> is_attribute_;       // by number
  std::vector<bool> is_open_;            // by place
  std::vector<std::optional<Kind>> of_;  // by number
  std::uint32_t default_ = 0;
};

}  // namespace declarium::plan
