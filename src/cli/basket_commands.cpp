#include "cli/basket_commands.h"

#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>

#include "cli/library_files.h"
#include "cli/missing_insertion.h"
#include "cli/names.h"
#include "cli/output.h"
#include "cli/planned_insertion.h"
#include "cli/target_option.h"

#include "basket/basket.h"
#include "basket/closure.h"
#include "basket/insertion_order.h"
#include "basket/insertion_text.h"
#include "facts/known_facts.h"
#include "library/file_io.h"
#include "source/module_text.h"
#include "target/target_writer.h"
#include "text/code_page.h"
#include "text/encoding.h"
#include "text/text.h"
#include "vb/layout.h"

namespace declarium::cli {
namespace {

struct BasketOptions {
  std::string file;
  std::string target;  // the module of insert, the file of basket -o
  std::vector<std::string> names;
  std::string scope = "Private";
  bool closure = false;
  bool force = false;
  vb::Audience language = vb::Audience::kVb6;

  // Of insert.
  std::string encoding;
  bool missing = false;
  bool dry_run = false;
  bool difference = false;
  std::string project;
  std::vector<std::string> others;
  std::vector<std::string> without;
};

// What the basket holds after adding the names in their order, each followed by what it needs.
Basket CollectItems(const BasketOptions& options, const Session& session) {
  const auto library = LoadLibrary(options.file);
  Basket basket;
  for (const auto& item : ResolveNames(library, options.names)) {
    basket.Add(item.kind, item.name, item.item);
    if (!options.closure) continue;
    for (const auto& reference : FollowSharedItems(library, item)) {
      if (const auto& found = reference.found) {
        basket.Add(found->kind, found->name, found->item);
      } else if (!vb::BuiltInExtent(reference.name, vb::Target::kVb6)) {
        session.Say("not in the library: " + QualifiedName(reference.kind, reference.name) +
                    ", used by " + OneLine(reference.via));
      }
    }
  }
  return basket;
}

// What was collected by following references must compile as it stands, so in its text items stand
// behind those that they use.
std::u16string TextOf(const Basket& basket, const BasketOptions& options, const Session& session) {
  const auto text = CreateSelect(options.closure ? InsertionOrder(basket) : basket.Entries(),
                                 basket.Record(), options.scope == "Public" ? kPublic : kPrivate);
  return TargetWriter(options.language, session.streams.program)
      .Write(text, PathOf(options.file))
      .text;
}

void PrintEntries(const Basket& basket, const Session& session) {
  for (const auto& [name, icon] : basket.Entries()) PrintItem(session, *KindOfIcon(icon), name);
}

ExitStatus RunBasket(const BasketOptions& options, const Session& session) {
  const auto basket = CollectItems(options, session);
  const auto text = TextOf(basket, options, session);
  if (!options.target.empty()) {
    CheckReplaceable(options.target, ForceOf(options.force));
    WriteSource(session, text, options.target);
  }
  if (session.IsJson()) {
    auto header = JsonHeader("basket");
    header["text"] = ToUtf8(text);
    PrintJson(session, header);
    PrintEntries(basket, session);
  } else if (options.target.empty()) {
    session.streams.out << Lines(text);
  }
  return ExitStatus::kDone;
}

// The module's new content: a source module takes the text behind its header, any other file is
// replaced by it.
ChangedModule ModuleWith(std::u16string_view text, const BasketOptions& options) {
  const auto encoding = EncodingOf(options.encoding);
  const auto force = ForceOf(options.force);
  if (!IsSourceModuleName(FromUtf8(options.target))) {
    CheckReplaceable(options.target, force);
    return {EncodeCodePage(text), std::u16string(text), kLibraryEncoding, LineEnd::kCrAndLf};
  }
  const auto old = ReadWholeFile(PathOf(options.target));
  if (!old) throw FileFailed(old.error());
  CheckModule(options.target, *old, force);
  auto module = InsertIntoModule(*old, text, encoding);
  if (module) return *std::move(module);
  throw CommandFailed(ExitStatus::kFileFailed, options.target + ": " + EncodingName(encoding) +
                                                   " does not have the character " +
                                                   OneLine(std::u16string(1, module.error())));
}

ExitStatus RunInsertMissing(const BasketOptions& options, const Session& session) {
  const auto library = LoadLibrary(options.file);
  const auto items = ResolveNames(library, options.names);
  const auto old = ReadWholeFile(PathOf(options.target));
  if (!old) throw FileFailed(old.error());
  CheckModule(options.target, *old, ForceOf(options.force));
  std::optional<KnowledgeOf64> knowledge;
  if (options.language != vb::Audience::kVb6)
    knowledge.emplace(FactsFor(PathOf(options.file), session.streams.program));
  const auto scope = options.scope == "Public" ? vb::Scope::kPublic : vb::Scope::kPrivate;
  const MissingInsertion insertion{options.target,
                                   options.project,
                                   options.others,
                                   options.without,
                                   {scope, options.language, knowledge ? &*knowledge : nullptr},
                                   WritingOf(options.dry_run, options.difference),
                                   EncodingOf(options.encoding)};
  return InsertMissing(insertion, library, items, session);
}

ExitStatus RunInsert(const BasketOptions& options, const Session& session) {
  if (options.missing) return RunInsertMissing(options, session);
  const auto basket = CollectItems(options, session);
  const auto module = ModuleWith(TextOf(basket, options, session), options);
  WriteBytes(session, module.bytes, options.target);
  if (session.IsJson()) {
    auto header = JsonHeader("insert");
    header["module"] = options.target;
    header["text"] = ToUtf8(module.inserted);
    header["encoding"] = EncodingName(module.encoding);
    header["mark"] = module.encoding.has_mark;
    header["line_ends"] = LineEndName(module.line_end);
    PrintJson(session, header);
  }
  PrintEntries(basket, session);
  return ExitStatus::kDone;
}

void DefineBasket(CLI::App& command, BasketOptions& options) {
  DefineNames(command, options.names);
  DefineScope(command, options.scope);
  DefineTarget(command, options.language);
  command.add_flag("--closure", options.closure,
                   "Also add what the items need, and what that needs");
}

void DefineMissing(CLI::App& command, BasketOptions& options) {
  auto* const missing =
      command.add_flag("--missing", options.missing, "Insert only what the module lacks");
  command.add_option("--project", options.project, "The project that the module belongs to")
      ->type_name("PROJECT")
      ->needs(missing);
  command.add_flag("--dry-run", options.dry_run, kDryRunText)->needs(missing);
  command.add_flag("--diff", options.difference, kDifferenceText)->needs(missing);
  command
      .add_option("--as", options.others,
                  "NAME=NEW: insert an item under another name, a Declare with an Alias; several "
                  "times for several")
      ->take_all()
      ->allow_extra_args(false)
      ->type_name("NAME=NEW")
      ->needs(missing);
  command
      .add_option("--without", options.without,
                  "Leave an item out that others need; several times for several")
      ->take_all()
      ->allow_extra_args(false)
      ->type_name("NAME")
      ->needs(missing);
}

}  // namespace

void AddBasketCommands(const CommandSet& set) {
  AddCommand<BasketOptions>(
      set,
      {"basket", "Print the source text of items, in the order in which it is inserted",
       "declarium-cli basket Win32.api GetWindowRect --closure --scope Public -o rect.bas"},
      [](CLI::App& command, BasketOptions& options) {
        DefineFile(command, options.file);
        DefineBasket(command, options);
        command.add_option("-o,--output", options.target, "Write the text to this file instead")
            ->type_name("OUT");
        DefineForce(command, options.force,
                    "Replace a file that holds something else than such text");
      },
      RunBasket);
  AddCommand<BasketOptions>(
      set,
      {"insert", "Insert the source text of items into a module file",
       "declarium-cli insert Win32.api TrayIcon.bas Shell_NotifyIcon --closure",
       "The text goes behind the module's first run of Attribute lines, otherwise behind its "
       "first\n"
       "line, in the module's encoding and with its line ends. A file whose name does not end in\n"
       "frm, ctl, dob, pag, bas or cls is replaced by the text.\n"
       "With --missing only what the module and its project lack is inserted, with all that the\n"
       "items need, behind the module's declarations; one line an item tells what happens:\n"
       "insert, present (where), differs or clash (both texts), which stay out without --as.\n\n"},
      [](CLI::App& command, BasketOptions& options) {
        DefineFile(command, options.file);
        command.add_option("MODULE", options.target, "The module file, which is changed")
            ->required()
            ->type_name("");
        DefineBasket(command, options);
        DefineEncoding(command, options.encoding, "modules");
        DefineForce(command, options.force, "Change a file that is no source too");
        DefineMissing(command, options);
      },
      RunInsert);
}

}  // namespace declarium::cli
