#include "host/com/clipboard_saver.h"

#include <algorithm>
#include <atomic>
#include <memory>
#include <new>
#include <optional>
#include <thread>
#include <utility>

#include "win32/unique_handle.h"

namespace declarium::com {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

win32::UniqueKernelObject NewEvent() {
  win32::UniqueKernelObject event(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  if (!event) throw std::bad_alloc();
  return event;
}

// What the two threads share; the one that is done last destroys it.
struct Work {
  const win32::UniqueKernelObject opened = NewEvent();  // or it cannot be
  const win32::UniqueKernelObject done = NewEvent();
  std::atomic<bool> wanted = true;
  // Read once `done` is set.
  std::optional<HostResult<ClipboardContents>> contents;
};

void CopyOnThread(Work& work) noexcept {
  try {
    const win32::OpenedClipboard clipboard(nullptr, kHeldClipboardLimit);
    SetEvent(work.opened.Get());
    if (clipboard) {
      work.contents = ClipboardContents::Copy(work.wanted);
    } else {
      work.contents = std::unexpected(ClipboardError(clipboard.Error()));
    }
  } catch (const std::bad_alloc&) {
    work.contents.reset();
  }
  // The clipboard is closed by now.
  SetEvent(work.done.Get());
}

// False when `limit` passes first.
bool WaitFor(HANDLE event, milliseconds limit) {
  const auto end = Clock::now() + limit;
  for (;;) {
    const auto left = std::chrono::ceil<milliseconds>(end - Clock::now());
    const auto time = static_cast<DWORD>(std::max<long long>(left.count(), 0));
    const DWORD woken = MsgWaitForMultipleObjects(1, &event, FALSE, time, QS_SENDMESSAGE);
    if (woken != WAIT_OBJECT_0 + 1) return woken == WAIT_OBJECT_0;
    MSG message;
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
  }
}

}  // namespace

HostResult<ClipboardContents> SaveClipboard() {
  const auto work = std::make_shared<Work>();
  std::thread([work] { CopyOnThread(*work); }).detach();
  const bool done =
      WaitFor(work->opened.Get(), 2 * kHeldClipboardLimit) && WaitFor(work->done.Get(), kCopyLimit);
  work->wanted = false;
  if (!done) return std::unexpected(ClipboardError(ERROR_TIMEOUT));
  if (!work->contents) return std::unexpected(ClipboardError(ERROR_NOT_ENOUGH_MEMORY));
  return std::move(*work->contents);
}

}  // namespace declarium::com
