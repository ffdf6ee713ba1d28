// The report of an audit as a page of HTML: one file without scripts, other files or addresses.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "audit/audit.h"

namespace declarium::audit {

struct ReportedProject {
  std::string name;  // of its file or folder, UTF-8
  const Subject* subject;
  const Audit* audit;
  std::vector<std::string> sources;  // by module, what its file is called, UTF-8
};

// UTF-8. The same projects give the same page.
[[nodiscard]] std::string ReportPage(std::span<const ReportedProject> projects);

}  // namespace declarium::audit
