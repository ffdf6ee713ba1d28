// A list file: a selection of items as text that version control can keep and compare.
//
//   ' comment                on a line of its own or behind what stands there
//   # comment                with a blank, another "#" or nothing behind the "#"
//   #library Win32.api       where names are looked up; several lines, the first that has a name
//                            counts. A comment behind a path has a blank in front of its quote
//   #target vba7             for whom the module is: vb6, vba7, vba7-only or twinbasic
//   #module Api.bas          the module that is made from the list
//   GetWindowRect            an item; const:, declare: or type: in front names the kind
//   type:RECT
//   SWP_*                    every item of such a name. * ? # and [list] mean what they do in
//                            quick find, but the pattern is for the whole name: SWP_* begins so
//   const:WM_MOUSE*          only of this kind
//   -SWP_DRAWFRAME           takes it away again from what the lines above gave; patterns too
//
// Upper and lower case are alike, blanks and tabs at both ends of a line do not count, and empty
// lines say nothing. An unknown word behind "#" is a fault, not a comment.
#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "library/grouped_list.h"
#include "library/sought_name.h"
#include "vb/audience.h"

namespace declarium {

// A line that names items.
struct ListLine {
  std::uint32_t line = 1;  // 1-based
  bool takes_away = false;
  bool is_pattern = false;
  SoughtName sought;    // a name or a pattern
  std::u16string word;  // as the line has it, without "-"
};

struct ListFile {
  std::vector<std::u16string> libraries;  // paths as written, from the folder of the list
  std::optional<vb::Audience> target;
  std::u16string module;  // a path as written; empty without one
  std::vector<ListLine> lines;
};

enum class ListFaultKind {
  kUnknownDirective,
  kValueMissing,  // behind a directive, "-" or a kind
  kUnknownTarget,
  kSaidTwice,      // #target or #module
  kBrokenPattern,  // "[" without "]", or a range from a higher to a lower character
};

struct ListFault {
  std::uint32_t line;  // 1-based
  ListFaultKind kind;
  std::u16string word;  // the wrong one

  friend bool operator==(const ListFault&, const ListFault&) = default;
};

// What the list says, or all that is wrong with it in the order of its lines.
[[nodiscard]] std::expected<ListFile, std::vector<ListFault>> ReadListFile(
    std::u16string_view text);

// A list of these entries that names these libraries, and the target unless it is VB6: one line
// each in their order, with the kind in front, CR LF behind each. What a name holds that means
// something in a list is written so that reading the list finds that name.
[[nodiscard]] std::u16string ListText(std::span<const std::u16string> libraries,
                                      vb::Audience target, const GroupedList& entries);

// The text as a file: in the code page of libraries where its bytes are recognized as that again,
// else in UTF-8 with a mark.
[[nodiscard]] std::string ListBytes(std::u16string_view text);

}  // namespace declarium
