// frmCheck: what is wrong in the open library, beside the main window.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "check/library_check.h"
#include "library/library.h"
#include "source/display_colors.h"
#include "toolkit/captioned.h"
#include "toolkit/form.h"
#include "toolkit/list_view.h"
#include "toolkit/toolkit.h"

namespace declarium {

// What the dialog needs of the rest of the program.
struct CheckLinks {
  std::function<const Library&()> library;  // the open library
  std::filesystem::path folder;             // the program's, whose libraries tell what is right
  const DisplayColors& colors;
  // Selects the item in the main window; false when the open library does not have it.
  std::function<bool(Kind, std::u16string_view name)> go_to;
};

class CheckDialog {
 public:
  // The toolkit and what the links refer to must outlive the dialog.
  CheckDialog(Toolkit& toolkit, CheckLinks links);

  // Opens the dialog, or brings the open one forward, and checks the library as it is now. Events
  // are processed meanwhile; closing the dialog ends the check. `owner` must outlive the dialog's
  // being open.
  void Show(Form* owner);
  // Closes the dialog, if it is open.
  void Close();

 private:
  void MakeForm();
  void frmCheck_Resize();
  void Command1_Click();
  void LV1_ItemClick(int position);
  void RunCheck();
  [[nodiscard]] bool ShowProgress(int done, int all);
  void ShowFindings(std::size_t checked, bool has_reference);
  [[nodiscard]] bool IsOpen() const { return form_ && form_->IsLoaded(); }

  Toolkit& toolkit_;
  CheckLinks links_;
  std::unique_ptr<Form> form_;
  std::vector<check::LibraryFinding> findings_;
  bool is_in_event_ = false;  // one that processes others, so that the form must not be destroyed
  bool last_press_on_row_ = false;
};

}  // namespace declarium
