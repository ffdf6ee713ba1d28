// Loads the library named on the command line and prints the peak memory of the whole process and
// the size of the file, in bytes.
#include <cstdio>
#include <sys/resource.h>

#include "library/library_file.h"

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const auto library = declarium::LoadLibraryFile(argv[1]);
  if (!library) {
    std::fprintf(stderr, "%s\n", library.error().Message().c_str());
    return 1;
  }
  rusage usage = {};
  getrusage(RUSAGE_SELF, &usage);
  std::printf("%ld %ju\n", usage.ru_maxrss * 1024, std::filesystem::file_size(argv[1]));
}
