// The picture of the button as the picture objects that a control takes.
#pragma once

#include <cstdint>
#include <span>
#include <windows.h>
#include <oaidl.h>

#include "win32/com_ptr.h"

namespace declarium::vba {

// `bitmap` is a packed device-independent bitmap without gaps. Null when the system makes none.
[[nodiscard]] win32::ComPtr<IDispatch> PictureOf(std::span<const std::uint8_t> bitmap);

}  // namespace declarium::vba
