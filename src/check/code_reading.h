// Reads the code of the subject's modules for the rules.
#pragma once

#include <cstddef>
#include <deque>
#include <span>

#include "check/context.h"
#include "check/name_counts.h"
#include "vb/code.h"
#include "vb/surroundings.h"

namespace declarium::check {

class CodeReading {
 public:
  // What is handed over must outlive the reading. For systems of 64 bits `names` will watch what
  // gives or takes addresses.
  CodeReading(const std::deque<ModuleContext>& modules, NameCounts& names);

  // In the branches that the systems which are checked certainly compile: of those of 64 bits,
  // where there are such. `places` are where watched names stand: procedures without one are not
  // read.
  [[nodiscard]] vb::Code Read(const ModuleContext& module, std::span<const std::size_t> places);

 private:
  void AddDeclarations(const ModuleContext& module, NameCounts& names);
  void AddVariables();

  const std::deque<ModuleContext>& modules_;
  vb::Surroundings surroundings_;
  bool knows_variables_ = false;  // they are read with the first code
};

}  // namespace declarium::check
