#include <atomic>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <semaphore>
#include <string>
#include <thread>
#include <vector>
#include <windows.h>

#include "host/com/clipboard_contents.h"
#include "host/com/posted_calls.h"
#include "host/com/windows_face_clipboard.h"
#include "host/toolbar_face.h"

namespace declarium::com {
namespace {

using win32::OpenedClipboard;
using Bytes = std::vector<std::uint8_t>;

// A window that renders one format only when it is asked for.
class LateOwner {
 public:
  explicit LateOwner(UINT format) : format_(format) {
    WNDCLASSW window_class{};
    window_class.lpfnWndProc = Procedure;
    window_class.hInstance = GetModuleHandleW(nullptr);
    window_class.lpszClassName = L"LateOwner";
    RegisterClassW(&window_class);
    window_ = CreateWindowW(L"LateOwner", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                            window_class.hInstance, nullptr);
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  }
  LateOwner(const LateOwner&) = delete;
  LateOwner& operator=(const LateOwner&) = delete;
  ~LateOwner() { DestroyWindow(window_); }
  [[nodiscard]] HWND window() const { return window_; }
  [[nodiscard]] int rendered() const { return rendered_; }

  std::function<void()> on_render = nullptr;

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wide, LPARAM last) {
    auto* self = reinterpret_cast<LateOwner*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message == WM_RENDERFORMAT && self && wide == self->format_) {
      ++self->rendered_;
      if (self->on_render) self->on_render();
      EXPECT_TRUE(PutBytes(self->format_, Bytes{9, 8, 7}));
      return 0;
    }
    return DefWindowProcW(window, message, wide, last);
  }

  UINT format_;
  HWND window_;
  int rendered_ = 0;
};

class ClipboardTest : public testing::Test {
 protected:
  // Every memory format on the clipboard with its bytes.
  std::map<UINT, Bytes> Contents() {
    const OpenedClipboard clipboard(owner_.Window());
    EXPECT_TRUE(static_cast<bool>(clipboard));
    std::map<UINT, Bytes> contents;
    for (UINT format = EnumClipboardFormats(0); format; format = EnumClipboardFormats(format)) {
      if (format == CF_BITMAP || format == CF_PALETTE || format == CF_ENHMETAFILE ||
          format == CF_METAFILEPICT) {
        continue;
      }
      if (const HANDLE memory = GetClipboardData(format))
        contents[format] = win32::BytesIn(memory).value();
    }
    return contents;
  }

  void Empty() {
    const OpenedClipboard clipboard(owner_.Window());
    ASSERT_TRUE(EmptyClipboard());
  }

  Boundary boundary_;
  PostedCalls owner_{boundary_};
  WindowsFaceClipboard face_clipboard_{owner_.Window()};
  const UINT own_format_ = RegisterClipboardFormatW(L"Declarium test format");
};

TEST_F(ClipboardTest, TextAndOwnFormatsComeBack) {
  {
    const OpenedClipboard clipboard(owner_.Window());
    ASSERT_TRUE(static_cast<bool>(clipboard));
    EmptyClipboard();
    ASSERT_TRUE(win32::PutOnClipboard(CF_UNICODETEXT, win32::MemoryWith(u"Vložiť do")));
    ASSERT_TRUE(PutBytes(own_format_, Bytes{1, 2, 3, 0, 5}));
  }
  const auto before = Contents();
  const auto kept = face_clipboard_.Save();
  ASSERT_TRUE(kept);
  ASSERT_TRUE(face_clipboard_.PutPicture());
  EXPECT_NE(Contents(), before);
  ASSERT_TRUE((*kept)->Restore());
  EXPECT_EQ(Contents(), before);
}

TEST_F(ClipboardTest, EmptyClipboardComesBackEmpty) {
  Empty();
  const auto kept = face_clipboard_.Save();
  ASSERT_TRUE(kept);
  ASSERT_TRUE(face_clipboard_.PutPicture());
  ASSERT_TRUE((*kept)->Restore());
  EXPECT_TRUE(Contents().empty());
}

TEST_F(ClipboardTest, FormatRenderedLateComesBack) {
  LateOwner late(own_format_);
  {
    const OpenedClipboard clipboard(late.window());
    ASSERT_TRUE(static_cast<bool>(clipboard));
    EmptyClipboard();
    SetClipboardData(own_format_, nullptr);
  }
  const auto kept = face_clipboard_.Save();
  ASSERT_TRUE(kept);
  EXPECT_EQ(late.rendered(), 1);
  ASSERT_TRUE(face_clipboard_.PutPicture());
  ASSERT_TRUE((*kept)->Restore());
  EXPECT_EQ(Contents().at(own_format_), (Bytes{9, 8, 7}));
}

// Takes every drawing object that the process may have, as long as it lives.
class NoDrawingObjects {
 public:
  NoDrawingObjects() {
    while (const HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3))) brushes_.push_back(brush);
  }
  ~NoDrawingObjects() {
    for (const HBRUSH brush : brushes_) DeleteObject(brush);
  }
  NoDrawingObjects(const NoDrawingObjects&) = delete;
  NoDrawingObjects& operator=(const NoDrawingObjects&) = delete;

 private:
  std::vector<HBRUSH> brushes_;
};

TEST_F(ClipboardTest, AFormatThatCannotBeCopiedIsNotGivenUpForThePicture) {
  const Bytes bytes{1, 2, 3, 0, 5};
  {
    const OpenedClipboard clipboard(owner_.Window());
    ASSERT_TRUE(static_cast<bool>(clipboard));
    EmptyClipboard();
    ASSERT_TRUE(SetClipboardData(CF_BITMAP, CreateBitmap(8, 8, 1, 1, nullptr)));
    ASSERT_TRUE(PutBytes(own_format_, bytes));
  }
  {
    const NoDrawingObjects none;
    EXPECT_FALSE(face_clipboard_.Save());
  }
  EXPECT_EQ(Contents()[own_format_], bytes);
}

// An owner, on a thread of its own, that does not render before it is allowed to.
class SlowOwner {
 public:
  explicit SlowOwner(UINT format) : thread_([this, format] { Run(format); }) { ready_.acquire(); }
  SlowOwner(const SlowOwner&) = delete;
  SlowOwner& operator=(const SlowOwner&) = delete;
  ~SlowOwner() {
    ended_ = true;
    thread_.join();
  }
  void Allow() { allowed_.release(); }

 private:
  void Run(UINT format) {
    LateOwner late(format);
    late.on_render = [this] { allowed_.acquire(); };
    {
      const OpenedClipboard clipboard(late.window());
      EmptyClipboard();
      SetClipboardData(format, nullptr);
    }
    ready_.release();
    while (!ended_) {
      MSG message;
      MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
      while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    }
  }

  std::binary_semaphore ready_{0};
  std::binary_semaphore allowed_{0};
  std::atomic<bool> ended_ = false;
  std::thread thread_;
};

TEST_F(ClipboardTest, AnOwnerThatIsSlowToRenderIsNotWaitedForAndLosesNothing) {
  SlowOwner owner(own_format_);
  EXPECT_FALSE(face_clipboard_.Save());
  owner.Allow();
  EXPECT_EQ(Contents().at(own_format_), (Bytes{9, 8, 7}));
}

TEST_F(ClipboardTest, AClipboardThatAnotherProgramHoldsIsWaitedFor) {
  Empty();
  std::binary_semaphore held{0};
  std::thread holder([&] {
    const LateOwner other(own_format_);
    const OpenedClipboard clipboard(other.window());
    held.release();
    // Longer than the clipboard's own patience.
    std::this_thread::sleep_for(win32::kClipboardPatience + std::chrono::milliseconds(200));
  });
  held.acquire();
  EXPECT_TRUE(face_clipboard_.Save());
  holder.join();
}

TEST_F(ClipboardTest, MetafileComesBack) {
  HDC device = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
  Rectangle(device, 0, 0, 10, 10);
  HENHMETAFILE picture = CloseEnhMetaFile(device);
  const auto bits = [](HENHMETAFILE file) {
    Bytes bytes(GetEnhMetaFileBits(file, 0, nullptr));
    GetEnhMetaFileBits(file, static_cast<UINT>(bytes.size()), bytes.data());
    return bytes;
  };
  const Bytes before = bits(picture);
  {
    const OpenedClipboard clipboard(owner_.Window());
    ASSERT_TRUE(static_cast<bool>(clipboard));
    EmptyClipboard();
    ASSERT_TRUE(SetClipboardData(CF_ENHMETAFILE, picture));
  }
  const auto kept = face_clipboard_.Save();
  ASSERT_TRUE(kept);
  ASSERT_TRUE(face_clipboard_.PutPicture());
  ASSERT_TRUE((*kept)->Restore());
  const OpenedClipboard clipboard(owner_.Window());
  const auto after = static_cast<HENHMETAFILE>(GetClipboardData(CF_ENHMETAFILE));
  ASSERT_NE(after, nullptr);
  EXPECT_EQ(bits(after), before);
}

TEST_F(ClipboardTest, PictureIsThereInTheThreeFormatsThatACommandBarWants) {
  ASSERT_TRUE(face_clipboard_.PutPicture());
  const auto contents = Contents();
  const auto starts_with = [&](UINT format, const Bytes& bytes) {
    const auto found = contents.find(format);
    return found != contents.end() && found->second.size() >= bytes.size() &&
           std::memcmp(found->second.data(), bytes.data(), bytes.size()) == 0;
  };
  EXPECT_TRUE(starts_with(CF_DIB, ToolbarFace()));
  EXPECT_TRUE(starts_with(RegisterClipboardFormatW(L"Toolbar Button Face"), ToolbarFace()));
  EXPECT_TRUE(starts_with(RegisterClipboardFormatW(L"Toolbar Button Mask"), ToolbarFaceMask()));
  Empty();
}

}  // namespace
}  // namespace declarium::com
