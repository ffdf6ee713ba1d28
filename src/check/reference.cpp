#include "check/reference.h"

#include <algorithm>
#include <utility>

#include "facts/dll_key.h"
#include "library/item.h"
#include "source/item_text.h"
#include "text/text.h"
#include "vb/layout.h"

namespace declarium::check {
namespace {

// The texts in quotes behind Lib: the DLL and, where there is one, the alias.
struct LibraryAndAlias {
  std::u16string_view library;
  std::u16string_view alias;
};

std::u16string_view TakeQuoted(std::u16string_view& text) {
  const auto open = text.find(u'"');
  if (open == text.npos) return {};
  const auto close = text.find(u'"', open + 1);
  if (close == text.npos) return {};
  const auto quoted = text.substr(open + 1, close - open - 1);
  text.remove_prefix(close + 1);
  return quoted;
}

LibraryAndAlias ReadTail(std::u16string_view tail) {
  auto text = tail.substr(0, tail.find(u'('));
  const auto library = TakeQuoted(text);
  return {library, TakeQuoted(text)};
}

// How many letters must be put in, taken out or changed, at most `limit` + 1.
std::size_t Distance(std::u16string_view a, std::u16string_view b, std::size_t limit) {
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i);
    std::size_t least = row[0];
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const bool is_same = LowerCase(a[i - 1]) == LowerCase(b[j - 1]);
      const auto changed = std::exchange(diagonal, row[j]) + (is_same ? 0 : 1);
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, changed});
      least = std::min(least, row[j]);
    }
    if (least > limit) return limit + 1;
  }
  return row.back();
}

std::size_t LengthDifference(std::u16string_view a, std::u16string_view b) {
  return std::max(a.size(), b.size()) - std::min(a.size(), b.size());
}

}  // namespace

std::u16string_view KnownProcedure::Entry() const {
  return External().EntryOr(row_->declaration->name);
}

const vb::External& KnownProcedure::External() const {
  return *row_->declaration->As<vb::External>();
}

const ValueFacts* KnownProcedure::FactsOf(std::size_t position) const {
  const auto& facts = row_->facts;
  // Facts of another count are of another form of the row.
  if (!facts || facts->values.size() != External().parameters.size()) return nullptr;
  return position < facts->values.size() ? &facts->values[position] : nullptr;
}

CType KnownProcedure::TypeOf(std::size_t position) const {
  const auto* const facts = FactsOf(position);
  return facts == nullptr ? CType::kUnknown : CTypeOf(facts->c_type);
}

std::string_view KnownProcedure::Result64() const {
  return row_->facts ? row_->facts->result.type64 : std::string_view();
}

std::string_view KnownProcedure::Since() const {
  return row_->facts ? row_->facts->since : std::string_view();
}

void Reference::Add(const Library& library, const FactsFile* facts) {
  const auto source = static_cast<std::uint32_t>(sources_.size());
  sources_.push_back({&library, facts});
  for (const auto kind : kKinds) {
    auto& [places, by_name] = kinds_[static_cast<std::size_t>(KindCode(kind))];
    const auto& names = library[kind].names;
    for (std::uint32_t i = 0; i < names.size(); ++i) {
      by_name.Add(names[i], static_cast<std::uint32_t>(places.size()));
      places.push_back({source, i});
    }
  }
  AddEntries(source);
}

std::uint32_t Reference::DllOf(std::u16string_view written) {
  const auto [known, is_new] = dlls_as_written_.try_emplace(written, 0);
  if (!is_new) return known->second;
  auto key = DllKey(written);
  const auto found = std::ranges::find(dlls_, key, &Dll::key);
  known->second = static_cast<std::uint32_t>(found - dlls_.begin());
  if (found == dlls_.end()) dlls_.push_back({std::move(key), {}});
  return known->second;
}

void Reference::AddEntries(std::uint32_t source) {
  const auto& lists = (*sources_[source].library)[Kind::kDeclare];
  for (std::uint32_t i = 0; i < lists.names.size(); ++i) {
    const auto [library, alias] = ReadTail(SplitDeclare(lists.ItemAt(i)).tail);
    if (library.empty()) continue;
    const auto entry = alias.empty() ? lists.names[i] : alias;
    const auto dll = DllOf(library);
    dlls_[dll].entries.push_back(entry);
    entries_by_name_.Add(entry, static_cast<std::uint32_t>(entries_.size()));
    entries_.push_back({{source, i}, dll, entry});
  }
}

const Reference::Dll* Reference::FindDll(std::u16string_view key) const {
  const auto found = std::ranges::find(dlls_, key, &Dll::key);
  return found == dlls_.end() ? nullptr : &*found;
}

bool Reference::KnowsDll(std::u16string_view dll) const {
  return FindDll(dll) != nullptr;
}

std::vector<const KnownProcedure*> Reference::Entries(std::u16string_view entry) {
  std::vector<const KnownProcedure*> procedures;
  static_cast<void>(entries_by_name_.Find(entry, [&](std::uint32_t row) {
    const auto* const procedure =
        entries_[row].entry == entry ? ProcedureOf(entries_[row]) : nullptr;
    if (procedure != nullptr) procedures.push_back(procedure);
    return false;  // all of them
  }));
  return procedures;
}

const KnownProcedure* Reference::FindEntry(std::u16string_view dll, std::u16string_view entry,
                                           std::u16string_view preferred) {
  const KnownProcedure* first = nullptr;
  for (const auto* const procedure : Entries(entry)) {
    if (procedure->Dll() != dll) continue;
    if (EqualIgnoringCase(procedure->Name(), preferred)) return procedure;
    if (first == nullptr) first = procedure;
  }
  return first;
}

std::vector<std::u16string_view> Reference::NearEntries(std::u16string_view dll,
                                                        std::u16string_view entry) const {
  constexpr std::size_t kFar = 2;
  std::vector<std::u16string_view> near[kFar];
  const auto* const found = FindDll(dll);
  if (found == nullptr) return {};
  for (const auto each : found->entries) {
    if (LengthDifference(each, entry) >= kFar) continue;
    const auto distance = Distance(each, entry, kFar - 1);
    if (distance < kFar) near[distance].push_back(each);
  }
  near[0].insert(near[0].end(), near[1].begin(), near[1].end());
  return near[0];
}

const KnownRow* Reference::ReadRow(Kind kind, const RowPlace& place) {
  const auto& [library, facts] = sources_[place.source];
  const auto name = NameAt(kind, place);
  auto& row = rows_.emplace_back();
  row.name = name;
  row.text = ItemText(kind, name, (*library)[kind].ItemAt(place.position));
  row.module = vb::ReadModule(row.text);
  if (!row.module.declarations.empty()) row.declaration = &row.module.declarations.front();
  if (facts == nullptr) return &row;
  row.facts = facts->Find(kind, name);
  row.kind = kind;
  row.facts_file = facts;
  return &row;
}

const KnownProcedure* Reference::ProcedureOf(EntryRow& row) {
  if (row.procedure == nullptr) {
    const auto* const read = ReadRow(Kind::kDeclare, row.place);
    row.procedure = std::make_unique<KnownProcedure>(*read, dlls_[row.dll].key);
  }
  return row.procedure->IsReadable() ? row.procedure.get() : nullptr;
}

std::u16string_view Reference::NameAt(Kind kind, const RowPlace& place) const {
  return (*sources_[place.source].library)[kind].names[place.position];
}

const KnownRow* Reference::FindRow(Kind kind, std::u16string_view name, RowsByPosition& rows) {
  const auto& [places, by_name] = kinds_[static_cast<std::size_t>(KindCode(kind))];
  const auto found = by_name.Find(
      name, [&](std::uint32_t row) { return EqualIgnoringCase(NameAt(kind, places[row]), name); });
  if (found < 0) return nullptr;
  const auto position = static_cast<std::uint32_t>(found);
  const auto [known, is_new] = rows.try_emplace(position, nullptr);
  if (is_new) known->second = ReadRow(kind, places[position]);
  return known->second->declaration == nullptr ? nullptr : known->second;
}

const KnownRow* Reference::FindRecord(std::u16string_view name) {
  const auto* const row = FindRow(Kind::kType, name, records_);
  return row != nullptr && row->declaration->As<vb::Record>() != nullptr ? row : nullptr;
}

std::optional<vb::RecordLayout> Reference::LayoutOf(std::u16string_view record, vb::Target target) {
  const auto* const row = FindRecord(record);
  if (row == nullptr || !open_.insert(u"type:" + LowerCase(record)).second) return std::nullopt;
  const auto layout = vb::LayOut(
      *row->declaration->As<vb::Record>(), target,
      [this](std::u16string_view expression) -> std::optional<long> {
        const auto value = Evaluate(expression);
        const auto whole = value ? vb::ConvertTo(u"Long", *value) : value;
        return whole ? std::optional(static_cast<long>(whole->whole)) : std::nullopt;
      },
      [&](std::u16string_view name) { return LayoutOf(name, target); });
  open_.erase(u"type:" + LowerCase(record));
  return layout ? std::optional(*layout) : std::nullopt;
}

vb::Evaluated Reference::Evaluate(std::u16string_view expression) {
  return vb::Evaluate(expression, [this](std::u16string_view name) -> vb::Evaluated {
    if (const auto value = ValueOf(name)) return *value;
    return std::unexpected("not known");
  });
}

std::optional<vb::Value> Reference::ValueOf(std::u16string_view name) {
  const auto* const row = FindRow(Kind::kConst, name, constants_);
  if (row == nullptr || !open_.insert(LowerCase(name)).second) return std::nullopt;
  const auto* const constant = row->declaration->As<vb::Constant>();
  auto value = constant == nullptr ? vb::Evaluated(std::unexpected("no constant"))
                                   : Evaluate(constant->value);
  if (value) value = vb::ConvertTo(constant->type.name, *value);
  open_.erase(LowerCase(name));
  return value ? std::optional(*value) : std::nullopt;
}

}  // namespace declarium::check
