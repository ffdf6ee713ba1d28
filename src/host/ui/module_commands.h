// The commands that read modules of the host, show what they would do, and do it: insert what the
// basket has and the module lacks, and complete the module by what its code uses.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "host/host_connection.h"
#include "host/ui/plan_form.h"
#include "library/library.h"
#include "plan/insertion_plan.h"
#include "plan/wanted_items.h"
#include "source/display_colors.h"
#include "toolkit/form.h"
#include "toolkit/toolkit.h"

namespace declarium {

// Libraries that items are looked for in, in their order; `loaded` keeps some of them.
struct LibrariesInUse {
  std::vector<const Library*> all = {};
  std::vector<std::unique_ptr<Library>> loaded = {};
};

struct ModuleCommandLinks {
  std::function<std::shared_ptr<HostConnection>()> connection;  // null without a host
  std::function<std::vector<ItemView>()> basket;
  std::function<LibrariesInUse()> libraries;
  std::function<plan::PlanOptions()> options;
};

class ModuleCommands {
 public:
  // Everything given by reference must outlive the commands.
  ModuleCommands(Toolkit& toolkit, Form& owner, const DisplayColors& colors,
                 ModuleCommandLinks links);

  // Nothing happens without a host. While a command is running the others do nothing.
  void InsertMissing();
  // Inserts what the code of the module uses and nothing declares.
  void CompleteModule();

 private:
  struct Reading;
  struct Wanted {
    plan::WantedItems items;
    std::vector<std::u16string> ambiguous = {};  // rows for the user
  };

  void Run(PlanPurpose purpose,
           const std::function<Wanted(Reading&, const LibrariesInUse&)>& find_wanted);
  [[nodiscard]] std::unique_ptr<Reading> Read(HostConnection& connection);
  void Insert(HostConnection& connection, const Reading& reading, const plan::InsertionPlan& plan);
  void Say(std::u16string_view text);

  Toolkit& toolkit_;
  Form& owner_;
  const DisplayColors& colors_;
  ModuleCommandLinks links_;
  bool running_ = false;
};

}  // namespace declarium
