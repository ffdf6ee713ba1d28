// Loads a library, or reads a module of source, and prints the peak memory of the whole process and
// the size of the file, in bytes.
//   peak_memory load|read FILE
#include <cstdio>
#include <string_view>
#include <sys/resource.h>

#include "library/file_io.h"
#include "library/library_file.h"
#include "text/code_page.h"
#include "vb/module.h"

namespace {

bool Load(const char* file) {
  return declarium::LoadLibraryFile(file).has_value();
}

bool ReadSource(const char* file) {
  const auto bytes = declarium::ReadWholeFile(file);
  if (!bytes) return false;
  const auto text = declarium::DecodeCodePage(*bytes);
  return !declarium::vb::ReadModule(text).declarations.empty();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const bool source = std::string_view(argv[1]) == "read";
  if (!(source ? ReadSource : Load)(argv[2])) {
    std::fprintf(stderr, "cannot read %s\n", argv[2]);
    return 1;
  }
  rusage usage = {};
  getrusage(RUSAGE_SELF, &usage);
  std::printf("%ld %ju\n", usage.ru_maxrss * 1024, std::filesystem::file_size(argv[2]));
}
