#include "host/com/clipboard_contents.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <tuple>
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

// Whether the data can be copied: a drawing object that has a copying function, or memory.
bool CanBeCopied(UINT format, HANDLE data) {
  if (format == CF_BITMAP || format == CF_ENHMETAFILE) return true;
  return format != CF_PALETTE && format != CF_METAFILEPICT && GlobalSize(data) > 0;
}

// Takes the object out of its owner when the clipboard has taken it over.
template <class Owner>
bool GiveToClipboard(UINT format, Owner& object) {
  if (!SetClipboardData(format, object.Get())) return false;
  std::ignore = object.Release();
  return true;
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

bool ClipboardContents::Format::Copy(HANDLE data) {
  if (format == CF_BITMAP) {
    bitmap.Reset(static_cast<HBITMAP>(CopyImage(data, IMAGE_BITMAP, 0, 0, 0)));
    return static_cast<bool>(bitmap);
  }
  if (format == CF_ENHMETAFILE) {
    metafile.Reset(CopyEnhMetaFileW(static_cast<HENHMETAFILE>(data), nullptr));
    return static_cast<bool>(metafile);
  }
  memory = win32::CopyOf(data);
  return static_cast<bool>(memory);
}

bool ClipboardContents::Format::Put() {
  if (bitmap) return GiveToClipboard(format, bitmap);
  if (metafile) return GiveToClipboard(format, metafile);
  return GiveToClipboard(format, memory);
}

HostResult<ClipboardContents> ClipboardContents::Copy(const std::atomic<bool>& wanted) {
  ClipboardContents contents;
  for (UINT format = EnumClipboardFormats(0); format; format = EnumClipboardFormats(format)) {
    if (!wanted) return std::unexpected(ClipboardError(ERROR_CANCELLED));
    if (IsPrivate(format)) continue;
    const HANDLE data = GetClipboardData(format);
    if (!data || !CanBeCopied(format, data)) continue;
    Format saved{.format = format, .memory = {}, .bitmap = {}, .metafile = {}};
    if (!saved.Copy(data)) return std::unexpected(ClipboardError(ERROR_NOT_ENOUGH_MEMORY));
    contents.formats_.push_back(std::move(saved));
  }
  return contents;
}

HostResult<> ClipboardContents::Restore(HWND owner) && {
  const win32::OpenedClipboard clipboard(owner, kHeldClipboardLimit);
  if (!clipboard) return std::unexpected(ClipboardError(clipboard.Error()));
  if (!EmptyClipboard()) return std::unexpected(ClipboardError(GetLastError()));
  // A format that does not go back must not take those behind it along.
  HostResult<> result;
  for (auto& format : formats_) {
    if (!format.Put() && result) result = std::unexpected(ClipboardError(GetLastError()));
  }
  return result;
}

}  // namespace declarium::com
