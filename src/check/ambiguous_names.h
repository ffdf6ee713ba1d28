// Names that several standard modules make public. A third module that uses one must say which it
// means.
#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "check/context.h"
#include "check/name_counts.h"
#include "vb/name_use.h"

namespace declarium::check {

class AmbiguousNames {
 public:
  // What is handed over must outlive this. Finds them in a whole project alone; `names` will watch
  // them.
  AmbiguousNames(const std::deque<ModuleContext>& modules, NameCounts& names);

  // Reports the first use of each in the module, which does not declare it itself.
  void Check(const ModuleContext& module) const;

 private:
  // The two modules that make it public.
  using Publishers = std::pair<const ModuleContext*, const ModuleContext*>;

  void Report(const ModuleContext& module, const vb::NameUse& use, const Publishers& by) const;

  std::unordered_map<std::u16string, Publishers> values_;  // by lower-cased name
  std::unordered_map<std::u16string, Publishers> types_;
};

}  // namespace declarium::check
