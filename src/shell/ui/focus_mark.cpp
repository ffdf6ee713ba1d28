#include "shell/ui/focus_mark.h"

namespace declarium {

namespace {

constexpr int kStep = 2;

// Both dotted lines keep to one pattern over the whole surface.
void InvertRow(Canvas& canvas, int y, int width) {
  for (int x = y % kStep; x < width; x += kStep) canvas.Invert({x, y, 1, 1});
}

void InvertColumn(Canvas& canvas, int x, int first_y, int end_y) {
  for (int y = first_y + (first_y + x) % kStep; y < end_y; y += kStep) canvas.Invert({x, y, 1, 1});
}

}  // namespace

void DrawFocusMark(Canvas& canvas) {
  const auto [width, height] = canvas.Extent();
  if (width < 1 || height < 1) return;
  InvertRow(canvas, 0, width);
  if (height > 1) InvertRow(canvas, height - 1, width);
  InvertColumn(canvas, 0, 1, height - 1);
  if (width > 1) InvertColumn(canvas, width - 1, 1, height - 1);
}

}  // namespace declarium
