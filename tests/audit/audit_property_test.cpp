// What a clean-up promises, on random projects: code means what it meant, nothing is left that
// could go, and a second one changes nothing.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <set>

#include "audit/audited.h"
#include "plan/project_modules.h"
#include "vb/name_use.h"

namespace declarium::audit {
namespace {

class RandomProject {
 public:
  explicit RandomProject(unsigned seed) : random_(seed) {}

  std::vector<SourceFile> Make() {
    std::vector<SourceFile> files;
    const auto modules = 2 + Below(4);
    for (unsigned i = 0; i < modules; ++i) {
      constexpr vb::ModuleKind kKinds[] = {vb::ModuleKind::kStandard, vb::ModuleKind::kStandard,
                                           vb::ModuleKind::kClass, vb::ModuleKind::kForm};
      const auto kind = i == 0 ? kKinds[0] : kKinds[Below(4)];
      files.push_back({"M" + std::to_string(i), Source(kind), kind});
    }
    return files;
  }

 private:
  unsigned Below(unsigned limit) { return random_() % limit; }

  std::string Name(char letter) { return letter + std::to_string(Below(4)); }

  // A name once in a module, as the language asks.
  std::string NewName(char letter) {
    for (int tries = 0; tries < 20; ++tries)
      if (auto name = Name(letter); taken_.insert(name).second) return name;
    return {};
  }

  std::string Source(vb::ModuleKind kind) {
    taken_.clear();
    is_standard_ = kind == vb::ModuleKind::kStandard;
    std::string source = "Option Explicit\r\n";
    for (auto count = Below(8); count > 0; --count) source += Declaration();
    if (Below(6) == 0) source += "Public " + Name('C') + "x As Long\r\n";
    for (auto count = Below(3); count > 0; --count) source += Procedure(count);
    return source;
  }

  std::string Declaration() {
    const std::string gap = Below(4) == 0 ? "\r\n" : "";
    const std::string comment = Below(4) == 0 ? "' comment\r\n" : "";
    const bool is_conditional = Below(10) == 0;
    const auto text = Text();
    if (text.empty()) return {};
    return is_conditional ? "#If DEBUGGING Then\r\n" + text + "#End If\r\n" : gap + comment + text;
  }

  std::string Text() {
    const std::string scope = is_standard_ && Below(3) == 0 ? "Public " : "Private ";
    switch (Below(4)) {
      case 0: {
        const auto name = NewName('C');
        const auto value = Below(3) == 0 ? Name('C') + " + 1" : std::to_string(Below(2));
        return name.empty() ? name : scope + "Const " + name + " = " + value + Tail();
      }
      case 1: {
        const auto name = NewName('D');
        return name.empty() ? name
                            : scope + "Declare Sub " + name + " Lib \"k\" (p As " + TypeName() +
                                  ")" + Tail();
      }
      case 2: {
        const auto name = NewName('T');
        return name.empty() ? name
                            : scope + "Type " + name + "\r\n  x As Long\r\n  m() As " + TypeName() +
                                  "\r\nEnd Type" + Tail();
      }
      default: {
        const auto name = NewName('C');
        return name.empty() ? name : scope + "Const " + name + " = 1" + Tail();
      }
    }
  }

  std::string TypeName() { return Below(2) == 0 ? "Long" : Name('T'); }
  std::string Tail() { return Below(5) == 0 ? " ' tail\r\n" : "\r\n"; }

  std::string Procedure(unsigned number) {
    std::string source = "Private Sub P" + std::to_string(number) + "()\r\n";
    if (Below(2) == 0) source += "  Dim v As " + TypeName() + "\r\n";
    for (auto count = Below(3); count > 0; --count) source += "  Debug.Print " + Name('C') + "\r\n";
    if (Below(3) == 0) source += "  " + Name('D') + " 0\r\n";
    if (Below(6) == 0)
      source += "  Debug.Print M" + std::to_string(Below(5)) + "." + Name('C') + "\r\n";
    return source + "End Sub\r\n";
  }

  std::mt19937 random_;
  std::set<std::string> taken_;
  bool is_standard_ = true;
};

// A project as it is read for a plan, which resolves names on its own.
class Names {
 public:
  explicit Names(const std::vector<SourceFile>& files) {
    for (const auto& [name, source, kind] : files) {
      names_.push_back(FromUtf8(name));
      texts_.push_back(FromUtf8(source));
      parsed_.push_back(vb::ReadModule(texts_.back(), kind));
      modules_.push_back({names_.back(), texts_.back(), &parsed_.back()});
    }
    project_.emplace(modules_);
  }

  struct CodeUse {
    std::string meaning;
    bool is_refused;  // a module's private name with the module in front
  };

  // What each use in code means, in order: the declarations without scope words, with what they
  // use in turn.
  std::vector<CodeUse> MeaningsInCode() {
    std::vector<CodeUse> meanings;
    for (std::size_t i = 0; i < modules_.size(); ++i) {
      for (const auto& use : vb::ReadNameUses(texts_[i], parsed_[i]))
        if (use.procedure != vb::kNoProcedure) {
          auto meaning = MeaningOf(i, use, 0);
          const bool is_refused = !use.qualifier.empty() && meaning.ends_with("{}");
          meanings.push_back({std::move(meaning), is_refused});
        }
    }
    return meanings;
  }

  [[nodiscard]] bool HasErrors() const {
    return std::ranges::any_of(parsed_, [](const auto& module) { return !module.errors.empty(); });
  }

 private:
  std::string MeaningOf(std::size_t module, const vb::NameUse& use, int depth) {
    std::set<std::string> texts;
    for (const auto& meaning : project_->Names().MeaningsOf(module, use)) {
      if (const auto* const declaration = project_->Names().DeclarationOf(meaning))
        texts.insert(TextOf(meaning.module, *declaration, depth));
    }
    std::string all = ToUtf8(use.name) + "{";
    for (const auto& text : texts) all += text + "|";
    return all + "}";
  }

  std::string TextOf(std::size_t module, const vb::Declaration& declaration, int depth) {
    auto text = ToUtf8(declaration.text);
    for (const std::string scope : {"Private ", "Public "})
      if (text.starts_with(scope)) text.erase(0, scope.size());
    if (depth > 4) return text;
    const auto begin = declaration.place.offset;
    for (const auto& use : vb::ReadNameUses(texts_[module], parsed_[module]))
      if (use.place.offset >= begin && use.place.offset < begin + declaration.text.size())
        text += MeaningOf(module, use, depth + 1);
    return text;
  }

  std::deque<std::u16string> names_;
  std::deque<std::u16string> texts_;
  std::deque<vb::Module> parsed_;
  std::vector<plan::ModuleText> modules_;
  std::optional<plan::ProjectModules> project_;
};

// The lines of a text that are in no order of their own: what is left has to be among them.
bool IsLeftOf(const std::string& before, const std::string& after) {
  std::istringstream then(before);
  std::istringstream now(after);
  std::string line;
  std::string old;
  while (std::getline(now, line)) {
    bool found = false;
    while (!found && std::getline(then, old))
      found = old == line || (line.starts_with("Public ") &&
                              (old == "Private " + line.substr(7) || old == line.substr(7)));
    if (!found) return false;
  }
  return true;
}

TEST(CleanUp, KeepsItsPromisesOnRandomProjects) {
  std::size_t edits = 0;
  std::size_t merged = 0;
  for (unsigned seed = 0; seed < 1500; ++seed) {
    const auto files = RandomProject(seed).Make();
    const Audited project(files);
    edits += project.audit.edits.size();
    const auto after = project.Applied();
    std::string shown = "seed " + std::to_string(seed) + "\n";
    for (std::size_t i = 0; i < files.size(); ++i) {
      shown += "---- " + files[i].name + "\n" + files[i].source + "---- then\n" + after[i].source;
      ASSERT_TRUE(IsLeftOf(files[i].source, after[i].source)) << shown;
    }
    SCOPED_TRACE(shown);
    Names before_names(files);
    Names after_names(after);
    ASSERT_FALSE(before_names.HasErrors());
    ASSERT_FALSE(after_names.HasErrors());
    const auto before = before_names.MeaningsInCode();
    const auto now = after_names.MeaningsInCode();
    ASSERT_EQ(before.size(), now.size());
    for (std::size_t i = 0; i < before.size(); ++i)
      ASSERT_TRUE(before[i].is_refused || before[i].meaning == now[i].meaning)
          << before[i].meaning << " became " << now[i].meaning;
    const Audited again(after);
    ASSERT_THAT(again.audit.edits, testing::IsEmpty());
    for (const auto& row : project.audit.rows)
      merged += row.fate.does == Fate::Does::kGoesForAnother ? 1 : 0;
  }
  // The projects are such that there is something to do.
  EXPECT_GT(edits, 1000U);
  EXPECT_GT(merged, 100U);
}

}  // namespace
}  // namespace declarium::audit
