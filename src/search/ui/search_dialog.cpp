#include "search/ui/search_dialog.h"

#include <utility>

#include "search/ui/search_window.h"

namespace declarium {

SearchDialog::SearchDialog(Toolkit& toolkit, SearchLinks links)
    : toolkit_(toolkit), links_(std::move(links)), wait_(toolkit) {}

SearchDialog::~SearchDialog() = default;

bool SearchDialog::IsOpen() const {
  return open_ && open_->IsOpen();
}

void SearchDialog::Close() {
  if (IsOpen()) open_->Close();
}

void SearchDialog::Show(Form* owner) {
  if (!IsOpen()) {
    std::erase_if(closed_, [](const auto& window) { return !window->IsInEvent(); });
    if (open_ && open_->IsInEvent()) closed_.push_back(std::move(open_));
    open_ = std::make_unique<SearchWindow>(toolkit_, links_, wait_);
  }
  open_->Show(owner);
}

}  // namespace declarium
