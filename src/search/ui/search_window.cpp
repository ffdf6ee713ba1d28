#include "search/ui/search_window.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "library/ui/file_messages.h"
#include "search/ui/search_form.h"
#include "text/user_texts.h"
#include "toolkit/held_flag.h"
#include "vb/number.h"

namespace declarium {
namespace {

// From this many rows on the wait window is shown while they are freed. They go in a moment
// (search_hits.h), so that the window, which takes longer to appear, is kept for long lists.
constexpr int kLongList = 5'000;

constexpr int kScrollBarWidth = 24;

// From so many milliseconds on a search is a long one. Most are over before the eye would see their
// pointer, and changing it twice takes longer than some of them.
constexpr std::uint32_t kLongSearch = 100;

class CountUp {
 public:
  explicit CountUp(int& count) : count_(count) { ++count_; }
  ~CountUp() { --count_; }
  CountUp(const CountUp&) = delete;
  CountUp& operator=(const CountUp&) = delete;

 private:
  int& count_;
};

Message Exclamation(std::u16string_view text) {
  return {.text = std::u16string(text), .icon = MessageIcon::kExclamation};
}

template <std::size_t... I>
std::array<CheckBox*, sizeof...(I)> FindChecks(const Form& form, std::index_sequence<I...>) {
  return {&form.Get<CheckBox>("Check" + std::to_string(I + 1))...};
}

}  // namespace

// Shows the course of a search. No event is processed while it runs, so what changes is painted at
// once, and the rows, which nobody can use before the end, are handed over then, all together.
class SearchWindow::Results : public SearchReceiver {
 public:
  Results(SearchWindow& window, const Library& searched) : window_(window), searched_(searched) {}

  void Begin(std::int32_t maximum) override {
    window_.PB_.SetMaximum(maximum);
    window_.PB_.SetValue(0);
    window_.ClearResults();
    hits_ = std::make_unique<SearchHits>(searched_, window_.block_);
    // The maximum counts one item less for each kind.
    hits_->Reserve(static_cast<std::size_t>(maximum) + kKindCount);
    begun_at_ = TickCount();
  }
  void Hit(const SearchHit& hit) override { hits_->Add(hit); }
  void Position(std::int32_t position) override {
    window_.PB_.SetValue(position);
    window_.PB_.Refresh();
    if (!hourglass_ && TickCount() - begun_at_ >= kLongSearch) {
      hourglass_.emplace(window_.toolkit_);
    }
  }
  void Count(std::int32_t hits) override {
    window_.ShowCount(hits);
    window_.labCount_.Refresh();
  }
  void End() override {
    // The events of clearing the earlier results may have closed the dialog. The list is empty
    // already, and without hits the block of memory goes back for the next search.
    if (window_.IsOpen() && hits_->Count() > 0) {
      window_.LV1_.ShowEntries(std::move(hits_));
    }
    window_.PB_.SetValue(0);
    window_.LV1_.Select(-1);
    hourglass_.reset();
  }
  std::uint32_t TickCount() override { return window_.toolkit_.TickCount(); }

 private:
  SearchWindow& window_;
  const Library& searched_;
  std::unique_ptr<SearchHits> hits_;
  std::uint32_t begun_at_ = 0;
  std::optional<HourglassPointer> hourglass_;
};

SearchWindow::SearchWindow(Toolkit& toolkit, const SearchLinks& links, WaitWindow& wait)
    : toolkit_(toolkit),
      links_(links),
      wait_(wait),
      frmFind_(toolkit.CreateForm(SearchFormDefinition())),
      LV1_(frmFind_->Get<ListView>("LV1")),
      PB_(frmFind_->Get<ProgressBar>("PB")),
      labCount_(frmFind_->Get<Label>("labCount")),
      checks_(FindChecks(*frmFind_, std::make_index_sequence<kFindCheckBoxCount>())) {
  ConnectEvents();
}

void SearchWindow::ConnectEvents() {
  frmFind_->on_load = [this] { frmFind_Load(); };
  frmFind_->on_resize = [this] { frmFind_Resize(); };
  frmFind_->on_unload = [this](bool&) { frmFind_Unload(); };
  frmFind_->Get<CommandButton>("Command1").on_click = [this] { frmFind_->Unload(); };
  frmFind_->Get<CommandButton>("Command2").on_click = [this] { Command2_Click(); };
  LV1_.on_item_click = [this](int position) { LV1_ItemClick(position); };
  LV1_.on_got_focus = [this] { LV1_GotFocus(); };
  LV1_.on_key_down = [this](KeyDown& key) { LV1_KeyDown(key); };
  LV1_.on_mouse_down = [this](const MouseEvent& press) {
    last_press_on_row_ = LV1_.HitTest(press.at) != -1;
  };
  LV1_.on_double_click = [this] { LV1_DoubleClick(); };
}

void SearchWindow::Show(Form* owner) {
  const bool is_new = !frmFind_->IsLoaded();
  owner_ = owner;
  if (!is_new && frmFind_->GetPlacement().show == ShowCommand::kMinimized) {
    frmFind_->SetShowCommand(ShowCommand::kNormal);
  }
  frmFind_->Show(ShowMode::kModeless, owner);
  // The kinds stand before it, but a name is what most searches begin with.
  if (is_new) frmFind_->Get<TextBox>("Text1").SetFocus();
}

void SearchWindow::frmFind_Load() {
  const auto values = ReadFindCheckBoxes(links_.load_check_boxes());
  for (std::size_t i = 0; i < checks_.size(); ++i) checks_[i]->SetValue(values[i]);
  ShowCount(0);
}

void SearchWindow::ShowCount(int hits) {
  labCount_.SetCaption(std::u16string(texts::kFoundCount) + NumberText(hits));
}

void SearchWindow::frmFind_Resize() {
  for (const auto& [name, bounds] :
       SearchFormLayout({frmFind_->ScaleWidth(), frmFind_->ScaleHeight()})) {
    frmFind_->Get<Control>(name).SetBounds(bounds);
  }
  LV1_.SetColumnWidth(LV1_.Bounds().width - kScrollBarWidth);
}

void SearchWindow::frmFind_Unload() {
  const CountUp running(events_running_);
  closing_ = true;
  FindCheckBoxes values;
  for (std::size_t i = 0; i < checks_.size(); ++i) values[i] = checks_[i]->Value();
  links_.save_check_boxes(FindCheckBoxText(values));
  if (LV1_.Count() >= kLongList) {
    frmFind_->Hide();
    wait_.Show(owner_);
  }
  LV1_.Clear();
  block_ = SearchHits::Block();
}

bool SearchWindow::IsChecked(int number) const {
  return checks_[static_cast<std::size_t>(number - 1)]->Value() == 1;
}

std::u16string SearchWindow::TextOf(std::string_view name) const {
  return frmFind_->Get<TextBox>(name).Text();
}

SearchCriteria SearchWindow::Criteria() const {
  return {.searchConsts = IsChecked(1),
          .searchDeclares = IsChecked(2),
          .searchTypes = IsChecked(3),
          .nameText = TextOf("Text1"),
          .nameWhole = IsChecked(4),
          .typeText = TextOf("Text2"),
          .typeWhole = IsChecked(5),
          .constText = TextOf("Text3"),
          .constWhole = IsChecked(6),
          .valueText = TextOf("Text4"),
          .valueWhole = IsChecked(7),
          .valueAsNumber = IsChecked(9),
          .argText = TextOf("Text6"),
          .argWhole = IsChecked(10),
          .fullText = TextOf("Text5"),
          .fullWholeWords = IsChecked(8)};
}

void SearchWindow::Command2_Click() {
  if (SearchBusy_) return;
  const CountUp running(events_running_);
  // Clearing earlier results processes events, which may open another library or change this one:
  // the search then goes through lists of its own. They share their texts.
  std::optional<Library> copy;
  if (LV1_.Count() > 0) copy = links_.library();
  const Library& library = copy ? *copy : links_.library();
  Results results(*this, library);
  switch (Search(Criteria(), library, results)) {
    case SearchOutcome::kNoCriteria:
      toolkit_.ShowMessage(Exclamation(texts::kNoCriteria));
      break;
    case SearchOutcome::kNotEnough:
      toolkit_.ShowMessage(Exclamation(texts::kNotEnough));
      break;
    case SearchOutcome::kDone:
      break;
  }
}

void SearchWindow::ClearResults() {
  if (LV1_.Count() == 0) return;
  if (LV1_.Count() >= kLongList) wait_.Show(frmFind_.get());
  LV1_.Clear();
  const HeldFlag busy(SearchBusy_);
  toolkit_.ProcessPendingEvents();
}

void SearchWindow::LV1_ItemClick(int position) {
  const auto row = LV1_.Entry(position);
  const auto kind = KindOfIcon(row.icon);
  if (!kind) return;
  // The item may have been deleted since, or another library may be open.
  if (const auto item = FindItem(links_.library(), *kind, row.text)) links_.show_item(*item);
}

void SearchWindow::LV1_GotFocus() {
  if (LV1_.Selected() != -1) LV1_ItemClick(LV1_.Selected());
}

void SearchWindow::LV1_KeyDown(KeyDown& key) {
  if (key.code != key::kEnter) return;
  key.Swallow();
  AddSelected();
}

void SearchWindow::LV1_DoubleClick() {
  if (last_press_on_row_) AddSelected();
}

void SearchWindow::AddSelected() {
  if (LV1_.Selected() == -1) return;
  const auto row = LV1_.Entry(LV1_.Selected());
  if (const auto kind = KindOfIcon(row.icon)) links_.add_to_basket(*kind, row.text);
}

}  // namespace declarium
