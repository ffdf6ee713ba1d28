// One opening of frmFind: its controls, their handlers and its results.
#pragma once

#include <array>
#include <memory>

#include "search/find_check_box.h"
#include "search/search_engine.h"
#include "search/ui/search_dialog.h"
#include "search/ui/search_hits.h"
#include "search/ui/wait_window.h"
#include "toolkit/captioned.h"
#include "toolkit/form.h"
#include "toolkit/list_view.h"
#include "toolkit/progress_bar.h"
#include "toolkit/text_box.h"
#include "toolkit/toolkit.h"

namespace declarium {

class SearchWindow {
 public:
  // Everything must outlive the window.
  SearchWindow(Toolkit& toolkit, const SearchLinks& links, WaitWindow& wait);

  // Opens the form, or brings it forward.
  void Show(Form* owner);
  // Unloads the form, which stores its check boxes; nothing happens when it is not open.
  void Close() { frmFind_->Unload(); }
  // From Show until it begins to close.
  [[nodiscard]] bool IsOpen() const { return frmFind_->IsLoaded() && !closing_; }
  // Whether a handler that processes events is running, so that the window must not be destroyed.
  [[nodiscard]] bool IsInEvent() const { return events_running_ > 0; }

 private:
  class Results;  // the engine's receiver

  void ConnectEvents();
  void frmFind_Load();
  void frmFind_Resize();
  void frmFind_Unload();
  void Command2_Click();
  void LV1_ItemClick(int position);
  void LV1_GotFocus();
  void LV1_KeyDown(KeyDown& key);
  void LV1_DoubleClick();

  [[nodiscard]] SearchCriteria Criteria() const;
  [[nodiscard]] bool IsChecked(int number) const;
  [[nodiscard]] std::u16string TextOf(std::string_view name) const;
  void ShowCount(int hits);
  void ClearResults();
  void AddSelected();

  Toolkit& toolkit_;
  const SearchLinks& links_;
  WaitWindow& wait_;
  SearchHits::Block block_;  // what the hits of one search after the other stand in
  std::unique_ptr<Form> frmFind_;
  ListView& LV1_;
  ProgressBar& PB_;
  Label& labCount_;
  std::array<CheckBox*, kFindCheckBoxCount> checks_;  // Check1 first
  Form* owner_ = nullptr;
  bool SearchBusy_ = false;
  bool last_press_on_row_ = false;
  bool closing_ = false;
  int events_running_ = 0;
};

}  // namespace declarium
