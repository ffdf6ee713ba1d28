// A copy of everything on the clipboard that can be copied.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "host/host_object_model.h"
#include "win32/clipboard.h"

namespace declarium::com {

// A system's error number as a host's.
[[nodiscard]] HostError ClipboardError(DWORD code);

// Puts a copy of `bytes` on the opened clipboard.
[[nodiscard]] HostResult<> PutBytes(UINT format, std::span<const std::uint8_t> bytes);

class ClipboardContents {
 public:
  // Copies what is on the clipboard; formats that its owner renders late are rendered. Memory
  // formats, bitmaps and enhanced metafiles are kept; palettes, old metafiles and formats private
  // to their owner are not.
  [[nodiscard]] static HostResult<ClipboardContents> Save(HWND owner);

  // Makes the clipboard hold what was saved. A failing format is left out; the first failure is
  // returned.
  [[nodiscard]] HostResult<> Restore(HWND owner) const;

 private:
  struct Format;
  std::vector<std::shared_ptr<const Format>> formats_;
};

}  // namespace declarium::com
