// The bare list box (bare_list_box.cpp) with a list of names.
#pragma once

#include <filesystem>
#include <memory>

#include "bench/window/bare_list_box.h"
#include "library/string_list.h"
#include "window/window_driver.h"

namespace declarium::bench {

// Writes the file that the bare list box reads.
void WriteNames(const std::filesystem::path& file, const StringList& names);

// Starts the bare list box and waits for its window, without a pause.
class BareProgram {
 public:
  explicit BareProgram(const std::filesystem::path& names);

  // Empties the list, which is not measured.
  void Empty() const { window_driver::Ask(window_, kEmpty); }
  // Fills the list and returns when it is painted.
  void Fill() const { window_driver::Ask(window_, kFill); }

 private:
  window_driver::DrivenProgram program_;
  HWND window_ = nullptr;
};

}  // namespace declarium::bench
