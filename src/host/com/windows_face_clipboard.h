// FaceClipboard over the Windows clipboard.
#pragma once

#include <windows.h>

#include "host/com/clipboard_contents.h"
#include "host/face_clipboard.h"

namespace declarium::com {

class WindowsFaceClipboard final : public FaceClipboard {
 public:
  // `owner` becomes the clipboard's owner; a window of this thread that lives as long.
  explicit WindowsFaceClipboard(HWND owner) : owner_(owner) {}
  [[nodiscard]] HostResult<> Save() override;
  [[nodiscard]] HostResult<> PutPicture() override;
  [[nodiscard]] HostResult<> Restore() override;

 private:
  HWND owner_;
  ClipboardContents saved_;
};

}  // namespace declarium::com
