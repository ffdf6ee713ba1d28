#include <gtest/gtest.h>
#include <regex>
#include <set>

#include "cli/run_cli.h"

#include "support/golden.h"
#include "support/temporary_folder.h"

namespace declarium::cli {
namespace {

const std::filesystem::path kSourceFolder = DECLARIUM_SOURCE_DIR;
const std::vector<std::string> kCommands = {
    "new",    "list",  "export", "rename",   "delete",   "databases", "import", "show",
    "shared", "facts", "find",   "complete", "search",   "basket",    "insert", "missing",
    "parse",  "check", "audit",  "convert",  "generate", "history",   "restore"};

TEST(CommandLine, HelpListsEveryCommandAndShowsAnExample) {
  const auto run = RunCli({"--help"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.err, "");
  for (const auto& command : kCommands) {
    EXPECT_NE(run.out.find("\n  " + command + " "), std::string::npos) << command;
  }
  ExpectGoldenFile(kSourceFolder / "tests/cli/golden/help.golden", run.out);
}

TEST(CommandLine, EveryCommandHasHelpWithAnExample) {
  std::string all;
  for (const auto& command : kCommands) {
    const auto run = RunCli({command, "--help"});
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.out.find("Example:\n  declarium-cli " + command + " "), std::string::npos);
    all += run.out + "\n";
  }
  ExpectGoldenFile(kSourceFolder / "tests/cli/golden/command-help.golden", all);
}

TEST(CommandLine, VersionIsTheProjects) {
  const auto run = RunCli({"--version"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "declarium-cli " DECLARIUM_PROJECT_VERSION "\n");
}

TEST(CommandLine, WrongUseIsStatusTwoAndPointsToTheHelp) {
  const std::vector<std::string> cases[] = {
      {},
      {"frobnicate"},
      {"list"},
      {"list", "a.api", "extra"},
      {"list", "a.api", "--nonsense"},
      {"list", "a.api", "--color", "green"},
      {"--json"},
  };
  for (const auto& arguments : cases) {
    const auto run = RunCli(arguments);
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_NE(run.err.find("--help"), std::string::npos);
  }
}

TEST(CommandLine, AWriteToABrokenOutputIsReported) {
  std::istringstream in;
  std::ostringstream out;
  std::ostringstream err;
  out.setstate(std::ios::badbit);
  Streams streams{in, out, err};
  EXPECT_EQ(RunCommandLine(std::vector<std::string>{"--version"}, streams), 3);
  EXPECT_EQ(err.str(), "declarium-cli: standard output: cannot be written\n");
}

// Every command and option that the help names.
std::set<std::string> WordsOfHelp() {
  std::set<std::string> words(kCommands.begin(), kCommands.end());
  std::string help = RunCli({"--help"}).out;
  for (const auto& command : kCommands) help += RunCli({command, "--help"}).out;
  const std::regex option("\\n  (-[a-z],)?(--[a-z-]+)");
  for (std::sregex_iterator found(help.begin(), help.end(), option), end; found != end; ++found) {
    words.insert((*found)[2]);
  }
  return words;
}

TEST(Completions, NameEveryCommandAndOption) {
  const auto words = WordsOfHelp();
  EXPECT_GT(words.size(), 30u);
  for (const std::string script : {"declarium-cli.bash", "declarium-cli.ps1"}) {
    const auto text = ContentOf(kSourceFolder / "src/cli/completions" / script);
    for (const auto& word : words) {
      const std::regex whole("(^|[^a-z-])" + word + "($|[^a-z-])");
      EXPECT_TRUE(std::regex_search(text, whole)) << script << " lacks " << word;
    }
  }
}

TEST(Completions, OfferEachCommandItsOwnOptions) {
  const std::regex option("\\n  (-[a-z],)?(--[a-z-]+)");
  const auto bash = ContentOf(kSourceFolder / "src/cli/completions/declarium-cli.bash");
  for (const auto& command : kCommands) {
    const auto help = RunCli({command, "--help"}).out;
    const auto arm = bash.find(" " + command + ")");
    const auto shared_arm = arm == bash.npos ? bash.find(command + " | ") : arm;
    const auto line_end = bash.find(";;", shared_arm);
    const auto line = bash.substr(shared_arm, line_end - shared_arm);
    for (std::sregex_iterator found(help.begin(), help.end(), option), end; found != end; ++found) {
      if ((*found)[2] == "--help") continue;
      EXPECT_NE(line.find((*found)[2]), std::string::npos) << command << ' ' << (*found)[2];
    }
  }
}

TEST(MainJob, WorksOnTheExampleModules) {
  const TemporaryFolder folder;
  const auto library = (folder / "Shell.api").string();
  const auto shell = (kSourceFolder / "examples/WinShell.bas").string();
  std::string all;
  const auto step = [&](const std::vector<std::string>& arguments) {
    const auto run = RunCli(arguments);
    EXPECT_EQ(run.status, 0) << arguments[0];
    all += run.out + run.err + "\n";
  };
  step({"import", library, shell, "--create", "Okná"});
  step({"find", library, "Get*Window*", "--kind", "declare"});
  step({"show", library, "NOTIFYICONDATA", "KEY_READ", "SetWindowPos"});
  step({"--json", "show", library, "WINDOWPLACEMENT"});
  step({"shared", library, "WindowHistory", "--closure"});
  step({"search", library, "--type", "LOGFONT", "--const", "LF_FACESIZE"});
  step({"basket", library, "Shell_NotifyIcon", "NIF_ALL", "WindowRecord", "--closure"});
  step({"--json", "list", library, "--kind", "type"});
  ExpectGoldenFile(kSourceFolder / "tests/cli/golden/main-job.golden", all);
}

}  // namespace
}  // namespace declarium::cli
