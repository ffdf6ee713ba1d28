// Owns one system handle. Traits give its type, the value that means none, and how it is closed:
//
//   struct FontTraits {
//     using Handle = HFONT;
//     static constexpr Handle kNone = nullptr;
//     static void Close(Handle font) { DeleteObject(font); }
//   };
//
// Assigning over a live handle closes it; closing keeps the thread's last error.
#pragma once

#include <utility>

#include "win32/system.h"

namespace declarium::win32 {

template <class Traits>
class UniqueHandle {
 public:
  using Handle = typename Traits::Handle;

  UniqueHandle() = default;
  explicit UniqueHandle(Handle handle) : handle_(handle) {}
  ~UniqueHandle() { Reset(); }
  UniqueHandle(const UniqueHandle&) = delete;
  UniqueHandle& operator=(const UniqueHandle&) = delete;
  UniqueHandle(UniqueHandle&& other) noexcept : handle_(other.Release()) {}
  UniqueHandle& operator=(UniqueHandle&& other) noexcept {
    if (this != &other) Reset(other.Release());
    return *this;
  }

  [[nodiscard]] Handle Get() const { return handle_; }
  explicit operator bool() const { return handle_ != Traits::kNone; }

  // Gives the handle away.
  [[nodiscard]] Handle Release() { return std::exchange(handle_, Traits::kNone); }

  // Closes what is owned and owns `handle` from now on. The handle that is owned already stays
  // open.
  void Reset(Handle handle = Traits::kNone) {
    if (handle == handle_) return;
    const Handle old = std::exchange(handle_, handle);
    if (old == Traits::kNone) return;
    const DWORD error = GetLastError();
    Traits::Close(old);
    SetLastError(error);
  }

 private:
  Handle handle_ = Traits::kNone;
};

template <class T>
struct GdiTraits {
  using Handle = T;
  static constexpr Handle kNone = nullptr;
  static void Close(Handle handle) { DeleteObject(handle); }
};

struct WindowTraits {
  using Handle = HWND;
  static constexpr Handle kNone = nullptr;
  static void Close(Handle window) { DestroyWindow(window); }
};

struct MenuTraits {
  using Handle = HMENU;
  static constexpr Handle kNone = nullptr;
  static void Close(Handle menu) { DestroyMenu(menu); }
};

struct IconTraits {
  using Handle = HICON;
  static constexpr Handle kNone = nullptr;
  static void Close(Handle icon) { DestroyIcon(icon); }
};

struct DeviceTraits {
  using Handle = HDC;
  static constexpr Handle kNone = nullptr;
  static void Close(Handle device) { DeleteDC(device); }
};

using UniqueFont = UniqueHandle<GdiTraits<HFONT>>;
using UniqueBitmap = UniqueHandle<GdiTraits<HBITMAP>>;
using UniqueBrush = UniqueHandle<GdiTraits<HBRUSH>>;
using UniqueWindow = UniqueHandle<WindowTraits>;
using UniqueMenu = UniqueHandle<MenuTraits>;
using UniqueIcon = UniqueHandle<IconTraits>;
using UniqueDevice = UniqueHandle<DeviceTraits>;

}  // namespace declarium::win32
