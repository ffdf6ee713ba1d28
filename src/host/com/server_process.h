// The life of the program as an automation server: it stays while a host uses it or something of
// its own holds it, and ends otherwise.
#pragma once

#include <functional>
#include <utility>
#include <windows.h>
#include <objbase.h>

namespace declarium::com {

class ServerProcess {
 public:
  // `ended` is called when the last hold goes; no host can reach the process by then.
  explicit ServerProcess(std::function<void()> ended) : ended_(std::move(ended)) {}
  ServerProcess(const ServerProcess&) = delete;
  ServerProcess& operator=(const ServerProcess&) = delete;
  ~ServerProcess() { Withdraw(); }

  // Lets hosts get their objects of the class from this process. Failing means that none can.
  [[nodiscard]] HRESULT Offer(const CLSID& class_id, IClassFactory& factory);

  void AddHold() { CoAddRefServerProcess(); }
  void ReleaseHold();

 private:
  void Withdraw();

  std::function<void()> ended_;
  DWORD cookie_ = 0;
};

// Keeps the server process from ending. The main window holds one while it is shown.
class ServerHold {
 public:
  explicit ServerHold(ServerProcess& process) : process_(process) { process_.AddHold(); }
  ServerHold(const ServerHold&) = delete;
  ServerHold& operator=(const ServerHold&) = delete;
  ~ServerHold() { process_.ReleaseHold(); }

 private:
  ServerProcess& process_;
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

 private:
  HRESULT result_;
};

}  // namespace declarium::com
