#include "cli/planned_insertion.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>

#include "cli/library_files.h"
#include "cli/line_difference.h"
#include "cli/mending.h"
#include "cli/output.h"

#include "library/file_name.h"
#include "text/edit.h"
#include "text/text.h"

namespace declarium::cli {
namespace {

// Where each line begins, and the end of the text.
std::vector<std::size_t> LineStarts(std::u16string_view text) {
  std::vector<std::size_t> starts = {0};
  std::size_t at = 0;
  while ((at = text.find_first_of(u"\r\n", at)) != text.npos) {
    at += text.substr(at).starts_with(kCrLf) ? 2 : 1;
    if (at < text.size()) starts.push_back(at);
  }
  if (!text.empty()) starts.push_back(text.size());
  return starts;
}

// The line end of the line that ends at `end`; else of the text's first; CR LF without one.
std::u16string_view LineEndBefore(std::u16string_view text, std::size_t end) {
  const auto front = text.substr(0, end);
  if (front.ends_with(kCrLf)) return kCrLf;
  if (front.ends_with(u'\n')) return u"\n";
  if (front.ends_with(u'\r')) return u"\r";
  const auto first = text.find_first_of(u"\r\n");
  if (first == text.npos || text.substr(first).starts_with(kCrLf)) return kCrLf;
  return text.substr(first, 1);
}

// The lines of the text that change.
std::vector<Replacement> ReplacementsOf(std::u16string_view text,
                                        const std::vector<plan::LineInsertion>& insertions) {
  const auto starts = LineStarts(text);
  std::vector<Replacement> replacements;
  for (const auto& [line, lines] : insertions) {
    const auto at = starts[std::min<std::size_t>(line - 1, starts.size() - 1)];
    const auto line_end = LineEndBefore(text, at);
    const auto written = Replace(lines, kCrLf, line_end) + std::u16string(line_end);
    const bool has_end = at == 0 || text[at - 1] == u'\n' || text[at - 1] == u'\r';
    if (has_end) {
      replacements.push_back({at, at, written});
    } else {
      // Behind the last line, which lacks its end.
      const auto last = starts[starts.size() - 2];
      const auto whole = std::u16string(text.substr(last)).append(line_end).append(written);
      replacements.push_back({last, text.size(), whole});
    }
  }
  return replacements;
}

std::string WhereText(const plan::Found& found) {
  return OneLine(found.name) + ":" + std::to_string(found.line);
}

// The lines of a declaration, each behind `front`.
void PrintLines(const Session& session, std::string_view front, std::u16string_view text) {
  const auto lines = Lines(text);
  std::size_t start = 0;
  while (start < lines.size()) {
    const auto end = std::min(lines.find('\n', start), lines.size());
    session.streams.out << front << std::string_view(lines).substr(start, end - start) << '\n';
    start = end + 1;
  }
}

void PrintAsText(const Session& session, const plan::PlannedEntry& entry) {
  auto& out = session.streams.out;
  const bool is_out = entry.does == plan::Does::kInsert && entry.is_left_out;
  out << (is_out ? "leave" : plan::DoesText(entry.does)) << '\t'
      << QualifiedName(entry.kind, entry.name);
  if (entry.found) out << '\t' << WhereText(*entry.found);
  if (entry.does == plan::Does::kClash) out << '\t' << plan::HolderText(entry.found->holder);
  if (!entry.new_name.empty()) out << "\tas " << OneLine(entry.new_name);
  out << '\n';
  if (entry.does != plan::Does::kDiffers && entry.does != plan::Does::kClash) return;
  PrintLines(session, "    there: ", entry.found->text);
  PrintLines(session, "    here:  ", entry.text);
}

void PrintAsJson(const Session& session, const plan::PlannedEntry& entry) {
  auto object = JsonItem(entry.kind, entry.name);
  object["does"] = plan::DoesText(entry.does);
  if (entry.found) object["where"] = WhereText(*entry.found);
  if (entry.does == plan::Does::kClash) object["holder"] = plan::HolderText(entry.found->holder);
  if (entry.does != plan::Does::kPresent) object["text"] = ToUtf8(entry.text);
  if (entry.does == plan::Does::kDiffers || entry.does == plan::Does::kClash)
    object["there"] = ToUtf8(entry.found->text);
  if (!entry.via.empty()) object["via"] = ToUtf8(entry.via);
  if (!entry.new_name.empty()) object["as"] = ToUtf8(entry.new_name);
  if (entry.is_left_out) object["left_out"] = true;
  PrintJson(session, object);
}

}  // namespace

ProjectForPlans::ProjectForPlans(const SourceProject& project)
    : modules_(TextsOf(project), project.project.name, project.project.constants) {}

std::vector<plan::ModuleText> ProjectForPlans::TextsOf(const SourceProject& project) {
  std::vector<plan::ModuleText> texts;
  for (const auto& module : project.modules) {
    auto& name = names_.emplace_back(module.parsed.Name());
    if (name.empty()) name = NameOfPath(PathOf(module.name).stem());
    texts.push_back({name, module.text, &module.parsed});
  }
  return texts;
}

void DefineScope(CLI::App& command, std::string& scope) {
  command
      .add_option("--scope", scope,
                  "Scope word in front of each declaration; Private when left out")
      ->transform(OneOf({"Private", "Public"}))
      ->type_name("Private|Public");
}

Writing WritingOf(bool is_dry_run, bool is_difference) {
  if (is_difference) return Writing::kDifference;
  return is_dry_run ? Writing::kDryRun : Writing::kFile;
}

void PrintPlan(const Session& session, const plan::InsertionPlan& plan) {
  for (const auto& entry : plan.Entries()) {
    if (!entry.is_needed) continue;
    if (session.IsJson()) {
      PrintAsJson(session, entry);
    } else {
      PrintAsText(session, entry);
    }
  }
}

void CarryOut(const Session& session, const SourceModule& module,
              const std::vector<plan::LineInsertion>& insertions, Writing writing,
              const Encoding& otherwise) {
  if (writing == Writing::kDifference && !session.IsJson())
    session.streams.out << UnifiedDifference(module.name, module.text,
                                             ReplacementsOf(module.text, insertions));
  if (writing != Writing::kFile || insertions.empty()) return;
  MendFile(session, module.name, module.text, EditsOf(module.text, insertions), otherwise);
}

std::vector<Edit> EditsOf(std::u16string_view text,
                          const std::vector<plan::LineInsertion>& insertions) {
  std::vector<Edit> edits;
  for (auto& [begin, end, lines] : ReplacementsOf(text, insertions))
    edits.push_back({begin, end - begin, lines});
  return edits;
}

}  // namespace declarium::cli
