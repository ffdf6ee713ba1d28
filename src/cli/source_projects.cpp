#include "cli/source_projects.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <utility>

#include "cli/library_files.h"
#include "cli/source_files.h"

#include "library/file_io.h"
#include "library/file_name.h"
#include "text/encoding.h"
#include "text/text.h"

namespace declarium::cli {
namespace {

namespace fs = std::filesystem;

std::u16string TextOf(const FileView& view) {
  return DecodeText(view.bytes, RecognizeEncoding(view.bytes, kLibraryEncoding));
}

// The entry of this name, in other letters where there is none in these.
fs::path FindIn(const fs::path& folder, const fs::path& name) {
  std::error_code ignored;
  auto path = folder / name;
  if (fs::exists(path, ignored)) return path;
  for (auto& entry : ListFolder(folder))
    if (EqualIgnoringCase(NameOfPath(entry.filename()), NameOfPath(name))) return std::move(entry);
  return path;
}

// Where the file is that a project in `folder` calls `written`.
fs::path Locate(const fs::path& folder, std::u16string_view written) {
  auto relative = PathOfName(Replace(written, u"\\", u"/"));
  if (relative.is_absolute()) return relative;
  auto path = folder;
  for (const auto& part : relative) path = FindIn(path, part);
  return path;
}

class SourceReader {
 public:
  explicit SourceReader(const Session& session) : session_(session) {}

  std::deque<SourceProject> Read(const std::vector<std::string>& arguments) {
    for (const auto& argument : arguments) ReadArgument(argument);
    return std::move(projects_);
  }

 private:
  void ReadArgument(const std::string& argument) {
    std::error_code ignored;
    if (argument != "-" && fs::is_directory(PathOf(argument), ignored)) return ReadFolder(argument);
    auto text = TextOf(ViewSource(argument, session_));
    const auto kind = vb::ProjectFileKindOf(FromUtf8(argument));
    if (!kind) return ReadModule(argument, std::move(text));
    if (*kind == vb::ProjectFileKind::kProject)
      return ReadProject(PathOf(argument), std::move(text));
    ReadGroup(PathOf(argument), std::move(text));
  }

  void ReadModule(const std::string& argument, std::u16string text) {
    if (projects_.empty() || !projects_.front().name.empty()) projects_.emplace_front();
    Add(projects_.front(), SourceName(argument), std::move(text),
        vb::ModuleKindOf(FromUtf8(argument)));
  }

  void ReadFolder(const std::string& argument) {
    std::vector<fs::path> paths;
    for (auto& path : ListFolder(PathOf(argument)))
      if (vb::IsModuleFile(NameOfPath(path)) && StatusOf(path)) paths.push_back(std::move(path));
    if (paths.empty())
      throw CommandFailed(ExitStatus::kFileFailed, argument + ": no module is in this folder");
    std::ranges::sort(paths);
    auto& project = projects_.emplace_back();
    project.name = argument;
    for (const auto& path : paths) {
      const auto name = PathText(path);
      Add(project, name, TextOf(ViewSource(name, session_)), vb::ModuleKindOf(NameOfPath(path)));
    }
  }

  SourceProject& Begin(const fs::path& path, std::u16string text) {
    auto& project = projects_.emplace_back();
    project.name = PathText(path);
    project.text = std::move(text);
    return project;
  }

  void ReadProject(const fs::path& path, std::u16string text) {
    auto& project = Begin(path, std::move(text));
    project.project = vb::ReadProject(project.text);
    for (const auto& module : project.project.modules) {
      const auto file = Locate(path.parent_path(), module.path);
      auto module_text = TextAt(file, project, module.path, module.place);
      if (module_text) Add(project, PathText(file), *std::move(module_text), module.kind);
    }
  }

  void ReadGroup(const fs::path& path, std::u16string text) {
    auto& project = Begin(path, std::move(text));
    auto group = vb::ReadProjectGroup(project.text);
    project.project.errors = std::move(group.errors);
    for (const auto& each : group.projects) {
      const auto file = Locate(path.parent_path(), each.path);
      if (auto member = TextAt(file, project, each.path, each.place))
        ReadProject(file, *std::move(member));
    }
  }

  // The file's text; an error of the project when it cannot be read.
  static std::optional<std::u16string> TextAt(const fs::path& file, SourceProject& project,
                                              std::u16string_view written, const vb::Place& place) {
    if (const auto view = ViewFile(file)) return TextOf(*view);
    project.project.errors.push_back({place, "a file that can be read", written, place});
    project.has_all_files = false;
    return std::nullopt;
  }

  static void Add(SourceProject& project, std::string name, std::u16string text,
                  vb::ModuleKind kind) {
    auto& module = project.modules.emplace_back();
    module.name = std::move(name);
    module.text = std::move(text);
    module.parsed = vb::ReadModule(module.text, kind);
    // All of its code may have been taken for the header.
    if (module.parsed.is_header_open) project.has_all_files = false;
  }

  const Session& session_;
  std::deque<SourceProject> projects_;
};

}  // namespace

std::deque<SourceProject> ReadSources(const std::vector<std::string>& arguments,
                                      const Session& session) {
  return SourceReader(session).Read(arguments);
}

void SayErrors(const Session& session, const SourceProject& project) {
  for (const auto& error : project.project.errors)
    session.Say(project.name + ":" + std::to_string(error.place.line) + ": expected " +
                std::string(error.expected) + ", found " + ToUtf8(error.found));
  for (const auto& module : project.modules) {
    if (!module.parsed.is_header_open) continue;
    const auto& place = module.parsed.errors.front().place;
    session.Say(module.name + ":" + std::to_string(place.line) + ":" +
                std::to_string(place.column) + ": expected End: the module's header does not end");
  }
}

}  // namespace declarium::cli
