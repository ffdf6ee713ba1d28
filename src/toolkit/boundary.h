// The edge at which the system or the host calls the program: window procedures, timers, COM
// methods, posted calls. No exception may cross it, for the frames below are not the program's.
//
//   boundary.Run([&] { on_click.Raise(); });
#pragma once

#include <exception>
#include <functional>
#include <utility>

namespace declarium {

class Boundary {
 public:
  // Called inside Run with each exception that it stops, on Run's thread. Exceptions of its own are
  // dropped.
  using Report = std::function<void(const std::exception_ptr& failure)>;

  Boundary() = default;
  Boundary(const Boundary&) = delete;
  Boundary& operator=(const Boundary&) = delete;

  // Replaces the report; nullptr removes it.
  void SetReport(Report report) { report_ = std::move(report); }

  // Runs the action. False when it was ended by an exception, which has been reported then.
  template <class Action>
  bool Run(Action&& action) noexcept {
    try {
      std::forward<Action>(action)();
      return true;
    } catch (...) {
      Stop(std::current_exception());
      return false;
    }
  }

 private:
  void Stop(const std::exception_ptr& failure) noexcept;

  Report report_;
};

}  // namespace declarium
