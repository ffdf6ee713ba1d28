#include "win32/clipboard.h"

#include <algorithm>
#include <cstring>
#include <tuple>
#include <utility>

namespace declarium::win32 {

namespace {

constexpr std::chrono::milliseconds kOpenPause{20};

UniqueGlobalMemory CopyOf(const void* bytes, std::size_t count, std::size_t zeros) {
  UniqueGlobalMemory memory(GlobalAlloc(GHND, std::max<std::size_t>(count + zeros, 1)));
  void* const copy = memory ? GlobalLock(memory.Get()) : nullptr;
  if (!copy) return {};
  if (count > 0) std::memcpy(copy, bytes, count);
  GlobalUnlock(memory.Get());
  return memory;
}

}  // namespace

OpenedClipboard::OpenedClipboard(HWND owner, std::chrono::milliseconds patience) {
  const auto end = std::chrono::steady_clock::now() + patience;
  for (;;) {
    open_ = OpenClipboard(owner) != FALSE;
    error_ = open_ ? ERROR_SUCCESS : GetLastError();
    if (open_ || std::chrono::steady_clock::now() >= end) return;
    Sleep(static_cast<DWORD>(kOpenPause.count()));
  }
}

OpenedClipboard::~OpenedClipboard() {
  if (open_) CloseClipboard();
}

UniqueGlobalMemory MemoryWith(std::span<const std::uint8_t> bytes) {
  return CopyOf(bytes.data(), bytes.size(), 0);
}

UniqueGlobalMemory MemoryWith(std::u16string_view text) {
  return CopyOf(text.data(), text.size() * sizeof(char16_t), sizeof(char16_t));
}

UniqueGlobalMemory CopyOf(HGLOBAL memory) {
  const void* const bytes = GlobalLock(memory);
  if (!bytes) return {};
  auto copy = CopyOf(bytes, GlobalSize(memory), 0);
  GlobalUnlock(memory);
  return copy;
}

std::optional<std::vector<std::uint8_t>> BytesIn(HGLOBAL memory) {
  const auto* begin = static_cast<const std::uint8_t*>(GlobalLock(memory));
  if (!begin) return std::nullopt;
  std::vector<std::uint8_t> bytes(begin, begin + GlobalSize(memory));
  GlobalUnlock(memory);
  return bytes;
}

std::u16string TextIn(HGLOBAL memory) {
  const auto* text = static_cast<const char16_t*>(GlobalLock(memory));
  if (!text) return {};
  const std::u16string_view all(text, GlobalSize(memory) / sizeof(char16_t));
  std::u16string copy(all.substr(0, all.find(u'\0')));
  GlobalUnlock(memory);
  return copy;
}

std::expected<void, DWORD> PutOnClipboard(UINT format, UniqueGlobalMemory memory) {
  if (!memory) return std::unexpected(DWORD{ERROR_NOT_ENOUGH_MEMORY});
  if (!SetClipboardData(format, memory.Get())) return std::unexpected(GetLastError());
  std::ignore = memory.Release();
  return {};
}

std::u16string ClipboardText(HWND owner) {
  const OpenedClipboard clipboard(owner);
  const HANDLE memory = clipboard ? GetClipboardData(CF_UNICODETEXT) : nullptr;
  return memory ? TextIn(memory) : std::u16string();
}

bool SetClipboardText(HWND owner, std::u16string_view text) {
  const OpenedClipboard clipboard(owner);
  if (!clipboard) return false;
  EmptyClipboard();
  return PutOnClipboard(CF_UNICODETEXT, MemoryWith(text)).has_value();
}

}  // namespace declarium::win32
