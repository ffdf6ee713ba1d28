#include "shell/settings.h"

#include "text/text.h"

namespace declarium {

namespace {

// Red, green and blue, or a color of the system's by its number.
bool IsColor(std::uint32_t color) {
  constexpr std::uint32_t kLastSystemColor = 0x8000001E;
  return color <= 0xFFFFFF || (color >= 0x80000000 && color <= kLastSystemColor);
}

std::uint32_t ReadColor(const SettingsStore& store, const IntegerSetting& setting) {
  const auto color = static_cast<std::uint32_t>(ReadSetting(store, setting));
  return IsColor(color) ? color : static_cast<std::uint32_t>(setting.default_value);
}

void WriteColor(SettingsStore& store, const IntegerSetting& setting, std::uint32_t color) {
  WriteSetting(store, setting, static_cast<std::int32_t>(color));
}

bool IsRectangle(const WindowEdges& edges) {
  return edges.left < edges.right && edges.top < edges.bottom;
}

WindowEdges ReadEdges(const SettingsStore& store) {
  return {.left = ReadSetting(store, setting::kLeftEdge),
          .top = ReadSetting(store, setting::kUpperEdge),
          .right = ReadSetting(store, setting::kRightEdge),
          .bottom = ReadSetting(store, setting::kLowerEdge)};
}

void WriteEdges(SettingsStore& store, const WindowEdges& edges) {
  WriteSetting(store, setting::kUpperEdge, edges.top);
  WriteSetting(store, setting::kLeftEdge, edges.left);
  WriteSetting(store, setting::kRightEdge, edges.right);
  WriteSetting(store, setting::kLowerEdge, edges.bottom);
}

PaneSizes ReadPaneSizes(const SettingsStore& store) {
  return {.main_width = ReadSetting(store, setting::kMainWidth),
          .rtb_height = ReadSetting(store, setting::kRtbHeight),
          .add_height = ReadSetting(store, setting::kAddHeight)};
}

void WritePaneSizes(SettingsStore& store, const PaneSizes& panes) {
  WriteSetting(store, setting::kRtbHeight, panes.rtb_height);
  WriteSetting(store, setting::kMainWidth, panes.main_width);
  WriteSetting(store, setting::kAddHeight, panes.add_height);
}

}  // namespace

std::int32_t ReadSetting(const SettingsStore& store, const IntegerSetting& setting) {
  const SettingValue value = store.GetValue(kSettingsKey, setting.name, setting.default_value);
  const std::int32_t integer = ToInteger(value).value_or(setting.default_value);
  const bool in_range = setting.least <= integer && integer <= setting.most;
  return in_range ? integer : setting.default_value;
}

std::u16string ReadSetting(const SettingsStore& store, const TextSetting& setting) {
  return ToText(store.GetValue(kSettingsKey, setting.name, std::u16string(setting.default_value)));
}

void WriteSetting(SettingsStore& store, const IntegerSetting& setting, std::int32_t value) {
  store.SetValue(kSettingsKey, setting.name, ValueType::kInteger, value);
}

void WriteSetting(SettingsStore& store, const TextSetting& setting, std::u16string_view value) {
  store.SetValue(kSettingsKey, setting.name, ValueType::kText, std::u16string(value));
}

DisplayColors ReadColors(const SettingsStore& store) {
  return {.keyword = ReadColor(store, setting::kKeywordColor),
          .comment = ReadColor(store, setting::kCommentColor),
          .normal = ReadColor(store, setting::kNormalColor)};
}

void WriteColors(SettingsStore& store, const DisplayColors& colors) {
  WriteColor(store, setting::kKeywordColor, colors.keyword);
  WriteColor(store, setting::kCommentColor, colors.comment);
  WriteColor(store, setting::kNormalColor, colors.normal);
}

vb::Audience ReadAudience(const SettingsStore& store, vb::Audience otherwise) {
  return vb::FindAudience(ReadSetting(store, setting::kTarget)).value_or(otherwise);
}

void WriteAudience(SettingsStore& store, vb::Audience target) {
  WriteSetting(store, setting::kTarget, FromUtf8(vb::AudienceName(target)));
}

WindowSettings ReadWindowSettings(const SettingsStore& store) {
  const WindowEdges edges = ReadEdges(store);
  const bool size_saved = ReadSetting(store, setting::kSizeSaved) == 1 && IsRectangle(edges);
  return {.size_saved = size_saved,
          .edges = size_saved ? edges : WindowEdges{},
          .show_command = ReadSetting(store, setting::kWindowState),
          .panes = ReadPaneSizes(store),
          .range = ReadSetting(store, setting::kRange),
          .selector = ReadSetting(store, setting::kSelector),
          .last_database_index = ReadSetting(store, setting::kLastDatabaseIndex),
          .last_database_name = ReadSetting(store, setting::kLastDatabaseName)};
}

void WriteWindowSettings(SettingsStore& store, const WindowSettings& settings) {
  WriteEdges(store, settings.edges);
  WriteSetting(store, setting::kWindowState, settings.show_command);
  WritePaneSizes(store, settings.panes);
  WriteSetting(store, setting::kSizeSaved, 1);
  WriteSetting(store, setting::kSelector, settings.selector);
  WriteSetting(store, setting::kRange, settings.range);
  WriteSetting(store, setting::kLastDatabaseIndex, settings.last_database_index);
  WriteSetting(store, setting::kLastDatabaseName, settings.last_database_name);
}

}  // namespace declarium
