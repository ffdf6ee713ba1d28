// The clipboard as the way of a picture into the face of a command-bar control.
#pragma once

#include "host/host_object_model.h"

namespace declarium {

class FaceClipboard {
 public:
  virtual ~FaceClipboard() = default;
  // Keeps a copy of what is on the clipboard.
  [[nodiscard]] virtual HostResult<> Save() = 0;
  // Replaces the clipboard's contents by the button picture.
  [[nodiscard]] virtual HostResult<> PutPicture() = 0;
  // Puts the kept contents back; an empty clipboard becomes empty again.
  [[nodiscard]] virtual HostResult<> Restore() = 0;
};

}  // namespace declarium
