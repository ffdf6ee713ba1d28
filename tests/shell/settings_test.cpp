#include "shell/settings.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "shell/memory_store.h"

namespace declarium {
namespace {

using namespace std::string_literals;

std::int32_t IntegerIn(const MemoryStore& store, std::u16string_view name) {
  return ToInteger(store.GetValue(kSettingsKey, name, -99)).value_or(-98);
}

TEST(Settings, HaveTheirDefaultsWithoutAnyKey) {
  const MemoryStore store;
  EXPECT_EQ(ReadColors(store), (DisplayColors{16711680, 32768, 0}));
  EXPECT_EQ(ReadWindowSettings(store),
            (WindowSettings{.size_saved = false,
                            .edges = {.left = 100, .top = 100, .right = 620, .bottom = 500},
                            .show_command = 1,
                            .panes = {.main_width = 300, .rtb_height = 146, .add_height = 300},
                            .range = 0,
                            .selector = 1,
                            .last_database_index = 0,
                            .last_database_name = u""}));
  EXPECT_EQ(ReadSetting(store, setting::kFindCheckBox), u"1110111011");
}

TEST(Settings, HaveTheNamesAndDefaultsThatStoredOnesHave) {
  struct Row {
    IntegerSetting setting;
    std::u16string_view name;
    std::int32_t default_value;
  };
  const Row rows[] = {
      {setting::kKeywordColor, u"KeywordColor", 16711680},
      {setting::kCommentColor, u"CommentColor", 32768},
      {setting::kNormalColor, u"NormalColor", 0},
      {setting::kSizeSaved, u"SizeSaved", 0},
      {setting::kUpperEdge, u"Left", 100},
      {setting::kLeftEdge, u"Top", 100},
      {setting::kRightEdge, u"Width", 620},
      {setting::kLowerEdge, u"Height", 500},
      {setting::kWindowState, u"WindowState", 1},
      {setting::kRtbHeight, u"RtbHeight", 146},
      {setting::kMainWidth, u"MainWidth", 300},
      {setting::kAddHeight, u"AddHeight", 300},
      {setting::kRange, u"Range", 0},
      {setting::kSelector, u"Selector", 1},
      {setting::kLastDatabaseIndex, u"LastDatabaseIndex", 0},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(row.setting.name, row.name);
    EXPECT_EQ(row.setting.default_value, row.default_value);
  }
  EXPECT_EQ(kSettingsKey, u"Software\\Brindlework\\Declarium 3.0");
}

TEST(Settings, KeepTheTargetByItsName) {
  MemoryStore store;
  EXPECT_EQ(ReadAudience(store), vb::Audience::kVb6);
  for (const auto target : vb::kAudiences) {
    WriteAudience(store, target);
    EXPECT_EQ(ReadAudience(store), target);
  }
  WriteAudience(store, vb::Audience::kVba7Only);
  EXPECT_EQ(ReadSetting(store, setting::kTarget), u"vba7-only");
  EXPECT_EQ(store.Type(kSettingsKey, u"Target"), 1U);
}

TEST(Settings, AnUnknownTargetIsVb6) {
  MemoryStore store;
  for (const auto* text : {u"", u"vb5", u"1", u"vba7 ", u"vba70"}) {
    WriteSetting(store, setting::kTarget, text);
    EXPECT_EQ(ReadAudience(store), vb::Audience::kVb6);
  }
  WriteSetting(store, setting::kTarget, u"VBA7");
  EXPECT_EQ(ReadAudience(store), vb::Audience::kVba7);
  store.SetValue(kSettingsKey, u"Target", ValueType::kInteger, 2);
  EXPECT_EQ(ReadAudience(store), vb::Audience::kVb6);
}

TEST(Settings, KeepTheUpperEdgeUnderTheNameLeft) {
  MemoryStore store;
  WriteWindowSettings(store, {.edges = {.left = 1, .top = 2, .right = 3, .bottom = 4}});
  EXPECT_EQ(IntegerIn(store, u"Left"), 2);
  EXPECT_EQ(IntegerIn(store, u"Top"), 1);
  EXPECT_EQ(IntegerIn(store, u"Width"), 3);
  EXPECT_EQ(IntegerIn(store, u"Height"), 4);
  EXPECT_EQ(ReadWindowSettings(store).edges, (WindowEdges{1, 2, 3, 4}));
}

TEST(Settings, ComeBackAsTheyWereWritten) {
  MemoryStore store;
  const WindowSettings settings{.size_saved = true,
                                .edges = {-8, -9, 1000, 700},
                                .show_command = 3,
                                .panes = {211, 99, 187},
                                .range = 1,
                                .selector = 2,
                                .last_database_index = -1,
                                .last_database_name = u"Moja databáza"};
  WriteWindowSettings(store, settings);
  EXPECT_EQ(ReadWindowSettings(store), settings);
}

TEST(Settings, AreWrittenInTheirOrderWithSizeSavedBehindTheSizes) {
  MemoryStore store;
  WriteWindowSettings(store, {});
  EXPECT_EQ(store.written, (std::vector<std::u16string>{
                               u"Left", u"Top", u"Width", u"Height", u"WindowState", u"RtbHeight",
                               u"MainWidth", u"AddHeight", u"SizeSaved", u"Selector", u"Range",
                               u"LastDatabaseIndex", u"LastDatabaseName"}));
  EXPECT_EQ(IntegerIn(store, u"SizeSaved"), 1);
  EXPECT_EQ(store.Type(kSettingsKey, u"Left"), 4U);
  EXPECT_EQ(store.Type(kSettingsKey, u"LastDatabaseName"), 1U);
}

TEST(Settings, IgnoreStoredEdgesUnlessSizeSavedIsOne) {
  MemoryStore store;
  WriteWindowSettings(store, {.edges = {1, 2, 3, 4}, .panes = {5, 6, 7}});
  for (const int saved : {0, 2, -1}) {
    WriteSetting(store, setting::kSizeSaved, saved);
    const WindowSettings settings = ReadWindowSettings(store);
    EXPECT_FALSE(settings.size_saved);
    EXPECT_EQ(settings.edges, WindowEdges{});
    EXPECT_EQ(settings.panes, (PaneSizes{5, 6, 7}));
  }
}

TEST(Settings, TakeTheDefaultForANumberOutOfItsRange) {
  struct Row {
    IntegerSetting setting;
    std::vector<std::int32_t> taken;
    std::vector<std::int32_t> refused;
  };
  constexpr auto kMost = std::numeric_limits<std::int32_t>::max();
  constexpr auto kLeast = std::numeric_limits<std::int32_t>::min();
  const Row rows[] = {
      {setting::kSizeSaved, {0, 1}, {-1, 2, kMost}},
      {setting::kUpperEdge, {-32768, 0, 32767}, {-32769, 32768, kMost, kLeast}},
      {setting::kLeftEdge, {-32768, 0, 32767}, {-32769, 32768, kMost, kLeast}},
      {setting::kRightEdge, {-32768, 0, 32767}, {-32769, 32768, kMost, kLeast}},
      {setting::kLowerEdge, {-32768, 0, 32767}, {-32769, 32768, kMost, kLeast}},
      {setting::kWindowState, {1, 2, 3}, {0, 4, 12, 99, -1, kLeast}},
      {setting::kRtbHeight, {0, 146, 32767}, {-1, 32768, kMost, kLeast}},
      {setting::kMainWidth, {0, 300, 32767}, {-1, 32768, kMost, kLeast}},
      {setting::kAddHeight, {0, 300, 32767}, {-1, 32768, kMost, kLeast}},
      {setting::kRange, {0, 1}, {-1, 2, kMost, kLeast}},
      {setting::kSelector, {0, 1, 2}, {-1, 3, kMost, kLeast}},
      {setting::kLastDatabaseIndex, {-1, 0, 12, kMost}, {-2, kLeast}},
  };
  for (const auto& [setting, taken, refused] : rows) {
    MemoryStore store;
    for (const auto number : taken) {
      WriteSetting(store, setting, number);
      EXPECT_EQ(ReadSetting(store, setting), number);
    }
    for (const auto number : refused) {
      WriteSetting(store, setting, number);
      EXPECT_EQ(ReadSetting(store, setting), setting.default_value) << number;
    }
  }
}

TEST(Settings, IgnoreStoredEdgesThatMakeNoRectangle) {
  for (const WindowEdges& edges : {WindowEdges{100, 100, 100, 500}, WindowEdges{100, 500, 700, 100},
                                   WindowEdges{700, 100, 100, 500}}) {
    MemoryStore store;
    WriteWindowSettings(store, {.edges = edges});
    EXPECT_FALSE(ReadWindowSettings(store).size_saved);
    EXPECT_EQ(ReadWindowSettings(store).edges, WindowEdges{});
  }
}

TEST(Settings, TakeTheDefaultForANumberThatIsNoColor) {
  MemoryStore store;
  WriteColors(store, {0x01000000, 0x80000100, 0xFFFFFFFF});
  EXPECT_EQ(ReadColors(store), DisplayColors{});
}

TEST(Settings, KeepTheThreeColors) {
  MemoryStore store;
  WriteColors(store, {0x010203, 0xFFFFFF, 0x80000005});
  EXPECT_EQ(store.written,
            (std::vector<std::u16string>{u"KeywordColor", u"CommentColor", u"NormalColor"}));
  EXPECT_EQ(IntegerIn(store, u"KeywordColor"), 0x010203);
  EXPECT_EQ(ReadColors(store), (DisplayColors{0x010203, 0xFFFFFF, 0x80000005}));
}

TEST(Settings, KeepTheSearchDialogsCheckBoxesAsText) {
  MemoryStore store;
  WriteSetting(store, setting::kFindCheckBox, u"0101010101");
  EXPECT_EQ(store.Type(kSettingsKey, u"FindCheckBox"), 1U);
  EXPECT_EQ(ReadSetting(store, setting::kFindCheckBox), u"0101010101");
}

TEST(Settings, ReadAValueThatIsStoredAsAnotherType) {
  MemoryStore store;
  store.SetValue(kSettingsKey, u"MainWidth", ValueType::kText, u"250"s);
  store.SetValue(kSettingsKey, u"AddHeight", ValueType::kText, u"high"s);
  store.SetValue(kSettingsKey, u"RtbHeight", ValueType::kBinary, u"77"s);
  store.SetValue(kSettingsKey, u"LastDatabaseName", ValueType::kInteger, 32);
  const WindowSettings settings = ReadWindowSettings(store);
  EXPECT_EQ(settings.panes, (PaneSizes{.main_width = 250, .rtb_height = 77, .add_height = 300}));
  EXPECT_EQ(settings.last_database_name, u"32");
}

TEST(Settings, PassOverFailures) {
  MemoryStore store;
  WriteWindowSettings(store, {.selector = 2});
  WriteColors(store, {1, 2, 3});
  store.fails = true;
  WriteWindowSettings(store, {.selector = 0});
  WriteColors(store, {4, 5, 6});
  EXPECT_EQ(ReadWindowSettings(store), WindowSettings{});
  EXPECT_EQ(ReadColors(store), DisplayColors{});
  store.fails = false;
  EXPECT_EQ(ReadWindowSettings(store).selector, 2);
  EXPECT_EQ(ReadColors(store), (DisplayColors{1, 2, 3}));
}

}  // namespace
}  // namespace declarium
