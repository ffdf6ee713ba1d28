// A copy of everything on the clipboard that can be copied.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>
#include <windows.h>

#include "host/host_object_model.h"

namespace declarium::com {

// The clipboard, open for as long as the object lives. Another program that has it open is waited
// for, up to half a second.
class OpenedClipboard {
 public:
  explicit OpenedClipboard(HWND owner);
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;
  ~OpenedClipboard();
  explicit operator bool() const noexcept { return open_; }
  // Of the attempt to open it.
  [[nodiscard]] HostError error() const noexcept { return error_; }

 private:
  bool open_ = false;
  HostError error_{};
};

// Puts a copy of `bytes` on the opened clipboard.
[[nodiscard]] HostResult<> PutBytes(UINT format, std::span<const std::uint8_t> bytes);

class ClipboardContents {
 public:
  // Copies what is on the clipboard; formats that its owner renders late are rendered. Memory
  // formats, bitmaps and enhanced metafiles are kept; palettes, old metafiles and formats private
  // to their owner are not.
  [[nodiscard]] static HostResult<ClipboardContents> Save(HWND owner);

  // Makes the clipboard hold what was saved.
  [[nodiscard]] HostResult<> Restore(HWND owner) const;

 private:
  struct Format;
  std::vector<std::shared_ptr<const Format>> formats_;
};

}  // namespace declarium::com
