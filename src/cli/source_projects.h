// Sources that a command takes as projects: .vbp, .vbg and .mak, folders of modules, and modules
// one by one.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "cli/session.h"

#include "vb/module.h"
#include "vb/project.h"

namespace declarium::cli {

struct SourceModule {
  std::string name;     // of its file, as messages and results have it
  std::u16string text;  // what `parsed` refers into
  vb::Module parsed;
};

// Modules that see each other's public declarations. It stays where it is: its parts refer into
// each other.
struct SourceProject {
  std::string name;     // of its file or folder; empty for modules named one by one
  std::u16string text;  // what `project` refers into; empty for a folder
  vb::Project project;  // its errors tell of files that cannot be read, too
  std::deque<SourceModule> modules;
  bool has_all_files = true;  // false also when a module's header has no End
};

// Reads what the arguments name, "-" being standard input. The modules named one by one come first,
// as one project without a name; a group is a project of its own without modules, in front of those
// in it. Where a system tells upper from lower case, files that a project spells otherwise are
// found too. Throws CommandFailed for an argument that cannot be read.
[[nodiscard]] std::deque<SourceProject> ReadSources(const std::vector<std::string>& arguments,
                                                    const Session& session);

// Says what is wrong with the project's file, which of its modules cannot be read, and where a
// module's header should have ended.
void SayErrors(const Session& session, const SourceProject& project);

}  // namespace declarium::cli
