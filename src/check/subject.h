// What is checked: the modules of a project, modules one by one, or a library as source.
#pragma once

#include <string_view>
#include <vector>

#include "vb/audience.h"
#include "vb/definitions.h"
#include "vb/module.h"

namespace declarium::check {

using vb::Audience;

struct SubjectModule {
  std::u16string_view text;
  const vb::Module* parsed;
};

struct Subject {
  enum class Form : unsigned char {
    kModules,  // they may belong to a project with others
    kProject,  // all there is
    kLibrary,  // in the order of names: an insertion puts the rows into the right one
  };
  Form form = Form::kModules;
  std::vector<SubjectModule> modules;
  vb::ProjectConstants constants;
  bool is_listed = true;  // by a project's file: a folder may hold modules of several programs
  bool may_have_other_types = false;  // of type libraries that the project refers to
};

}  // namespace declarium::check
