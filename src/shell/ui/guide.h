// The guide to the program: HTML pages in the folder "guide" beside the program, which the system's
// browser shows.
#pragma once

#include <filesystem>
#include <memory>
#include <string_view>

#include "toolkit/toolkit.h"

namespace declarium {

// While it lives it answers the toolkit's on_help, unless a later one does. `toolkit` must outlive
// it.
class Guide {
 public:
  Guide(Toolkit& toolkit, const std::filesystem::path& program_folder);
  Guide(const Guide&) = delete;
  Guide& operator=(const Guide&) = delete;

  // Shows the page of a form's help topic; the first page when the topic is empty. A page that is
  // missing, or that no program shows, is reported to the user with its path.
  void Open(std::string_view topic);

  [[nodiscard]] std::filesystem::path PageOf(std::string_view topic) const;

 private:
  Toolkit& toolkit_;
  std::filesystem::path folder_;
  std::shared_ptr<Guide*> self_ = std::make_shared<Guide*>(this);
};

// What the program is, and its version.
void ShowAbout(Toolkit& toolkit);

}  // namespace declarium
