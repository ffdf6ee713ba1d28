// The files that the benchmarks read, made once and kept beside each other in one folder.
#pragma once

#include <cstddef>
#include <filesystem>

namespace declarium::bench {

class BenchmarkFiles {
 public:
  // Makes the folder when it is missing.
  explicit BenchmarkFiles(std::filesystem::path folder);

  // A library of this many items, the same as exported source, and a source module of this many
  // lines. Each is made when it is asked for first; a program that cannot write it ends.
  [[nodiscard]] std::filesystem::path Library(std::size_t items) const;
  [[nodiscard]] std::filesystem::path Export(std::size_t items) const;
  [[nodiscard]] std::filesystem::path Module(std::size_t lines) const;

  // The folder of a project, Program.vbp, with a module for each 1 000 lines, whose declarations
  // are rows of `library`.
  [[nodiscard]] std::filesystem::path Project(std::size_t lines,
                                              const std::filesystem::path& library) const;

  // A file that a benchmark may write.
  [[nodiscard]] std::filesystem::path Output(const char* name) const { return folder_ / name; }

 private:
  std::filesystem::path folder_;
};

}  // namespace declarium::bench
