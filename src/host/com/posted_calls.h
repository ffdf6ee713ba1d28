// Calls that run later on the same thread, from its message loop.
#pragma once

#include <deque>
#include <functional>
#include <mutex>
#include <windows.h>

#include "toolkit/boundary.h"

namespace declarium::com {

class PostedCalls {
 public:
  // `boundary` stops what the calls throw; it outlives this.
  explicit PostedCalls(Boundary& boundary);
  PostedCalls(const PostedCalls&) = delete;
  PostedCalls& operator=(const PostedCalls&) = delete;
  // Calls that have not run yet are dropped.
  ~PostedCalls();

  // From any thread. An exception ends the call and nothing else; the boundary reports it.
  void Post(std::function<void()> call);

  [[nodiscard]] Boundary& Guard() const noexcept { return boundary_; }
  // A hidden window of the thread.
  [[nodiscard]] HWND Window() const noexcept { return window_; }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wide, LPARAM last) noexcept;
  void RunNext();

  Boundary& boundary_;
  HWND window_ = nullptr;
  std::mutex mutex_;
  std::deque<std::function<void()>> calls_;
};

}  // namespace declarium::com
