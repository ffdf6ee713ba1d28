#include "vba/picture.h"

#include <cstring>
#include <ocidl.h>
#include <olectl.h>

#include "win32/unique_handle.h"

namespace declarium::vba {
namespace {

// The screen, for the time of a drawing call.
class Screen {
 public:
  Screen() : device_(GetDC(nullptr)) {}
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;
  ~Screen() { ReleaseDC(nullptr, device_); }
  [[nodiscard]] HDC Get() const noexcept { return device_; }

 private:
  HDC device_;
};

win32::UniqueBitmap BitmapOf(std::span<const std::uint8_t> packed) {
  BITMAPINFOHEADER header{};
  std::memcpy(&header, packed.data(), sizeof header);
  const auto colors = std::size_t{1} << header.biBitCount;
  const auto* const bits = packed.data() + sizeof header + colors * sizeof(RGBQUAD);
  const auto* const info = reinterpret_cast<const BITMAPINFO*>(packed.data());
  return win32::UniqueBitmap(
      CreateDIBitmap(Screen().Get(), &info->bmiHeader, CBM_INIT, bits, info, DIB_RGB_COLORS));
}

}  // namespace

win32::ComPtr<IDispatch> PictureOf(std::span<const std::uint8_t> bitmap) {
  auto handle = BitmapOf(bitmap);
  PICTDESC description{};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_BITMAP;
  description.bmp.hbitmap = handle.Get();
  win32::ComPtr<IDispatch> picture;
  const HRESULT made = OleCreatePictureIndirect(&description, IID_IPictureDisp, TRUE,
                                                reinterpret_cast<void**>(picture.Receive()));
  // The picture owns the bitmap from now on.
  if (SUCCEEDED(made)) [[maybe_unused]]
    const auto owned = handle.Release();
  return picture;
}

}  // namespace declarium::vba
