#include "check/c_type.h"

#include <gtest/gtest.h>

namespace declarium::check {
namespace {

TEST(CType, IsReadFromItsName) {
  constexpr std::pair<std::string_view, CType> kTypes[] = {
      {"DWORD", CType::kNumber},
      {"int", CType::kNumber},
      {"BOOL", CType::kBool},
      {"WORD", CType::kShort},
      {"HWND", CType::kHandle},
      {"LPARAM", CType::kWide},
      {"LPCSTR", CType::kText},
      {"char *", CType::kText},
      {"const CHAR *", CType::kText},
      {"LPWSTR", CType::kWideText},
      {"OLECHAR *", CType::kWideText},
      {"LPRECT", CType::kAddress},
      {"const RECT *", CType::kAddress},
      {"const PROPVARIANT *const", CType::kAddress},
      {"TIMERPROC", CType::kAddress},
      {"PROCESSINFOCLASS", CType::kUnknown},
      {"POINT", CType::kUnknown},
      {"HRESULT", CType::kNumber},
      {"", CType::kUnknown}};
  for (const auto& [name, type] : kTypes) EXPECT_EQ(CTypeOf(name), type) << name;
}

TEST(CType, TellsWhatGrowsIn64Bits) {
  for (const std::string_view name : {"HWND", "LPARAM", "LPSTR", "void *"})
    EXPECT_TRUE(GrowsIn64Bits(CTypeOf(name))) << name;
  for (const std::string_view name : {"BOOL", "DWORD", "WORD", "SOMETHING"})
    EXPECT_FALSE(GrowsIn64Bits(CTypeOf(name))) << name;
}

}  // namespace
}  // namespace declarium::check
