// Calls that run later on the same thread, from its message loop.
#pragma once

#include <deque>
#include <functional>
#include <mutex>
#include <windows.h>

namespace declarium::com {

class PostedCalls {
 public:
  PostedCalls();
  PostedCalls(const PostedCalls&) = delete;
  PostedCalls& operator=(const PostedCalls&) = delete;
  // Calls that have not run yet are dropped.
  ~PostedCalls();

  // From any thread. An exception ends the call and nothing else.
  void Post(std::function<void()> call);

  // A hidden window of the thread.
  [[nodiscard]] HWND window() const noexcept { return window_; }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wide, LPARAM last);
  void RunNext();

  HWND window_ = nullptr;
  std::mutex mutex_;
  std::deque<std::function<void()>> calls_;
};

}  // namespace declarium::com
