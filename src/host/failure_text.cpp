#include "host/failure_text.h"

#include <array>

#include "text/user_texts.h"

namespace declarium {
namespace {

struct KnownReason {
  std::int32_t code;
  std::u16string_view text;
};

constexpr std::array<KnownReason, 5> kKnownReasons = {{
    {kProjectIsLocked, texts::kProjectIsLocked},
    {kProgramRuns, texts::kProgramRuns},
    {kLineTooLong, texts::kLineTooLong},
    // As the editor itself says the first two, when it is asked all the same.
    {static_cast<std::int32_t>(0x800AC471), texts::kProjectIsLocked},
    {static_cast<std::int32_t>(0x800ADF09), texts::kProgramRuns},
}};

}  // namespace

std::u16string StatusText(std::int32_t code) {
  constexpr std::u16string_view kDigits = u"0123456789ABCDEF";
  std::u16string text;
  for (int shift = 28; shift >= 0; shift -= 4) {
    text += kDigits[static_cast<std::uint32_t>(code) >> shift & 0xF];
  }
  return text;
}

std::u16string ReasonText(const HostError& error) {
  for (const auto& [code, text] : kKnownReasons) {
    if (error.code == code) return std::u16string(text);
  }
  if (IsBusy(error)) return std::u16string(texts::kHostIsBusy);
  if (IsHostGone(error)) return std::u16string(texts::kHostIsGone);
  std::u16string reason = error.description;
  if (!reason.empty()) reason.append(u" ");
  return reason.append(texts::kErrorBefore)
      .append(StatusText(error.code))
      .append(texts::kErrorBehind);
}

}  // namespace declarium
