#include "app/window_fixture.h"

#include <atomic>
#include <fstream>
#include <iterator>

#include "library/file_io.h"
#include "library/file_saver.h"
#include "text/code_page.h"
#include "text/text.h"

namespace declarium {
namespace {

namespace fs = std::filesystem;

fs::path NewFolder() {
  static std::atomic<int> next = 0;
  const auto* info = testing::UnitTest::GetInstance()->current_test_info();
  auto folder = fs::temp_directory_path() /
                ("declarium-" + std::string(info->test_suite_name()) + "-" + info->name() + "-" +
                 std::to_string(std::hash<std::string>()(fs::current_path().string()) % 100000) +
                 "-" + std::to_string(next++));
  fs::remove_all(folder);
  fs::create_directories(folder / "program");
  return folder;
}

std::u16string WithSeparators(std::u16string text) {
  for (auto& unit : text) {
    if (unit == u'/') unit = 14;
    if (unit == u'!') unit = 12;
    if (unit == u'|') unit = 13;
  }
  if (text.starts_with(u'+')) text.front() = 11;
  if (text.starts_with(u'-')) text.front() = 10;
  return text;
}

}  // namespace

std::vector<std::u16string> RowsOf(const RowList& list) {
  std::vector<std::u16string> rows;
  for (int row = 0; row < list.RowCount(); ++row) rows.push_back(list.Row(row));
  return rows;
}

std::vector<std::u16string> EntriesOf(const ListView& list) {
  std::vector<std::u16string> entries;
  for (int i = 1; i <= list.Count(); ++i) {
    const auto entry = list.Entry(i);
    const auto icon = static_cast<char16_t>(u'0' + entry.icon);
    entries.push_back((std::u16string(1, icon) + u" ").append(entry.text));
  }
  return entries;
}

std::string LibraryContent(std::u16string_view title,
                           const std::vector<std::pair<std::u16string, std::u16string>>& consts,
                           const std::vector<std::pair<std::u16string, std::u16string>>& declares,
                           const std::vector<std::pair<std::u16string, std::u16string>>& types) {
  std::u16string names;
  std::u16string items;
  for (const auto* kind : {&consts, &declares, &types}) {
    if (kind != &consts) {
      names += u'\x01';
      items += u'\x01';
    }
    for (std::size_t i = 0; i < kind->size(); ++i) {
      if (i > 0) {
        names += u'\0';
        items += u'\0';
      }
      names += (*kind)[i].first;
      items += WithSeparators((*kind)[i].second);
    }
  }
  return EncodeCodePage(std::u16string(title) + u'\x02' + names + u'\x02' + items);
}

WindowTest::WindowTest()
    : folder_(NewFolder()),
      toolkit_(std::make_unique<headless::HeadlessToolkit>()),
      user_(*toolkit_) {
  options_.folder = folder_ / "program";
  store_.emplace(folder_ / "settings");
}

WindowTest::~WindowTest() {
  window_.reset();
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
}

void WindowTest::WriteFile(std::string_view name, std::string_view bytes) {
  ASSERT_TRUE(WriteWholeFile(FileAt(name), bytes));
}

std::string WindowTest::ReadFile(std::string_view name) const {
  std::ifstream file(FileAt(name), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void WindowTest::WriteWinLibrary(std::string_view name, std::u16string_view title) {
  WriteFile(name,
            LibraryContent(title, {{u"A", u"/1"}, {u"B", u"Long/A + 1"}, {u"MAX_PATH", u"/260"}},
                           {{u"Beep", u"-\"kernel32\" (ByVal f As Long)"},
                            {u"GetTickCount", u"+\"kernel32\" () As Long"},
                            {u"GetWindow", u"+\"user32\" (r As RECT, p As POINTAPI) As Long"}},
                           {{u"POINTAPI", u"!x As Long|y As Long"},
                            {u"RECT", u"!a As POINTAPI|s As String * MAX_PATH"}}));
}

void WindowTest::Open() {
  window_ = std::make_unique<MainWindow>(*toolkit_, *store_, options_);
  window_->ShowMainWindow();
}

void WindowTest::Reopen() {
  if (window_) User().Close(*Form().frmMain);
  window_.reset();
  toolkit_ = std::make_unique<headless::HeadlessToolkit>();
  std::destroy_at(&user_);
  std::construct_at(&user_, *toolkit_);
  Open();
}

std::vector<std::u16string> WindowTest::Messages() {
  auto messages = Script().MessageTexts();
  Script().ForgetAsked();
  return messages;
}

}  // namespace declarium
