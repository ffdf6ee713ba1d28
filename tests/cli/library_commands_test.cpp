#include <algorithm>
#include <gtest/gtest.h>

#include "cli/library_fixture.h"

namespace declarium::cli {
namespace {

using std::string_literals::operator""s;

class LibraryCommands : public CliTest {};

TEST_F(LibraryCommands, NewWritesTheTitleAndNoItems) {
  const auto run = RunCli({"new", Path("new.api"), "Okná"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "");
  const auto list = RunCli({"--json", "list", Path("new.api")});
  EXPECT_EQ(list.out, "{\"declarium\":1,\"command\":\"list\",\"title\":\"Okná\"}\n");
}

TEST_F(LibraryCommands, NewRefusesAnExistingFileUnlessForced) {
  const auto before = Bytes("sample.api");
  const auto refused = RunCli({"new", library_, "T"});
  EXPECT_EQ(refused.status, 3);
  EXPECT_NE(refused.err.find(library_), std::string::npos);
  EXPECT_NE(refused.err.find("--force"), std::string::npos);
  EXPECT_EQ(Bytes("sample.api"), before);
  EXPECT_EQ(RunCli({"new", library_, "T", "--force"}).status, 0);
  EXPECT_EQ(RunCli({"list", library_}).out, "");
}

TEST_F(LibraryCommands, ATitleWithASeparatorIsWrongUse) {
  EXPECT_EQ(RunCli({"new", Path("new.api"), "a\x02"s}).status, 2);
  EXPECT_EQ(RunCli({"rename", library_, "a\x01"s}).status, 2);
  EXPECT_FALSE(std::filesystem::exists(Path("new.api")));
}

TEST_F(LibraryCommands, NewSaysSoInJson) {
  EXPECT_EQ(RunCli({"new", Path("new.api"), "T", "--json"}).out,
            "{\"declarium\":1,\"command\":\"new\"}\n");
}

TEST_F(LibraryCommands, ListGivesNamesThatEveryCommandTakes) {
  EXPECT_EQ(RunCli({"list", library_}).out,
            "const:HEX_TEN\nconst:LIMIT\nconst:MAX_PATH\nconst:RECT\n"
            "declare:GetOuter\ndeclare:ResetAll\ntype:Outer\ntype:RECT\n");
}

TEST_F(LibraryCommands, ListKeepsToOneKind) {
  EXPECT_EQ(RunCli({"list", library_, "--kind", "TYPE"}).out, "type:Outer\ntype:RECT\n");
}

TEST_F(LibraryCommands, ListGivesStoredItemStringsInJson) {
  EXPECT_EQ(
      RunCli({"--json", "list", library_, "--kind", "const"}).out,
      "{\"declarium\":1,\"command\":\"list\",\"title\":\"Sample\"}\n"
      "{\"kind\":\"const\",\"name\":\"HEX_TEN\",\"item\":\"\\u000e&H10\"}\n"
      "{\"kind\":\"const\",\"name\":\"LIMIT\",\"item\":\"Long\\u000eMAX_PATH + 1 'longest\"}\n"
      "{\"kind\":\"const\",\"name\":\"MAX_PATH\",\"item\":\"\\u000e260\"}\n"
      "{\"kind\":\"const\",\"name\":\"RECT\",\"item\":\"\\u000e7\"}\n");
}

TEST_F(LibraryCommands, ListOfAnEmptyLibraryIsNoFailure) {
  ASSERT_EQ(RunCli({"new", Path("new.api"), "T"}).status, 0);
  EXPECT_EQ(RunCli({"list", Path("new.api")}).status, 0);
}

TEST_F(LibraryCommands, ControlCharactersInNamesStayInTheirLine) {
  folder_.Put("odd.api",
              "T\x02"
              "a\nb\x1B\x01\x01\x02\x0E"
              "1\x01\x01");
  EXPECT_EQ(RunCli({"list", Path("odd.api")}).out, "const:a\\x0Ab\\x1B\n");
}

TEST_F(LibraryCommands, ExportWritesEveryItemInTheLibrarysEncoding) {
  folder_.Put("accents.bas", "Const A = \"\xBEltý\"\r\n");
  ASSERT_EQ(RunCli({"import", library_, Path("accents.bas"), "--replace"}).status, 0);
  const auto run = RunCli({"export", library_, Path("out.bas")});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(Bytes("out.bas"), "Const A = \"\xBEltý\"");
}

TEST_F(LibraryCommands, ExportOfEverythingHasCrLfBetweenItems) {
  ASSERT_EQ(RunCli({"export", library_, Path("out.bas")}).status, 0);
  EXPECT_EQ(
      Bytes("out.bas"),
      "Const HEX_TEN = &H10\r\nConst LIMIT As Long = MAX_PATH + 1 'longest\r\n"
      "Const MAX_PATH = 260\r\nConst RECT = 7\r\n"
      "Declare Function GetOuter Lib \"user32\" (ByVal hWnd As Long, lpOuter As Outer) As Long"
      "\r\nDeclare Sub ResetAll Lib \"user32\" ()\r\n"
      "Type Outer\r\n\tInner As RECT\r\n\tUnknown As Missing\r\nEnd Type\r\n"
      "Type RECT\r\n\tLeft As Long\r\n\tName As String * MAX_PATH\r\nEnd Type");
}

TEST_F(LibraryCommands, RenameChangesTheTitleAlone) {
  const auto before = Bytes("sample.api");
  EXPECT_EQ(RunCli({"rename", library_, "Žltý kôň"}).status, 0);
  EXPECT_EQ(Bytes("sample.api"), "\x8Elt\xFD k\xF4\xF2" + before.substr(before.find('\x02')));
}

TEST_F(LibraryCommands, ATitleThatNoFileKeepsIsRefused) {
  const auto before = Bytes("sample.api");
  for (const auto& [title, name] :
       {std::pair("a\xE2\x86\x92", "→ (U+2192)"), std::pair("\x02", "\\x02 (U+0002)")}) {
    for (const auto& arguments :
         {std::vector<std::string>{"rename", library_, title},
          {"new", library_, title, "--force"},
          {"new", Path("new.api"), title},
          {"import", Path("new.api"), Path("sample.bas"), "--create", title}}) {
      const auto run = RunCli(arguments);
      EXPECT_EQ(run.status, 2);
      EXPECT_EQ(run.err, std::string("declarium-cli: a title cannot hold ") + name + "\n");
    }
  }
  EXPECT_EQ(Bytes("sample.api"), before);
  EXPECT_FALSE(std::filesystem::exists(Path("new.api")));
}

TEST_F(LibraryCommands, DeleteRemovesTheNamedItemsAndListsThem) {
  const auto run = RunCli({"delete", library_, "type:rect", "hex_ten", "HEX_TEN", "limit"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "const:HEX_TEN\nconst:LIMIT\ntype:RECT\n");
  EXPECT_EQ(RunCli({"list", library_}).out,
            "const:MAX_PATH\nconst:RECT\ndeclare:GetOuter\ndeclare:ResetAll\ntype:Outer\n");
}

TEST_F(LibraryCommands, DeleteWithAnUnknownNameDeletesNothing) {
  const auto before = Bytes("sample.api");
  const auto run = RunCli({"delete", library_, "LIMIT", "nothing_like_it"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(Bytes("sample.api"), before);
}

TEST_F(LibraryCommands, DeleteRemovesTheSpellingThatWasAskedFor) {
  const auto library =
      "T\x02"
      "FOO\0Foo\0foo\x01\x01\x02\x0E"
      "1\0\x0E"
      "2\0\x0E"
      "3\x01\x01"s;
  for (const std::string name : {"FOO", "Foo", "foo"}) {
    folder_.Put("cases.api", library);
    EXPECT_EQ(RunCli({"delete", Path("cases.api"), name}).out, "const:" + name + "\n");
    const auto left = RunCli({"list", Path("cases.api")}).out;
    EXPECT_EQ(left.find(name), std::string::npos);
    EXPECT_EQ(std::ranges::count(left, '\n'), 2);
  }
}

TEST_F(LibraryCommands, DeleteOfAnotherSpellingRemovesTheOnlyItemAndNeverOneOfSeveral) {
  const auto library =
      "T\x02"
      "FOO\0Foo\x01\x01"
      "Bar\x02\x0E"
      "1\0\x0E"
      "2\x01\x01\x0C"
      "x"s;
  folder_.Put("cases.api", library);
  const auto run = RunCli({"delete", Path("cases.api"), "fOO", "BAR"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(
      run.err,
      "declarium-cli: no item is spelled fOO exactly; which is meant: const:FOO, const:Foo?\n");
  EXPECT_EQ(Bytes("cases.api"), library);
  EXPECT_EQ(RunCli({"delete", Path("cases.api"), "BAR"}).out, "type:Bar\n");
}

TEST_F(LibraryCommands, AnExactSpellingOfALaterKindGoesBeforeAnotherSpellingOfAnEarlierOne) {
  folder_.Put("cases.api",
              "T\x02"
              "Foo\x01"
              "foo\x01"
              "FOO\x02\x0E"
              "1\x01\n\"l\"\x01\x0C"
              "x"s);
  EXPECT_EQ(RunCli({"show", Path("cases.api"), "FOO"}).out, "Type FOO\n\tx\nEnd Type\n");
  EXPECT_EQ(RunCli({"show", Path("cases.api"), "fOO"}).out, "Const Foo = 1\n");
  EXPECT_EQ(RunCli({"delete", Path("cases.api"), "FOO", "type:foo", "foo"}).out,
            "declare:foo\ntype:FOO\n");
}

TEST_F(LibraryCommands, AllSpellingsAreFoundWhereverTheLookUpLands) {
  for (int before = 0; before < 12; ++before) {
    for (int behind = 0; behind < 4; ++behind) {
      std::string names;
      for (int i = 0; i < before; ++i) names += "a" + std::to_string(10 + i) + '\0';
      names += "FOO\0FOo\0FoO\0Foo"s;
      for (int i = 0; i < behind; ++i) names += '\0' + std::string("z") + std::to_string(i);
      folder_.Put("cases.api", "T\x02" + names + "\x01\x01\x02\x01\x01");
      EXPECT_NE(RunCli({"delete", Path("cases.api"), "foo"})
                    .err.find("const:FOO, const:FOo, const:FoO, const:Foo?"),
                std::string::npos);
    }
  }
}

// The content of a file that a command is asked to write to, and what is said about it.
struct Target {
  const char* name;
  std::string bytes;
  const char* refusal;  // null when it may be replaced
};

std::vector<Target> Targets() {
  constexpr const char* kOther = "holds more than the declarations of a library";
  constexpr const char* kLibrary = "is a library";
  return {{"empty.bas", "", nullptr},
          {"export.bas", "Const A = 1\r\nType T\r\n\tx As Long\r\nEnd Type", nullptr},
          {"module.bas", "Attribute VB_Name = \"M\"\r\nOption Explicit\r\n", nullptr},
          {"code.bas", "Const A = 1\r\nSub Main()\r\nEnd Sub\r\n", kOther},
          {"notes.txt", "my notes\r\n", kOther},
          {"picture.png", "\x89PNG\r\n\x1A\n\0\0\x02"s, kOther},
          {"library.api", "T\x02\x02", kLibrary},
          {"library.bas", "Const A = 1\x02\x01\x01\x02\x01\x01", kLibrary}};
}

TEST_F(LibraryCommands, ExportBasketAndInsertReplaceNothingThatTheyDidNotWrite) {
  const std::vector<std::vector<std::string>> commands = {
      {"export", library_}, {"basket", library_, "HEX_TEN", "-o"}, {"insert", library_}};
  for (const auto& command : commands) {
    for (const auto& [name, bytes, refusal] : Targets()) {
      const bool is_insert = command.front() == "insert";
      // Into modules there is no replacing, but inserting.
      if (is_insert && std::string_view(name).ends_with(".bas")) continue;
      folder_.Put(name, bytes);
      auto arguments = command;
      arguments.push_back(Path(name));
      if (is_insert) arguments.emplace_back("HEX_TEN");
      const auto run = RunCli(arguments);
      if (refusal == nullptr) {
        EXPECT_EQ(run.status, 0) << command.front() << ' ' << name;
        EXPECT_NE(Bytes(name), bytes) << command.front() << ' ' << name;
        continue;
      }
      EXPECT_EQ(run.status, 3) << command.front() << ' ' << name;
      EXPECT_EQ(run.out, "");
      EXPECT_EQ(run.err,
                "declarium-cli: " + Path(name) + ": " + refusal + "; --force replaces it\n");
      EXPECT_EQ(Bytes(name), bytes) << command.front() << ' ' << name;
      arguments.emplace_back("--force");
      EXPECT_EQ(RunCli(arguments).status, 0) << command.front() << ' ' << name;
      EXPECT_NE(Bytes(name), bytes) << command.front() << ' ' << name;
    }
  }
}

TEST_F(LibraryCommands, AnExportReplacesItsOwnAndSoDoesABasket) {
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"export", library_, Path("out.bas")},
        std::vector<std::string>{"basket", library_, "Outer", "--closure", "-o",
                                 Path("out.bas")}}) {
    ASSERT_EQ(RunCli(arguments).status, 0);
    const auto first = Bytes("out.bas");
    EXPECT_EQ(RunCli(arguments).status, 0);
    EXPECT_EQ(Bytes("out.bas"), first);
  }
}

TEST_F(LibraryCommands, DatabasesListsPathsAndTitles) {
  const auto run = RunCli({"databases", PathText(folder_.path())});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, library_ + "\tSample\n");
}

TEST_F(LibraryCommands, DatabasesGivesObjectsInJson) {
  const auto run = RunCli({"--json", "databases", PathText(folder_.path())});
  EXPECT_EQ(run.out.substr(0, run.out.find('\n')), "{\"declarium\":1,\"command\":\"databases\"}");
  EXPECT_NE(run.out.find("\n{\"title\":\"Sample\",\"path\":\""), std::string::npos);
}

TEST_F(LibraryCommands, AFolderWithoutLibrariesIsNothingFound) {
  const TemporaryFolder empty;
  EXPECT_EQ(RunCli({"databases", PathText(empty.path())}).status, 1);
}

TEST_F(LibraryCommands, AFolderThatDoesNotExistCannotBeRead) {
  const auto run = RunCli({"databases", Path("nowhere")});
  EXPECT_EQ(run.status, 3);
  EXPECT_NE(run.err.find("nowhere"), std::string::npos);
}

}  // namespace
}  // namespace declarium::cli
