// The program's settings: their names, types and defaults, and what they mean.
//
// A missing value, text that is no number where a number is meant, and a number out of its range
// read as the default; a value of a type that the store does not know reads as an empty one.
// Writing ignores failures: the program works without its settings.
#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "shell/pane_sizes.h"
#include "shell/settings_store.h"
#include "source/display_colors.h"
#include "vb/audience.h"

namespace declarium {

inline constexpr std::u16string_view kSettingsKey = u"Software\\Brindlework\\Declarium 3.0";

struct IntegerSetting {
  std::u16string_view name;
  std::int32_t default_value;
  std::int32_t least = std::numeric_limits<std::int32_t>::min();
  std::int32_t most = std::numeric_limits<std::int32_t>::max();
};

// The system's limits of a window's coordinates.
inline constexpr std::int32_t kLeastCoordinate = -32768;
inline constexpr std::int32_t kMostCoordinate = 32767;

struct TextSetting {
  std::u16string_view name;
  std::u16string_view default_value;
};

// The window's normal (restored) rectangle on the screen, in physical pixels.
struct WindowEdges {
  int left = 100;
  int top = 100;
  int right = 620;
  int bottom = 500;
  bool operator==(const WindowEdges&) const = default;
};

namespace setting {

inline constexpr IntegerSetting kKeywordColor{u"KeywordColor", DisplayColors{}.keyword};
inline constexpr IntegerSetting kCommentColor{u"CommentColor", DisplayColors{}.comment};
inline constexpr IntegerSetting kNormalColor{u"NormalColor", DisplayColors{}.normal};
// 1: the placement below was saved
inline constexpr IntegerSetting kSizeSaved{u"SizeSaved", 0, 0, 1};
// The window's normal rectangle, in physical pixels. "Left" has always held its upper edge and
// "Top" its left one; stored settings depend on it.
inline constexpr IntegerSetting kUpperEdge{u"Left", WindowEdges{}.top, kLeastCoordinate,
                                           kMostCoordinate};
inline constexpr IntegerSetting kLeftEdge{u"Top", WindowEdges{}.left, kLeastCoordinate,
                                          kMostCoordinate};
inline constexpr IntegerSetting kRightEdge{u"Width", WindowEdges{}.right, kLeastCoordinate,
                                           kMostCoordinate};
inline constexpr IntegerSetting kLowerEdge{u"Height", WindowEdges{}.bottom, kLeastCoordinate,
                                           kMostCoordinate};
// How the window is shown: 1 normal, 2 minimized, 3 maximized.
inline constexpr IntegerSetting kWindowState{u"WindowState", 1, 1, 3};
inline constexpr IntegerSetting kRtbHeight{u"RtbHeight", PaneSizes{}.rtb_height, 0,
                                           kMostCoordinate};
inline constexpr IntegerSetting kMainWidth{u"MainWidth", PaneSizes{}.main_width, 0,
                                           kMostCoordinate};
inline constexpr IntegerSetting kAddHeight{u"AddHeight", PaneSizes{}.add_height, 0,
                                           kMostCoordinate};
inline constexpr IntegerSetting kRange{u"Range", 0, 0, 1};
inline constexpr IntegerSetting kSelector{u"Selector", 1, 0, 2};
inline constexpr IntegerSetting kLastDatabaseIndex{u"LastDatabaseIndex", 0, -1,
                                                   std::numeric_limits<std::int32_t>::max()};
inline constexpr TextSetting kLastDatabaseName{u"LastDatabaseName", u""};
// For whom declarations are written, by name.
inline constexpr TextSetting kTarget{u"Target", u""};
// The ten check boxes of the search dialog, a digit each.
inline constexpr TextSetting kFindCheckBox{u"FindCheckBox", u"1110111011"};

}  // namespace setting

// One setting, of kSettingsKey.
[[nodiscard]] std::int32_t ReadSetting(const SettingsStore& store, const IntegerSetting& setting);
[[nodiscard]] std::u16string ReadSetting(const SettingsStore& store, const TextSetting& setting);
void WriteSetting(SettingsStore& store, const IntegerSetting& setting, std::int32_t value);
void WriteSetting(SettingsStore& store, const TextSetting& setting, std::u16string_view value);

[[nodiscard]] DisplayColors ReadColors(const SettingsStore& store);
void WriteColors(SettingsStore& store, const DisplayColors& colors);

// `otherwise` when the user has chosen none.
[[nodiscard]] vb::Audience ReadAudience(const SettingsStore& store,
                                        vb::Audience otherwise = vb::Audience::kVb6);
void WriteAudience(SettingsStore& store, vb::Audience target);

// What the main window keeps from one run to the next.
struct WindowSettings {
  bool size_saved = false;  // false: `edges` are the defaults, not to be applied
  WindowEdges edges = {};
  int show_command = setting::kWindowState.default_value;  // 1 normal, 2 minimized, 3 maximized
  PaneSizes panes = {};
  int range = setting::kRange.default_value;        // row of cmbRange: 0 Private, 1 Public
  int selector = setting::kSelector.default_value;  // row of cmbSelector: the kind code
  int last_database_index =
      setting::kLastDatabaseIndex.default_value;  // row of cmbDatabase, -1 when none
  std::u16string last_database_name = {};
  bool operator==(const WindowSettings&) const = default;
};

// The edges are read only when they were saved and make a rectangle; otherwise `size_saved` is
// false.
[[nodiscard]] WindowSettings ReadWindowSettings(const SettingsStore& store);
// Writes everything; "SizeSaved" becomes 1 whatever `size_saved` says.
void WriteWindowSettings(SettingsStore& store, const WindowSettings& settings);

}  // namespace declarium
