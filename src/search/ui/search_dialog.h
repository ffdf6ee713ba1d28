// The advanced search: frmFind beside the main window, from its first Show to the program's end.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "library/library.h"
#include "search/ui/wait_window.h"
#include "toolkit/form.h"
#include "toolkit/toolkit.h"

namespace declarium {

// What the search dialog needs of the rest of the program.
struct SearchLinks {
  std::function<const Library&()> library;  // the open library
  // Shows an item's code and its shared items in the main window; its lists stay as they are.
  std::function<void(const ItemView&)> show_item;
  std::function<void(Kind, std::u16string_view name)> add_to_basket;
  // The setting FindCheckBox; empty when it is not stored.
  std::function<std::u16string()> load_check_boxes;
  std::function<void(std::u16string_view)> save_check_boxes;
};

class SearchWindow;

class SearchDialog {
 public:
  // The toolkit and what the links refer to must outlive the dialog. Destroying an open dialog
  // takes it away without storing its check boxes: close it first.
  SearchDialog(Toolkit& toolkit, SearchLinks links);
  ~SearchDialog();
  SearchDialog(const SearchDialog&) = delete;
  SearchDialog& operator=(const SearchDialog&) = delete;

  // Opens the dialog with empty texts, no results and the stored check boxes, or brings the open
  // one forward. `owner`, which may be null, must outlive the dialog's being open.
  void Show(Form* owner);
  // Closes the dialog, if it is open, as its user would.
  void Close();
  // Whether the dialog is open.
  [[nodiscard]] bool IsOpen() const;

 private:
  Toolkit& toolkit_;
  SearchLinks links_;
  WaitWindow wait_;
  std::unique_ptr<SearchWindow> open_;
  // Closed while one of their own events was running, which may have asked for a new one.
  std::vector<std::unique_ptr<SearchWindow>> closed_;
};

}  // namespace declarium
