#include <algorithm>
#include <array>
#include <charconv>

#include "check/export_names.h"
#include "check/rule_groups.h"
#include "facts/dll_key.h"
#include "text/text.h"

namespace declarium::check {
namespace {

// A Declare with what the libraries know of its DLL.
struct Entry {
  const vb::Declaration& declaration;
  const vb::External& external;
  std::u16string dll;        // its key
  std::u16string_view name;  // in the DLL

  [[nodiscard]] std::u16string_view Spelled() const {
    return external.alias.empty() ? declaration.name : external.alias;
  }
};

// The edit that gives the declaration this entry.
Edit WithEntry(const ModuleContext& module, const Entry& entry, std::u16string_view name) {
  if (!entry.external.alias.empty()) return module.Replacing(entry.external.alias, name);
  // Behind the closing quotation mark.
  auto edit = module.Behind(entry.external.library, u" Alias \"" + std::u16string(name) + u"\"");
  ++edit.offset;
  return edit;
}

vb::Place PlaceOfEntry(const ModuleContext& module, const Entry& entry) {
  return entry.external.alias.empty() ? entry.declaration.name_place
                                      : module.PlaceOf(entry.declaration, entry.external.alias);
}

const KnownProcedure* EntryIn(const ModuleContext& module, const Entry& entry,
                              const std::u16string& name) {
  return module.whole.Libraries().FindEntry(entry.dll, name, entry.declaration.name);
}

// Reports the entry when it is there with an A or a W alone. Text as String wants the A.
bool CheckSuffix(const ModuleContext& module, const Entry& entry) {
  const std::u16string name(entry.name);
  const bool has_ansi = EntryIn(module, entry, name + u"A") != nullptr;
  const bool has_wide = EntryIn(module, entry, name + u"W") != nullptr;
  if (!(has_ansi || has_wide) || HasPlainEntry(entry.dll, name)) return false;
  const auto right = name + (has_ansi && !entry.external.is_wide ? u"A" : u"W");
  auto& finding =
      module.Report(RuleId::kSuffixMissing, entry.declaration, PlaceOfEntry(module, entry),
                    ToUtf8(entry.dll) + " has " + Quoted(right) + ", and no " + Quoted(name));
  if (has_ansi || entry.external.is_wide) finding.edits = {WithEntry(module, entry, right)};
  return true;
}

bool CheckLibrary(const ModuleContext& module, const Entry& entry) {
  if (entry.name.starts_with(u"Dll") || entry.name.starts_with(u'#')) return false;
  const auto known = module.whole.Libraries().Entries(entry.name);
  const bool is_elsewhere = !known.empty() && std::ranges::none_of(known, [&](const auto* other) {
    return MayShareEntries(other->Dll(), entry.dll);
  });
  if (!is_elsewhere) return false;
  const auto& right = known.front()->Dll();
  auto& finding = module.Report(
      RuleId::kWrongLibrary, entry.declaration,
      module.PlaceOf(entry.declaration, entry.external.library),
      Quoted(entry.name) + " is in " + ToUtf8(right) + ", not in " + ToUtf8(entry.dll));
  finding.edits = {module.Replacing(entry.external.library, right)};
  return true;
}

// Reports an entry of the same letters, or of nearly the same.
void CheckNear(const ModuleContext& module, const Entry& entry) {
  constexpr std::size_t kShortest = 8;
  const auto near = module.whole.Libraries().NearEntries(entry.dll, entry.name);
  if (near.empty() || HasPlainEntry(entry.dll, entry.name)) return;
  if (EqualIgnoringCase(near.front(), entry.name)) {
    auto& finding =
        module.Report(RuleId::kLettersDiffer, entry.declaration, PlaceOfEntry(module, entry),
                      ToUtf8(entry.dll) + " spells it " + Quoted(near.front()));
    finding.edits = {WithEntry(module, entry, near.front())};
    return;
  }
  // Names that only end otherwise are versions of one procedure.
  const bool is_version = std::ranges::any_of(near, [&](std::u16string_view other) {
    const auto shorter = std::min(other.size(), entry.name.size());
    const auto stem = other.size() == entry.name.size() ? shorter - 1 : shorter;
    return other.starts_with(entry.name.substr(0, stem));
  });
  if (entry.name.size() < kShortest || is_version) return;
  module.Report(RuleId::kNearEntry, entry.declaration, PlaceOfEntry(module, entry),
                "the library knows no " + Quoted(entry.name) + " in " + ToUtf8(entry.dll) +
                    ", but " + Quoted(near.front()));
}

bool IsWideText(const KnownProcedure& procedure, std::size_t position) {
  return procedure.TypeOf(position) == CType::kWideText;
}

void CheckWide(const ModuleContext& module, const Entry& entry, const KnownProcedure& known) {
  if (entry.external.is_wide) return;
  for (std::size_t i = 0; i < entry.external.parameters.size(); ++i) {
    const auto& parameter = entry.external.parameters[i];
    const bool is_string = IsType(parameter.type, u"String") && !parameter.is_array;
    if (!is_string || entry.external.parameters.size() != known.External().parameters.size() ||
        !IsWideText(known, i))
      continue;
    module.Report(RuleId::kWideEntryWithString, entry.declaration, parameter.place,
                  Quoted(entry.name) + " takes wide text for " + ToUtf8(parameter.name) +
                      "; pass StrPtr of it, or use the entry for ANSI");
  }
}

// The number of a version as the facts write it: "5.1.2600", "8.1", "Server2008". The names from 8
// on are those of products.
std::optional<WindowsVersion> VersionOf(std::string_view since) {
  static constexpr std::pair<std::string_view, WindowsVersion> kNames[] = {
      {"Server2003", {5, 2}}, {"Server2008R2", {6, 1}}, {"Server2008", {6, 0}},
      {"Server2012", {6, 2}}, {"Server2016", {10, 0}},  {"8.0", {6, 2}},
      {"8.1", {6, 3}}};
  for (const auto& [name, version] : kNames) {
    if (since.starts_with(name)) return version;
  }
  WindowsVersion version;
  const auto* const end = since.data() + since.size();
  const auto major = std::from_chars(since.data(), end, version.major);
  if (major.ec != std::errc() || major.ptr == end || *major.ptr != '.') return std::nullopt;
  const auto minor = std::from_chars(major.ptr + 1, end, version.minor);
  return minor.ec == std::errc() ? std::optional(version) : std::nullopt;
}

void CheckVersion(const ModuleContext& module, const Entry& entry, const KnownProcedure& known) {
  const auto& oldest = module.whole.Wanted().windows;
  if (!oldest) return;
  const auto since = VersionOf(known.Since());
  if (!since || *since <= *oldest) return;
  module.Report(RuleId::kNotInThisWindows, entry.declaration, PlaceOfEntry(module, entry),
                Quoted(entry.name) + " is documented from Windows " + std::to_string(since->major) +
                    "." + std::to_string(since->minor) + " on");
}

}  // namespace

void CheckEntries(const ModuleContext& module) {
  auto& libraries = module.whole.Libraries();
  if (libraries.IsEmpty()) return;
  for (const auto& declaration : module.parsed.declarations) {
    const auto* const external = declaration.As<vb::External>();
    if (external == nullptr || !module.SystemsOf(declaration).Any()) continue;
    const Entry entry{declaration, *external, DllKey(external->library),
                      external->EntryOr(declaration.name)};
    if (!libraries.KnowsDll(entry.dll)) continue;
    if (const auto* const known = libraries.FindEntry(entry.dll, entry.name, declaration.name)) {
      CheckWide(module, entry, *known);
      CheckVersion(module, entry, *known);
    } else if (!entry.name.starts_with(u'#') && !CheckSuffix(module, entry) &&
               !CheckLibrary(module, entry)) {
      CheckNear(module, entry);
    }
  }
}

}  // namespace declarium::check
