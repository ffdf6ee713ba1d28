#include <functional>
#include <stdexcept>

#include "bench/benchmark_files.h"
#include "bench/window/bare_program.h"
#include "bench/window/driven_declarium.h"
#include "bench/window/measures.h"
#include "library/file_format.h"
#include "library/file_saver.h"
#include "library/library_file.h"
#include "search/quick_find.h"
#include "text/text.h"
#include "window/driven_lists.h"

namespace declarium::bench {
namespace {

using namespace window_driver;

// Of which three in ten are procedures, whose list is the one that is filled and searched.
constexpr std::size_t kItems = 100'000;
constexpr Kind kFilled = Kind::kDeclare;
constexpr Kind kOther = Kind::kType;

void WaitForRows(HWND list, std::size_t count) {
  WaitTightly("rows", [&] { return static_cast<std::size_t>(Ask(list, LB_GETCOUNT)) == count; });
  WaitUntilPainted(list);
}

class Lists {
 public:
  Lists(const std::filesystem::path& folder, int rounds)
      : rounds_(rounds),
        library_(LoadLibraryFile(BenchmarkFiles(folder).Library(kItems)).value()),
        names_(library_[kFilled].names),
        program_(PutProgram(folder), kOther),
        bare_(PutNames(folder, names_)) {}

  void MeasureSwitch(BarsTable& table) {
    Times figure, floor;
    const HWND list = program_.ListOf(kFilled);
    for (int round = 0; round < rounds_; ++round) {
      program_.ChooseKind(kOther);
      program_.ChooseLibrary((round + 1) % 2);
      WaitForRows(list, 0);
      figure.push_back(MillisecondsOf([&] {
        program_.ChooseKind(kFilled);
        WaitForRows(list, names_.size());
      }));
      bare_.Empty();
      floor.push_back(MillisecondsOf([&] { bare_.Fill(); }));
    }
    table.Ratio("first switch to a kind with " + std::to_string(names_.size()) +
                    " names / filling a bare list box",
                figure, floor, 1.5);
  }

  // Types the last character of a beginning that selects another row than the beginning before it.
  void MeasureTypeAhead(BarsTable& table) {
    Times figure;
    for (std::size_t position = 17; position < names_.size(); position += names_.size() / 60) {
      const auto name = names_[position];
      for (std::size_t length = 3; length <= name.size(); ++length) {
        const auto before = RowOf(name.substr(0, length - 1));
        const auto wanted = RowOf(name.substr(0, length));
        if (before != wanted) figure.push_back(TimeOfKey(name.substr(0, length), before, wanted));
      }
    }
    if (figure.size() < 100) throw std::runtime_error("too few keystrokes move the selection");
    table.Below("a keystroke of type-ahead in " + std::to_string(names_.size()) +
                    " rows, message to selection (" + std::to_string(figure.size()) +
                    " keystrokes)",
                figure, 16);
  }

  void MeasureFind(BarsTable& table) {
    Times figure;
    const auto hits = FindNames(names_, u"*get*").size();
    for (int round = 0; round < rounds_; ++round) {
      (void)TimeOfFind(u"no name holds this", 0);
      figure.push_back(TimeOfFind(u"*get*", hits));
    }
    table.Below("find `*get*` over " + std::to_string(names_.size()) + " names, " +
                    std::to_string(hits) + " hits shown",
                figure, 100);
  }

 private:
  static std::filesystem::path PutProgram(const std::filesystem::path& folder) {
    const auto program = PutProgramInto(folder / "lists");
    auto library = LoadLibraryFile(BenchmarkFiles(folder).Library(kItems)).value();
    for (const auto* title : {u"A", u"B"}) {
      library.SetTitle(title);
      const auto file = folder / "lists" / (std::u16string(title) + u".api");
      if (const auto saved = WriteWholeFile(file, LibraryBytes(library)); !saved) {
        throw std::runtime_error(saved.error().Message());
      }
    }
    return program;
  }

  static std::filesystem::path PutNames(const std::filesystem::path& folder,
                                        const StringList& names) {
    WriteNames(folder / "procedures.txt", names);
    return folder / "procedures.txt";
  }

  [[nodiscard]] int RowOf(std::u16string_view beginning) const {
    const auto row = TypeAheadRow(RowsOf(names_), beginning);
    return row ? static_cast<int>(*row) : -1;
  }

  [[nodiscard]] double TimeOfKey(std::u16string_view beginning, int before, int wanted) const {
    const HWND input = program_.Control("txtInput");
    const HWND list = program_.ListOf(kFilled);
    const auto length = static_cast<WPARAM>(beginning.size() - 1);
    SetText(input, u"");
    SetText(input, beginning.substr(0, length));
    Ask(input, EM_SETSEL, length, static_cast<LPARAM>(length));
    WaitTightly("the row before", [&] { return SelectedRow(list) == before; });
    return MillisecondsOf([&] {
      Type(input, beginning.substr(length));
      WaitTightly("the row", [&] { return SelectedRow(list) == wanted; });
    });
  }

  [[nodiscard]] double TimeOfFind(std::u16string_view text, std::size_t hits) const {
    SetText(program_.Control("txtFind"), text);
    const HWND list = program_.Control("lstFind");
    return MillisecondsOf([&] {
      PressKey(program_.Control("txtFind"), VK_RETURN);
      WaitForRows(list, hits);
    });
  }

  int rounds_;
  Library library_;
  const StringList& names_;
  DrivenDeclarium program_;
  BareProgram bare_;
};

}  // namespace

void MeasureLists(const std::filesystem::path& folder, int rounds, BarsTable& table) {
  Lists lists(folder, rounds);
  lists.MeasureSwitch(table);
  lists.MeasureTypeAhead(table);
  lists.MeasureFind(table);
}

}  // namespace declarium::bench
