#include "host/toolbar_face.h"

#include <array>
#include <span>
#include <string_view>

namespace declarium {
namespace {

// A page with the lines of a declaration and a blue D. Hexadecimal digits are color numbers, '.'
// is transparent.
constexpr std::array<std::string_view, kFaceSize> kPicture = {
    "................", "..00000000......", "..0ffffff000....", "..0ffffff0f00...",
    "..0f8888f0000...", "..0fffffffff0...", "..0f888cccc....",  "..0fffccfccc...",
    "..0f88cc.fcc...",  "..0fffccffcc...",  "..0f88cc8fcc...",  "..0fffccfccc...",
    "..0f88cccccff0..", "..0ffffffffff0..", "..000000000000..", "................",
};

// The colors 0 to 15 as blue, green, red.
constexpr std::array<std::array<std::uint8_t, 3>, 16> kColors = {{
    {0, 0, 0},
    {0, 0, 128},
    {0, 128, 0},
    {0, 128, 128},
    {128, 0, 0},
    {128, 0, 128},
    {128, 128, 0},
    {192, 192, 192},
    {128, 128, 128},
    {0, 0, 255},
    {0, 255, 0},
    {0, 255, 255},
    {255, 0, 0},
    {255, 0, 255},
    {255, 255, 0},
    {255, 255, 255},
}};

constexpr std::array<std::array<std::uint8_t, 3>, 2> kBlackAndWhite = {
    {{0, 0, 0}, {255, 255, 255}}};

char PixelAt(int x, int y) {
  const auto row = kPicture[static_cast<std::size_t>(y)];
  return static_cast<std::size_t>(x) < row.size() ? row[static_cast<std::size_t>(x)] : '.';
}

int ColorOf(char pixel) {
  if (pixel == '.') return 7;
  return pixel <= '9' ? pixel - '0' : pixel - 'a' + 10;
}

void Append(std::vector<std::uint8_t>& out, std::uint32_t value, int bytes) {
  for (int i = 0; i < bytes; ++i) out.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

std::vector<std::uint8_t> Header(int bits, std::uint32_t image_bytes,
                                 std::span<const std::array<std::uint8_t, 3>> colors) {
  std::vector<std::uint8_t> out;
  Append(out, 40, 4);
  Append(out, kFaceSize, 4);
  Append(out, kFaceSize, 4);
  Append(out, 1, 2);  // planes
  Append(out, static_cast<std::uint32_t>(bits), 2);
  Append(out, 0, 4);  // not compressed
  Append(out, image_bytes, 4);
  Append(out, 0, 4);
  Append(out, 0, 4);
  Append(out, static_cast<std::uint32_t>(colors.size()), 4);
  Append(out, 0, 4);
  for (const auto& color : colors) {
    for (const auto part : color) out.push_back(part);
    out.push_back(0);
  }
  return out;
}

}  // namespace

std::vector<std::uint8_t> ToolbarFace() {
  auto out = Header(4, kFaceSize * kFaceSize / 2, kColors);
  for (int y = kFaceSize - 1; y >= 0; --y) {
    for (int x = 0; x < kFaceSize; x += 2) {
      const int pair = ColorOf(PixelAt(x, y)) << 4 | ColorOf(PixelAt(x + 1, y));
      out.push_back(static_cast<std::uint8_t>(pair));
    }
  }
  return out;
}

std::vector<std::uint8_t> ToolbarFaceMask() {
  constexpr int kRowBytes = 4;  // rows are padded to 32 bits
  auto out = Header(1, kFaceSize * kRowBytes, kBlackAndWhite);
  for (int y = kFaceSize - 1; y >= 0; --y) {
    std::array<std::uint8_t, kRowBytes> row{};
    for (int x = 0; x < kFaceSize; ++x) {
      if (PixelAt(x, y) != '.') continue;
      auto& byte = row[static_cast<std::size_t>(x / 8)];
      byte = static_cast<std::uint8_t>(byte | 0x80 >> x % 8);
    }
    out.insert(out.end(), row.begin(), row.end());
  }
  return out;
}

}  // namespace declarium
