// A copy of everything on the clipboard that can be copied.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <span>
#include <vector>

#include "host/host_object_model.h"
#include "win32/clipboard.h"

namespace declarium::com {

// How long a clipboard that another program has open is waited for.
inline constexpr std::chrono::milliseconds kHeldClipboardLimit{2000};

// A system's error number as a host's.
[[nodiscard]] HostError ClipboardError(DWORD code);

// Puts a copy of `bytes` on the opened clipboard.
[[nodiscard]] HostResult<> PutBytes(UINT format, std::span<const std::uint8_t> bytes);

class ClipboardContents {
 public:
  // Copies what is on the opened clipboard; formats that its owner renders late are rendered.
  // Memory formats, bitmaps and enhanced metafiles are kept; palettes, old metafiles and formats
  // private to their owner are not. Fails when one of the first kind cannot be copied, and when
  // `wanted` is no more.
  [[nodiscard]] static HostResult<ClipboardContents> Copy(const std::atomic<bool>& wanted);

  // Makes the clipboard hold what was saved, which it takes over. A failing format is left out; the
  // first failure is returned.
  [[nodiscard]] HostResult<> Restore(HWND owner) &&;

 private:
  struct Format {
    UINT format = 0;
    win32::UniqueGlobalMemory memory;
    win32::UniqueBitmap bitmap;
    win32::UniqueMetafile metafile;

    [[nodiscard]] bool Copy(HANDLE data);
    [[nodiscard]] bool Put();
  };

  std::vector<Format> formats_;
};

}  // namespace declarium::com
