#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "cli/library_fixture.h"

namespace declarium::cli {
namespace {

using nlohmann::json;

class ParseCommand : public CliTest {
 protected:
  // The objects behind the header.
  std::vector<json> Objects(std::string_view source, std::vector<std::string> options = {}) {
    folder_.Put("m.bas", source);
    std::vector<std::string> arguments = {"--json", "parse", Path("m.bas")};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const auto run = RunCli(arguments);
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.err, "");
    std::vector<json> objects;
    std::istringstream lines(run.out);
    for (std::string line; std::getline(lines, line);) objects.push_back(json::parse(line));
    EXPECT_EQ(objects.at(0), (json{{"declarium", 1}, {"command", "parse"}}));
    objects.erase(objects.begin());
    for (auto& object : objects) {
      EXPECT_EQ(object.at("source"), Path("m.bas"));
      object.erase("source");
    }
    return objects;
  }
};

TEST_F(ParseCommand, TellsAConstantsTypeAndValue) {
  const auto objects = Objects(
      "Private Const A As Long = &HFFFF&, B = \"x\"\r\n#If VBA7 Then\r\n  Const C = A / 2\r\n"
      "#End If\r\nConst D = Unknown\r\n");
  ASSERT_EQ(objects.size(), 4u);
  EXPECT_EQ(objects[0], json::parse(R"({"line":1,"column":1,"kind":"const","name":"A",
      "scope":"Private","condition":"","text":"Private Const A As Long = &HFFFF&, B = \"x\"",
      "type":"Long","value":65535})"));
  EXPECT_EQ(objects[1].at("type"), "String");
  EXPECT_EQ(objects[1].at("value"), "x");
  EXPECT_EQ(objects[2].at("condition"), "VBA7");
  EXPECT_EQ(objects[2].at("column"), 3);
  EXPECT_EQ(objects[2].at("value"), 32767.5);
  EXPECT_FALSE(objects[3].contains("value"));
}

TEST_F(ParseCommand, TellsADeclaresParameters) {
  const auto objects = Objects(
      "Declare Function F Lib \"k\" Alias \"#7\" (ByVal a As Double, b As Any, _\n"
      "  Optional ByVal c%) As Long\nDeclare PtrSafe Sub S Lib \"l\" ()\n");
  ASSERT_EQ(objects.size(), 2u);
  EXPECT_EQ(objects[0].at("lib"), "k");
  EXPECT_EQ(objects[0].at("entry"), "#7");
  EXPECT_EQ(objects[0].at("ptrsafe"), false);
  EXPECT_EQ(objects[0].at("result"), "Long");
  EXPECT_EQ(objects[0].at("params"), json::parse(R"([
      {"name":"a","passing":"ByVal","type":"Double","bytes":8,"optional":false},
      {"name":"b","passing":"ByRef","type":"Any","bytes":4,"optional":false},
      {"name":"c","passing":"ByVal","type":"Integer","bytes":4,"optional":true}])"));
  EXPECT_EQ(objects[1].at("entry"), "S");
  EXPECT_EQ(objects[1].at("ptrsafe"), true);
  EXPECT_EQ(objects[1].at("line"), 3);
}

TEST_F(ParseCommand, TellsWhereMembersAreForTheTarget) {
  const std::string source =
      "Type T\r\n  a As Byte\r\n  p As LongPtr\r\n  s As String * 260\r\n  d() As Long\r\n"
      "  n(1 To 3) As Integer\r\n  End Type\r\n";
  const auto vb6 = Objects(source);
  EXPECT_EQ(vb6.at(0).at("size"), 280);
  EXPECT_EQ(vb6[0].at("members"), json::parse(R"([
      {"name":"a","type":"Byte","count":1,"offset":0,"size":1},
      {"name":"p","type":"LongPtr","count":1,"offset":4,"size":4},
      {"name":"s","type":"String * 260","count":1,"offset":8,"size":260,"length":260},
      {"name":"d","type":"Long","offset":268,"size":4},
      {"name":"n","type":"Integer","count":3,"offset":272,"size":6}])"));
  EXPECT_EQ(Objects(source, {"--target", "vba7"}).at(0).at("members")[1].at("offset"), 8);
  EXPECT_EQ(Objects(source, {"--target", "twinbasic"}).at(0).at("members")[1].at("size"), 8);
}

TEST_F(ParseCommand, ARecordOfUnknownPartsHasNoSize) {
  const auto objects = Objects("Type T\na As Missing\nEnd Type\n");
  EXPECT_FALSE(objects.at(0).contains("size"));
  EXPECT_EQ(objects[0].at("members"), json::parse(R"([{"name":"a","type":"Missing"}])"));
}

TEST_F(ParseCommand, TellsEnumerationsModulesUsesAndErrors) {
  const auto objects = Objects(
      "Attribute VB_Name = \"M\"\nEnum E\n A\n B = 5\nEnd Enum\nConst = 1\nSub S()\nX = B\nEnd "
      "Sub\n",
      {"--modules", "--uses"});
  ASSERT_GE(objects.size(), 3u);
  EXPECT_EQ(objects[0].at("kind"), "module");
  EXPECT_EQ(objects[0].at("name"), "M");
  EXPECT_EQ(objects[0].at("procedures")[0].at("name"), "S");
  EXPECT_EQ(objects[1].at("kind"), "enum");
  EXPECT_EQ(objects[1].at("members"),
            json::parse(R"([{"name":"A","value":0},{"name":"B","value":5}])"));
  EXPECT_EQ(objects[2], json::parse(R"({"line":6,"column":7,"kind":"error","expected":"a name",
      "found":"="})"));
  EXPECT_EQ(objects.back(), json::parse(R"({"line":8,"column":5,"kind":"use","name":"B"})"));
}

TEST_F(ParseCommand, OneModuleUsesTheConstantsOfAnother) {
  folder_.Put("a.bas", "Public Const N = 4\n");
  folder_.Put("b.bas", "Type T\nx(1 To N) As Byte\nEnd Type\n");
  const auto run = RunCli({"--json", "parse", Path("a.bas"), Path("b.bas")});
  EXPECT_NE(run.out.find("\"size\":4"), std::string::npos) << run.out;
}

TEST_F(ParseCommand, PrintsALineADeclarationAndErrorsLikeACompiler) {
  folder_.Put("m.bas", "Type P\r\n\tx As Long\r\nEnd Type\r\n\tDeclare Sub S Libx \"k\"\r\n");
  const auto run = RunCli({"parse", Path("m.bas")});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, Path("m.bas") + ":1:1\ttype\tPublic\tP\tType P : x As Long : End Type\n");
  EXPECT_EQ(run.err, Path("m.bas") +
                         ":4:16: error: expected Lib, found Libx\n"
                         "    \tDeclare Sub S Libx \"k\"\n"
                         "    \t              ^\n");
}

TEST_F(ParseCommand, ReadsStandardInputAndRefusesMissingFiles) {
  EXPECT_EQ(RunCli({"parse", "-"}, {.input = "Const A = 1\n"}).out,
            "standard input:1:1\tconst\tPrivate\tA\tConst A = 1\n");
  EXPECT_EQ(RunCli({"parse", Path("missing.bas")}).status, 3);
  EXPECT_EQ(RunCli({"parse", "-", "--target", "vb5"}).status, 2);
}

class ParseProjects : public CliTest {
 protected:
  ParseProjects() {
    std::filesystem::create_directories(folder_ / "app");
    std::filesystem::create_directories(folder_ / "common");
    folder_.Put("common/Sizes.bas",
                "#If Wide Then\nPublic Const N = 8\n#Else\n"
                "Public Const N = 4\n#End If\n");
    folder_.Put("app/Main.cls", "Private Type T\nx(1 To N) As Byte\nEnd Type\n");
  }
};

TEST_F(ParseProjects, ReadTheModulesWithTheProjectsConstants) {
  for (const auto& [constants, size] : {std::pair("Wide = -1", 8), std::pair("Wide = 0", 4)}) {
    folder_.Put("app/App.vbp", std::string("Type=Exe\r\nModule=Sizes; ..\\Common\\SIZES.bas\r\n") +
                                   "Class=Main; Main.cls\r\nCondComp=\"" + constants + "\"\r\n");
    const auto run = RunCli({"--json", "parse", Path("app/App.vbp")});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_NE(run.out.find("\"size\":" + std::to_string(size)), std::string::npos) << run.out;
    // The file's own spelling where the system tells cases apart, otherwise the project's.
    EXPECT_THAT(run.out, testing::AnyOf(testing::HasSubstr("Sizes.bas\""),
                                        testing::HasSubstr("SIZES.bas\"")));
  }
}

TEST_F(ParseProjects, TellAMissingModuleWithTheProjectsLineAndReadTheOthers) {
  folder_.Put("app/App.vbp", "Type=Exe\r\nModule=Gone; Sub\\Gone.bas\r\nClass=Main; Main.cls\r\n");
  const auto run = RunCli({"parse", Path("app/App.vbp")});
  EXPECT_EQ(run.status, 3);
  const auto module = (folder_ / "app" / "Main.cls").make_preferred();
  EXPECT_EQ(run.out, PathText(module) +
                         ":1:1\ttype\tPrivate\tT\tPrivate Type T : x(1 To N) As Byte : End Type\n");
  EXPECT_EQ(run.err, Path("app/App.vbp") +
                         ":2:14: error: expected a file that can be read, found Sub\\Gone.bas\n"
                         "    Module=Gone; Sub\\Gone.bas\n"
                         "                 ^\n");
  const auto json_run = RunCli({"--json", "parse", Path("app/App.vbp")});
  const auto last = json_run.out.substr(json_run.out.rfind('\n', json_run.out.size() - 2) + 1);
  EXPECT_EQ(json::parse(last), (json{{"source", Path("app/App.vbp")},
                                     {"line", 2},
                                     {"column", 14},
                                     {"kind", "error"},
                                     {"expected", "a file that can be read"},
                                     {"found", "Sub\\Gone.bas"}}));
}

TEST_F(ParseProjects, OfAGroupDoNotSeeEachOther) {
  folder_.Put("app/App.vbp", "Class=Main; Main.cls\n");
  folder_.Put("common/Lib.vbp", "Module=Sizes; Sizes.bas\n");
  folder_.Put("All.vbg",
              "VBGROUP 5.0\nStartupProject=App\\App.vbp\nProject=common\\Lib.vbp\n"
              "Project=gone\\Gone.vbp\n");
  const auto run = RunCli({"--json", "parse", Path("All.vbg")});
  EXPECT_EQ(run.status, 3);
  EXPECT_NE(run.out.find("\"name\":\"N\""), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("\"name\":\"T\""), std::string::npos) << run.out;
  EXPECT_EQ(run.out.find("\"size\""), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("\"line\":4"), std::string::npos) << run.out;
}

TEST_F(ParseProjects, OfOldVersionsAndFoldersAreRead) {
  folder_.Put("app/OLD.MAK", "MAIN.CLS\r\nProjWinShow=2\r\n");
  EXPECT_NE(RunCli({"parse", Path("app/OLD.MAK")}).out.find("\ttype\tPrivate\tT\t"),
            std::string::npos);

  folder_.Put("app/A.bas", "Public Const N = 6\n");
  folder_.Put("app/notes.txt", "Public Const X = 6\n");
  const auto run = RunCli({"--json", "parse", Path("app")});
  EXPECT_EQ(run.status, 0);
  EXPECT_NE(run.out.find("\"size\":6"), std::string::npos) << run.out;
  EXPECT_EQ(run.out.find("\"X\""), std::string::npos) << run.out;
  EXPECT_LT(run.out.find("A.bas"), run.out.find("Main.cls"));

  std::filesystem::create_directory(folder_ / "empty");
  EXPECT_EQ(RunCli({"parse", Path("empty")}).status, 3);
  EXPECT_EQ(RunCli({"parse", Path("gone.vbp")}).status, 3);
}

TEST_F(ParseProjects, AreToldWithTheirModules) {
  folder_.Put("app/App.vbp",
              "Class=Main; Main.cls\nReference=*\\G{0}#2.0#0#..\\a.tlb#Automation\n"
              "CondComp=\"Wide = -1\"\nName=\"App\"\n");
  const auto run = RunCli({"--json", "parse", "--modules", Path("app/App.vbp")});
  std::istringstream lines(run.out);
  std::string line;
  std::getline(lines, line);
  std::getline(lines, line);
  EXPECT_EQ(json::parse(line), (json{{"source", Path("app/App.vbp")},
                                     {"kind", "project"},
                                     {"name", "App"},
                                     {"constants", {{"Wide", "-1"}}},
                                     {"references",
                                      {{{"line", 2},
                                        {"id", "{0}#2.0#0"},
                                        {"path", "..\\a.tlb"},
                                        {"description", "Automation"}}}}}));
  const auto text = RunCli({"parse", "--modules", Path("app/App.vbp")});
  EXPECT_TRUE(text.out.starts_with(Path("app/App.vbp") + "\tproject\tApp\t1 modules\n" +
                                   Path("app/App.vbp") + ":3:11\tconstant\tWide\t-1\n" +
                                   Path("app/App.vbp") +
                                   ":2:24\treference\t..\\a.tlb\tAutomation\n"))
      << text.out;
}

TEST_F(ParseProjects, StandBehindModulesNamedOneByOne) {
  folder_.Put("app/App.vbp", "Class=Main; Main.cls\n");
  folder_.Put("m.bas", "Public Const N = 2\n");
  folder_.Put("n.bas", "Type U\ny(1 To N) As Byte\nEnd Type\n");
  const auto run = RunCli({"--json", "parse", Path("m.bas"), Path("app/App.vbp"), Path("n.bas")});
  EXPECT_NE(run.out.find("\"size\":2"), std::string::npos) << run.out;
  EXPECT_LT(run.out.find("n.bas"), run.out.find("Main.cls"));
}

}  // namespace
}  // namespace declarium::cli
