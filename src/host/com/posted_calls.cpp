#include "host/com/posted_calls.h"

#include <utility>

namespace declarium::com {
namespace {

constexpr wchar_t kClassName[] = L"DeclariumPostedCalls";
constexpr UINT kRunNext = WM_APP;

}  // namespace

PostedCalls::PostedCalls(Boundary& boundary) : boundary_(boundary) {
  WNDCLASSW window_class{};
  window_class.lpfnWndProc = Procedure;
  window_class.hInstance = GetModuleHandleW(nullptr);
  window_class.lpszClassName = kClassName;
  RegisterClassW(&window_class);
  window_ = CreateWindowW(kClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                          window_class.hInstance, nullptr);
  SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

PostedCalls::~PostedCalls() {
  DestroyWindow(window_);
}

void PostedCalls::Post(std::function<void()> call) {
  {
    const std::lock_guard lock(mutex_);
    calls_.push_back(std::move(call));
  }
  PostMessageW(window_, kRunNext, 0, 0);
}

void PostedCalls::RunNext() {
  std::function<void()> call;
  {
    const std::lock_guard lock(mutex_);
    if (calls_.empty()) return;
    call = std::move(calls_.front());
    calls_.pop_front();
  }
  call();
}

LRESULT CALLBACK PostedCalls::Procedure(HWND window, UINT message, WPARAM wide,
                                        LPARAM last) noexcept {
  if (message != kRunNext) return DefWindowProcW(window, message, wide, last);
  auto* self = reinterpret_cast<PostedCalls*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (self) self->boundary_.Run([self] { self->RunNext(); });
  return 0;
}

}  // namespace declarium::com
