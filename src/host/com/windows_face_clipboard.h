// FaceClipboard over the Windows clipboard.
#pragma once

#include <memory>
#include <windows.h>

#include "host/face_clipboard.h"

namespace declarium::com {

class WindowsFaceClipboard final : public FaceClipboard {
 public:
  // `owner` becomes the clipboard's owner; a window of this thread that lives as long.
  explicit WindowsFaceClipboard(HWND owner) : owner_(owner) {}
  [[nodiscard]] HostResult<std::unique_ptr<KeptClipboard>> Save() override;
  [[nodiscard]] HostResult<> PutPicture() override;

 private:
  HWND owner_;
};

}  // namespace declarium::com
