// --target of the commands that write declarations.
#include <gtest/gtest.h>

#include "cli/library_fixture.h"

namespace declarium::cli {
namespace {

class TargetOption : public CliTest {
 protected:
  TargetOption() {
    folder_.Put("sample.facts",
                "Declarium facts 1\n"
                "D\tresetall\t!it exists in 32 bits only\n"
                "d\tgetouter\tsample.h\tuser32\t\t\t\t\t||HWND||LongPtr\thWnd|i|HWND||LongPtr\t"
                "lpOuter|io|OUTER *||*\n"
                "d\tresetall\tsample.h\tuser32\n");
  }
};

TEST_F(TargetOption, ShowWritesTheFormOfTheTarget) {
  EXPECT_EQ(RunCli({"show", library_, "GetOuter", "--target", "vba7"}).out,
            "#If VBA7 Then\n"
            "Declare PtrSafe Function GetOuter Lib \"user32\" (ByVal hWnd As LongPtr, lpOuter As "
            "Outer) As LongPtr\n"
            "#Else\n"
            "Declare Function GetOuter Lib \"user32\" (ByVal hWnd As Long, lpOuter As Outer) As "
            "Long\n"
            "#End If\n");
  for (const char* target : {"vba7-only", "VBA7-Only", "twinbasic"}) {
    EXPECT_EQ(RunCli({"show", library_, "GetOuter", "--target", target}).out,
              "Declare PtrSafe Function GetOuter Lib \"user32\" (ByVal hWnd As LongPtr, lpOuter As "
              "Outer) As LongPtr\n");
  }
}

TEST_F(TargetOption, Vb6IsWhatTheLibraryKeeps) {
  EXPECT_EQ(RunCli({"show", library_, "GetOuter", "--target", "vb6"}).out,
            RunCli({"show", library_, "GetOuter"}).out);
}

TEST_F(TargetOption, ShowTellsWhat64BitsDoNotHaveAndGoesOn) {
  const auto run =
      RunCli({"--json", "show", library_, "ResetAll", "GetOuter", "--target", "vba7-only"});
  EXPECT_EQ(run.status, 0);
  EXPECT_TRUE(run.out.contains("\"missing\":true,\"reason\":\"it exists in 32 bits only\"}"))
      << run.out;
  EXPECT_TRUE(run.out.contains("\"name\":\"GetOuter\"")) << run.out;
}

TEST_F(TargetOption, BasketInsertAndExportWriteTheSame) {
  const std::string declaration =
      "Declare PtrSafe Function GetOuter Lib \"user32\" (ByVal hWnd As LongPtr, lpOuter As Outer) "
      "As LongPtr\r\n";
  EXPECT_TRUE(RunCli({"basket", library_, "GetOuter", "--target", "vba7-only"})
                  .out.contains("Private Declare PtrSafe Function GetOuter "));
  folder_.Put("Module1.bas", "Attribute VB_Name = \"Module1\"\r\nOption Explicit\r\n");
  const auto module = (folder_ / "Module1.bas").string();
  EXPECT_EQ(RunCli({"insert", library_, module, "GetOuter", "--target", "vba7-only"}).status, 0);
  EXPECT_EQ(ContentOf(module), "Attribute VB_Name = \"Module1\"\r\nPrivate " + declaration +
                                   "\r\nOption Explicit\r\n");
  const auto all = (folder_ / "all.bas").string();
  EXPECT_EQ(RunCli({"export", library_, all, "--target", "vba7-only"}).status, 0);
  EXPECT_TRUE(ContentOf(all).contains(declaration)) << ContentOf(all);
}

TEST_F(TargetOption, AnUnknownOneIsWrongUse) {
  EXPECT_EQ(RunCli({"show", library_, "GetOuter", "--target", "vb5"}).status, 2);
}

TEST_F(TargetOption, ALibraryWithoutFactsIsReadByNamesAndMarked) {
  std::filesystem::remove(folder_ / "sample.facts");
  EXPECT_EQ(RunCli({"show", library_, "GetOuter", "--target", "vba7-only"}).out,
            "Declare PtrSafe Function GetOuter Lib \"user32\" (ByVal hWnd As LongPtr, lpOuter As "
            "Outer) As Long ' check: hWnd is taken for an address\n");
}

TEST_F(TargetOption, ALibraryWithoutFactsIsReadByThoseThatComeWithTheProgram) {
  const auto program = folder_ / "program";
  std::filesystem::create_directories(program);
  folder_.Put("program/Win32.api", ContentOf(library_));
  folder_.Put("program/Win32.facts", ContentOf((folder_ / "sample.facts").string()));
  std::filesystem::remove(folder_ / "sample.facts");
  EXPECT_EQ(
      RunCli({"show", library_, "GetOuter", "--target", "vba7-only"}, {.program = program}).out,
      "Declare PtrSafe Function GetOuter Lib \"user32\" (ByVal hWnd As LongPtr, lpOuter As "
      "Outer) As LongPtr\n");
}

}  // namespace
}  // namespace declarium::cli
