#include "host/com/clipboard_contents.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace declarium::com {
namespace {

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

HostError ClipboardError(DWORD code) {
  return {static_cast<std::int32_t>(HRESULT_FROM_WIN32(code))};
}

HostResult<> PutBytes(UINT format, std::span<const std::uint8_t> bytes) {
  const auto put = win32::PutOnClipboard(format, win32::MemoryWith(bytes));
  if (!put) return std::unexpected(ClipboardError(put.error()));
  return {};
}

// One saved format: its bytes, or a GDI object of its own.
struct ClipboardContents::Format {
  UINT format = 0;
  std::vector<std::uint8_t> bytes;
  win32::UniqueBitmap bitmap;
  win32::UniqueMetafile metafile;

  // False when there is nothing to keep.
  bool Take(UINT wanted, HANDLE data) {
    format = wanted;
    if (format == CF_BITMAP) {
      bitmap.Reset(static_cast<HBITMAP>(CopyImage(data, IMAGE_BITMAP, 0, 0, 0)));
      return static_cast<bool>(bitmap);
    }
    if (format == CF_ENHMETAFILE) {
      metafile.Reset(CopyEnhMetaFileW(static_cast<HENHMETAFILE>(data), nullptr));
      return static_cast<bool>(metafile);
    }
    return IsMemory(format) && TakeMemory(data);
  }

  bool TakeMemory(HGLOBAL memory) {
    auto copy = win32::BytesIn(memory);
    if (!copy) return false;
    bytes = std::move(*copy);
    return true;
  }

  [[nodiscard]] HostResult<> Put() const {
    if (bitmap) return PutObject(CopyImage(bitmap.Get(), IMAGE_BITMAP, 0, 0, 0));
    if (metafile) return PutObject(CopyEnhMetaFileW(metafile.Get(), nullptr));
    return PutBytes(format, bytes);
  }

  [[nodiscard]] HostResult<> PutObject(HANDLE object) const {
    if (object && SetClipboardData(format, object)) return {};
    return std::unexpected(ClipboardError(GetLastError()));
  }
};

HostResult<ClipboardContents> ClipboardContents::Save(HWND owner) {
  const win32::OpenedClipboard clipboard(owner);
  if (!clipboard) return std::unexpected(ClipboardError(clipboard.Error()));
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
  const win32::OpenedClipboard clipboard(owner);
  if (!clipboard) return std::unexpected(ClipboardError(clipboard.Error()));
  if (!EmptyClipboard()) return std::unexpected(ClipboardError(GetLastError()));
  // A format that does not go back must not take those behind it along.
  HostResult<> result;
  for (const auto& format : formats_) {
    if (auto put = format->Put(); !put && result) result = put;
  }
  return result;
}

}  // namespace declarium::com
