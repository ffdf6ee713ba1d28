#include "basket/ui/list_message.h"

#include <algorithm>

#include "text/text.h"
#include "text/user_texts.h"

namespace declarium {
namespace {

std::u16string_view ReasonText(ListFaultKind kind) {
  switch (kind) {
    case ListFaultKind::kUnknownDirective:
      return texts::kListUnknownDirective;
    case ListFaultKind::kValueMissing:
      return texts::kListValueMissing;
    case ListFaultKind::kUnknownTarget:
      return texts::kListUnknownTarget;
    case ListFaultKind::kSaidTwice:
      return texts::kListSaidTwice;
    case ListFaultKind::kBrokenPattern:
      return texts::kListBrokenPattern;
  }
  return {};
}

std::u16string_view ReasonText(LineFault::Kind kind) {
  switch (kind) {
    case LineFault::Kind::kUnknown:
      return texts::kListUnknown;
    case LineFault::Kind::kSeveralSpellings:
      return texts::kListSeveralSpellings;
    case LineFault::Kind::kTakesNothing:
      return texts::kListTakesNothing;
  }
  return {};
}

std::u16string ReasonLine(std::uint32_t line, std::u16string_view reason,
                          std::u16string_view word) {
  return std::u16string(texts::kListLine) + CountText(line) + u": " + std::u16string(reason) +
         ShownWord(word);
}

}  // namespace

std::vector<std::u16string> ListReasons(std::span<const ListFault> faults) {
  std::vector<std::u16string> reasons;
  for (const auto& fault : faults)
    reasons.push_back(ReasonLine(fault.line, ReasonText(fault.kind), fault.word));
  return reasons;
}

std::vector<std::u16string> ListReasons(std::span<const LineFault> faults) {
  std::vector<std::u16string> reasons;
  for (const auto& fault : faults)
    reasons.push_back(ReasonLine(fault.line->line, ReasonText(fault.kind), fault.line->word));
  return reasons;
}

std::u16string ShownWord(std::u16string_view word) {
  constexpr std::size_t kLongest = 60;
  std::u16string shown(word.substr(0, kLongest));
  std::ranges::replace_if(shown, [](char16_t unit) { return unit < u' '; }, u' ');
  return word.size() > kLongest ? shown + u"..." : shown;
}

std::u16string WithLines(std::u16string_view text, std::span<const std::u16string> lines) {
  constexpr std::size_t kMostLines = 12;
  std::u16string whole(text);
  whole += kCrLf;
  for (const auto& line : lines.first(std::min(kMostLines, lines.size())))
    whole.append(kCrLf).append(line);
  if (lines.size() > kMostLines)
    whole.append(kCrLf).append(texts::kListMore).append(CountText(lines.size() - kMostLines));
  return whole;
}

}  // namespace declarium
