// The clipboard as the way of a picture into the face of a command-bar control.
#pragma once

#include <memory>

#include "host/host_object_model.h"

namespace declarium {

// A copy of what was on the clipboard.
class KeptClipboard {
 public:
  virtual ~KeptClipboard() = default;
  // Puts the contents back, once; an empty clipboard becomes empty again.
  [[nodiscard]] virtual HostResult<> Restore() = 0;
};

class FaceClipboard {
 public:
  virtual ~FaceClipboard() = default;
  // The copy belongs to one connection: another host may be connected while a call is out.
  [[nodiscard]] virtual HostResult<std::unique_ptr<KeptClipboard>> Save() = 0;
  // Replaces the clipboard's contents by the button picture.
  [[nodiscard]] virtual HostResult<> PutPicture() = 0;
};

}  // namespace declarium
