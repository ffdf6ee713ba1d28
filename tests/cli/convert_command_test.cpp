#include <gtest/gtest.h>
#include <regex>

#include "cli/library_fixture.h"
#include "cli/line_difference.h"

namespace declarium::cli {
namespace {

constexpr const char* kModule =
    "Attribute VB_Name = \"Module1\"\r\n"
    "Option Explicit\r\n"
    "Declare Function GetOuter Lib \"user32\" (ByVal hWnd As Long, lpOuter As Outer) As Long\r\n"
    "\r\n"
    "Sub Main()\r\n"
    "  Dim h As Long, o As Outer\r\n"
    "  h = GetOuter(0, o)\r\n"
    "End Sub\r\n";

constexpr const char* kConverted =
    "Attribute VB_Name = \"Module1\"\r\n"
    "Option Explicit\r\n"
    "#If VBA7 Then\r\n"
    "Declare PtrSafe Function GetOuter Lib \"user32\" (ByVal hWnd As LongPtr, lpOuter As Outer) As "
    "LongPtr\r\n"
    "#Else\r\n"
    "Declare Function GetOuter Lib \"user32\" (ByVal hWnd As Long, lpOuter As Outer) As Long\r\n"
    "#End If\r\n"
    "\r\n"
    "Sub Main()\r\n"
    "  Dim h As Long, o As Outer\r\n"
    "  h = GetOuter(0, o)\r\n"
    "End Sub\r\n";

class ConvertCommand : public CliTest {
 protected:
  ConvertCommand() {
    folder_.Put("sample.facts",
                "Declarium facts 1\n"
                "d\tgetouter\tsample.h\tuser32\t\t\t\t\t||HWND||LongPtr\thWnd|i|HWND||LongPtr\t"
                "lpOuter|io|OUTER *||*\n");
    std::filesystem::create_directory(folder_ / "project");
    folder_.Put("project/Module1.bas", kModule);
    folder_.Put("project/Module2.bas", "Const A = 1\r\n");
    folder_.Put("project/Project1.vbp",
                "Module=Module1; Module1.bas\r\nModule=Module2; Module2.bas\r\n");
    module_ = (folder_ / "project" / "Module1.bas").string();
    project_ = (folder_ / "project" / "Project1.vbp").string();
  }

  [[nodiscard]] CliRun Convert(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {"convert"});
    arguments.insert(arguments.end(), {"--target", "vba7", "--against", library_});
    return RunCli(arguments);
  }

  std::string module_;
  std::string project_;
};

TEST_F(ConvertCommand, WithoutAPlaceToWriteToItReportsOnly) {
  const auto run = Convert({module_});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, module_ + ":3: declare GetOuter: PtrSafe; LongPtr for hWnd, the result\n" +
                         module_ + ":7: look at h: GetOuter gives an address, h is a Long\n");
  EXPECT_EQ(ContentOf(module_), kModule);
}

TEST_F(ConvertCommand, InPlaceChangesWhatDiffersAndTwiceGivesTheSame) {
  const auto other = (folder_ / "project/Module2.bas").string();
  EXPECT_EQ(Convert({project_, "--in-place"}).status, 0);
  EXPECT_EQ(ContentOf(module_), kConverted);
  EXPECT_EQ(ContentOf(other), "Const A = 1\r\n");
  const auto again = Convert({project_, "--in-place"});
  EXPECT_EQ(again.status, 0);
  EXPECT_EQ(ContentOf(module_), kConverted);
  EXPECT_EQ(again.out, module_ + ":11: look at h: GetOuter gives an address, h is a Long\n");
}

TEST_F(ConvertCommand, AFolderGetsEveryModuleAndTheSourcesStay) {
  const auto out = (folder_ / "new").string();
  EXPECT_EQ(Convert({project_, "-o", out}).status, 0);
  EXPECT_EQ(ContentOf(folder_ / "new/Module1.bas"), kConverted);
  EXPECT_EQ(ContentOf(folder_ / "new/Module2.bas"), "Const A = 1\r\n");
  EXPECT_EQ(ContentOf(module_), kModule);
}

TEST_F(ConvertCommand, AnotherFileInTheFolderStaysUnlessForced) {
  std::filesystem::create_directory(folder_ / "new");
  folder_.Put("new/Module2.bas", "mine");
  const auto out = (folder_ / "new").string();
  EXPECT_EQ(Convert({project_, "-o", out}).status, 3);
  EXPECT_EQ(ContentOf(folder_ / "new/Module2.bas"), "mine");
  EXPECT_FALSE(std::filesystem::exists(folder_ / "new/Module1.bas"));
  EXPECT_EQ(Convert({project_, "-o", out, "--force"}).status, 0);
  EXPECT_EQ(ContentOf(folder_ / "new/Module2.bas"), "Const A = 1\r\n");
}

TEST_F(ConvertCommand, DiffPrintsAPatchAndEndsWith1) {
  const auto run = Convert({project_, "--diff"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(
      run.out,
      "--- " + module_ + "\n+++ " + module_ +
          "\n"
          "@@ -1,6 +1,10 @@\n"
          " Attribute VB_Name = \"Module1\"\n"
          " Option Explicit\n"
          "-Declare Function GetOuter Lib \"user32\" (ByVal hWnd As Long, lpOuter As Outer) As "
          "Long\n"
          "+#If VBA7 Then\n"
          "+Declare PtrSafe Function GetOuter Lib \"user32\" (ByVal hWnd As LongPtr, lpOuter As "
          "Outer) As LongPtr\n"
          "+#Else\n"
          "+Declare Function GetOuter Lib \"user32\" (ByVal hWnd As Long, lpOuter As Outer) As "
          "Long\n"
          "+#End If\n"
          " \n"
          " Sub Main()\n"
          "   Dim h As Long, o As Outer\n");
  EXPECT_EQ(ContentOf(module_), kModule);
  EXPECT_EQ(Convert({project_, "--in-place"}).status, 0);
  const auto again = Convert({project_, "--diff"});
  EXPECT_EQ(again.status, 0);
  EXPECT_EQ(again.out, "");
}

TEST_F(ConvertCommand, JsonHasAnObjectForEachChangeAndEachPlace) {
  const auto source = std::regex_replace(module_, std::regex(R"(\\)"), R"(\\)");
  auto arguments = std::vector<std::string>{"--json",    "convert",   module_, "--target",
                                            "vba7-only", "--against", library_};
  EXPECT_EQ(
      RunCli(arguments).out,
      "{\"declarium\":1,\"command\":\"convert\",\"target\":\"vba7-only\"}\n"
      "{\"source\":\"" +
          source +
          "\",\"line\":3,\"name\":\"GetOuter\",\"change\":\"declare\",\"reason\":\"PtrSafe; "
          "LongPtr "
          "for hWnd, the result\","
          "\"before\":\"Declare Function GetOuter Lib \\\"user32\\\" (ByVal hWnd As Long, lpOuter "
          "As Outer) As Long\",\"after\":\"Declare PtrSafe Function GetOuter Lib "
          "\\\"user32\\\" (ByVal hWnd As LongPtr, lpOuter As Outer) As LongPtr\",\"guess\":false}\n"
          "{\"source\":\"" +
          source +
          "\",\"line\":7,\"name\":\"h\",\"change\":\"call\",\"reason\":\"GetOuter gives an "
          "address, h is a Long\",\"before\":\"h = GetOuter(0, o)\",\"after\":\"\",\"guess\":"
          "false}\n");
}

TEST_F(ConvertCommand, BytesThatAreNoTextOfTheModulesEncodingStay) {
  const std::string bytes = "\xFF\xFE" + std::string("D");
  folder_.Put("project/Torn.bas", bytes);
  const auto torn = (folder_ / "project/Torn.bas").string();
  EXPECT_EQ(Convert({torn, "-o", (folder_ / "new").string()}).status, 3);
  EXPECT_EQ(ContentOf(torn), bytes);
}

TEST_F(ConvertCommand, TheBundledLibrariesAreThoseBesideTheProgram) {
  const auto folder = std::filesystem::path(library_).parent_path();
  EXPECT_TRUE(RunCli({"convert", module_, "--target", "vba7"}, {.program = folder})
                  .out.contains("look at h"));
  std::filesystem::create_directories(folder_ / "usr/share/declarium-cli");
  std::filesystem::rename(library_, folder_ / "usr/share/declarium-cli/sample.api");
  std::filesystem::rename(folder_ / "sample.facts",
                          folder_ / "usr/share/declarium-cli/sample.facts");
  EXPECT_TRUE(RunCli({"convert", module_, "--target", "vba7"}, {.program = folder_ / "usr/bin"})
                  .out.contains("look at h"));
  EXPECT_FALSE(RunCli({"convert", module_, "--target", "vba7"}).out.contains("look at h"));
}

TEST_F(ConvertCommand, WrongUseIsTold) {
  EXPECT_EQ(RunCli({"convert", module_}).status, 2);
  EXPECT_EQ(Convert({module_, "--in-place", "--diff"}).status, 2);
  EXPECT_EQ(Convert({module_, "--in-place", "-o", "x"}).status, 2);
  EXPECT_EQ(Convert({(folder_ / "none.bas").string()}).status, 3);
  EXPECT_EQ(RunCli({"convert", module_, "--target", "vba7", "--against", module_}).status, 3);
}

TEST(UnifiedDifference, JoinsChangesThatAreNear) {
  const std::u16string text = u"a\nb\nc\nd\ne\nf\ng\nh\ni\nj\nk\nl\n";
  const std::vector<Replacement> near = {{2, 4, u"B\n"}, {14, 16, u"H\nHH\n"}};
  EXPECT_EQ(
      UnifiedDifference("x", text, near),
      "--- x\n+++ x\n@@ -1,11 +1,12 @@\n a\n-b\n+B\n c\n d\n e\n f\n g\n-h\n+H\n+HH\n i\n j\n "
      "k\n");
  const std::vector<Replacement> far = {{2, 4, u""}, {20, 22, u"K"}};
  EXPECT_EQ(
      UnifiedDifference("x", text, far),
      "--- x\n+++ x\n@@ -1,5 +1,4 @@\n a\n-b\n c\n d\n e\n@@ -8,5 +7,5 @@\n h\n i\n j\n-k\n+K\n\\ "
      "No newline at end of file\n l\n");
  EXPECT_EQ(UnifiedDifference("x", text, {}), "");
}

}  // namespace
}  // namespace declarium::cli
