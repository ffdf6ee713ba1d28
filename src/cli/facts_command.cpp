#include "cli/facts_command.h"

#include <nlohmann/json.hpp>
#include <ostream>

#include "cli/library_files.h"
#include "cli/names.h"
#include "cli/output.h"

#include "library/item.h"
#include "source/item_text.h"
#include "text/text.h"
#include "vb/module.h"

namespace declarium::cli {
namespace {

using nlohmann::ordered_json;

struct FactsOptions {
  std::string file;
  std::string name;
};

std::string Joined(const std::vector<std::string_view>& words) {
  std::string text;
  for (const auto word : words) text += (text.empty() ? "" : " ") + OneLine(FromUtf8(word));
  return text;
}

std::string DirectionOf(const ValueFacts& value) {
  if (value.is_in) return value.is_out ? "inout" : "in";
  return value.is_out ? "out" : "";
}

ordered_json JsonFacts(const ItemView& item, const RowFacts& facts,
                       const std::optional<Form64>& form64) {
  auto header = JsonHeader("facts");
  header.update(JsonItem(item.kind, item.name));
  if (item.kind == Kind::kDeclare) header["dll"] = facts.library;
  header["header"] = facts.header;
  if (form64 && !form64->text.empty()) header["form64"] = form64->text;
  if (form64 && !form64->reason.empty()) header["missing64"] = form64->reason;
  if (item.kind != Kind::kDeclare) return header;
  header["since"] = facts.since;
  header["since_source"] = facts.since_source;
  header["last_error"] = facts.sets_last_error;
  for (const auto& [how, name] : facts.related) header["related"][std::string(how)].push_back(name);
  return header;
}

// The types of the row's parameters or members, in order.
std::vector<std::string> TypesOf(const ItemView& item) {
  const auto text = ItemText(item.kind, item.name, item.item);
  const auto module = vb::ReadModule(text);
  std::vector<std::string> types;
  const auto take = [&](const auto& values) {
    for (const auto& value : values) types.push_back(ToUtf8(value.type.Text()));
  };
  if (module.declarations.empty()) return types;
  if (const auto* external = module.declarations.front().As<vb::External>())
    take(external->parameters);
  if (const auto* record = module.declarations.front().As<vb::Record>()) take(record->members);
  return types;
}

// The type in 64 bits; `own` is the row's.
std::string TypeFor64(const ValueFacts& value, const std::string& own) {
  auto known = value.type64;
  if (known.ends_with('*')) known.remove_suffix(1);
  return known.empty() ? own : std::string(known);
}

ordered_json JsonValue(const ValueFacts& value, const std::string& type64,
                       const ConstantSetFacts& set) {
  ordered_json object = {{"name", value.name},
                         {"c_type", value.c_type},
                         {"direction", DirectionOf(value)},
                         {"type64", type64},
                         {"constants", set.constants}};
  if (!set.by_prefix.empty()) object["by_prefix"] = set.by_prefix;
  if (set.is_flags) object["flags"] = true;
  if (value.is_optional) object["optional"] = true;
  if (value.is_reserved) object["reserved"] = true;
  return object;
}

// A line "WHAT<tab>TEXT", or none for an empty text.
void PrintField(const Session& session, std::string_view what, std::string_view text) {
  if (text.empty()) return;
  session.streams.out << what << '\t' << OneLine(FromUtf8(text)) << '\n';
}

void PrintRow(const Session& session, const ItemView& item, const RowFacts& facts) {
  session.streams.out << QualifiedName(item.kind, item.name) << '\n';
  PrintField(session, "dll", facts.library);
  PrintField(session, "entry", facts.entry);
  PrintField(session, "header", facts.header);
  if (!facts.since.empty()) {
    PrintField(session, "since",
               std::string(facts.since) + " (" + std::string(facts.since_source) + ")");
  }
  if (facts.sets_last_error) PrintField(session, "last error", "yes");
  for (const auto& [how, name] : facts.related) PrintField(session, how, name);
}

void PrintValue(const Session& session, Kind kind, const ValueFacts& value,
                const ConstantSetFacts& set) {
  auto text = std::string(value.name) + ": " + std::string(value.c_type);
  if (const auto direction = DirectionOf(value); !direction.empty()) text += ", " + direction;
  if (value.type64.starts_with("Long")) text += ", in 64 bits " + TypeFor64(value, "");
  if (value.is_optional) text += ", optional";
  if (value.is_reserved) text += ", reserved";
  PrintField(session, kind == Kind::kDeclare ? "parameter" : "member", text);
  PrintField(session, set.is_flags ? "  flags" : "  constants", Joined(set.constants));
  PrintField(session, "  by prefix", Joined(set.by_prefix));
}

ExitStatus RunFacts(const FactsOptions& options, const Session& session) {
  const auto excerpt = OpenExcerpt(options.file);
  const auto item = ResolveNames(excerpt, {&options.name, 1}).front();
  const auto file = OpenFacts(PathOf(options.file));
  const auto facts = file.Find(item.kind, item.name);
  const auto form64 = file.FindForm64(item.kind, item.name);
  if (!facts) {
    throw CommandFailed(ExitStatus::kNothingFound,
                        "nothing is known of " + QualifiedName(item.kind, item.name));
  }
  if (session.IsJson()) {
    PrintJson(session, JsonFacts(item, *facts, form64));
  } else {
    PrintRow(session, item, *facts);
    if (form64)
      PrintField(session, "64 bits", form64->text.empty() ? form64->reason : form64->text);
  }
  const auto types = TypesOf(item);
  for (std::size_t i = 0; i < facts->values.size(); ++i) {
    const auto& value = facts->values[i];
    const auto set = file.FindSet(value.set);
    // The row may be another one than the facts are about.
    const auto type64 = TypeFor64(value, i < types.size() ? types[i] : "");
    if (session.IsJson()) {
      PrintJson(session, JsonValue(value, form64 ? "" : type64, set));
    } else {
      PrintValue(session, item.kind, value, set);
    }
  }
  return ExitStatus::kDone;
}

}  // namespace

FactsFile OpenFacts(const std::filesystem::path& library) {
  auto facts = FactsFile::OpenBeside(library);
  if (!facts) throw FileFailed(facts.error());
  return *std::move(facts);
}

void AddFactsCommand(const CommandSet& set) {
  AddCommand<FactsOptions>(
      set,
      {"facts", "Show what is known of an item beside its text",
       "declarium-cli facts Win32.api SetWindowPos",
       "The facts are in a file beside the library: Win32.facts for Win32.api.\n"},
      [](CLI::App& command, FactsOptions& options) {
        DefineFile(command, options.file);
        DefineName(command, options.name);
      },
      RunFacts);
}

}  // namespace declarium::cli
