#include "window/live_objects.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<long long> live = 0;

}  // namespace

namespace declarium::window_driver {

long long LiveObjects() {
  return live;
}

}  // namespace declarium::window_driver

void* operator new(std::size_t size) {
  void* const place = std::malloc(size == 0 ? 1 : size);
  if (place == nullptr) throw std::bad_alloc();
  ++live;
  return place;
}

void operator delete(void* place) noexcept {
  if (place != nullptr) --live;
  std::free(place);
}

void operator delete(void* place, std::size_t) noexcept {
  operator delete(place);
}
