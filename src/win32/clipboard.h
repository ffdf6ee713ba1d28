// The opened clipboard, and the memory blocks in which it keeps most of its formats.
#pragma once

#include <chrono>
#include <cstdint>
#include <expected>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "win32/system.h"
#include "win32/unique_handle.h"

namespace declarium::win32 {

inline constexpr std::chrono::milliseconds kClipboardPatience{500};

// The clipboard, open for as long as the object lives. Another program that has it open is waited
// for.
class OpenedClipboard {
 public:
  // `owner` becomes the owner of what is put there; without one the system takes nothing.
  explicit OpenedClipboard(HWND owner, std::chrono::milliseconds patience = kClipboardPatience);
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;
  ~OpenedClipboard();

  explicit operator bool() const { return open_; }
  // The system's error number of the last attempt to open it.
  [[nodiscard]] DWORD Error() const { return error_; }

 private:
  bool open_ = false;
  DWORD error_ = ERROR_SUCCESS;
};

// A new block with a copy of the bytes, or with the text and a NUL behind it; none without memory.
[[nodiscard]] UniqueGlobalMemory MemoryWith(std::span<const std::uint8_t> bytes);
[[nodiscard]] UniqueGlobalMemory MemoryWith(std::u16string_view text);

// A new block with the same bytes; none without memory.
[[nodiscard]] UniqueGlobalMemory CopyOf(HGLOBAL memory);

// All bytes of a block; nullopt when it cannot be read.
[[nodiscard]] std::optional<std::vector<std::uint8_t>> BytesIn(HGLOBAL memory);
// The text in a block: up to its first NUL, at most all of it. Empty when it cannot be read.
[[nodiscard]] std::u16string TextIn(HGLOBAL memory);

// Puts a block on the clipboard, which is open and owns the block from then on; the system's error
// number when it does not take it.
[[nodiscard]] std::expected<void, DWORD> PutOnClipboard(UINT format, UniqueGlobalMemory memory);

// The text on the clipboard; empty when there is none and when the clipboard cannot be opened.
[[nodiscard]] std::u16string ClipboardText(HWND owner);
// Replaces what is on the clipboard; false when it cannot be opened or takes nothing.
bool SetClipboardText(HWND owner, std::u16string_view text);

}  // namespace declarium::win32
