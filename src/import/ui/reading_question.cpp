#include "import/ui/reading_question.h"

#include <algorithm>
#include <span>
#include <utility>

#include "text/text.h"
#include "text/user_texts.h"

namespace declarium {

std::u16string ReadingQuestion(const SourceReading& reading) {
  constexpr std::size_t kExamples = 3;
  const auto& all = reading.differences;
  std::u16string text(texts::kAskReadingBefore);
  text += CountText(all.size());
  text += u"\r\n\r\n";
  for (const auto& each : std::span(all).first(std::min(kExamples, all.size())))
    text.append(KindName(each.kind)).append(u" ").append(each.name).append(u"\r\n");
  if (all.size() > kExamples) text += u"...\r\n";
  return text.append(u"\r\n").append(texts::kAskReadingBehind);
}

std::optional<ParsedItems> ChooseReading(Toolkit& toolkit, std::u16string_view source,
                                         ParsedItems literal) {
  auto reading = ReadAsVisualBasic(source, literal);
  if (reading.differences.empty()) {
    // Members of enumerations that no library can keep are known to this reading alone.
    literal.skipped = std::move(reading.items.skipped);
    literal.replaced = std::move(reading.items.replaced);
    return literal;
  }
  switch (toolkit.ShowMessage(
      {ReadingQuestion(reading), MessageButtons::kYesNoCancel, MessageIcon::kExclamation})) {
    case Answer::kYes:
      return std::move(reading.items);
    case Answer::kNo:
      return literal;
    default:
      return std::nullopt;
  }
}

}  // namespace declarium
