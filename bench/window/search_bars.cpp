// Searches in the dialog beside the engine alone.
//
// A search ends when the window system holds its rows for painted, as seen by another program. It
// does so when their painting begins; the scroll bar and the rows are on the screen about 2 ms
// later, on one core. On a busy machine a program is set aside for longer than these searches take,
// so the quickest round of the dialog is compared with the quickest of the engine (in a fifth of
// the rounds for a million items). The rows over 200 items show what is the window's own and the
// same for any library, those over a million items what the dialog adds to each item.
//
// What was learned with them: 60 000 hits in memory fresh from the system cost 0.5 ms, a third of
// what the engine takes to find them by name, so the array is kept until the dialog closes.
// Changing the pointer twice takes 13 calls into Wine's server, so a search of less than 100 ms
// shows no hourglass. A search that lists more rows than fit makes 58 calls into Wine's server
// until the painting of its rows begins (87 before the window system was notified of changes only),
// 28 of them for the scroll bar that appears. Painting takes 101 more, 60 of which are for the
// scroll bar's two arrows and three for the picture of each row.
#include <stdexcept>

#include "bench/benchmark_files.h"
#include "bench/counting_receiver.h"
#include "bench/generated_library.h"
#include "bench/window/driven_declarium.h"
#include "bench/window/measures.h"
#include "library/library_file.h"
#include "search/search_engine.h"
#include "window/driven_lists.h"

namespace declarium::bench {
namespace {

using namespace window_driver;

// What the window itself takes is most of a search in a small library, the engine in a large one.
constexpr std::size_t kSmall = 200;
constexpr std::size_t kUsual = 100'000;
constexpr std::size_t kLarge = 1'000'000;

// With the clock that the dialog's receiver asks.
class Counter : public CountingReceiver {
 public:
  std::uint32_t TickCount() override { return GetTickCount(); }
};

class SearchInDialog {
 public:
  SearchInDialog(const std::filesystem::path& folder, std::size_t items, int rounds)
      : items_(items),
        rounds_(rounds),
        library_(LoadLibraryFile(BenchmarkFiles(folder).Library(items)).value()),
        program_(PutProgram(folder, items), Kind::kType),
        dialog_(program_.OpenByToolbar("find", "frmFind")) {}

  // One search, by a criterion's text box, in turns with the engine. Each begins with an empty
  // result.
  void Measure(const char* box, const SearchCriteria& criteria, std::u16string_view text,
               const std::string& what, BarsTable& table) {
    Times figure, floor, freeing;
    int hits = 0;
    for (int round = 0; round < rounds_; ++round) {
      Counter counter;
      floor.push_back(MillisecondsOf([&] { (void)Search(criteria, library_, counter); }));
      hits = static_cast<int>(counter.hits);
      figure.push_back(TimeOfSearch(box, text, hits));
      freeing.push_back(TimeOfSearch(box, u"nowhere", 0));
    }
    const std::string over = what + " over " + std::to_string(items_) + " items, " +
                             std::to_string(hits) + " hits listed";
    if (items_ == kSmall) {
      table.Record(over, QuickestOf(figure));
    } else {
      table.Ratio(over + " / the bare engine", QuickestOf(figure), QuickestOf(floor), 2);
      table.Record("a search without a hit that frees them first", QuickestOf(freeing));
    }
    SetText(FindControl(dialog_, box), u"");
  }

  // From closing the dialog with a long result to the end of its window.
  void MeasureClosing(BarsTable& table) {
    Times figure;
    for (int round = 0; round < rounds_; ++round) {
      (void)TimeOfSearch("Text1", u"_", -1);
      figure.push_back(MillisecondsOf([&] {
        PostMessageW(dialog_, WM_CLOSE, 0, 0);
        WaitTightly("the closing", [&] {
          return program_.Program().FindForm("frmFind") == nullptr &&
                 program_.Program().FindForm("frmWait") == nullptr;
        });
      }));
      dialog_ = program_.OpenByToolbar("find", "frmFind");
    }
    table.Record("closing the dialog with them", QuickestOf(figure));
  }

 private:
  static std::filesystem::path PutProgram(const std::filesystem::path& folder, std::size_t items) {
    const auto program = PutProgramInto(folder / "search");
    std::filesystem::copy_file(BenchmarkFiles(folder).Library(items),
                               folder / "search" / "library.api");
    return program;
  }

  // With -1 for the hits, any number of them. The press is answered when the list has its rows; it
  // is not asked for their number before they are painted, since whether the program answers before
  // or after it paints them is the scheduler's choice.
  [[nodiscard]] double TimeOfSearch(const char* box, std::u16string_view text, int hits) const {
    SetText(FindControl(dialog_, box), text);
    const HWND button = FindControl(dialog_, "Command2");
    const HWND results = FindControl(dialog_, "LV1");
    const double time = MillisecondsOf([&] {
      Ask(button, BM_CLICK);
      WaitUntilPainted(results);
    });
    const int count = EntryCount(results);
    const bool came_late = hits != 0 && GetUpdateRect(results, nullptr, FALSE);
    if (came_late || (hits < 0 ? count == 0 : count != hits)) {
      throw std::runtime_error(std::string(box) + ": not " + std::to_string(hits) +
                               " hits when they were painted");
    }
    return time;
  }

  std::size_t items_;
  int rounds_;
  Library library_;
  DrivenDeclarium program_;
  HWND dialog_;
};

SearchCriteria FullText(std::u16string_view text) {
  SearchCriteria criteria;
  criteria.fullText = text;
  return criteria;
}

SearchCriteria Name(std::u16string_view text) {
  SearchCriteria criteria;
  criteria.nameText = text;
  return criteria;
}

}  // namespace

void MeasureSearch(const std::filesystem::path& folder, int rounds, BarsTable& table) {
  for (const auto items : {kSmall, kUsual, kLarge}) {
    SearchInDialog search(folder, items, items == kLarge ? rounds : rounds * 5);
    search.Measure("Text5", FullText(u"clipboard"), u"clipboard", "full-text search", table);
    search.Measure("Text5", FullText(u"a"), u"a", "full-text search for a letter", table);
    search.Measure("Text1", Name(u"_"), u"_", "name search", table);
    if (items != kSmall) search.MeasureClosing(table);
  }
}

}  // namespace declarium::bench
