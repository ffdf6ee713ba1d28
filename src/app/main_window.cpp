#include "app/main_window.h"

#include <optional>
#include <utility>

#include "basket/insertion_text.h"
#include "facts/facts_file.h"
#include "facts/known_facts.h"
#include "library/find_item_index.h"
#include "library/library_file.h"
#include "shell/main_layout.h"
#include "shell/settings.h"
#include "shell/splitter_bars.h"
#include "shell/ui/options_dialog.h"
#include "text/user_texts.h"
#include "toolkit/held_flag.h"

namespace declarium {
namespace {

KindSelectorControls ForSelector(MainForm& f) {
  return {f.cmbSelector, f.lstConst, f.lstDeclare, f.lstType,
          f.txtInput,    f.RTB,      f.txtFind,    f.lstFind};
}

LibraryControls ForLibraries(MainForm& f) {
  return {*f.frmMain, f.cmbDatabase,     f.Toolbar1,  f.mnuDatabase, f.mnuNew,    f.mnuOpen,
          f.mnuSave,  f.mnuSaveAs,       f.mnuRename, f.mnuRestore,  f.mnuImport, f.mnuExport,
          f.mnuAdd,   f.mnuDeleteDbItem, f.mnuCheck,  f.lstFind,     f.lstShare};
}

BasketControls ForBasket(MainForm& f) {
  return {*f.frmMain,   f.lstAdd,      f.lstShare,  f.Toolbar1,    f.mnuPopupAddList,
          f.mnuDelOnce, f.mnuDelGroup, f.mnuDelAll, f.mnuSaveList, f.mnuInsertMissing};
}

std::optional<FactsFile> FactsOf(const std::filesystem::path& library) {
  auto facts = FactsFile::OpenBeside(library);
  if (!facts) return std::nullopt;
  return *std::move(facts);
}

}  // namespace

MainWindow::MainWindow(Toolkit& toolkit, SettingsStore& store, MainWindowOptions options)
    : toolkit_(toolkit),
      store_(store),
      options_(std::move(options)),
      saver_(*options_.files, History(*options_.files, options_.history)),
      writer_(vb::Audience::kVb6, options_.folder),
      form_(toolkit),
      guide_(toolkit, options_.folder),
      selector_(toolkit, library_, ForSelector(form_)),
      code_display_(form_.RTB, colors_),
      item_display_(code_display_, form_.lstShare,
                    [this](std::u16string text) { return ForTarget(std::move(text)); }),
      commands_(toolkit, saver_, library_, selector_, ForLibraries(form_), options_.folder),
      import_command_(toolkit, library_, selector_, form_.mnuImport),
      add_dialog_(toolkit, library_, selector_),
      export_command_(toolkit, saver_, library_, form_.mnuExport,
                      [this](std::u16string text) { return ForTarget(std::move(text)); }),
      basket_view_(library_, item_display_, ForBasket(form_), options_.host.has_code_module),
      list_commands_(toolkit, saver_, library_, basket_view_, form_.mnuSaveList, form_.mnuOpenList,
                     options_.folder,
                     {.target = [this] { return writer_.Target(); },
                      .offer_target = [this](vb::Audience target) { OfferTarget(target); }}),
      quick_find_(library_, selector_, {form_.txtInput, form_.txtFind, form_.lstFind},
                  [this](const ItemView& item) { basket_view_.Add(item); }),
      search_dialog_(toolkit, LinksForSearch()),
      check_dialog_(toolkit, LinksForCheck()),
      module_commands_(toolkit, *form_.frmMain, colors_, LinksForModules()),
      project_commands_(toolkit, *form_.frmMain, colors_, LinksForProject()),
      toolbar_(toolkit, saver_, form_.Toolbar1, ActionsForToolbar()),
      main_width_bar_(SplitterBars()[0], *form_.frmMain, panes_, [this] { Form_Resize(); }),
      rtb_height_bar_(SplitterBars()[1], *form_.frmMain, panes_, [this] { Form_Resize(); }),
      add_height_bar_(SplitterBars()[2], *form_.frmMain, panes_, [this] { Form_Resize(); }) {
  WireLists();
  form_.mnuAdd.on_click = [this] { add_dialog_.Show(*form_.frmMain); };
  form_.mnuCheck.on_click = [this] { check_dialog_.Show(form_.frmMain.get()); };
  form_.mnuClose.on_click = [this] { form_.frmMain->Unload(UnloadReason::kUser); };
  form_.mnuInsertMissing.on_click = [this] { module_commands_.InsertMissing(); };
  form_.mnuCompleteModule.on_click = [this] { module_commands_.CompleteModule(); };
  form_.mnuProject.on_click = [this] { project_commands_.ShowProject(); };
  form_.mnuGuide.on_click = [this] { guide_.Open({}); };
  form_.mnuHelpHere.on_click = [this] { guide_.Open(MainFormDefinition().help_topic); };
  form_.mnuAbout.on_click = [this] { ShowAbout(toolkit_); };
  form_.CodeModuleChecker.on_timer = [this] { options_.host.check_code_module(); };
  form_.frmMain->on_load = [this] { Form_Load(); };
  form_.frmMain->on_resize = [this] { Form_Resize(); };
  form_.frmMain->on_query_unload = [this](QueryUnload& query) { Form_QueryUnload(query); };
  form_.frmMain->on_unload = [this](bool& cancel) { Form_Unload(cancel); };
}

void MainWindow::WireLists() {
  for (const auto kind : kKinds) {
    auto& list = selector_.ListOf(kind);
    const auto is_current = [this, &list] { return selector_.SelectList() == &list; };
    list.on_click = [this, kind, is_current] {
      ShowSelectedItem(kind, selector_, item_display_);
      if (is_current()) quick_find_.SelectList_Click();
    };
    list.on_got_focus = [this, kind] { ShowSelectedItem(kind, selector_, item_display_); };
    list.on_double_click = [this] { quick_find_.AddSelected(); };
    list.on_key_down = [this](KeyDown& key) { quick_find_.SelectList_KeyDown(key); };
    list.on_key_press = [this, is_current](KeyPress& press) {
      if (is_current()) quick_find_.SelectList_KeyPress(press);
    };
  }
}

ToolbarActions MainWindow::ActionsForToolbar() {
  return {.new_database = [this] { commands_.mnuNew_Click(); },
          .open = [this] { commands_.mnuOpen_Click(); },
          .save = [this] { commands_.mnuSave_Click(); },
          .add = [this] { quick_find_.AddSelected(); },
          .delete_entry = [this] { basket_view_.DeleteAddItem(); },
          .insert = [this] { options_.host.insert([this] { return BasketText(); }); },
          .find = [this] { search_dialog_.Show(form_.frmMain.get()); },
          .settings = [this] { ShowOptions(); },
          .insert_missing = [this] { module_commands_.InsertMissing(); },
          .basket_text = [this] { return BasketText(); }};
}

ModuleCommandLinks MainWindow::LinksForModules() {
  return {.connection = options_.host.connection,
          .basket = [this] { return basket_view_.Items(); },
          .libraries = [this] { return LibrariesForModules(); },
          .options =
              [this] {
                const bool is_public = form_.cmbRange.Text() == kPublic;
                return plan::PlanOptions{
                    .scope = is_public ? vb::Scope::kPublic : vb::Scope::kPrivate,
                    .target = writer_.Target(),
                    .knowledge = writer_.Knowledge(library_.path)};
              }};
}

ProjectCommandLinks MainWindow::LinksForProject() {
  return {.connection = options_.host.connection, .libraries = [this] {
            auto known = std::make_unique<check::KnownLibraries>();
            known->Add(library_, FactsOf(library_.path));
            for (const auto& path : BundledLibraries(options_.folder)) {
              if (IdentityOf(path) == IdentityOf(library_.path)) continue;
              if (auto library = LoadLibraryFile(path))
                known->Add(*std::move(library), FactsOf(path));
            }
            return known;
          }};
}

// What the open library lacks is looked for in those that come with the program.
LibrariesInUse MainWindow::LibrariesForModules() const {
  LibrariesInUse libraries{.all = {&library_}, .loaded = {}};
  for (const auto& path : BundledLibraries(options_.folder)) {
    if (IdentityOf(path) == IdentityOf(library_.path)) continue;
    auto library = LoadLibraryFile(path);
    if (!library) continue;
    libraries.loaded.push_back(std::make_unique<Library>(*std::move(library)));
    libraries.all.push_back(libraries.loaded.back().get());
  }
  return libraries;
}

void MainWindow::CodeModuleChanged() {
  basket_view_.SetCEI();
  form_.mnuCompleteModule.SetEnabled(options_.host.has_code_module());
  form_.mnuProject.SetEnabled(options_.host.has_code_module());
}

SearchLinks MainWindow::LinksForSearch() {
  return {.library = [this]() -> const Library& { return library_; },
          .show_item = [this](const ItemView& item) { item_display_.Show(item); },
          .add_to_basket = [this](Kind kind,
                                  std::u16string_view name) { basket_view_.AddByName(kind, name); },
          .load_check_boxes = [this] { return ReadSetting(store_, setting::kFindCheckBox); },
          .save_check_boxes =
              [this](std::u16string_view boxes) {
                WriteSetting(store_, setting::kFindCheckBox, boxes);
              }};
}

CheckLinks MainWindow::LinksForCheck() {
  return {.library = [this]() -> const Library& { return library_; },
          .folder = options_.folder,
          .colors = colors_,
          .go_to = [this](Kind kind, std::u16string_view name) { return GoTo(kind, name); }};
}

bool MainWindow::GoTo(Kind kind, std::u16string_view name) {
  if (FindItemIndex(name, library_[kind].names) == -1) return false;
  form_.cmbSelector.SetListIndex(KindCode(kind));
  // Another kind's list is filled, which processes events.
  const auto row = FindItemIndex(name, library_[kind].names);
  auto& list = selector_.ListOf(kind);
  if (row == -1 || !list.SetListIndex(row)) return false;
  // The row may have been selected already.
  ShowSelectedItem(kind, selector_, item_display_);
  list.SetFocus();
  return true;
}

void MainWindow::ShowOptions() {
  auto target = writer_.Target();
  ShowOptionsDialog(toolkit_, form_.frmMain.get(), store_, colors_, target);
  TakeTarget(target);
}

void MainWindow::HostChanged() {
  CodeModuleChanged();
  if (IsLoaded()) TakeTarget(ReadAudience(store_, options_.host.target()));
}

void MainWindow::TakeTarget(vb::Audience target) {
  if (target == writer_.Target()) return;
  SetTarget(target);
  item_display_.ShowCodeAgain();
}

void MainWindow::SetTarget(vb::Audience target) {
  writer_.SetTarget(target);
  code_display_.SetAudience(target);
  form_.RTB.SetToolTip(target == vb::Audience::kVb6
                           ? std::u16string()
                           : std::u16string(texts::kTipCode).append(TargetText(target)));
}

void MainWindow::OfferTarget(vb::Audience target) {
  const auto question = std::u16string(texts::kAskListTargetBefore)
                            .append(TargetText(target))
                            .append(texts::kAskListTargetBehind);
  if (toolkit_.ShowMessage({question, MessageButtons::kYesNo, MessageIcon::kQuestion}) !=
      Answer::kYes)
    return;
  WriteAudience(store_, target);
  SetTarget(target);
  item_display_.ShowCodeAgain();
}

std::u16string MainWindow::ForTarget(std::u16string text) {
  if (writer_.Target() == vb::Audience::kVb6) return text;
  return writer_.Write(text, library_.path).text;
}

std::u16string MainWindow::BasketText() {
  return ForTarget(basket_view_.Text(form_.cmbRange.Text()));
}

void MainWindow::Load() {
  form_.frmMain->Load();
}

void MainWindow::ShowMainWindow() {
  const bool first_time = !form_.frmMain->IsLoaded();
  form_.frmMain->Show();
  // The click was the host's, which is in the foreground and keeps it.
  if (options_.mode == RunMode::kInHost) form_.frmMain->BringToTop();
  // The list took the focus while it was filled, but a window not yet shown keeps none.
  if (auto* list = selector_.SelectList(); first_time && list != nullptr) list->SetFocus();
  form_.CodeModuleChecker.SetEnabled(true);
  if (first_time) commands_.OfferUnwritten();
}

bool MainWindow::Unload() {
  const HeldFlag for_good(unloading_for_good_);
  return form_.frmMain->Unload();
}

void MainWindow::Form_Load() {
  colors_ = ReadColors(store_);
  SetTarget(ReadAudience(store_, options_.host.target()));
  const auto settings = ReadWindowSettings(store_);
  if (settings.size_saved) {
    const auto& edges = settings.edges;
    const HeldFlag suppressed(resize_suppressed_);
    form_.frmMain->SetPlacement({edges.left, edges.top, edges.right, edges.bottom,
                                 static_cast<ShowCommand>(settings.show_command)});
  }
  panes_ = settings.panes;
  form_.cmbRange.SetListIndex(0);
  commands_.EnumDatabases();
  form_.cmbRange.SetListIndex(settings.range);
  form_.frmMain->SetShowCommand(static_cast<ShowCommand>(settings.show_command));
  if (!laid_out_once_) Form_Resize();
  commands_.OpenAtStart(options_.command_line, settings.last_database_index,
                        settings.last_database_name);
  form_.cmbSelector.SetListIndex(settings.selector);
  CodeModuleChanged();
  form_.CodeModuleChecker.SetEnabled(true);
}

void MainWindow::Form_Resize() {
  if (resize_suppressed_) return;
  auto& frmMain = *form_.frmMain;
  const Size outer{frmMain.OuterWidth(), frmMain.OuterHeight()};
  if (const auto corrected = CorrectedOuterSize(outer)) {
    // The resize event that follows lays the window out.
    if (corrected->width != outer.width) return frmMain.SetOuterWidth(corrected->width);
    return frmMain.SetOuterHeight(corrected->height);
  }
  const auto layout = LayOutMain(frmMain.ScaleWidth(), frmMain.ScaleHeight(), panes_);
  panes_ = layout.panes;
  const UpdateLock lock(frmMain);
  for (const auto kind : kKinds) selector_.ListOf(kind).SetBounds(layout.kind_list);
  form_.PosMainWidth.SetBounds(layout.PosMainWidth);
  form_.RTB.SetBounds(layout.RTB);
  form_.lstFind.SetBounds(layout.lstFind);
  form_.txtFind.SetBounds(layout.txtFind);
  form_.lstAdd.SetBounds(layout.lstAdd);
  form_.lstShare.SetBounds(layout.lstShare);
  form_.txtInput.SetBounds(layout.txtInput);
  form_.PosRtbHeight.SetBounds(layout.PosRtbHeight);
  form_.PosAddHeight.SetBounds(layout.PosAddHeight);
  form_.lstAdd.SetColumnWidth(layout.add_column_width);
  form_.lstShare.SetColumnWidth(layout.share_column_width);
  laid_out_once_ = true;
}

void MainWindow::WriteSettings() {
  const auto placement = form_.frmMain->GetPlacement();
  WriteWindowSettings(store_,
                      {.size_saved = true,
                       .edges = {placement.left, placement.top, placement.right, placement.bottom},
                       .show_command = static_cast<int>(placement.show),
                       .panes = panes_,
                       .range = form_.cmbRange.ListIndex(),
                       .selector = form_.cmbSelector.ListIndex(),
                       .last_database_index = form_.cmbDatabase.ListIndex(),
                       .last_database_name = form_.cmbDatabase.Text()});
}

void MainWindow::Form_QueryUnload(QueryUnload& query) {
  session_ends_ = query.reason == UnloadReason::kSessionEnd;
  WriteSettings();
  query.cancel = !commands_.AskSaveChanges();
}

void MainWindow::Form_Unload(bool& cancel) {
  form_.CodeModuleChecker.SetEnabled(false);
  search_dialog_.Close();
  check_dialog_.Close();
  if (options_.mode == RunMode::kStandalone) {
    toolkit_.Quit(0);
  } else if (!unloading_for_good_) {
    // A window that stayed would keep the user from logging off.
    cancel = !session_ends_;
    form_.frmMain->Hide();
    options_.host.hidden();
  }
}

}  // namespace declarium
