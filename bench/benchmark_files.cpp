#include "bench/benchmark_files.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "bench/generated_library.h"
#include "library/file_format.h"
#include "library/file_io.h"
#include "library/file_saver.h"
#include "library/library_file.h"
#include "source/item_text.h"
#include "text/code_page.h"

namespace declarium::bench {
namespace {

void Write(const std::filesystem::path& path, std::string_view bytes) {
  const auto written = WriteWholeFile(path, bytes);
  if (written) return;
  std::fprintf(stderr, "%s\n", written.error().Message().c_str());
  std::exit(1);
}

}  // namespace

BenchmarkFiles::BenchmarkFiles(std::filesystem::path folder) : folder_(std::move(folder)) {
  std::filesystem::create_directories(folder_);
}

std::filesystem::path BenchmarkFiles::Library(std::size_t items) const {
  const auto path = folder_ / ("library-" + std::to_string(items) + ".api");
  if (!exists(path)) Write(path, LibraryBytes(GenerateLibrary(items)));
  return path;
}

std::filesystem::path BenchmarkFiles::Export(std::size_t items) const {
  const auto path = folder_ / ("library-" + std::to_string(items) + ".bas");
  if (!exists(path)) Write(path, EncodeCodePage(ExportText(GenerateLibrary(items))));
  return path;
}

std::filesystem::path BenchmarkFiles::Module(std::size_t lines) const {
  const auto path = folder_ / ("module-" + std::to_string(lines) + ".bas");
  if (!exists(path)) Write(path, GenerateModule(lines));
  return path;
}

std::filesystem::path BenchmarkFiles::Project(std::size_t lines,
                                              const std::filesystem::path& library) const {
  constexpr std::size_t kModuleLines = 1000;
  auto folder = folder_ / ("project-" + std::to_string(lines));
  const auto project = folder / "Program.vbp";
  if (exists(project)) return folder;
  std::filesystem::create_directories(folder);
  const auto rows = LoadLibraryFile(library).value();
  std::string list = "Type=Exe\r\n";
  for (std::size_t i = 0; i < lines / kModuleLines; ++i) {
    const auto name = "Module" + std::to_string(i);
    Write(folder / (name + ".bas"), "Attribute VB_Name = \"" + name + "\"\r\n" +
                                        GenerateProgramModule(rows, i, kModuleLines));
    list += "Module=" + name + "; " + name + ".bas\r\n";
  }
  Write(project, list);
  return folder;
}

}  // namespace declarium::bench
