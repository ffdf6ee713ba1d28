// The line protocol: one command per line, one answer per line. README.md lists the commands.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "vbhost/add_in_loader.h"
#include "vbhost/ide.h"
#include "vbhost/object_model.h"

namespace declarium::vbhost {

class Commands {
 public:
  // `quit` is called by the command of that name.
  Commands(Ide& ide, ObjectModel& model, AddInLoader& loader, std::function<void()> quit);

  // Runs one line, in UTF-8, and returns its answer without a line end: "ok", "ok VALUE" or
  // "error REASON".
  [[nodiscard]] std::string Run(std::string_view line);

 private:
  using Words = std::vector<std::string>;
  struct Command {
    std::size_t words;  // at least, after the name
    std::function<std::string(const Words&)> run;
  };

  void AddStateCommands();
  void AddEventCommands();
  void AddAddInCommands();
  void AddFaultCommands();
  void AddReportCommands();

  std::shared_ptr<Component> ComponentNamed(const std::string& name) const;
  std::shared_ptr<Project> ProjectNamed(const std::string& name) const;
  std::shared_ptr<Control> ControlAt(const Words& words) const;
  std::string SelectComponent(const std::shared_ptr<Component>& component);
  std::string RemoveComponent(const std::shared_ptr<Component>& component);

  Ide& ide_;
  ObjectModel& model_;
  AddInLoader& loader_;
  std::function<void()> quit_;
  std::map<std::string, Command, std::less<>> commands_;
};

}  // namespace declarium::vbhost
