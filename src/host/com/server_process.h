// The life of the program as an automation server: it stays while a host uses it or something of
// its own holds it, and ends otherwise.
#pragma once

#include <windows.h>

#include <functional>
#include <utility>

namespace declarium::com {

// Keeps the server process from ending. The main window holds one while it is shown.
class ServerHold {
 public:
  // `last_gone` is called when the last hold of the process goes; the class objects are closed to
  // new hosts by then.
  explicit ServerHold(std::function<void()> last_gone) : last_gone_(std::move(last_gone)) {
    CoAddRefServerProcess();
  }
  ServerHold(const ServerHold&) = delete;
  ServerHold& operator=(const ServerHold&) = delete;
  ~ServerHold() {
    if (CoReleaseServerProcess() == 0) last_gone_();
  }

 private:
  std::function<void()> last_gone_;
};

// Enters the single-threaded apartment for its lifetime.
class ComApartment {
 public:
  ComApartment() : result_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;
  ~ComApartment() {
    if (SUCCEEDED(result_)) CoUninitialize();
  }
  [[nodiscard]] HRESULT result() const noexcept { return result_; }

 private:
  HRESULT result_;
};

}  // namespace declarium::com
