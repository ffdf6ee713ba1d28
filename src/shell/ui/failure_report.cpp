#include "shell/ui/failure_report.h"

#include <new>
#include <utility>

#include "text/text.h"
#include "text/user_texts.h"
#include "toolkit/held_flag.h"

namespace declarium {
namespace {

// A timer that fails each time would otherwise leave the user no moment between two boxes.
constexpr std::uint32_t kQuietTime = 10'000;  // milliseconds

std::u16string ReasonOf(const std::exception_ptr& failure) {
  try {
    std::rethrow_exception(failure);
  } catch (const std::bad_alloc&) {
    return std::u16string(texts::kNoMemory);
  } catch (const std::exception& exception) {
    return FromUtf8(exception.what());
  } catch (...) {
    return std::u16string(texts::kUnknownFailure);
  }
}

}  // namespace

FailureReport::FailureReport(Toolkit& toolkit, std::function<bool()> keep_unsaved)
    : toolkit_(toolkit), keep_unsaved_(std::move(keep_unsaved)) {
  toolkit_.boundary.SetReport([this](const std::exception_ptr& failure) { Tell(failure); });
}

FailureReport::~FailureReport() {
  toolkit_.boundary.SetReport(nullptr);
}

void FailureReport::Tell(const std::exception_ptr& failure) {
  const bool kept = KeepUnsaved();
  // Events are handled while the box is open, and what fails in them is told by this one box.
  if (telling_) return;
  const HeldFlag telling(telling_);
  auto reason = ReasonOf(failure);
  if (WasToldJustNow(reason)) return;
  std::u16string text(texts::kFailure);
  text.append(kCrLf).append(reason).append(kCrLf).append(kCrLf);
  if (kept) text.append(texts::kUnsavedKept).append(u" ");
  text.append(texts::kFailurePassed);
  toolkit_.ShowMessage({std::move(text), MessageButtons::kOk, MessageIcon::kCritical});
  told_ = std::move(reason);
  told_at_ = toolkit_.TickCount();
}

bool FailureReport::KeepUnsaved() noexcept {
  try {
    return keep_unsaved_();
  } catch (...) {
    // What keeps it failed as well; the user is told of the first failure all the same.
    return false;
  }
}

bool FailureReport::WasToldJustNow(const std::u16string& reason) const {
  return reason == told_ && toolkit_.TickCount() - told_at_ < kQuietTime;
}

}  // namespace declarium
