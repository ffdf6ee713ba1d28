#include "host/com/windows_face_clipboard.h"

#include <utility>

#include "host/toolbar_face.h"

namespace declarium::com {

HostResult<> WindowsFaceClipboard::Save() {
  auto contents = ClipboardContents::Save(owner_);
  if (!contents) return std::unexpected(contents.error());
  saved_ = std::move(*contents);
  return {};
}

HostResult<> WindowsFaceClipboard::PutPicture() {
  const auto face = ToolbarFace();
  const OpenedClipboard clipboard(owner_);
  if (!clipboard) return std::unexpected(clipboard.error());
  EmptyClipboard();
  // Command bars want all three: the bitmap for the picture, the pair for transparency.
  if (auto put = PutBytes(CF_DIB, face); !put) return put;
  if (auto put = PutBytes(RegisterClipboardFormatW(L"Toolbar Button Face"), face); !put) return put;
  return PutBytes(RegisterClipboardFormatW(L"Toolbar Button Mask"), ToolbarFaceMask());
}

HostResult<> WindowsFaceClipboard::Restore() {
  const auto contents = std::exchange(saved_, {});
  return contents.Restore(owner_);
}

}  // namespace declarium::com
