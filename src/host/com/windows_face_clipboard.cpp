#include "host/com/windows_face_clipboard.h"

#include <utility>

#include "host/com/clipboard_contents.h"
#include "host/com/clipboard_saver.h"
#include "host/toolbar_face.h"

namespace declarium::com {

namespace {

class KeptWindowsClipboard final : public KeptClipboard {
 public:
  KeptWindowsClipboard(HWND owner, ClipboardContents contents)
      : owner_(owner), contents_(std::move(contents)) {}
  HostResult<> Restore() override { return std::move(contents_).Restore(owner_); }

 private:
  HWND owner_;
  ClipboardContents contents_;
};

}  // namespace

HostResult<std::unique_ptr<KeptClipboard>> WindowsFaceClipboard::Save() {
  auto contents = SaveClipboard();
  if (!contents) return std::unexpected(contents.error());
  return std::make_unique<KeptWindowsClipboard>(owner_, std::move(*contents));
}

HostResult<> WindowsFaceClipboard::PutPicture() {
  const auto face = ToolbarFace();
  const win32::OpenedClipboard clipboard(owner_, kHeldClipboardLimit);
  if (!clipboard) return std::unexpected(ClipboardError(clipboard.Error()));
  EmptyClipboard();
  // Command bars want all three: the bitmap for the picture, the pair for transparency.
  if (auto put = PutBytes(CF_DIB, face); !put) return put;
  if (auto put = PutBytes(RegisterClipboardFormatW(L"Toolbar Button Face"), face); !put) return put;
  return PutBytes(RegisterClipboardFormatW(L"Toolbar Button Mask"), ToolbarFaceMask());
}

}  // namespace declarium::com
