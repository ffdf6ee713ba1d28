// A report on why the host does or does not find the add-in: every key that matters, what stands
// there and what is wrong with it.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "host/registration.h"

namespace declarium {

enum class FindingLevel { kFine, kWarning, kWrong };

struct Finding {
  FindingLevel level;
  std::u16string text;
};

// Facts from outside the registry.
struct DoctorFacts {
  std::u16string program;  // the full path of the running program
  std::function<bool(std::u16string_view path)> file_exists;
};

// Looks at everything, also after something wrong was found.
[[nodiscard]] std::vector<Finding> ExamineRegistration(const Registry& registry,
                                                       const ServerIdentity& server,
                                                       const DoctorFacts& facts);

// One line per finding, "ok", "warning" or "WRONG" first, and a last line with the verdict. CR LF.
[[nodiscard]] std::u16string DoctorReport(const std::vector<Finding>& findings);

}  // namespace declarium
