#include "cli/baseline.h"

#include <nlohmann/json.hpp>

#include "cli/library_files.h"

#include "check/rule.h"
#include "library/file_io.h"

namespace declarium::cli {
namespace {

using nlohmann::json;

std::string TextAt(const json& object, const char* name) {
  const auto found = object.find(name);
  return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

CommandFailed NoBaseline(const std::string& file) {
  return {ExitStatus::kFileFailed, file + ": is no output of check --json"};
}

}  // namespace

Baseline::Baseline(const std::string& file) {
  const auto bytes = ReadWholeFile(PathOf(file));
  if (!bytes) throw FileFailed(bytes.error());
  bool is_first = true;
  for (std::size_t start = 0; start < bytes->size();) {
    const auto end = std::min(bytes->find('\n', start), bytes->size());
    const auto object = json::parse(bytes->substr(start, end - start), nullptr, false);
    start = end + 1;
    if (!object.is_object()) throw NoBaseline(file);
    if (std::exchange(is_first, false)) {
      if (TextAt(object, "command") != "check") throw NoBaseline(file);
      continue;
    }
    ++known_[{TextAt(object, "source"), TextAt(object, "rule"), TextAt(object, "name")}];
  }
  if (is_first) throw NoBaseline(file);
}

bool Baseline::Take(const SourceFinding& found) {
  const auto& finding = found.finding;
  const auto known =
      known_.find({found.source, std::string(check::RuleOf(finding.rule).number), finding.name});
  if (known == known_.end() || known->second == 0) return false;
  --known->second;
  return true;
}

}  // namespace declarium::cli
