#include "bench/process_benchmark.h"

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "bench/generated_library.h"
#include "library/library_file.h"
#include "text/text.h"

namespace declarium::bench {
namespace {

using Command = std::vector<std::string>;

// Runs the command with its output thrown away; its exit status, or -1 when it cannot be run.
int Run(const Command& command) {
  std::vector<char*> arguments;
  for (const auto& argument : command) arguments.push_back(const_cast<char*>(argument.c_str()));
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t process = 0;
  const int failed =
      posix_spawnp(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  int status = 0;
  if (failed != 0 || waitpid(process, &status, 0) != process || !WIFEXITED(status)) return -1;
  return WEXITSTATUS(status);
}

void Measure(benchmark::State& state, const Command& command, const std::filesystem::path& made) {
  for (auto _ : state) {
    std::error_code ignored;
    std::filesystem::remove(made, ignored);
    if (Run(command) != 0) {
      state.SkipWithError((command[0] + " failed").c_str());
      break;
    }
  }
}

// `made` is a file that the command makes, if any; it is removed before every round.
void RegisterCommand(const std::string& name, const Command& command,
                     const std::filesystem::path& made = {}) {
  const auto measure = [=](benchmark::State& state) { Measure(state, command, made); };
  benchmark::RegisterBenchmark(name.c_str(), measure)->UseRealTime()->Unit(benchmark::kMillisecond);
}

// Processor time of all processes that have ended, in seconds.
double ChildrensSeconds() {
  rusage usage = {};
  getrusage(RUSAGE_CHILDREN, &usage);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

// 1 says that something was found.
void RegisterProcessor(const std::string& name, const Command& command) {
  const auto measure = [=](benchmark::State& state) {
    for (auto _ : state) {
      const auto before = ChildrensSeconds();
      const auto status = Run(command);
      if (status != 0 && status != 1) {
        state.SkipWithError((command[0] + " failed").c_str());
        break;
      }
      state.SetIterationTime(ChildrensSeconds() - before);
    }
  };
  benchmark::RegisterBenchmark(name.c_str(), measure)
      ->UseManualTime()
      ->Unit(benchmark::kMillisecond);
}

}  // namespace

void RegisterProjectBenchmarks(const BenchmarkFiles& files, const std::filesystem::path& tool,
                               const std::filesystem::path& data, std::size_t lines) {
  const auto suffix = "/" + std::to_string(lines);
  const auto folder = files.Project(lines, data / "Win32.api");
  Command against;
  for (const auto& entry : std::filesystem::directory_iterator(data)) {
    if (entry.path().extension() == ".api")
      against.insert(against.end(), {"--against", entry.path()});
  }
  Command check = {tool, "check", folder / "Program.vbp"};
  check.insert(check.end(), against.begin(), against.end());
  Command convert = {tool, "convert", folder / "Program.vbp", "--target", "vba7"};
  convert.insert(convert.end(), against.begin(), against.end());
  RegisterProcessor("ctags_project" + suffix,
                    {"ctags", "--languages=Basic", "-f", "/dev/null", "-R", folder});
  RegisterProcessor("check" + suffix, check);
  RegisterProcessor("convert" + suffix, convert);
  Command audit = {tool, "audit", folder / "Program.vbp"};
  audit.insert(audit.end(), against.begin(), against.end());
  RegisterProcessor("audit" + suffix, audit);
}

void RegisterProcessBenchmarks(const BenchmarkFiles& files, const std::filesystem::path& tool,
                               std::size_t size) {
  const auto suffix = "/" + std::to_string(size);
  RegisterCommand("rg" + suffix, {"rg", "-ic", kSoughtWord, files.Export(size)});
  RegisterCommand("search_process" + suffix,
                  {tool, "search", files.Library(size), "--text", kSoughtWord});
  // A procedure in the middle of the library and of its export.
  const auto library_names = LoadLibraryFile(files.Library(size)).value()[Kind::kDeclare].names;
  const auto name = ToUtf8(library_names[library_names.size() / 2]);
  RegisterCommand("rg_first" + suffix, {"rg", "-m1", "-F", name, files.Export(size)});
  RegisterCommand("show" + suffix, {tool, "show", files.Library(size), name});
  RegisterCommand("complete" + suffix,
                  {tool, "complete", files.Library(size), "getw", "--kind", "declare"});
  RegisterCommand("find" + suffix,
                  {tool, "find", files.Library(size), "*window*", "--kind", "declare"});
  const auto source = files.Module(size);
  RegisterCommand("ctags" + suffix, {"ctags", "--languages=Basic", "-f", "/dev/null", source});
  // Into a library that does not exist yet, so that every round does the same.
  const auto library = files.Output(("imported-" + std::to_string(size) + ".api").c_str());
  RegisterCommand("import" + suffix,
                  {tool, "import", library, source, "--create", "Imported", "--reading", "literal"},
                  library);
}

}  // namespace declarium::bench
