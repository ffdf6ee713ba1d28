#include "host/ui/edit_outcome.h"

#include "text/text.h"

namespace declarium {
namespace {

std::u16string LinesThatStand(const std::vector<LineEdit>& edits, const EditReport& report) {
  std::u16string lines;
  for (std::size_t i = 0; i < edits.size(); ++i) {
    if (!report.standing[i]) continue;
    if (!lines.empty()) lines += u", ";
    lines += CountText(static_cast<std::uint64_t>(edits[i].line));
  }
  return lines;
}

}  // namespace

std::u16string OutcomeText(const EditOutcomeTexts& texts, const std::vector<LineEdit>& edits,
                           const EditReport& report) {
  switch (report.outcome) {
    case EditReport::Outcome::kDone:
      break;
    case EditReport::Outcome::kChanged:
      return std::u16string(texts.changed);
    case EditReport::Outcome::kRefused:
      return std::u16string(texts.refused);
    case EditReport::Outcome::kPartly:
      return std::u16string(texts.partly) + LinesThatStand(edits, report);
    case EditReport::Outcome::kUnknown:
      return std::u16string(texts.unknown);
  }
  return {};
}

}  // namespace declarium
