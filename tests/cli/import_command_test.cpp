#include <functional>
#include <gtest/gtest.h>
#include <sstream>
#include <utility>

#include "cli/library_fixture.h"

namespace declarium::cli {
namespace {

using std::string_literals::operator""s;

class ImportCommand : public CliTest {};

TEST_F(ImportCommand, CountsWhatWasThereWhatWasFoundAndWhatIsThere) {
  folder_.Put("more.bas", "Const EXTRA = 1\r\nConst LIMIT = 2\r\n");
  const auto run = RunCli({"import", library_, Path("more.bas")});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out,
            "const\t4 before\t2 found\t5 after\ndeclare\t2 before\t0 found\t2 after\n"
            "type\t2 before\t0 found\t2 after\n");
  EXPECT_EQ(run.err, "");
}

TEST_F(ImportCommand, CountsInJson) {
  folder_.Put("more.bas", "Const EXTRA = 1\r\nConst\r\n");
  const auto run = RunCli({"--json", "import", library_, Path("more.bas")});
  EXPECT_EQ(
      run.out.substr(0, run.out.find('\n')),
      "{\"declarium\":1,\"command\":\"import\",\"before\":{\"const\":4,\"declare\":2,\"type\":2}"
      ",\"found\":{\"const\":1,\"declare\":0,\"type\":0}"
      ",\"after\":{\"const\":5,\"declare\":2,\"type\":2},\"encodings\":[\"windows-1250\"]}");
  EXPECT_NE(run.out.find("more.bas\",\"line\":2,\"reason\":\"too few words for a declaration\"}\n"),
            std::string::npos);
  EXPECT_EQ(run.err, "");
}

TEST_F(ImportCommand, ReportsSkippedLinesWithFileLineTextAndReason) {
  folder_.Put("bad.bas", "Const A = _\r\n 1\r\nDeclare Sub\r\nConst  X = 1\r\n");
  const auto run = RunCli({"import", library_, Path("bad.bas"), "--reading", "literal"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.err,
            Path("bad.bas") + ":3: skipped, too few words for a declaration: Declare Sub\n" +
                Path("bad.bas") + ":4: skipped, no name where it is expected: Const  X = 1\n");
}

constexpr std::string_view kUneven =
    "Const  X = 1\r\nType P\r\n  a As Long\r\n  End Type\r\nConst Y =2\r\n";

TEST_F(ImportCommand, StoresAndReportsWhatTheLiteralRulesWouldBend) {
  folder_.Put("m.bas", kUneven);
  const auto run = RunCli({"import", library_, "--replace", Path("m.bas")});
  const auto report = [&](const std::string& place_and_name) {
    const auto at = place_and_name.find(' ');
    return Path("m.bas") + place_and_name.substr(0, at) +
           ": differs, taken as Visual Basic reads it: " + place_and_name.substr(at + 1) + "\n";
  };
  EXPECT_EQ(run.err, report(":1:1 const:X") + report(":2:1 type:P") + report(":5:1 const:Y"));
  EXPECT_EQ(RunCli({"show", library_, "X", "P", "Y"}).out,
            "Const X = 1\nType P\n\ta As Long\nEnd Type\nConst Y = 2\n");
}

TEST_F(ImportCommand, ReportsDifferencesInJson) {
  folder_.Put("m.bas", kUneven);
  const auto run = RunCli({"--json", "import", library_, Path("m.bas")});
  EXPECT_NE(run.out.find("m.bas\",\"line\":5,\"column\":1,\"reason\":\"differs\","
                         "\"kind\":\"const\",\"name\":\"Y\"}\n"),
            std::string::npos)
      << run.out;
}

TEST_F(ImportCommand, LiteralReadingStoresWhatTheLinesHold) {
  folder_.Put("m.bas", kUneven);
  const auto run = RunCli({"import", library_, "--replace", Path("m.bas"), "--reading", "literal"});
  EXPECT_EQ(run.err, Path("m.bas") + ":1: skipped, no name where it is expected: Const  X = 1\n");
  EXPECT_EQ(RunCli({"show", library_, "P"}).out,
            "Type P\n\ta As Long\n\tEnd Type\n\tConst Y =2\n\t\nEnd Type\n");
}

TEST_F(ImportCommand, ReplaceDropsTheLibraryAndKeepsAllSources) {
  folder_.Put("a.bas", "Const A = 1\r\n");
  folder_.Put("b.bas", "Const B = 1\r\n");
  EXPECT_EQ(RunCli({"import", library_, "--replace", Path("a.bas"), Path("b.bas")}).status, 0);
  EXPECT_EQ(RunCli({"list", library_}).out, "const:A\nconst:B\n");
}

TEST_F(ImportCommand, ReplaceWithoutDeclarationsEmptiesTheLibrary) {
  folder_.Put("none.bas", "Option Explicit\r\n");
  EXPECT_EQ(RunCli({"import", library_, "--replace", Path("none.bas")}).status, 0);
  EXPECT_EQ(RunCli({"list", library_}).out, "");
}

TEST_F(ImportCommand, ReadsStandardInput) {
  EXPECT_EQ(RunCli({"import", library_, "-", "--replace"}, {.input = "Const Z = 1\n"}).status, 0);
  EXPECT_EQ(RunCli({"list", library_}).out, "const:Z\n");
}

TEST_F(ImportCommand, NamesStandardInputInReports) {
  const auto run = RunCli({"import", library_, "-"}, {.input = "Type\n"});
  EXPECT_EQ(run.err, "standard input:1: skipped, too few words for a declaration: Type\n");
}

TEST_F(ImportCommand, AMissingLibraryNeedsATitle) {
  const auto run = RunCli({"import", Path("other.api"), Path("sample.bas")});
  EXPECT_EQ(run.status, 3);
  EXPECT_NE(run.err.find("other.api"), std::string::npos);
  EXPECT_NE(run.err.find("--create"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(Path("other.api")));
}

TEST_F(ImportCommand, CreateKeepsAnExistingLibraryAndItsTitle) {
  folder_.Put("a.bas", "Const A = 1\r\n");
  ASSERT_EQ(RunCli({"import", library_, Path("a.bas"), "--create", "Other"}).status, 0);
  const auto list = RunCli({"--json", "list", library_}).out;
  EXPECT_NE(list.find("\"title\":\"Sample\""), std::string::npos);
  EXPECT_NE(list.find("\"name\":\"LIMIT\""), std::string::npos);
}

TEST_F(ImportCommand, AnUnreadableSourceChangesNothing) {
  const auto before = Bytes("sample.api");
  folder_.Put("a.bas", "Const A = 1\r\n");
  const auto run = RunCli({"import", library_, Path("a.bas"), Path("missing.bas")});
  EXPECT_EQ(run.status, 3);
  EXPECT_NE(run.err.find("missing.bas"), std::string::npos);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(Bytes("sample.api"), before);
}

TEST_F(ImportCommand, AnItemThatWouldTearTheLibraryApartIsLeftOutAlone) {
  folder_.Put("a.bas", "Const A = 1\x02\r\nConst B = 2\r\nType T\r\n x As Long\r\n C\0D\r\n"s);
  for (const std::string reading : {"vb", "literal"}) {
    const auto run = RunCli({"import", library_, "--replace", Path("a.bas"), "--reading", reading});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, Path("a.bas") +
                           ":1: skipped, a character 0, 1 or 2, which no library can keep, "
                           "\\x02 (U+0002) at 1:12: Const A = 1\\x02\n" +
                           Path("a.bas") +
                           ":3: skipped, a character 0, 1 or 2, which no library can keep, "
                           "\\x00 (U+0000) at 5:3: Type T\n")
        << reading;
    EXPECT_EQ(RunCli({"list", library_}).out, "const:B\n");
  }
}

TEST_F(ImportCommand, ReadsEveryEncodingThatItRecognizes) {
  folder_.Put("a.bas", "Const A = \"\xC4\x8D\"\r\n");
  folder_.Put("b.bas",
              "\xEF\xBB\xBF"
              "Const B = 1\r\n");
  folder_.Put("c.bas",
              "\xFF\xFE"
              "C\0o\0n\0s\0t\0 \0C\0 \0=\0 \0\x0D\x01"s);
  folder_.Put("d.bas",
              "\xFE\xFF"
              "\0C\0o\0n\0s\0t\0 \0D\0 \0=\0 \x01\x0D"s);
  folder_.Put("e.bas", "Const E = \"\xE8\"\r\n");
  for (const std::string reading : {"vb", "literal"}) {
    const auto run = RunCli({"import", library_, "--replace", Path("a.bas"), Path("b.bas"),
                             Path("c.bas"), Path("d.bas"), Path("e.bas"), "--reading", reading});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, Path("a.bas") + ": read as utf-8\n" + Path("b.bas") + ": read as utf-8\n" +
                           Path("c.bas") + ": read as utf-16le\n" + Path("d.bas") +
                           ": read as utf-16be\n");
    EXPECT_EQ(Bytes("sample.api"),
              "Sample\x02"
              "A\0B\0C\0D\0E\x01\x01\x02"
              "\x0E\"\xE8\"\0\x0E"
              "1\0\x0E\xE8\0\x0E\xE8\0\x0E\"\xE8\"\x01\x01"s);
  }
}

TEST_F(ImportCommand, EncodingNamesTheCodePageOfSourcesThatDoNotTell) {
  folder_.Put("a.bas", "Const A = \"\xE8\"\r\n");      // "è" in windows-1252
  folder_.Put("b.bas", "Const B = \"\xC4\x8D\"\r\n");  // UTF-8 all the same
  const auto run =
      RunCli({"--json", "import", library_, Path("a.bas"), Path("b.bas"), "--encoding", "CP1252"});
  EXPECT_EQ(run.status, 0);
  EXPECT_NE(run.out.find(",\"encodings\":[\"windows-1252\",\"utf-8\"]}\n"), std::string::npos);
  EXPECT_NE(run.out.find(
                "a.bas\",\"line\":1,\"reason\":\"a character that the library's code page does "
                "not have\",\"character\":\"è\",\"character_line\":1,\"character_column\":12}\n"),
            std::string::npos)
      << run.out;
  EXPECT_EQ(RunCli({"list", library_, "--kind", "const"}).out,
            "const:B\nconst:HEX_TEN\nconst:LIMIT\nconst:MAX_PATH\nconst:RECT\n");
}

TEST_F(ImportCommand, EncodingNamesUtf16WithoutAMark) {
  folder_.Put("a.bas", "C\0o\0n\0s\0t\0 \0A\0 \0=\0 \0\x0D\x01"s);
  EXPECT_EQ(RunCli({"import", library_, "--replace", Path("a.bas"), "--encoding", "utf-16le"}).err,
            Path("a.bas") + ": read as utf-16le\n");
  EXPECT_EQ(RunCli({"show", library_, "A"}).out, "Const A = č\n");
}

TEST_F(ImportCommand, AnUnknownEncodingIsAnErrorThatListsTheKnownOnes) {
  const auto before = Bytes("sample.api");
  const auto run = RunCli({"import", library_, Path("sample.bas"), "--encoding", "shift_jis"});
  EXPECT_EQ(run.status, 2);
  EXPECT_NE(run.err.find("shift_jis is none of windows-874, windows-1250, "), std::string::npos);
  EXPECT_EQ(Bytes("sample.api"), before);
}

TEST_F(ImportCommand, ACharacterOfACommentIsReplacedAndReported) {
  folder_.Put("a.bas", "Const A = 1 'x\xE2\x86\x92\r\n");
  const auto run = RunCli({"import", library_, Path("a.bas")});
  EXPECT_EQ(run.err, Path("a.bas") + ": read as utf-8\n" + Path("a.bas") +
                         ":1:15: a character of a comment that the library's code page does not "
                         "have became \"?\": → (U+2192)\n");
  EXPECT_EQ(RunCli({"show", library_, "A"}).out, "Const A = 1 'x?\n");
  const auto json = RunCli({"--json", "import", library_, Path("a.bas")}).out;
  EXPECT_NE(json.find("a.bas\",\"line\":1,\"reason\":\"a character of a comment that the library's "
                      "code page does not have became \\\"?\\\"\",\"character\":\"→\","
                      "\"character_line\":1,\"character_column\":15}\n"),
            std::string::npos)
      << json;
}

// Standard input that lets somebody else into the library's folder while it is read.
class SourceWithCompany : public std::stringbuf {
 public:
  SourceWithCompany(const std::string& source, std::function<void()> company)
      : std::stringbuf(source), company_(std::move(company)) {}

 private:
  std::streamsize xsgetn(char* out, std::streamsize count) override {
    if (auto company = std::exchange(company_, nullptr)) company();
    return std::stringbuf::xsgetn(out, count);
  }
  std::function<void()> company_;
};

class ImportWithCompany : public ImportCommand {
 protected:
  int Import(const std::vector<std::string>& arguments, std::function<void()> company) {
    SourceWithCompany source("Const OURS = 1\r\n", std::move(company));
    std::istream in(&source);
    std::ostringstream out;
    std::ostringstream err;
    Streams streams{in, out, err};
    const int status = RunCommandLine(arguments, streams);
    err_ = err.str();
    return status;
  }
  std::string err_;
};

TEST_F(ImportWithCompany, WhatSomebodyElseWroteMeanwhileIsNotReplaced) {
  const auto theirs = "Theirs\x02\x02"s;
  const auto company = [&] { folder_.Put("sample.api", theirs); };
  EXPECT_EQ(Import({"import", library_, "-"}, company), 3);
  EXPECT_EQ(err_, "declarium-cli: " + library_ +
                      ": was changed by somebody else since it was read; --force replaces it\n");
  EXPECT_EQ(Bytes("sample.api"), theirs);
  EXPECT_EQ(Import({"import", library_, "-"}, [&] { folder_.Put("sample.api", "x\x02\x02"); }), 3);
  EXPECT_EQ(Import({"import", library_, "-", "--force"}, company), 0);
  EXPECT_EQ(RunCli({"list", library_}).out, "const:OURS\n");
}

TEST_F(ImportWithCompany, TheSameBytesWrittenAgainAreNoChange) {
  const auto same = Bytes("sample.api");
  EXPECT_EQ(Import({"import", library_, "-"}, [&] { folder_.Put("sample.api", same); }), 0);
}

TEST_F(ImportWithCompany, ALibraryMadeByTwoAtOnceStaysThatOfTheFirst) {
  const auto company = [&] { folder_.Put("new.api", "Theirs\x02\x02"); };
  EXPECT_EQ(Import({"import", Path("new.api"), "-", "--create", "Ours"}, company), 3);
  EXPECT_NE(err_.find("made by somebody else"), std::string::npos);
  EXPECT_EQ(Bytes("new.api"), "Theirs\x02\x02");
}

TEST_F(ImportCommand, ControlCharactersOutsideDeclarationsDoNoHarm) {
  folder_.Put("a.bas", "' \x01\r\nConst A = 1\r\n"s);
  EXPECT_EQ(RunCli({"import", library_, Path("a.bas")}).status, 0);
}

TEST_F(ImportCommand, ProgressIsShownOnATerminalOnlyAndRemoved) {
  const auto quiet = RunCli({"import", library_, Path("sample.bas")});
  EXPECT_EQ(quiet.err, "");
  const auto terminal = RunCli({"import", library_, Path("sample.bas")}, {.err_is_terminal = true});
  EXPECT_NE(terminal.err.find("importing "), std::string::npos);
  EXPECT_TRUE(terminal.err.ends_with("\r\x1B[K"));
}

TEST_F(ImportCommand, ImportingTwiceGivesTheSameFile) {
  const auto before = Bytes("sample.api");
  ASSERT_EQ(RunCli({"import", library_, Path("sample.bas")}).status, 0);
  EXPECT_EQ(Bytes("sample.api"), before);
}

TEST_F(ImportCommand, SaysThatPtrSafeIsDroppedAndThatMembersBecomeConstants) {
  folder_.Put("p.bas", "Declare PtrSafe Sub S Lib \"k\" ()\r\nEnum E\r\n M\r\nEnd Enum\r\n");
  const auto run = RunCli({"import", library_, Path("p.bas")});
  EXPECT_EQ(run.err, Path("p.bas") +
                         ":1:1: differs, taken as Visual Basic reads it: declare:S (PtrSafe is "
                         "dropped)\n" +
                         Path("p.bas") +
                         ":3:2: differs, taken as Visual Basic reads it: const:M (a member of an "
                         "Enum becomes a constant)\n");
  const auto json_run = RunCli({"--json", "import", library_, Path("p.bas")});
  EXPECT_NE(json_run.out.find("\"name\":\"S\",\"note\":\"PtrSafe is dropped\"}"), std::string::npos)
      << json_run.out;
  EXPECT_EQ(RunCli({"show", library_, "S"}).out, "Declare Sub S Lib \"k\" ()\n");
}

}  // namespace
}  // namespace declarium::cli
