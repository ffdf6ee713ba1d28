// A folder with a small library, made by the import command itself.
#pragma once

#include <gtest/gtest.h>
#include <string>

#include "cli/run_cli.h"

#include "library/file_io.h"
#include "support/temporary_folder.h"
#include "text/text.h"

namespace declarium::cli {

inline constexpr std::string_view kSource =
    "Attribute VB_Name = \"Sample\"\r\n"
    "Public Const MAX_PATH = 260\r\n"
    "Const LIMIT As Long = MAX_PATH + 1 ' longest\r\n"
    "Const HEX_TEN = &H10\r\n"
    "Const RECT = 7\r\n"
    "Private Type RECT\r\n"
    "    Left As Long\r\n"
    "    Name As String * MAX_PATH\r\n"
    "End Type\r\n"
    "Type Outer\r\n"
    "    Inner As RECT\r\n"
    "    Unknown As Missing\r\n"
    "End Type\r\n"
    "Declare Function GetOuter Lib \"user32\" (ByVal hWnd As Long, lpOuter As Outer) As Long\r\n"
    "Declare Sub ResetAll Lib \"user32\" ()\r\n";

class CliTest : public testing::Test {
 protected:
  CliTest() {
    folder_.Put("sample.bas", kSource);
    const auto run = RunCli({"import", library_, Path("sample.bas"), "--create", "Sample"});
    EXPECT_EQ(run.status, 0) << run.err;
  }

  [[nodiscard]] std::string Path(const std::string& name) const {
    return PathText(folder_ / std::filesystem::path(std::u8string(name.begin(), name.end())));
  }
  [[nodiscard]] std::string Bytes(const std::string& name) const {
    return ContentOf(folder_ / std::filesystem::path(std::u8string(name.begin(), name.end())));
  }

  TemporaryFolder folder_;
  std::string library_ = Path("sample.api");
};

}  // namespace declarium::cli
