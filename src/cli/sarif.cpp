#include "cli/sarif.h"

#include <nlohmann/json.hpp>

#include "check/rule.h"
#include "text/text.h"

namespace declarium::cli {
namespace {

using nlohmann::ordered_json;

bool IsPlainInUri(char byte) {
  const bool is_letter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
  return is_letter || (byte >= '0' && byte <= '9') ||
         std::string_view("-._~/").find(byte) != std::string_view::npos;
}

// A path as a URI reference: relative as it is, an absolute one with its scheme.
std::string UriOf(const std::string& path) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  const bool has_drive = path.size() > 2 && path[1] == ':';
  std::string uri = has_drive ? "file:///" : path.starts_with('/') ? "file://" : "";
  for (std::size_t i = 0; i < path.size(); ++i) {
    const char byte = path[i] == '\\' ? '/' : path[i];
    if (IsPlainInUri(byte) || (has_drive && i == 1)) {
      uri += byte;
    } else {
      const auto code = static_cast<unsigned char>(byte);
      uri += {'%', kDigits[code / 16], kDigits[code % 16]};
    }
  }
  return uri;
}

ordered_json TextObject(std::string_view text) {
  return {{"text", text}};
}

ordered_json RuleObject(const check::Rule& rule) {
  ordered_json object = {{"id", rule.number},
                         {"shortDescription", TextObject(rule.title)},
                         {"fullDescription", TextObject(rule.consequence)},
                         {"defaultConfiguration", {{"level", check::LevelText(rule.level)}}}};
  if (!rule.right.empty()) {
    object["help"] = TextObject(std::string(rule.consequence) + "\n\nWrong:\n" +
                                std::string(rule.wrong) + "\n\nRight:\n" + std::string(rule.right));
  }
  return object;
}

ordered_json FixObject(const SourceFinding& found) {
  auto replacements = ordered_json::array();
  for (const auto& edit : found.finding.edits) {
    replacements.push_back(
        {{"deletedRegion", {{"charOffset", edit.offset}, {"charLength", edit.length}}},
         {"insertedContent", TextObject(ToUtf8(edit.text))}});
  }
  return {{"artifactChanges",
           ordered_json::array({{{"artifactLocation", {{"uri", UriOf(found.source)}}},
                                 {"replacements", std::move(replacements)}}})}};
}

ordered_json ResultObject(const SourceFinding& found) {
  const auto& finding = found.finding;
  const auto& rule = check::RuleOf(finding.rule);
  ordered_json result = {
      {"ruleId", rule.number},
      {"ruleIndex", &rule - check::Rules().data()},
      {"level", check::LevelText(finding.level)},
      {"message", TextObject(finding.message)},
      {"locations",
       ordered_json::array(
           {{{"physicalLocation",
              {{"artifactLocation", {{"uri", UriOf(found.source)}}},
               {"region",
                {{"startLine", finding.place.line}, {"startColumn", finding.place.column}}}}}}})}};
  if (!finding.edits.empty() && !found.is_mended)
    result["fixes"] = ordered_json::array({FixObject(found)});
  return result;
}

}  // namespace

ordered_json SarifLog(std::span<const SourceFinding> findings, const std::string& version) {
  auto rules = ordered_json::array();
  for (const auto& rule : check::Rules()) rules.push_back(RuleObject(rule));
  auto results = ordered_json::array();
  for (const auto& found : findings) results.push_back(ResultObject(found));
  const ordered_json driver = {
      {"name", "declarium-cli"}, {"version", version}, {"rules", std::move(rules)}};
  return {{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
          {"version", "2.1.0"},
          {"runs", ordered_json::array({{{"tool", {{"driver", driver}}},
                                         {"columnKind", "utf16CodeUnits"},
                                         {"results", std::move(results)}}})}};
}

}  // namespace declarium::cli
