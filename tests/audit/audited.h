// A project of modules given as source, audited.
#pragma once

#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "audit/audit.h"
#include "text/text.h"

namespace declarium::audit {

struct SourceFile {
  std::string name;
  std::string source;
  vb::ModuleKind kind = vb::ModuleKind::kStandard;
};

using Files = std::vector<SourceFile>;

// It stays where it is: its parts refer into each other.
class Audited {
 public:
  explicit Audited(const std::vector<SourceFile>& files, bool is_whole = true,
                   const Library* library = nullptr, Differing differing = Differing::kIsTold)
      : differing_(differing) {
    for (const auto& [name, source, kind] : files) {
      names_.push_back(FromUtf8(name));
      texts_.push_back(FromUtf8(source));
      parsed_.push_back(vb::ReadModule(texts_.back(), kind));
      modules_.push_back({names_.back(), texts_.back(), &parsed_.back()});
    }
    subject.modules = modules_;
    subject.is_whole = is_whole;
    if (library != nullptr) libraries_.Add(*library, std::nullopt);
    Again();
  }
  Audited(const Audited&) = delete;
  Audited& operator=(const Audited&) = delete;

  // Audits the subject as it is now.
  void Again() { audit = AuditProject(subject, libraries_, differing_); }

  // "Main.MAX" and "Main.RECT" by the rows in order, each with what is to be done; those to which
  // nothing is done and of which nothing is said are left out.
  [[nodiscard]] std::vector<std::string> Actions() const {
    std::vector<std::string> actions;
    for (std::size_t i = 0; i < audit.rows.size(); ++i)
      if (const auto action = ActionText(audit, i, subject); !action.empty())
        actions.push_back(NameOf(i) + ": " + action);
    return actions;
  }

  // "Main.MAX D601 MAX is not used"
  [[nodiscard]] std::vector<std::string> Findings() const {
    std::vector<std::string> findings;
    for (std::size_t i = 0; i < audit.rows.size(); ++i)
      for (const auto& [finding, form, other] : audit.rows[i].findings)
        findings.push_back(NameOf(i) + " " + std::string(check::RuleOf(finding.rule).number) + " " +
                           finding.message);
    return findings;
  }

  // The modules after the edits.
  [[nodiscard]] std::vector<SourceFile> Applied() const {
    std::vector<SourceFile> files;
    for (std::size_t i = 0; i < modules_.size(); ++i) {
      std::vector<LineEdit> edits;
      for (const auto& edit : audit.edits)
        if (edit.module == i) edits.push_back(edit);
      const auto text = Edited(texts_[i], TextEdits(ModuleLines(texts_[i]), edits));
      files.push_back({ToUtf8(names_[i]), ToUtf8(text), parsed_[i].kind});
    }
    return files;
  }

  Subject subject;
  Audit audit;

 private:
  [[nodiscard]] std::string NameOf(std::size_t row) const {
    const auto& [module, declaration, sort, is_public, elsewhere] = audit.rows[row].row;
    return ToUtf8(names_[module]) + "." + ToUtf8(declaration->name);
  }

  std::deque<std::u16string> names_;
  std::deque<std::u16string> texts_;
  std::deque<vb::Module> parsed_;
  std::vector<plan::ModuleText> modules_;
  check::KnownLibraries libraries_;
  Differing differing_;
};

}  // namespace declarium::audit
