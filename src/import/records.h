// The records of one source text. A record without an End Type line of its own runs on through the
// Type lines below it, so a text of such lines holds records inside records, each nearly as long as
// the rest of the text: a million lines would take terabytes. What such a nested record needs is
// all in the record around it, so it is only noted while the text is read, and made at the end if
// there is room.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "import/parser.h"
#include "library/text_arena.h"

namespace declarium {

// Where a Type line stands.
struct RecordLine {
  std::size_t number;  // 1-based, in the file
  std::size_t start;   // of the line and of the one behind it; positions in the text
  std::size_t next;
};

// What became of a Type line that may stand inside a record.
enum class NestedRecord {
  kOutside,  // it stands in no record; nothing was done
  kAdded,
  kUnkeepable,  // it has a header or a member that no library can keep, and was left out
};

// Whether a library can keep what is at hand.
enum class Keepable { kNo, kYes };

class Records {
 public:
  // What all nested records of a text may take together, in units. Records that end where they
  // should take no more than the text itself and do not count.
  static constexpr std::size_t kNestedLimit = std::size_t{1} << 28;

  // `arena` holds the texts of the lists that the records are added to.
  explicit Records(std::shared_ptr<TextArena> arena, std::size_t limit = kNestedLimit)
      : arena_(std::move(arena)), limit_(limit) {}

  // Adds the record at `line` when it lies inside the outermost record read last. `head` is its
  // item string up to and with the character in front of the members.
  NestedRecord AddNested(const RecordLine& line, std::u16string_view name, std::u16string_view head,
                         Keepable header, ParsedItems& parsed);

  // Reading an outermost record: for every member where its line starts in the text and where its
  // text starts in the item string, and whether no library can keep it; then the record itself,
  // whose item string still has the separator behind the last member, and where the line behind its
  // members starts. When no library can keep the whole it is not added; records inside it that
  // begin further down may be.
  void Begin() {
    members_.clear();
    last_unkeepable_.reset();
  }
  void AddMember(std::size_t line_start, std::size_t offset) {
    members_.push_back({line_start, offset});
  }
  // The member added last.
  void NoteUnkeepable() { last_unkeepable_ = members_.back().line_start; }
  void AddOutermost(std::size_t end, Keepable whole, std::u16string_view name,
                    std::u16string_view item, ParsedItems& parsed);

  // Makes the nested records' item strings. When they would take more than the limit, a record that
  // the merge drops for another of the same name stays empty; when the rest is still too much, the
  // longest are taken out of `parsed`. Returns where those stand.
  [[nodiscard]] std::vector<RecordLine> Finish(ParsedItems& parsed);

 private:
  struct Member {
    std::size_t line_start;
    std::size_t offset;
  };
  struct Nested {
    RecordLine line;
    std::size_t position;  // among the records parsed
    std::u16string_view head;
    std::u16string_view members;  // inside the item string of the record around it
    [[nodiscard]] std::size_t Size() const { return head.size() + members.size(); }
  };

  void Make(const Nested& record, StringList& items);
  void RemoveUnmade(ParsedItems& parsed) const;
  // The noted records that a merge keeps, the shortest first.
  [[nodiscard]] std::vector<Nested> Survivors(const StringList& names) const;

  std::shared_ptr<TextArena> arena_;
  std::size_t limit_;
  std::vector<Member> members_;                 // of the outermost record read last
  std::u16string_view outermost_;               // its item string
  std::size_t end_ = 0;                         // where the line behind its members starts
  std::optional<std::size_t> last_unkeepable_;  // where its last member starts that cannot be kept
  std::vector<Nested> nested_;
};

}  // namespace declarium
