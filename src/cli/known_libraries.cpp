#include "cli/known_libraries.h"

#include <filesystem>
#include <map>
#include <optional>

#include "cli/facts_command.h"
#include "cli/library_files.h"

#include "facts/known_facts.h"
#include "library/file_io.h"

namespace declarium::cli {
namespace {

// The facts beside a library; nullopt where there are none: a library of one's own has seldom any.
std::optional<FactsFile> FactsOf(const std::filesystem::path& library) {
  std::error_code ignored;
  if (!std::filesystem::exists(FactsPathOf(library), ignored)) return std::nullopt;
  return OpenFacts(library);
}

}  // namespace

void LoadKnown(check::KnownLibraries& known, const std::vector<std::string>& files,
               const Session& session) {
  auto names = files;
  if (names.empty())
    for (const auto& path : BundledLibraries(session.streams.program))
      names.push_back(PathText(path));
  for (const auto& file : names) known.Add(LoadLibrary(file), FactsOf(PathOf(file)));
}

void DefineAgainst(CLI::App& command, std::vector<std::string>& against) {
  command
      .add_option("--against", against,
                  "A library that tells what is right, with the facts beside it; several "
                  "times for several; those that come with the program when left out")
      ->take_all()
      ->allow_extra_args(false)
      ->type_name("LIBRARY");
}

void DefineFailOn(CLI::App& command, check::Level& level, const std::string& otherwise) {
  const std::map<std::string, check::Level> levels = {{"error", check::Level::kError},
                                                      {"warning", check::Level::kWarning},
                                                      {"note", check::Level::kNote}};
  command
      .add_option("--fail-on", level,
                  "The lowest level that ends the command with 1: error, warning or note; " +
                      otherwise + " unless said otherwise")
      ->transform(CLI::CheckedTransformer(levels, CLI::ignore_case).description(""))
      ->type_name("LEVEL");
}

}  // namespace declarium::cli
