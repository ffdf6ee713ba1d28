// The program's surroundings as the commands see them, so that a test can stand in for a terminal.
#pragma once

#include <filesystem>
#include <iosfwd>

#include "library/file_system.h"

namespace declarium::cli {

struct Streams {
  std::istream& in;              // bytes, as a file has them
  std::ostream& out;             // results, UTF-8
  std::ostream& err;             // messages and progress, UTF-8
  bool out_is_terminal = false;  // one that understands escape codes
  bool err_is_terminal = false;
  bool no_color = false;               // the user asked every program to leave colors out
  std::filesystem::path history = {};  // the history's folder; empty: what is replaced is not kept
  FileSystem& files = SystemFiles();   // what is written goes through it
  std::filesystem::path program = {};  // the program's folder; empty: no bundled libraries
};

}  // namespace declarium::cli
