// The program's pictures, drawn from shapes in the size that is asked for.
#pragma once

#include "toolkit/icon.h"
#include "win32/system.h"
#include "win32/unique_handle.h"

namespace declarium::win32 {

enum class Look { kNormal, kDisabled };

// The size of small pictures for a resolution: 16, 20, 24 or 32 physical pixels.
[[nodiscard]] int SmallIconSize(int dpi);

[[nodiscard]] UniqueIcon DrawIconPicture(Icon icon, int size, Look look = Look::kNormal);

// A list whose image n is the picture number n (image 0 is empty).
[[nodiscard]] UniqueImageList DrawImageList(int size, Look look = Look::kNormal);

}  // namespace declarium::win32
