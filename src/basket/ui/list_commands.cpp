#include "basket/ui/list_commands.h"

#include <iterator>
#include <utility>
#include <vector>

#include "basket/list_selection.h"
#include "basket/listed_libraries.h"
#include "basket/ui/list_message.h"
#include "library/catalogue.h"
#include "library/file_io.h"
#include "library/file_name.h"
#include "library/ui/file_messages.h"
#include "text/encoding.h"
#include "text/user_texts.h"

namespace declarium {

ListCommands::ListCommands(Toolkit& toolkit, FileSaver& saver, const Library& library,
                           BasketView& basket, MenuItem& mnuSaveList, MenuItem& mnuOpenList,
                           std::filesystem::path folder, ListLinks links)
    : toolkit_(toolkit),
      saver_(saver),
      library_(library),
      basket_(basket),
      folder_(std::move(folder)),
      links_(std::move(links)) {
  mnuSaveList.on_click = [this] { mnuSaveList_Click(); };
  mnuOpenList.on_click = [this] { mnuOpenList_Click(); };
}

void ListCommands::mnuSaveList_Click() {
  const auto file = toolkit_.ChooseFileToSave({.filter = std::u16string(texts::kListFilter),
                                               .file_name = last_file_,
                                               .default_extension = u"list"});
  if (!file) return;
  last_file_ = *file;
  Save(PathOfName(*file));
}

void ListCommands::Save(const std::filesystem::path& path) {
  const auto sources = [&] {
    const HourglassPointer hourglass(toolkit_);
    std::vector<std::filesystem::path> others;
    for (auto& entry : EnumDatabases(folder_)) others.push_back(std::move(entry.path));
    return FindSources(basket_.Items(), library_, others);
  }();
  std::vector<std::u16string> libraries;
  libraries.reserve(sources.libraries.size());
  for (const auto& library : sources.libraries) libraries.push_back(NameInList(path, library));
  const auto text = ListText(libraries, links_.target(), basket_.Contents().Entries());
  if (!TellSaved(toolkit_, saver_.Save(path, ListBytes(text)))) return;
  std::vector<std::u16string> lost;
  lost.reserve(sources.lost.size());
  for (const auto& name : sources.lost) lost.push_back(ShownWord(name));
  if (!lost.empty()) Say(texts::kListNotInLibraries, lost);
}

void ListCommands::mnuOpenList_Click() {
  const auto file = toolkit_.ChooseFileToOpen(
      {.filter = std::u16string(texts::kListFilter), .file_name = last_file_});
  if (!file) return;
  last_file_ = *file;
  Open(PathOfName(*file));
}

void ListCommands::Open(const std::filesystem::path& path) {
  const auto bytes = ReadWholeFile(path);
  if (!bytes) return Say(texts::kReadError, {});
  const auto list = ReadListFile(DecodeText(*bytes, RecognizeEncoding(*bytes, kLibraryEncoding)));
  if (!list) return Say(texts::kListMistakes, ListReasons(list.error()));
  Take(*list, path);
}

void ListCommands::Take(const ListFile& list, const std::filesystem::path& path) {
  // A copy: questions let events in, which may change the library.
  Basket chosen;
  std::vector<std::u16string> reasons;
  {
    const HourglassPointer hourglass(toolkit_);
    const auto libraries = OpenListed(list, path, library_, folder_);
    const auto selection = SelectItems(list, libraries.all);
    for (const auto& item : selection.items) chosen.Add(item.kind, item.name, item.item);
    for (const auto& library : libraries.unreadable)
      reasons.push_back(std::u16string(texts::kListUnreadable) + ShownWord(library));
    std::ranges::move(ListReasons(selection.faults), std::back_inserter(reasons));
  }
  if (chosen.Empty()) return Say(texts::kListEmpty, reasons);
  if (!PutIntoBasket(chosen)) return;
  if (!reasons.empty()) Say(texts::kListNotFound, reasons);
  if (list.target && *list.target != links_.target()) links_.offer_target(*list.target);
}

bool ListCommands::PutIntoBasket(const Basket& chosen) {
  Basket next;
  if (!basket_.Contents().Empty()) {
    const auto answer =
        toolkit_.ShowMessage({std::u16string(texts::kAskReplaceBasket),
                              MessageButtons::kYesNoCancel, MessageIcon::kQuestion});
    if (answer == Answer::kCancel) return false;
    if (answer == Answer::kNo) next = basket_.Contents();
  }
  for (const auto& item : chosen.Items()) next.Add(item.kind, item.name, item.item);
  const HourglassPointer hourglass(toolkit_);
  basket_.Replace(std::move(next));
  return true;
}

void ListCommands::Say(std::u16string_view text, std::span<const std::u16string> lines) {
  toolkit_.ShowMessage({lines.empty() ? std::u16string(text) : WithLines(text, lines),
                        MessageButtons::kOk, MessageIcon::kExclamation});
}

}  // namespace declarium
