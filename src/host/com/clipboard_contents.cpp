#include "host/com/clipboard_contents.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

namespace declarium::com {
namespace {

constexpr int kOpenAttempts = 25;
constexpr DWORD kOpenPause = 20;  // milliseconds

HostError LastError() {
  return {static_cast<std::int32_t>(HRESULT_FROM_WIN32(GetLastError()))};
}

// Formats that mean something only together with the window or data object of their owner.
bool IsPrivate(UINT format) {
  if (format == CF_OWNERDISPLAY || (format >= CF_DSPTEXT && format <= CF_DSPENHMETAFILE) ||
      format == CF_DSPMETAFILEPICT) {
    return true;
  }
  if (format >= CF_PRIVATEFIRST && format <= CF_GDIOBJLAST) return true;
  std::array<wchar_t, 64> name{};
  const int length = GetClipboardFormatNameW(format, name.data(), static_cast<int>(name.size()));
  const std::wstring_view text(name.data(), static_cast<std::size_t>(std::max(length, 0)));
  return text == L"DataObject" || text == L"Ole Private Data";
}

bool IsMemory(UINT format) {
  return format != CF_BITMAP && format != CF_PALETTE && format != CF_METAFILEPICT &&
         format != CF_ENHMETAFILE;
}

}  // namespace

OpenedClipboard::OpenedClipboard(HWND owner) {
  for (int i = 0; i < kOpenAttempts; ++i) {
    if (i > 0) Sleep(kOpenPause);
    open_ = OpenClipboard(owner) != FALSE;
    if (open_) return;
    error_ = LastError();
  }
}

OpenedClipboard::~OpenedClipboard() {
  if (open_) CloseClipboard();
}

HostResult<> PutBytes(UINT format, std::span<const std::uint8_t> bytes) {
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, std::max<std::size_t>(bytes.size(), 1));
  if (!memory) return std::unexpected(LastError());
  if (void* target = GlobalLock(memory)) {
    if (!bytes.empty()) std::memcpy(target, bytes.data(), bytes.size());
    GlobalUnlock(memory);
  }
  if (SetClipboardData(format, memory)) return {};
  const HostError error = LastError();
  GlobalFree(memory);
  return std::unexpected(error);
}

// One saved format: its bytes, or a GDI object of its own.
struct ClipboardContents::Format {
  UINT format = 0;
  std::vector<std::uint8_t> bytes;
  HBITMAP bitmap = nullptr;
  HENHMETAFILE metafile = nullptr;

  Format() = default;
  Format(const Format&) = delete;
  Format& operator=(const Format&) = delete;
  ~Format() {
    if (bitmap) DeleteObject(bitmap);
    if (metafile) DeleteEnhMetaFile(metafile);
  }

  // False when there is nothing to keep.
  bool Take(UINT wanted, HANDLE data) {
    format = wanted;
    if (format == CF_BITMAP) {
      bitmap = static_cast<HBITMAP>(CopyImage(data, IMAGE_BITMAP, 0, 0, 0));
      return bitmap != nullptr;
    }
    if (format == CF_ENHMETAFILE) {
      metafile = CopyEnhMetaFileW(static_cast<HENHMETAFILE>(data), nullptr);
      return metafile != nullptr;
    }
    return IsMemory(format) && TakeMemory(data);
  }

  bool TakeMemory(HGLOBAL memory) {
    const auto* begin = static_cast<const std::uint8_t*>(GlobalLock(memory));
    if (!begin) return false;
    bytes.assign(begin, begin + GlobalSize(memory));
    GlobalUnlock(memory);
    return true;
  }

  [[nodiscard]] HostResult<> Put() const {
    if (bitmap) return PutObject(CopyImage(bitmap, IMAGE_BITMAP, 0, 0, 0));
    if (metafile) return PutObject(CopyEnhMetaFileW(metafile, nullptr));
    return PutBytes(format, bytes);
  }

  [[nodiscard]] HostResult<> PutObject(HANDLE object) const {
    if (object && SetClipboardData(format, object)) return {};
    return std::unexpected(LastError());
  }
};

HostResult<ClipboardContents> ClipboardContents::Save(HWND owner) {
  const OpenedClipboard clipboard(owner);
  if (!clipboard) return std::unexpected(clipboard.error());
  ClipboardContents contents;
  for (UINT format = EnumClipboardFormats(0); format; format = EnumClipboardFormats(format)) {
    if (IsPrivate(format)) continue;
    const HANDLE data = GetClipboardData(format);
    if (!data) continue;
    auto saved = std::make_shared<Format>();
    if (saved->Take(format, data)) contents.formats_.push_back(std::move(saved));
  }
  return contents;
}

HostResult<> ClipboardContents::Restore(HWND owner) const {
  const OpenedClipboard clipboard(owner);
  if (!clipboard) return std::unexpected(clipboard.error());
  if (!EmptyClipboard()) return std::unexpected(LastError());
  for (const auto& format : formats_) {
    if (auto put = format->Put(); !put) return put;
  }
  return {};
}

}  // namespace declarium::com
