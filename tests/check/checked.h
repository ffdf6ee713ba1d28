// Checks source in memory against the bundled libraries.
#pragma once

#include <deque>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "check/check.h"
#include "library/library_file.h"
#include "text/text.h"

namespace declarium::check {

// The bundled libraries with their facts, read once.
class Bundled {
 public:
  static Bundled& Get() {
    static Bundled bundled;
    return bundled;
  }

  Reference reference;

 private:
  Bundled() {
    const auto folder = std::filesystem::path(DECLARIUM_SOURCE_DIR) / "data";
    std::set<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      if (entry.path().extension() == ".api") paths.insert(entry.path());
    }
    for (const auto& path : paths) {
      libraries_.push_back(LoadLibraryFile(path).value());
      facts_.push_back(FactsFile::OpenBeside(path).value());
      reference.Add(libraries_.back(), &facts_.back());
    }
  }

  std::deque<Library> libraries_;
  std::deque<FactsFile> facts_;
};

struct Source {
  std::string text;
  vb::ModuleKind kind = vb::ModuleKind::kStandard;
};

// Findings with what they refer to.
struct CheckedSource {
  std::deque<std::u16string> texts;
  std::deque<vb::Module> parsed;
  std::vector<Finding> findings;

  // "D301 at 2:5" and so on.
  [[nodiscard]] std::vector<std::string> Rules() const {
    std::vector<std::string> rules;
    for (const auto& finding : findings) rules.emplace_back(RuleOf(finding.rule).number);
    return rules;
  }
};

inline CheckedSource CheckSources(const std::vector<Source>& sources, Subject::Form form,
                                  const Options& options) {
  CheckedSource checked;
  Subject subject;
  subject.form = form;
  for (const auto& source : sources) {
    const auto& text = checked.texts.emplace_back(FromUtf8(source.text));
    const auto& parsed = checked.parsed.emplace_back(vb::ReadModule(text, source.kind));
    subject.modules.push_back({text, &parsed});
  }
  checked.findings = Check(subject, Bundled::Get().reference, options);
  return checked;
}

inline CheckedSource CheckSource(const std::string& source, const Options& options = {}) {
  return CheckSources({{source}}, Subject::Form::kModules, options);
}

}  // namespace declarium::check
