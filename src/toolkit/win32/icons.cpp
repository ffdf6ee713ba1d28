#include "toolkit/win32/icons.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>
#include <vector>

namespace declarium::win32 {

namespace {

// Pictures are lists of shapes on a field of 16 by 16 units, painted one over the other.
struct Vertex {
  float x;
  float y;
};

struct Shape {
  enum Kind { kRectangle, kDisc, kRing, kStroke, kTriangle } kind;
  std::uint32_t color;  // 0xRRGGBB
  Vertex a, b, c;       // corners, or centre and (radius, width), or both ends and (width, 0)
};

constexpr std::uint32_t kInk = 0x3B4754, kPaper = 0xFFFFFF, kBlue = 0x1F6FC4, kDeepBlue = 0x174F8C;
constexpr std::uint32_t kGreen = 0x2E9E4F, kRed = 0xCC3D3D, kYellow = 0xF2B632, kAmber = 0xC98A14;
constexpr std::uint32_t kViolet = 0x7A4CB8, kLight = 0xB9C4CF;

constexpr Shape kNewShapes[] = {
    {Shape::kRectangle, kInk, {3, 1}, {12, 15}, {}},
    {Shape::kRectangle, kPaper, {4, 2}, {11, 14}, {}},
    {Shape::kRectangle, kLight, {5, 4}, {10, 5}, {}},
    {Shape::kRectangle, kLight, {5, 7}, {10, 8}, {}},
    {Shape::kDisc, kYellow, {11.5F, 4.0F}, {3.5F, 0}, {}},
    {Shape::kRectangle, kPaper, {11, 2}, {12, 6}, {}},
    {Shape::kRectangle, kPaper, {9.5F, 3.5F}, {13.5F, 4.5F}, {}},
};
constexpr Shape kOpenShapes[] = {
    {Shape::kRectangle, kAmber, {1, 3}, {7, 6}, {}},
    {Shape::kRectangle, kAmber, {1, 5}, {14, 14}, {}},
    {Shape::kRectangle, kYellow, {2, 6}, {13, 8}, {}},
    {Shape::kRectangle, kYellow, {2, 8}, {15, 14}, {}},
    {Shape::kRectangle, kAmber, {2, 8}, {15, 9}, {}},
};
constexpr Shape kSaveShapes[] = {
    {Shape::kRectangle, kDeepBlue, {1, 1}, {15, 15}, {}},
    {Shape::kRectangle, kBlue, {2, 2}, {14, 14}, {}},
    {Shape::kRectangle, kPaper, {4, 2}, {12, 7}, {}},
    {Shape::kRectangle, kDeepBlue, {9, 3}, {11, 6}, {}},
    {Shape::kRectangle, kPaper, {3, 9}, {13, 14}, {}},
    {Shape::kRectangle, kLight, {5, 11}, {11, 12}, {}},
};
constexpr Shape kAddShapes[] = {
    {Shape::kRectangle, kGreen, {6, 2}, {10, 14}, {}},
    {Shape::kRectangle, kGreen, {2, 6}, {14, 10}, {}},
};
constexpr Shape kDeleteShapes[] = {
    {Shape::kStroke, kRed, {3.5F, 3.5F}, {12.5F, 12.5F}, {3, 0}},
    {Shape::kStroke, kRed, {12.5F, 3.5F}, {3.5F, 12.5F}, {3, 0}},
};
constexpr Shape kCopyShapes[] = {
    {Shape::kRectangle, kInk, {2, 1}, {10, 11}, {}},
    {Shape::kRectangle, kPaper, {3, 2}, {9, 10}, {}},
    {Shape::kRectangle, kLight, {4, 4}, {8, 5}, {}},
    {Shape::kRectangle, kInk, {6, 5}, {14, 15}, {}},
    {Shape::kRectangle, kPaper, {7, 6}, {13, 14}, {}},
    {Shape::kRectangle, kLight, {8, 8}, {12, 9}, {}},
    {Shape::kRectangle, kLight, {8, 11}, {12, 12}, {}},
};
constexpr Shape kExportShapes[] = {
    {Shape::kRectangle, kInk, {1, 2}, {10, 15}, {}},
    {Shape::kRectangle, kPaper, {2, 3}, {9, 14}, {}},
    {Shape::kRectangle, kLight, {3, 5}, {7, 6}, {}},
    {Shape::kRectangle, kBlue, {6, 8}, {11, 11}, {}},
    {Shape::kTriangle, kBlue, {10.5F, 5}, {15.5F, 9.5F}, {10.5F, 14}},
};
constexpr Shape kInsertShapes[] = {
    {Shape::kRectangle, kInk, {5, 1}, {15, 15}, {}},
    {Shape::kRectangle, kPaper, {6, 2}, {14, 14}, {}},
    {Shape::kRectangle, kLight, {8, 4}, {13, 5}, {}},
    {Shape::kRectangle, kLight, {8, 11}, {13, 12}, {}},
    {Shape::kRectangle, kGreen, {1, 6.5F}, {6, 9.5F}, {}},
    {Shape::kTriangle, kGreen, {5.5F, 4}, {10.5F, 8}, {5.5F, 12}},
};
// A module with a gap among its lines that the arrow points at.
constexpr Shape kInsertMissingShapes[] = {
    {Shape::kRectangle, kInk, {5, 1}, {15, 15}, {}},
    {Shape::kRectangle, kPaper, {6, 2}, {14, 14}, {}},
    {Shape::kRectangle, kLight, {8, 3}, {13, 4}, {}},
    {Shape::kRectangle, kLight, {8, 5}, {13, 6}, {}},
    {Shape::kRectangle, kYellow, {7, 7}, {13, 10}, {}},
    {Shape::kRectangle, kLight, {8, 11}, {13, 12}, {}},
    {Shape::kRectangle, kGreen, {0, 7.5F}, {4, 9.5F}, {}},
    {Shape::kTriangle, kGreen, {3.5F, 5}, {7.5F, 8.5F}, {3.5F, 12}},
};
constexpr Shape kFindShapes[] = {
    {Shape::kStroke, kAmber, {9.5F, 9.5F}, {13.8F, 13.8F}, {3, 0}},
    {Shape::kDisc, kPaper, {6.5F, 6.5F}, {4.5F, 0}, {}},
    {Shape::kRing, kDeepBlue, {6.5F, 6.5F}, {5.2F, 1.7F}, {}},
};
constexpr Shape kSettingsShapes[] = {
    {Shape::kRectangle, kInk, {1, 3}, {15, 4.5F}, {}},
    {Shape::kRectangle, kInk, {1, 7.5F}, {15, 9}, {}},
    {Shape::kRectangle, kInk, {1, 12}, {15, 13.5F}, {}},
    {Shape::kDisc, kRed, {4.5F, 3.7F}, {2.3F, 0}, {}},
    {Shape::kDisc, kGreen, {11, 8.2F}, {2.3F, 0}, {}},
    {Shape::kDisc, kBlue, {7, 12.7F}, {2.3F, 0}, {}},
};
// The kinds: a green equation, a blue call with its bracket, a violet record of rows.
constexpr Shape kConstShapes[] = {
    {Shape::kRectangle, kGreen, {1, 2}, {15, 14}, {}},
    {Shape::kRectangle, kPaper, {4, 5}, {12, 7}, {}},
    {Shape::kRectangle, kPaper, {4, 9}, {12, 11}, {}},
};
constexpr Shape kDeclareShapes[] = {
    {Shape::kRectangle, kBlue, {1, 2}, {15, 14}, {}},
    {Shape::kStroke, kPaper, {6.5F, 4.8F}, {4, 8}, {1.6F, 0}},
    {Shape::kStroke, kPaper, {4, 8}, {6.5F, 11.2F}, {1.6F, 0}},
    {Shape::kStroke, kPaper, {9.5F, 4.8F}, {12, 8}, {1.6F, 0}},
    {Shape::kStroke, kPaper, {12, 8}, {9.5F, 11.2F}, {1.6F, 0}},
};
constexpr Shape kTypeShapes[] = {
    {Shape::kRectangle, kViolet, {1, 2}, {15, 14}, {}},
    {Shape::kRectangle, kPaper, {3, 4}, {6, 6}, {}},
    {Shape::kRectangle, kPaper, {7, 4}, {13, 6}, {}},
    {Shape::kRectangle, kPaper, {3, 7}, {6, 9}, {}},
    {Shape::kRectangle, kPaper, {7, 7}, {13, 9}, {}},
    {Shape::kRectangle, kPaper, {3, 10}, {6, 12}, {}},
    {Shape::kRectangle, kPaper, {7, 10}, {13, 12}, {}},
};
// A library: three volumes on a board.
constexpr Shape kApplicationShapes[] = {
    {Shape::kRectangle, kGreen, {1, 3}, {5, 14}, {}},
    {Shape::kRectangle, kPaper, {2, 5}, {4, 6.5F}, {}},
    {Shape::kRectangle, kBlue, {6, 1}, {10, 14}, {}},
    {Shape::kRectangle, kPaper, {7, 3}, {9, 4.5F}, {}},
    {Shape::kRectangle, kViolet, {11, 4}, {15, 14}, {}},
    {Shape::kRectangle, kPaper, {12, 6}, {14, 7.5F}, {}},
    {Shape::kRectangle, kInk, {0, 14}, {16, 15.5F}, {}},
};

std::span<const Shape> ShapesOf(Icon icon) {
  switch (icon) {
    case Icon::kNone:
      return {};
    case Icon::kConst:
      return kConstShapes;
    case Icon::kDeclare:
      return kDeclareShapes;
    case Icon::kType:
      return kTypeShapes;
    case Icon::kNew:
      return kNewShapes;
    case Icon::kOpen:
      return kOpenShapes;
    case Icon::kSave:
      return kSaveShapes;
    case Icon::kAdd:
      return kAddShapes;
    case Icon::kCopy:
      return kCopyShapes;
    case Icon::kDelete:
      return kDeleteShapes;
    case Icon::kExport:
      return kExportShapes;
    case Icon::kInsert:
      return kInsertShapes;
    case Icon::kInsertMissing:
      return kInsertMissingShapes;
    case Icon::kFind:
      return kFindShapes;
    case Icon::kSettings:
      return kSettingsShapes;
    case Icon::kApplication:
      return kApplicationShapes;
  }
  return {};
}

float Distance(Vertex p, Vertex q) {
  return std::hypot(p.x - q.x, p.y - q.y);
}

float DistanceToSegment(Vertex p, Vertex a, Vertex b) {
  const float dx = b.x - a.x, dy = b.y - a.y;
  const float t =
      std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / (dx * dx + dy * dy), 0.0F, 1.0F);
  return Distance(p, {a.x + t * dx, a.y + t * dy});
}

float Side(Vertex p, Vertex a, Vertex b) {
  return (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
}

bool InTriangle(Vertex p, const Shape& s) {
  const float one = Side(p, s.a, s.b), two = Side(p, s.b, s.c), three = Side(p, s.c, s.a);
  return (one >= 0 && two >= 0 && three >= 0) || (one <= 0 && two <= 0 && three <= 0);
}

bool Covers(const Shape& s, Vertex p) {
  switch (s.kind) {
    case Shape::kRectangle:
      return p.x >= s.a.x && p.x < s.b.x && p.y >= s.a.y && p.y < s.b.y;
    case Shape::kDisc:
      return Distance(p, s.a) < s.b.x;
    case Shape::kRing:
      return std::abs(Distance(p, s.a) - s.b.x + s.b.y / 2) < s.b.y / 2;
    case Shape::kStroke:
      return DistanceToSegment(p, s.a, s.b) < s.c.x / 2;
    case Shape::kTriangle:
      return InTriangle(p, s);
  }
  return false;
}

// Edges of rectangles lie between pixels, so that they stay sharp in every size.
std::vector<Shape> Fit(std::span<const Shape> shapes, int size) {
  const float unit = static_cast<float>(size) / 16;
  const auto snap = [unit](float v) { return std::round(v * unit) / unit; };
  std::vector<Shape> fitted(shapes.begin(), shapes.end());
  for (Shape& s : fitted) {
    if (s.kind != Shape::kRectangle) continue;
    s.a = {snap(s.a.x), snap(s.a.y)};
    s.b = {std::max(snap(s.b.x), s.a.x + 1 / unit), std::max(snap(s.b.y), s.a.y + 1 / unit)};
  }
  return fitted;
}

std::uint32_t Faded(std::uint32_t color) {
  const std::uint32_t gray =
      ((color >> 16 & 255) * 3 + (color >> 8 & 255) * 6 + (color & 255)) / 10;
  const std::uint32_t light = 150 + gray * 90 / 255;
  return light << 16 | light << 8 | light;
}

// One pixel from 4 by 4 samples, as 0xAARRGGBB with the colors multiplied by the cover.
std::uint32_t Sample(std::span<const Shape> shapes, float x, float y, float step, Look look) {
  constexpr int kSamples = 4;
  std::uint32_t red = 0, green = 0, blue = 0, covered = 0;
  for (int n = 0; n < kSamples * kSamples; ++n) {
    const Vertex p{x + (static_cast<float>(n % kSamples) + 0.5F) * step / kSamples,
                   y + (static_cast<float>(n / kSamples) + 0.5F) * step / kSamples};
    const auto top =
        std::find_if(shapes.rbegin(), shapes.rend(), [p](const Shape& s) { return Covers(s, p); });
    if (top == shapes.rend()) continue;
    const std::uint32_t color = look == Look::kDisabled ? Faded(top->color) : top->color;
    red += color >> 16 & 255;
    green += color >> 8 & 255;
    blue += color & 255;
    ++covered;
  }
  constexpr std::uint32_t kAll = kSamples * kSamples;
  return (covered * 255 / kAll) << 24 | (red / kAll) << 16 | (green / kAll) << 8 | blue / kAll;
}

UniqueBitmap DrawBitmap(Icon icon, int size, Look look) {
  BITMAPINFO info{};
  info.bmiHeader = {sizeof info.bmiHeader, size, -size, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* bits = nullptr;
  UniqueBitmap bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  if (!bitmap) return bitmap;
  const std::vector<Shape> shapes = Fit(ShapesOf(icon), size);
  const float step = 16.0F / static_cast<float>(size);
  auto* pixels = static_cast<std::uint32_t*>(bits);
  for (int y = 0; y < size; ++y) {
    for (int x = 0; x < size; ++x) {
      *pixels++ =
          Sample(shapes, static_cast<float>(x) * step, static_cast<float>(y) * step, step, look);
    }
  }
  return bitmap;
}

}  // namespace

int SmallIconSize(int dpi) {
  if (dpi < 120) return 16;
  if (dpi < 144) return 20;
  return dpi < 192 ? 24 : 32;
}

UniqueIcon DrawIconPicture(Icon icon, int size, Look look) {
  const UniqueBitmap color = DrawBitmap(icon, size, look);
  const std::vector<std::uint8_t> opaque(static_cast<std::size_t>((size + 15) / 16 * 2 * size), 0);
  const UniqueBitmap mask(CreateBitmap(size, size, 1, 1, opaque.data()));
  ICONINFO info{TRUE, 0, 0, mask.Get(), color.Get()};
  return UniqueIcon(CreateIconIndirect(&info));
}

UniqueImageList DrawImageList(int size, Look look) {
  constexpr int kCount = static_cast<int>(Icon::kApplication) + 1;
  UniqueImageList list(ImageList_Create(size, size, ILC_COLOR32, kCount, 0));
  for (int number = 0; number < kCount; ++number) {
    const UniqueBitmap bitmap = DrawBitmap(static_cast<Icon>(number), size, look);
    ImageList_Add(list.Get(), bitmap.Get(), nullptr);
  }
  return list;
}

}  // namespace declarium::win32
