#include "plan/insertion_plan.h"

#include <algorithm>
#include <map>
#include <utility>

#include "source/item_text.h"
#include "text/text.h"
#include "vb/name.h"
#include "vb/name_use.h"

namespace declarium::plan {
namespace {

// Lines without the end of the last.
std::u16string_view WithoutLastEnd(std::u16string_view text) {
  while (text.ends_with(kCrLf)) text.remove_suffix(kCrLf.size());
  return text;
}

std::unordered_map<std::u16string, std::u16string>& NamesFor(NewNames& names, Kind kind) {
  return kind == Kind::kType ? names.records : names.values;
}

}  // namespace

InsertionPlan::InsertionPlan(ProjectModules& project, std::size_t module,
                             std::span<const WantedItem> wanted, const PlanOptions& options)
    : project_(project), module_(module), options_(options) {
  const bool is_standard = project.At(module).parsed->kind == vb::ModuleKind::kStandard;
  scope_ = is_standard ? options.scope : vb::Scope::kPrivate;
  ReadSources(wanted);
  FindNeeds();
  Decide();
  Renew();
}

std::u16string InsertionPlan::Rewritten(std::u16string_view text) const {
  if (options_.target == vb::Audience::kVb6) return std::u16string(text);
  const std::u16string lines = std::u16string(text).append(kCrLf);
  auto rewriting =
      RewriteDeclarations(lines, vb::ModuleKind::kStandard, options_.target, *options_.knowledge);
  return std::u16string(WithoutLastEnd(rewriting.text));
}

void InsertionPlan::ReadSources(std::span<const WantedItem> wanted) {
  const std::u16string_view word = scope_ == vb::Scope::kPublic ? u"Public" : u"Private";
  for (const auto& [kind, name, item, level, via] : wanted) {
    auto& entry = entries_.emplace_back();
    entry.kind = kind;
    entry.name = name;
    entry.level = level;
    entry.via = via;
    auto& source = sources_.emplace_back();
    AppendItemText(kind, name, item, word, source.text);
    source.text = WithoutLastEnd(source.text);
    source.rewritten = Rewritten(source.text);
    source.module = vb::ReadModule(source.rewritten);
  }
}

void InsertionPlan::Decide() {
  std::vector<const vb::Module*> modules;
  modules.reserve(sources_.size());
  for (const auto& source : sources_) modules.push_back(&source.module);
  PresenceFinder finder(project_, module_, options_.target, modules);
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    auto& entry = entries_[i];
    auto presence = finder.Find(entry.kind, entry.name, sources_[i].module);
    entry.does = presence.does;
    entry.found = std::move(presence.found);
    sources_[i].branches = std::move(presence.branches);
  }
}

NewNames InsertionPlan::Renames() const {
  NewNames names;
  for (const auto& entry : entries_)
    if (entry.IsInserted() && !entry.new_name.empty())
      NamesFor(names, entry.kind).emplace(LowerCase(entry.name), entry.new_name);
  return names;
}

void InsertionPlan::FindNeeds() {
  std::map<std::pair<Kind, std::u16string>, std::size_t> positions;
  for (std::size_t i = 0; i < entries_.size(); ++i)
    positions.emplace(std::pair(entries_[i].kind, LowerCase(entries_[i].name)), i);
  for (const auto& source : sources_) {
    auto& needs = needs_.emplace_back();
    for (const auto& use : vb::ReadNameUses(source.rewritten, source.module)) {
      const auto kind = use.kind == vb::UseKind::kType ? Kind::kType : Kind::kConst;
      const auto found = positions.find({kind, LowerCase(use.name)});
      if (found != positions.end()) needs.push_back(found->second);
    }
  }
}

void InsertionPlan::Renew() {
  std::vector<std::size_t> needed;
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    entries_[i].is_needed = entries_[i].level == 0;
    if (entries_[i].is_needed) needed.push_back(i);
  }
  // The list grows while it is walked.
  for (std::size_t i = 0; i < needed.size(); ++i) {
    // What the module has already may lack its needs; what another one has has them there.
    const auto& entry = entries_[needed[i]];
    const bool is_here = entry.does == Does::kPresent && entry.found->module == module_;
    if (!entry.IsInserted() && !is_here) continue;
    for (const auto need : needs_[needed[i]])
      if (!std::exchange(entries_[need].is_needed, true)) needed.push_back(need);
  }
  const auto names = Renames();
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    const auto text = Renamed(sources_[i].rewritten, names);
    entries_[i].text = sources_[i].branches ? sources_[i].branches->Around(text) : text;
  }
}

void InsertionPlan::LeaveOut(std::size_t entry, bool is_left_out) {
  entries_[entry].is_left_out = is_left_out;
  Renew();
}

void InsertionPlan::Keep(std::size_t entry) {
  entries_[entry].new_name.clear();
  Renew();
}

bool InsertionPlan::IsFree(std::size_t entry, std::u16string_view name) const {
  const auto& names = project_.Names();
  if (!names.FindValue(module_, name).empty() || !names.FindType(module_, name).empty())
    return false;
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    const auto& other = entries_[i];
    if (EqualIgnoringCase(other.name, name)) return false;
    if (i != entry && EqualIgnoringCase(other.new_name, name)) return false;
  }
  return true;
}

std::expected<void, NameRefusal> InsertionPlan::InsertAs(std::size_t entry,
                                                         std::u16string_view new_name) {
  if (!vb::IsLegalName(ToUtf8(new_name))) return std::unexpected(NameRefusal::kNotLegal);
  if (!IsFree(entry, new_name)) return std::unexpected(NameRefusal::kTaken);
  entries_[entry].new_name = new_name;
  entries_[entry].is_left_out = false;
  Renew();
  return {};
}

std::u16string InsertionPlan::FreeName(std::size_t entry) const {
  for (std::uint64_t number = 2;; ++number) {
    auto name = entries_[entry].name + CountText(number);
    if (IsFree(entry, name)) return name;
  }
}

bool InsertionPlan::IsRefused() const {
  return project_.At(module_).parsed->is_header_open;
}

bool InsertionPlan::IsEmpty() const {
  return IsRefused() || std::ranges::none_of(entries_, &PlannedEntry::IsInserted);
}

std::vector<LineInsertion> InsertionPlan::Insertions() const {
  if (IsRefused()) return {};
  std::vector<Piece> pieces;
  std::vector<std::size_t> entries;
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    if (!entries_[i].IsInserted()) continue;
    const auto& source = sources_[i];
    pieces.push_back({entries_[i].kind, entries_[i].name, source.rewritten, &source.module,
                      source.branches.has_value() || source.rewritten.starts_with(u'#')});
    entries.push_back(i);
  }
  const auto names = Renames();
  std::vector<LineInsertion> insertions;
  for (const auto& placed : Place(project_.At(module_), pieces))
    insertions.push_back({placed.line, Renamed(TextOf(pieces, entries, placed), names)});
  return insertions;
}

std::u16string InsertionPlan::TextOf(std::span<const Piece> pieces,
                                     std::span<const std::size_t> entries,
                                     const PlacedPieces& placed) const {
  // Neighbors share the #If lines that the target asks for: they are rewritten together.
  std::u16string text;
  for (const auto position : placed.pieces) {
    const auto& source = sources_[entries[position]];
    const auto& piece = pieces[position];
    if (position != placed.pieces.front()) {
      const auto before = *std::prev(std::ranges::find(placed.pieces, position));
      text += kCrLf;
      const bool shares = !source.branches && piece.kind != Kind::kType &&
                          pieces[before].kind == piece.kind && !sources_[entries[before]].branches;
      if (!shares && ArePartedByBlank(pieces[before], piece)) text += kCrLf;
    }
    text += source.branches ? source.branches->Around(source.rewritten) : source.text;
  }
  text = Rewritten(text);
  if (placed.has_blank_before) text.insert(0, kCrLf);
  if (placed.has_blank_behind) text += kCrLf;
  return text;
}

}  // namespace declarium::plan
