// An event of a control or a form: at most one subscriber, raised by the backend.
//
//   cmbDatabase.on_click = [this] { cmbDatabase_Click(); };
#pragma once

#include <functional>
#include <utility>

namespace declarium {

template <class... Args>
class Event {
 public:
  // Replaces the subscriber; nullptr removes it.
  Event& operator=(std::function<void(Args...)> handler) {
    handler_ = std::move(handler);
    return *this;
  }

  // Runs the subscriber, if any. The subscriber may replace itself or destroy what holds the event
  // while it runs, so a copy of it is what runs.
  void Raise(Args... args) const {
    if (!handler_) return;
    const std::function<void(Args...)> handler = handler_;
    handler(std::forward<Args>(args)...);
  }

  [[nodiscard]] bool HasHandler() const { return static_cast<bool>(handler_); }

 private:
  std::function<void(Args...)> handler_;
};

}  // namespace declarium
