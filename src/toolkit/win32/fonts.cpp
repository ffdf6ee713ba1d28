#include "toolkit/win32/fonts.h"

#include <cwchar>

#include "toolkit/win32/dpi.h"

namespace declarium::win32 {

namespace {

LOGFONTW CodeFont(int dpi) {
  LOGFONTW font{};
  font.lfHeight = -MulDiv(kCodePoints, dpi, 72);
  font.lfCharSet = DEFAULT_CHARSET;
  font.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
  std::wcsncpy(font.lfFaceName, FindCodeFace(), LF_FACESIZE - 1);
  return font;
}

// The face of the IDE's code window; the others are what a machine without the fonts of Windows
// has.
constexpr const wchar_t* kCodeFaces[] = {L"Courier New", L"DejaVu Sans Mono", L"Liberation Mono"};

int CALLBACK FoundFace(const LOGFONTW*, const TEXTMETRICW*, DWORD, LPARAM found) {
  *reinterpret_cast<bool*>(found) = true;
  return 0;
}

bool HasFace(const wchar_t* face) {
  LOGFONTW wanted{};
  wanted.lfCharSet = DEFAULT_CHARSET;
  std::wcsncpy(wanted.lfFaceName, face, LF_FACESIZE - 1);
  bool found = false;
  const HDC screen = GetDC(nullptr);
  EnumFontFamiliesExW(screen, &wanted, FoundFace, reinterpret_cast<LPARAM>(&found), 0);
  ReleaseDC(nullptr, screen);
  return found;
}

}  // namespace

const wchar_t* FindCodeFace() {
  for (const wchar_t* face : kCodeFaces) {
    if (HasFace(face)) return face;
  }
  return L"Courier New";
}

Fonts::Fonts(int dpi) {
  LOGFONTW font = Screens().MessageFont(dpi);
  fonts_[static_cast<std::size_t>(FontRole::kText)] = UniqueFont(CreateFontIndirectW(&font));
  font.lfWeight = FW_BOLD;
  fonts_[static_cast<std::size_t>(FontRole::kBold)] = UniqueFont(CreateFontIndirectW(&font));
  font.lfHeight *= 2;
  fonts_[static_cast<std::size_t>(FontRole::kHeading)] = UniqueFont(CreateFontIndirectW(&font));
  const LOGFONTW code = CodeFont(dpi);
  fonts_[static_cast<std::size_t>(FontRole::kCode)] = UniqueFont(CreateFontIndirectW(&code));
}

}  // namespace declarium::win32
