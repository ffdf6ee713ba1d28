// The owner of one reference to a COM object.
#pragma once

#include <cstddef>
#include <utility>

namespace declarium::win32 {

template <class T>
class ComPtr {
 public:
  ComPtr() = default;
  ComPtr(std::nullptr_t) {}
  // Takes another reference.
  explicit ComPtr(T* object) : object_(object) {
    if (object_) object_->AddRef();
  }
  ComPtr(const ComPtr& other) : ComPtr(other.object_) {}
  ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ComPtr& operator=(ComPtr other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~ComPtr() {
    if (object_) object_->Release();
  }

  // Takes over a reference that the caller owns.
  [[nodiscard]] static ComPtr Attach(T* object) {
    ComPtr result;
    result.object_ = object;
    return result;
  }

  [[nodiscard]] T* Get() const noexcept { return object_; }
  [[nodiscard]] T* Detach() noexcept { return std::exchange(object_, nullptr); }
  T* operator->() const noexcept { return object_; }
  T& operator*() const noexcept { return *object_; }
  explicit operator bool() const noexcept { return object_ != nullptr; }

  // For functions that return a reference through a pointer; a held reference is released first.
  [[nodiscard]] T** Receive() noexcept {
    *this = ComPtr();
    return &object_;
  }

  // Null when the object does not have the interface.
  template <class U, class Iid>
  [[nodiscard]] ComPtr<U> Query(const Iid& iid) const {
    void* found = nullptr;
    if (object_ && object_->QueryInterface(iid, &found) >= 0) {
      return ComPtr<U>::Attach(static_cast<U*>(found));
    }
    return {};
  }

 private:
  T* object_ = nullptr;
};

}  // namespace declarium::win32
