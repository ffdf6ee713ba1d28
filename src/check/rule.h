// The rules about declarations: one table that the checks, the documents and every output take
// numbers, levels and sentences from.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "text/check_texts.h"

namespace declarium::check {

enum class Level : std::uint8_t {
  kNote,     // rests on a name alone, or only tidies up
  kWarning,  // wrong on some systems or in 64 bits, or nearly always a mistake
  kError,    // does not compile, damages memory, or is wrong whenever it is called
};

// "note", "warning" or "error".
[[nodiscard]] std::string_view LevelText(Level level);

// The hundreds are the group. A number never changes its meaning: programs suppress by it.
enum class RuleId : std::uint16_t {
  kSyntax = 101,
  kDuplicateName = 102,
  kUnknownType = 103,
  kPublicInObjectModule = 104,
  kForwardRecord = 105,
  kTooLong = 106,
  kParameterNamedLikeProcedure = 107,
  kRecordByValue = 108,
  kValueDoesNotFit = 109,
  kNotInVisualBasic6 = 110,
  kHiddenTypeInPublic = 111,
  kAmbiguousName = 112,

  kSuffixMissing = 201,
  kLettersDiffer = 202,
  kWrongLibrary = 203,
  kWideEntryWithString = 204,
  kNearEntry = 205,
  kNotInThisWindows = 206,

  kArgumentBytes = 301,
  kByValMissing = 302,
  kByValForResult = 303,
  kTextByReference = 304,
  kResultKind = 305,
  kShortBoolean = 306,
  kNarrowVariable = 307,
  kAnyByValue = 308,
  kShortHandle = 309,

  kConstantDiffers = 401,
  kNegativeHexadecimal = 402,
  kRecordDiffers = 403,
  kRecordTooSmall = 404,
  kLenOfPaddedRecord = 405,

  kPtrSafeMissing = 501,
  kLongForAddress = 502,
  kLongPtrForNumber = 503,
  kAddressIntoLong = 504,
  kSizeAsNumber = 505,
  kLongMemberForAddress = 506,

  kUnused = 601,
  kDeclaredTwice = 602,
  kOtherName = 603,
  kDeclaredDifferently = 604,
};

struct Rule {
  RuleId id;
  std::string_view number;       // "D301"
  texts::RuleText window;        // title and consequence as the windows say them
  Level level;                   // a finding may have a lower one
  std::string_view title;        // what is wrong
  std::string_view consequence;  // what happens at run time, a sentence
  std::string_view wrong;        // lines with the fault, as the documents show them
  std::string_view right;        // the same without it
};

// In the order of their numbers.
[[nodiscard]] std::span<const Rule> Rules();
[[nodiscard]] const Rule& RuleOf(RuleId id);
// The rule of a number in any case; null for an unknown one.
[[nodiscard]] const Rule* FindRule(std::u16string_view number);

struct Group {
  int hundreds;
  std::string_view title;
};

// In the order of their numbers.
[[nodiscard]] std::span<const Group> Groups();

}  // namespace declarium::check
