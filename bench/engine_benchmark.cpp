// Measures the engine on generated libraries, each figure beside its floor in the same run.
//   engine_benchmark FOLDER TOOL LARGEST [--benchmark_... options]
// FOLDER keeps the generated files, TOOL is the command-line tool; no library has more items than
// LARGEST. With a million of them source of ten million lines is read too.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <malloc.h>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

#include "bench/benchmark_files.h"
#include "bench/counting_receiver.h"
#include "bench/generated_library.h"
#include "bench/process_benchmark.h"
#include "library/file_format.h"
#include "library/file_io.h"
#include "library/file_saver.h"
#include "library/library_file.h"
#include "plan/insertion_plan.h"
#include "search/quick_find.h"
#include "search/search_engine.h"
#include "text/code_page.h"
#include "text/text.h"
#include "vb/module.h"

namespace declarium::bench {
namespace {

constexpr std::size_t kLargestItems = 1'000'000;
constexpr std::size_t kLargestLines = 10'000'000;
constexpr std::size_t kPlannedItems = 200;
constexpr std::size_t kPlannedLines = 20'000;

enum class Flush { kNo, kYes };

Library Loaded(const std::filesystem::path& path) {
  return LoadLibraryFile(path).value();
}

void Load(benchmark::State& state, const std::filesystem::path& path) {
  for (auto _ : state) benchmark::DoNotOptimize(LoadLibraryFile(path)->Lists()[0].names.size());
}

// What no loader can do without: the bytes, and their text in one buffer that nothing clears first.
void LoadFloor(benchmark::State& state, const std::filesystem::path& path) {
  for (auto _ : state) {
    const auto bytes = ReadWholeFile(path).value();
    const auto text = std::make_unique_for_overwrite<char16_t[]>(bytes.size());
    DecodeCodePageInto(bytes, text.get());
    benchmark::DoNotOptimize(text.get());
  }
}

bool WritePlainly(const std::filesystem::path& path, std::string_view bytes, Flush flush) {
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
  bool done = file >= 0 && ::write(file, bytes.data(), bytes.size()) == std::ssize(bytes);
  if (flush == Flush::kYes) done = done && ::fsync(file) == 0;
  ::close(file);
  return done;
}

// As users save: what is replaced, another content each time, is kept in the history.
void Save(benchmark::State& state, Library library, const BenchmarkFiles& files) {
  const auto path = files.Output("saved.api");
  FileSaver saver(SystemFiles(), History(SystemFiles(), files.Output("history")));
  int round = 0;
  for (auto _ : state) {
    library.SetTitle(u"Round " + FromUtf8(std::to_string(++round)));
    if (!SaveLibraryFile(saver, library, path)) state.SkipWithError("cannot save");
  }
}

// The same bytes without waiting for the disk.
void SaveUnflushed(benchmark::State& state, const Library& library, const BenchmarkFiles& files) {
  const auto path = files.Output("saved-unflushed.api");
  for (auto _ : state) {
    if (!WritePlainly(path, LibraryBytes(library), Flush::kNo)) state.SkipWithError("cannot save");
  }
}

void SaveFloor(benchmark::State& state, const std::u16string& text, const BenchmarkFiles& files,
               Flush flush) {
  const auto path = files.Output(flush == Flush::kYes ? "floor.api" : "floor-unflushed.api");
  for (auto _ : state) {
    const auto bytes = std::make_unique_for_overwrite<char[]>(text.size());
    EncodeCodePageInto(text, bytes.get());
    if (!WritePlainly(path, {bytes.get(), text.size()}, flush)) state.SkipWithError("cannot write");
  }
}

// One list of as many rows as the library has items, in the order of a kind's list.
StringList AllNames(const Library& library) {
  std::vector<std::u16string_view> names;
  for (const auto& lists : library.Lists()) {
    names.insert(names.end(), lists.names.begin(), lists.names.end());
  }
  std::ranges::sort(names, [](auto a, auto b) { return CompareIgnoringCase(a, b) < 0; });
  StringList rows;
  for (const auto name : names) rows.Add(name);
  return rows;
}

// Keystrokes: the first one to eight letters of names from all over the list.
std::vector<std::u16string> Keystrokes(const StringList& names) {
  constexpr std::size_t kTypedNames = 997;
  constexpr std::size_t kLongest = 8;
  std::vector<std::u16string> keystrokes;
  for (std::size_t i = 0; i < kTypedNames; ++i) {
    const auto name = names[names.size() * i / kTypedNames];
    keystrokes.push_back(LowerCase(name.substr(0, 1 + i % kLongest)));
  }
  return keystrokes;
}

// How many rows at most one keystroke read beyond the rows of the fine scan.
double CoarseReads(const StringList& names, const std::vector<std::u16string>& keystrokes) {
  std::size_t most = 0;
  for (const auto& text : keystrokes) {
    std::size_t reads = 0;
    std::size_t fine_start = names.size();
    std::size_t previous = names.size();
    const auto found = TypeAheadRow({names.size(),
                                     [&](std::size_t row) {
                                       ++reads;
                                       if (row == previous + 1)
                                         fine_start = std::min(fine_start, previous);
                                       previous = row;
                                       return names[row];
                                     }},
                                    text);
    const auto fine = found && fine_start <= *found ? *found - fine_start + 1 : 1;
    most = std::max(most, reads - fine);
  }
  return static_cast<double>(most);
}

void TypeAhead(benchmark::State& state, const StringList& names) {
  const auto keystrokes = Keystrokes(names);
  const auto rows = RowsOf(names);
  std::size_t next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(TypeAheadRow(rows, keystrokes[next]));
    next = (next + 1) % keystrokes.size();
  }
  state.counters["coarse_reads"] = CoarseReads(names, keystrokes);
}

void SearchAll(benchmark::State& state, const Library& library, const SearchCriteria& criteria) {
  CountingReceiver receiver;
  for (auto _ : state) {
    receiver.hits = 0;
    benchmark::DoNotOptimize(Search(criteria, library, receiver));
  }
  state.counters["hits"] = static_cast<double>(receiver.hits);
}

// The text is decoded for each run: ten million lines are not to be kept beside the others.
void ReadSource(benchmark::State& state, const std::filesystem::path& path) {
  const auto text = DecodeCodePage(*ReadWholeFile(path));
  for (auto _ : state) benchmark::DoNotOptimize(vb::ReadModule(text).lines);
}

// As many items of the library, one as far from the other.
std::vector<ItemView> SomeItems(const Library& library, std::size_t count) {
  std::vector<ItemView> items;
  const auto kind = Kind::kDeclare;
  const auto& lists = library[kind];
  for (std::size_t i = 0; i < count; ++i) {
    const auto position = i * lists.names.size() / count;
    items.push_back({kind, lists.names.At(position), lists.ItemAt(position)});
  }
  return items;
}

// Reads the module, follows what the items need, and plans.
void PlanInsertion(benchmark::State& state, const Library& library,
                   const std::filesystem::path& path) {
  const auto text = DecodeCodePage(*ReadWholeFile(path));
  const auto items = SomeItems(library, kPlannedItems);
  const Library* const libraries[] = {&library};
  for (auto _ : state) {
    const auto module = vb::ReadModule(text);
    const plan::ModuleText modules[] = {{u"Module1", text, &module}};
    plan::ProjectModules project(modules);
    const auto wanted = plan::WithNeeds(items, libraries);
    const plan::InsertionPlan plan(project, 0, wanted.items, {});
    benchmark::DoNotOptimize(plan.Insertions().size());
  }
}

template <typename Measure>
void Register(const char* name, std::size_t size, Measure measure) {
  const auto full_name = std::string(name) + "/" + std::to_string(size);
  benchmark::RegisterBenchmark(full_name.c_str(), measure)
      ->UseRealTime()
      ->Unit(benchmark::kMillisecond);
}

void RegisterEngineBenchmarks(const BenchmarkFiles& files, std::size_t size) {
  const auto path = files.Library(size);
  // Shared by the benchmarks that read it; they live to the end of the program.
  const auto library = std::make_shared<const Library>(Loaded(path));
  const auto text = std::make_shared<const std::u16string>(DecodeCodePage(*ReadWholeFile(path)));
  Register("load", size, [=](auto& state) { Load(state, path); });
  Register("load_floor", size, [=](auto& state) { LoadFloor(state, path); });
  Register("save", size, [=, &files](auto& state) { Save(state, *library, files); });
  Register("save_floor", size,
           [=, &files](auto& state) { SaveFloor(state, *text, files, Flush::kYes); });
  Register("save_unflushed", size,
           [=, &files](auto& state) { SaveUnflushed(state, *library, files); });
  Register("save_unflushed_floor", size,
           [=, &files](auto& state) { SaveFloor(state, *text, files, Flush::kNo); });
  const auto rows = std::make_shared<const StringList>(AllNames(*library));
  Register("type_ahead", size, [=](auto& state) { TypeAhead(state, *rows); });
  SearchCriteria text_anywhere;
  text_anywhere.fullText = FromUtf8(kSoughtWord);
  SearchCriteria whole_words = text_anywhere;
  whole_words.fullWholeWords = true;
  SearchCriteria name_anywhere;
  name_anywhere.nameText = FromUtf8(kSoughtWord);
  Register("search_text", size, [=](auto& state) { SearchAll(state, *library, text_anywhere); });
  Register("search_words", size, [=](auto& state) { SearchAll(state, *library, whole_words); });
  Register("search_name", size, [=](auto& state) { SearchAll(state, *library, name_anywhere); });
}

// The plan and the plain reading of its module.
void RegisterPlanning(const BenchmarkFiles& files, std::size_t items) {
  const auto library = std::make_shared<const Library>(Loaded(files.Library(items)));
  const auto path = files.Module(kPlannedLines);
  Register("plan", items, [=](auto& state) { PlanInsertion(state, *library, path); });
  Register("plan_floor", items, [=](auto& state) { ReadSource(state, path); });
}

void RegisterReading(const BenchmarkFiles& files, std::size_t lines) {
  Register("read", lines, [path = files.Module(lines)](auto& state) { ReadSource(state, path); });
}

}  // namespace
}  // namespace declarium::bench

int main(int argc, char** argv) {
  using namespace declarium::bench;
  if (argc < 4) {
    std::fprintf(stderr, "usage: engine_benchmark FOLDER TOOL LARGEST [options]\n");
    return 2;
  }
  const BenchmarkFiles files(argv[1]);
  const std::filesystem::path tool = argv[2];
  const auto largest = static_cast<std::size_t>(std::atoll(argv[3]));
  argc -= 3;
  argv[3] = argv[0];
  // Large blocks come fresh from the system every time, as in a program that was just started:
  // otherwise a round would find the pages of the round before.
  mallopt(M_MMAP_THRESHOLD, 128 * 1024);
  benchmark::Initialize(&argc, argv + 3);
  for (const std::size_t size :
       {std::size_t{1'000}, std::size_t{10'000}, kProcessItems, kLargestItems}) {
    if (size > largest) break;
    RegisterEngineBenchmarks(files, size);
    if (size >= kProcessItems) {
      RegisterProcessBenchmarks(files, tool, size);
      RegisterReading(files, size);
      RegisterProjectBenchmarks(files, tool, DECLARIUM_SOURCE_DIR "/data", size);
    }
    if (size == kProcessItems) RegisterPlanning(files, size);
  }
  if (largest >= kLargestItems) RegisterReading(files, kLargestLines);
  benchmark::RunSpecifiedBenchmarks();
}
