#include "toolkit/screen_place.h"

#include <algorithm>
#include <cstdint>

namespace declarium {
namespace {

// What must be seen of a title bar so that a pointer finds it.
constexpr int kTitleHeight = 24;
constexpr int kGripWidth = 64;
constexpr int kGripHeight = 8;

// Stored numbers may be anything, and their sums are not to overflow.
using Wide = std::int64_t;

Wide Overlap(Wide begin, Wide extent, Wide other_begin, Wide other_extent) {
  return std::min(begin + extent, other_begin + other_extent) - std::max(begin, other_begin);
}

bool HasGripOn(const Rect& area, const Rect& work) {
  const int title = std::min(kTitleHeight, area.height);
  return Overlap(area.left, area.width, work.left, work.width) >=
             std::min(kGripWidth, area.width) &&
         Overlap(area.top, title, work.top, work.height) >= std::min(kGripHeight, title);
}

// From the area's upper left corner to the work area.
Wide Distance(const Rect& area, const Rect& work) {
  const auto beyond = [](Wide at, Wide begin, Wide extent) {
    return std::max({begin - at, at - (begin + extent), Wide{0}});
  };
  return beyond(area.left, work.left, work.width) + beyond(area.top, work.top, work.height);
}

Rect MovedInto(const Rect& area, const Rect& work) {
  const int width = std::min(area.width, work.width);
  const int height = std::min(area.height, work.height);
  return {std::clamp(area.left, work.left, work.left + work.width - width),
          std::clamp(area.top, work.top, work.top + work.height - height), width, height};
}

}  // namespace

Rect PlaceOnScreen(const Rect& area, std::span<const Rect> work_areas) {
  const auto has_grip = [&](const Rect& work) { return HasGripOn(area, work); };
  if (work_areas.empty() || std::ranges::any_of(work_areas, has_grip)) return area;
  return MovedInto(area, *std::ranges::min_element(work_areas, {}, [&](const Rect& work) {
                     return Distance(area, work);
                   }));
}

}  // namespace declarium
