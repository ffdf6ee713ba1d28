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
      ",\"after\":{\"const\":5,\"declare\":2,\"type\":2}}");
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

TEST_F(ImportCommand, AnItemThatWouldTearTheLibraryApartChangesNothing) {
  const auto before = Bytes("sample.api");
  folder_.Put("a.bas", "Const A = 1\x02\r\n"s);
  folder_.Put("b.bas", "Const A\0B = 1\r\n"s);
  for (const std::string source : {"a.bas", "b.bas"}) {
    const auto run = RunCli({"import", library_, Path(source)});
    EXPECT_EQ(run.status, 3);
    EXPECT_NE(run.err.find(source), std::string::npos);
  }
  EXPECT_EQ(Bytes("sample.api"), before);
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
