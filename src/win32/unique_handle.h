// Owns one system handle: its type, the function that closes it, and the value that means none.
//
//   using UniqueFont = UniqueHandle<HFONT, DeleteObject>;
//
// Assigning over a live handle closes it; closing keeps the thread's last error.
#pragma once

#include <cstdint>
#include <utility>

#include "win32/system.h"

namespace declarium::win32 {

// `kNone` is a number, since INVALID_HANDLE_VALUE is no constant to the compiler.
template <class HandleType, auto kClose, std::intptr_t kNone = 0>
class UniqueHandle {
 public:
  using Handle = HandleType;

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
  explicit operator bool() const { return handle_ != None(); }

  // For functions that return a handle through a pointer; a handle that is owned is closed first.
  [[nodiscard]] Handle* Receive() {
    Reset();
    return &handle_;
  }

  // Gives the handle away.
  [[nodiscard]] Handle Release() { return std::exchange(handle_, None()); }

  // Closes what is owned and owns `handle` from now on. The handle that is owned already stays
  // open.
  void Reset(Handle handle = None()) {
    if (handle == handle_) return;
    const Handle old = std::exchange(handle_, handle);
    if (old == None()) return;
    const DWORD error = GetLastError();
    kClose(old);
    SetLastError(error);
  }

 private:
  static Handle None() { return reinterpret_cast<Handle>(kNone); }

  Handle handle_ = None();
};

using UniqueFont = UniqueHandle<HFONT, DeleteObject>;
using UniqueBitmap = UniqueHandle<HBITMAP, DeleteObject>;
using UniqueBrush = UniqueHandle<HBRUSH, DeleteObject>;
using UniqueMetafile = UniqueHandle<HENHMETAFILE, DeleteEnhMetaFile>;
using UniqueDevice = UniqueHandle<HDC, DeleteDC>;
using UniqueWindow = UniqueHandle<HWND, DestroyWindow>;
using UniqueMenu = UniqueHandle<HMENU, DestroyMenu>;
using UniqueIcon = UniqueHandle<HICON, DestroyIcon>;
using UniqueImageList = UniqueHandle<HIMAGELIST, ImageList_Destroy>;
// A file as CreateFileW opens it.
using UniqueFile = UniqueHandle<HANDLE, CloseHandle, -1>;
// A folder being listed, as FindFirstFileW begins it.
using UniqueListing = UniqueHandle<HANDLE, FindClose, -1>;
// A process, thread, event, mutex or pipe end.
using UniqueKernelObject = UniqueHandle<HANDLE, CloseHandle>;
using UniqueRegistryKey = UniqueHandle<HKEY, RegCloseKey>;
using UniqueGlobalMemory = UniqueHandle<HGLOBAL, GlobalFree>;

}  // namespace declarium::win32
