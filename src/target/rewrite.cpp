#include "target/rewrite.h"

#include <algorithm>
#include <optional>
#include <span>

#include "text/edit.h"
#include "text/text.h"
#include "vb/definitions.h"
#include "vb/token.h"

namespace declarium {
namespace {

using vb::Declaration;

constexpr std::size_t kLongestLine = 1023;

// The types that a form gives to 32-bit VBA and to both.
std::u16string_view TypeForBoth(std::u16string_view type) {
  return type == u"LongLong" ? std::u16string_view() : type;
}

// Writes one declaration in the forms of VBA.
class FormWriter {
 public:
  FormWriter(const Declaration& declaration, const FormFor64& form, std::u16string_view line_end)
      : declaration_(declaration), form_(form), line_end_(line_end) {}

  // Whether 32 and 64 bits need two texts.
  [[nodiscard]] bool IsParted() const {
    return form_.HasLongLong() || !form_.signature.empty() || !form_.members.empty() ||
           !form_.missing.empty();
  }
  // What both bitnesses compile, or 32-bit VBA where it is parted.
  [[nodiscard]] std::u16string Narrow() const { return Written(false); }
  // What 64-bit VBA compiles.
  [[nodiscard]] std::u16string Wide() const {
    if (!form_.missing.empty())
      return u"' " + std::u16string(declaration_.name) + u": " + form_.missing;
    if (!form_.members.empty()) return MembersText();
    if (!form_.signature.empty()) return SignatureText();
    return Written(true);
  }

 private:
  [[nodiscard]] std::u16string Written(bool is_wide) const {
    std::vector<Edit> edits;
    if (const auto* external = declaration_.As<vb::External>()) {
      AddPtrSafe(*external, edits);
      if (!form_.wide_entry.empty()) AddWideEntry(*external, edits);
      AddTypes(external->parameters, is_wide, edits);
      AddResult(*external, is_wide, edits);
    } else if (const auto* record = declaration_.As<vb::Record>()) {
      AddTypes(record->members, is_wide, edits);
    }
    if (!form_.guessed.empty()) AddRemark(edits);
    std::ranges::stable_sort(edits, {}, &Edit::offset);
    return Edited(declaration_.text, edits);
  }

  [[nodiscard]] std::size_t Start() const { return declaration_.place.offset; }

  // Behind the word Declare.
  void AddPtrSafe(const vb::External& external, std::vector<Edit>& edits) const {
    if (!external.is_ptr_safe) edits.push_back({BehindDeclare(), 0, u" PtrSafe"});
  }
  // "DeclareWide" with the entry as alias.
  void AddWideEntry(const vb::External& external, std::vector<Edit>& edits) const {
    const auto offset_of = [&](std::u16string_view part) {
      return static_cast<std::size_t>(part.data() - declaration_.text.data());
    };
    edits.insert(edits.begin(), {BehindDeclare(), 0, u"Wide"});
    if (external.alias.empty()) {
      const auto behind_library = offset_of(external.library) + external.library.size() + 1;
      edits.push_back({behind_library, 0, u" Alias \"" + form_.wide_entry + u"\""});
    } else {
      edits.push_back({offset_of(external.alias), external.alias.size(), form_.wide_entry});
    }
  }
  [[nodiscard]] std::size_t BehindDeclare() const {
    vb::Tokenizer tokens(declaration_.text);
    for (auto token = tokens.Next(); token.kind != vb::TokenKind::kEnd; token = tokens.Next())
      if (token.IsWord(u"declare") || token.IsWord(u"declarewide")) return token.End();
    return 0;
  }

  template <class Values>
  void AddTypes(const Values& values, bool is_wide, std::vector<Edit>& edits) const {
    for (std::size_t i = 0; i < values.size() && i < form_.types.size(); ++i) {
      const std::u16string_view type = is_wide ? form_.types[i] : TypeForBoth(form_.types[i]);
      if (type.empty()) continue;
      AddType(values[i].type, values[i].place.offset + values[i].name.size() - Start(), type,
              edits);
    }
  }

  // `behind_name` is where a type character stands, or "As" would.
  void AddType(const vb::TypeReference& old, std::size_t behind_name, std::u16string_view type,
               std::vector<Edit>& edits) const {
    if (old.is_written) {
      const auto offset = static_cast<std::size_t>(old.name.data() - declaration_.text.data());
      edits.push_back({offset, old.name.size(), std::u16string(type)});
    } else {
      edits.push_back({behind_name, old.character == 0 ? 0U : 1U, u" As " + std::u16string(type)});
    }
  }

  // A result that a character behind the procedure's name says is said at the end instead.
  void AddResult(const vb::External& external, bool is_wide, std::vector<Edit>& edits) const {
    const std::u16string_view type = is_wide ? form_.result : TypeForBoth(form_.result);
    if (type.empty()) return;
    if (external.result.is_written) {
      AddType(external.result, 0, type, edits);
      return;
    }
    if (external.name_character != 0) {
      const auto behind_name = declaration_.name_place.offset + declaration_.name.size();
      edits.push_back({behind_name - Start(), 1, {}});
    }
    edits.push_back({declaration_.text.size(), 0, u" As " + std::u16string(type)});
  }

  // On the last line of a Declare, on the first of a Type.
  void AddRemark(std::vector<Edit>& edits) const {
    std::u16string remark = u" ' check: ";
    for (const auto& name : form_.guessed)
      remark += (&name == form_.guessed.data() ? u"" : u", ") + name;
    remark += form_.guessed.size() == 1 ? u" is taken for an address" : u" are taken for addresses";
    const auto end = declaration_.As<vb::External>()
                         ? declaration_.text.size()
                         : declaration_.name_place.offset + declaration_.name.size() - Start();
    edits.push_back({end, 0, std::move(remark)});
  }

  // Public or Private with what is behind it; may be empty.
  [[nodiscard]] std::u16string_view ScopeText(std::u16string_view word) const {
    vb::Tokenizer tokens(declaration_.text);
    for (auto token = tokens.Next(); token.kind != vb::TokenKind::kEnd; token = tokens.Next())
      if (token.IsWord(word)) return declaration_.text.substr(0, token.place.offset);
    return {};
  }

  [[nodiscard]] std::u16string SignatureText() const {
    const auto& external = *declaration_.As<vb::External>();
    std::u16string text(ScopeText(u"declare"));
    text += external.is_function ? u"Declare PtrSafe Function " : u"Declare PtrSafe Sub ";
    text += declaration_.name;
    text += u" Lib \"" + std::u16string(external.library) + u"\" ";
    if (form_.alias != declaration_.name) text += u"Alias \"" + form_.alias + u"\" ";
    return text + form_.signature;
  }

  [[nodiscard]] std::u16string MembersText() const {
    std::u16string text(ScopeText(u"type"));
    text += u"Type " + std::u16string(declaration_.name) + std::u16string(line_end_);
    for (const auto& member : form_.members)
      text += Indentation() + member + std::u16string(line_end_);
    return text + u"End Type";
  }

  // That of the first member.
  [[nodiscard]] std::u16string Indentation() const {
    const auto& members = declaration_.As<vb::Record>()->members;
    if (members.empty()) return {};
    const auto& place = members.front().place;
    return std::u16string(
        declaration_.text.substr(place.offset - Start() - (place.column - 1), place.column - 1));
  }

  const Declaration& declaration_;
  const FormFor64& form_;
  std::u16string_view line_end_;
};

// Lines that the language would refuse for their length are parted behind a comma.
std::u16string WithoutLongLines(std::u16string_view text, std::u16string_view line_end) {
  std::u16string result;
  for (std::size_t begin = 0; begin < text.size();) {
    auto end = text.find_first_of(u"\r\n", begin);
    if (end == text.npos) end = text.size();
    auto line = text.substr(begin, end - begin);
    while (line.size() > kLongestLine) {
      const auto comma = line.rfind(u", ", kLongestLine - 4);
      if (comma == line.npos) break;
      result += line.substr(0, comma + 1);
      result += u" _" + std::u16string(line_end) + u"  ";
      line.remove_prefix(comma + 2);
    }
    result += line;
    const auto next = std::min(text.find_first_not_of(u"\r\n", end), text.size());
    result += text.substr(end, next - end);
    begin = next;
  }
  return result;
}

// A declaration that the target wants otherwise, and the lines that it stands on.
struct Job {
  const Declaration* declaration = nullptr;
  const FormFor64* form = nullptr;
  std::size_t begin = 0;   // of its first line
  std::size_t end = 0;     // behind the line end of its last line
  bool keeps_vb6 = false;  // its old text goes under #Else
};

class Rewriter {
 public:
  Rewriter(std::u16string_view text, const vb::Module& module, vb::Audience target,
           std::span<const FormFor64> forms)
      : text_(text),
        module_(module),
        target_(target),
        forms_(forms),
        in_64_(vb::BranchesOf(module, target == vb::Audience::kTwinBasic ? vb::Target::kTwinBasic
                                                                         : vb::Target::kVba7x64)),
        in_vb6_(vb::BranchesOf(module, vb::Target::kVb6)),
        line_end_(FirstLineEnd(text)) {}

  Rewriting Rewrite() {
    for (std::size_t i = 0; i < forms_.size(); ++i) Consider(module_.declarations[i], forms_[i]);
    std::size_t done = 0;
    for (std::size_t i = 0; i < jobs_.size();) {
      const auto count = RunFrom(i);
      result_.text += text_.substr(done, jobs_[i].begin - done);
      const auto start = result_.text.size();
      AddRun(std::span(jobs_).subspan(i, count));
      done = jobs_[i + count - 1].end;
      result_.replacements.push_back({jobs_[i].begin, done, result_.text.substr(start)});
      i += count;
    }
    result_.text += text_.substr(done);
    std::ranges::stable_sort(result_.changes, {}, &DeclarationChange::line);
    return std::move(result_);
  }

 private:
  static std::u16string_view FirstLineEnd(std::u16string_view text) {
    const auto at = text.find_first_of(u"\r\n");
    if (at == text.npos) return u"\r\n";
    return text.substr(at).starts_with(u"\r\n") ? text.substr(at, 2) : text.substr(at, 1);
  }

  void Consider(const Declaration& declaration, const FormFor64& form) {
    const auto* external = declaration.As<vb::External>();
    const auto* record = declaration.As<vb::Record>();
    const bool can_differ = external != nullptr || record != nullptr;
    if (!can_differ || in_64_[declaration.condition] == vb::Branch::kLeftOut) return;
    const bool is_safe = external == nullptr || external->is_ptr_safe;
    if (form.IsSame() && is_safe) return;
    if (record != nullptr && HoldsDirective(declaration.text)) {
      Leave(declaration, "its members depend on conditions");
      return;
    }
    if (HoldsError(declaration)) {
      Leave(declaration, "some of it is no Visual Basic");
      return;
    }
    Job job{&declaration, &form, LineBegin(declaration.place.offset), LineEndBehind(declaration),
            KeepsVb6(declaration)};
    if (!StandsAlone(job)) {
      Leave(declaration, "it shares its line with another statement");
      return;
    }
    jobs_.push_back(job);
  }

  // Whether some line begins with "#".
  static bool HoldsDirective(std::u16string_view text) {
    vb::Tokenizer tokens(text);
    bool begins = true;
    for (auto token = tokens.Next(); token.kind != vb::TokenKind::kEnd; token = tokens.Next()) {
      if (begins && token.text.starts_with(u'#')) return true;
      if (!token.IsSpace()) begins = token.kind == vb::TokenKind::kLineEnd;
    }
    return false;
  }

  [[nodiscard]] bool HoldsError(const Declaration& declaration) const {
    return std::ranges::any_of(module_.errors, [&](const vb::SyntaxError& error) {
      return error.place.line >= declaration.place.line && error.place.line <= declaration.end_line;
    });
  }

  [[nodiscard]] bool KeepsVb6(const Declaration& declaration) const {
    return target_ == vb::Audience::kVba7 && in_vb6_[declaration.condition] != vb::Branch::kLeftOut;
  }

  void Leave(const Declaration& declaration, std::string reason) {
    result_.changes.push_back({.line = declaration.place.line,
                               .name = std::u16string(declaration.name),
                               .is_record = declaration.As<vb::Record>() != nullptr,
                               .reason = std::move(reason),
                               .before = std::u16string(declaration.text),
                               .after = {},
                               .missing = {}});
  }

  [[nodiscard]] std::size_t LineBegin(std::size_t offset) const {
    const auto before = text_.substr(0, offset).find_last_of(u"\r\n");
    return before == text_.npos ? 0 : before + 1;
  }
  [[nodiscard]] std::size_t LineEndBehind(const Declaration& declaration) const {
    const auto end = text_.find_first_of(u"\r\n", EndOf(declaration));
    if (end == text_.npos) return text_.size();
    return end + (text_.substr(end).starts_with(u"\r\n") ? 2 : 1);
  }
  [[nodiscard]] static std::size_t EndOf(const Declaration& declaration) {
    return declaration.place.offset + declaration.text.size();
  }

  // Nothing but blanks in front and a comment behind.
  [[nodiscard]] bool StandsAlone(const Job& job) const {
    const auto& declaration = *job.declaration;
    const auto front = text_.substr(job.begin, declaration.place.offset - job.begin);
    auto behind = text_.substr(EndOf(declaration), job.end - EndOf(declaration));
    behind.remove_prefix(std::min(behind.find_first_not_of(u" \t\r\n"), behind.size()));
    return front.find_first_not_of(u" \t") == front.npos &&
           (behind.empty() || behind.starts_with(u"'"));
  }

  // How many jobs from `first` on share one #If: those that follow each other line by line.
  [[nodiscard]] std::size_t RunFrom(std::size_t first) const {
    std::size_t count = 1;
    if (!jobs_[first].keeps_vb6) return count;
    while (first + count < jobs_.size() && jobs_[first + count].keeps_vb6 &&
           jobs_[first + count].begin == jobs_[first + count - 1].end)
      ++count;
    return count;
  }

  void AddRun(std::span<const Job> run) {
    if (run.front().keeps_vb6) {
      AddLine(run.front(), u"#If VBA7 Then");
      for (const auto& job : run) AddLine(job, TextFor(job));
      AddLine(run.front(), u"#Else");
      for (const auto& job : run) AddOldLines(job);
      AddLastLine(run.back(), u"#End If");
    } else {
      // What stands behind the declaration stays behind it.
      result_.text += Front(run.front());
      result_.text += TextFor(run.front());
      const auto end = EndOf(*run.front().declaration);
      result_.text += text_.substr(end, run.front().end - end);
    }
    for (const auto& job : run) Report(job);
  }

  [[nodiscard]] std::u16string_view Front(const Job& job) const {
    return text_.substr(job.begin, job.declaration->place.offset - job.begin);
  }
  void AddLine(const Job& job, std::u16string_view line) {
    result_.text += Front(job);
    result_.text += line;
    result_.text += line_end_;
  }
  void AddOldLines(const Job& job) {
    const auto old = text_.substr(job.begin, job.end - job.begin);
    result_.text += old;
    if (job.end == text_.size() && old.find_last_of(u"\r\n") != old.size() - 1)
      result_.text += line_end_;
  }
  // The last line of the source may have no line end.
  void AddLastLine(const Job& job, std::u16string_view line) {
    result_.text += Front(job);
    result_.text += line;
    const auto old = text_.substr(job.begin, job.end - job.begin);
    if (old.find_last_of(u"\r\n") == old.size() - 1) result_.text += line_end_;
  }

  [[nodiscard]] std::u16string TextFor(const Job& job) const {
    const FormWriter writer(*job.declaration, *job.form, line_end_);
    auto narrow = WithoutLongLines(writer.Narrow(), line_end_);
    if (!writer.IsParted()) return narrow;
    const std::u16string next = std::u16string(line_end_) + std::u16string(Front(job));
    return u"#If Win64 Then" + next + WithoutLongLines(writer.Wide(), line_end_) + next + u"#Else" +
           next + narrow + next + u"#End If";
  }

  // "PtrSafe; LongPtr for hWnd, the result"
  static std::string ReasonOf(const vb::External& external, const FormFor64& form) {
    std::vector<std::string> reasons;
    if (!external.is_ptr_safe) reasons.emplace_back("PtrSafe");
    for (const std::u16string_view type : {u"LongPtr", u"LongLong"}) {
      const auto names = NamesOf(external, form, type);
      if (!names.empty()) reasons.push_back(ToUtf8(type) + " for " + names);
    }
    if (!form.signature.empty()) reasons.emplace_back("other parameters in 64 bits");
    if (!form.wide_entry.empty()) reasons.push_back("wide text by " + ToUtf8(form.wide_entry));
    return Joined(reasons, "; ");
  }

  // What gets the type, the result at last.
  static std::string NamesOf(const vb::External& external, const FormFor64& form,
                             std::u16string_view type) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < form.types.size() && i < external.parameters.size(); ++i)
      if (form.types[i] == type) names.push_back(ToUtf8(external.parameters[i].name));
    if (form.result == type) names.emplace_back("the result");
    return Joined(names, ", ");
  }

  static std::string Joined(const std::vector<std::string>& texts, std::string_view between) {
    std::string joined;
    for (const auto& text : texts) {
      if (!joined.empty()) joined += between;
      joined += text;
    }
    return joined;
  }

  void Report(const Job& job) {
    const auto& declaration = *job.declaration;
    const bool is_record = declaration.As<vb::Record>() != nullptr;
    const auto missing = ToUtf8(job.form->missing);
    auto reason = !missing.empty() ? missing
                  : is_record      ? std::string("its layout changes")
                                   : ReasonOf(*declaration.As<vb::External>(), *job.form);
    if (!job.form->guessed.empty()) reason += "; addresses by their names";
    result_.changes.push_back({.line = declaration.place.line,
                               .name = std::u16string(declaration.name),
                               .is_record = is_record,
                               .reason = std::move(reason),
                               .before = std::u16string(declaration.text),
                               .after = TextFor(job),
                               .is_guess = !job.form->guessed.empty(),
                               .missing = missing});
  }

  std::u16string_view text_;
  const vb::Module& module_;
  vb::Audience target_;
  std::span<const FormFor64> forms_;
  std::vector<vb::Branch> in_64_;
  std::vector<vb::Branch> in_vb6_;
  std::u16string_view line_end_;
  std::vector<Job> jobs_;
  Rewriting result_;
};

}  // namespace

Rewriting RewriteDeclarations(std::u16string_view text, const vb::Module& module,
                              vb::Audience target, std::span<const FormFor64> forms) {
  if (target == vb::Audience::kVb6) return {std::u16string(text), {}, {}};
  return Rewriter(text, module, target, forms).Rewrite();
}

Rewriting RewriteDeclarations(std::u16string_view text, vb::ModuleKind kind, vb::Audience target,
                              const KnowledgeOf64& knowledge) {
  const auto module = vb::ReadModule(text, kind);
  return RewriteDeclarations(text, module, target, knowledge.FormsOf(module));
}

}  // namespace declarium
