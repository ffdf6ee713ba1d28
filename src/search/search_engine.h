// The advanced search: items that match up to six criteria, in the order Const, Declare, Type and
// list order within a kind. It reads the library and never changes it.
//
// A criterion with an empty text is absent. Texts are patterns (vb/like.h) on lower-cased text:
// with "whole" the pattern itself, otherwise the pattern anywhere. With a name and other criteria
// an item must match the name and one of the others; other criteria alone are alternatives. A
// criterion that a kind does not know never matches an item of that kind.
//
//            Const                    Declare                     Type
//   type                              words behind "As"           words behind "As"
//   const    names in the value                                   array bounds, string lengths
//   value    the value                                            array bounds, string lengths
//   arg                               parameter names             member names
//   full     the value               all behind " Lib "           all members
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "library/library.h"

namespace declarium {

struct SearchCriteria {
  bool searchConsts = true;
  bool searchDeclares = true;
  bool searchTypes = true;
  std::u16string nameText;
  bool nameWhole = false;
  std::u16string typeText;
  bool typeWhole = false;
  std::u16string constText;
  bool constWhole = false;
  std::u16string valueText;
  bool valueWhole = false;
  bool valueAsNumber = false;  // the value's number, in decimal, is matched
  std::u16string argText;
  bool argWhole = false;
  std::u16string fullText;
  bool fullWholeWords = false;
};

struct SearchHit {
  std::u16string_view name;  // as stored; refers into the library
  Kind kind;                 // its icon is IconOf(kind)
};

enum class SearchOutcome {
  kDone,
  kNoCriteria,  // every text is empty; nothing was searched
  kNotEnough,   // no kind searched holds more than one item; nothing was searched
};

// What a search reports while it runs.
class SearchReceiver {
 public:
  virtual ~SearchReceiver() = default;

  // The walk is about to start: earlier results go now. Not called when nothing is searched.
  virtual void Begin(std::int32_t maximum) = 0;
  virtual void Hit(const SearchHit& hit) = 0;
  // About 200 times in a search, with a position from 0 to maximum.
  virtual void Position(std::int32_t position) = 0;
  // The number of hits so far: when it changed, and at most every 50 ms but for the last time.
  virtual void Count(std::int32_t hits) = 0;
  // The walk is over: the position goes back to 0.
  virtual void End() = 0;
  // A millisecond counter, which may wrap around.
  [[nodiscard]] virtual std::uint32_t TickCount() = 0;
};

SearchOutcome Search(const SearchCriteria& criteria, const Library& library,
                     SearchReceiver& receiver);

}  // namespace declarium
