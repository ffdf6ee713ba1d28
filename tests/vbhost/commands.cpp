#include "vbhost/commands.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <windows.h>

#include "text/text.h"

namespace declarium::vbhost {
namespace {

// Event ids of the component and project event sets.
constexpr DISPID kItemAdded = 1;
constexpr DISPID kItemRemoved = 2;
constexpr DISPID kComponentSelected = 4;
constexpr DISPID kProjectActivated = 4;

// "\n" stands for a line break, "\t" for a tab and "\\" for a backslash.
std::string Escaped(std::string_view text) {
  std::string out;
  for (const char c : text) {
    switch (c) {
      case '\r':
        break;
      case '\n':
        out += "\\n";
        break;
      case '\t':
        out += "\\t";
        break;
      case '\\':
        out += "\\\\";
        break;
      default:
        out += c;
    }
  }
  return out;
}

std::string Unescaped(std::string_view text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 == text.size()) {
      out += text[i];
      continue;
    }
    const char c = text[++i];
    out += c == 'n' ? std::string("\r\n") : c == 't' ? std::string("\t") : std::string(1, c);
  }
  return out;
}

std::vector<std::string> WordsOf(std::string_view line) {
  std::vector<std::string> words;
  std::size_t begin = 0;
  while (begin < line.size()) {
    const auto end = std::min(line.find(' ', begin), line.size());
    if (end > begin) words.emplace_back(line.substr(begin, end - begin));
    begin = end + 1;
  }
  return words;
}

// The words from `first` on, which were separated by single blanks, as one text.
std::string Rest(const std::vector<std::string>& words, std::size_t first) {
  std::string text;
  for (std::size_t i = first; i < words.size(); ++i) {
    if (i > first) text += ' ';
    text += words[i];
  }
  return Unescaped(text);
}

int Number(const std::string& word) {
  int number = 0;
  std::from_chars(word.data(), word.data() + word.size(), number);
  return number;
}

HRESULT Status(const std::string& word) {
  return static_cast<HRESULT>(std::stoul(word, nullptr, 16));
}

std::string Ok() {
  return "ok";
}
std::string Ok(std::string_view value) {
  return "ok " + Escaped(value);
}
std::string Ok(long long value) {
  return "ok " + std::to_string(value);
}
std::string Error(std::string_view reason) {
  return "error " + std::string(reason);
}

std::string Outcome(HRESULT status) {
  if (SUCCEEDED(status)) return Ok();
  char text[16];
  std::snprintf(text, sizeof text, "%08lx", static_cast<unsigned long>(status));
  return Error(text);
}

// A short name for the contents of a bitmap.
std::string Fingerprint(const std::vector<std::uint8_t>& bytes) {
  std::uint32_t hash = 2166136261u;
  for (const auto byte : bytes) hash = (hash ^ byte) * 16777619u;
  return bytes.empty() ? "none" : std::to_string(hash);
}

}  // namespace

Commands::Commands(Ide& ide, ObjectModel& model, AddInLoader& loader, std::function<void()> quit)
    : ide_(ide), model_(model), loader_(loader), quit_(std::move(quit)) {
  AddStateCommands();
  AddEventCommands();
  AddAddInCommands();
  AddFaultCommands();
  AddReportCommands();
}

std::string Commands::Run(std::string_view line) {
  auto words = WordsOf(line);
  if (words.empty()) return Error("empty line");
  const auto found = commands_.find(words[0]);
  if (found == commands_.end()) return Error("unknown command " + words[0]);
  words.erase(words.begin());
  if (words.size() < found->second.words) return Error("too few words");
  try {
    return found->second.run(words);
  } catch (const std::exception& error) {
    return Error(error.what());
  }
}

std::shared_ptr<Component> Commands::ComponentNamed(const std::string& name) const {
  for (const auto& project : ide_.projects) {
    for (const auto& component : project->components) {
      const std::string own_name = ToUtf8(component->name);
      if (own_name == name || ToUtf8(project->name) + "." + own_name == name) return component;
    }
  }
  throw std::runtime_error("no component " + name);
}

std::shared_ptr<Project> Commands::ProjectNamed(const std::string& name) const {
  for (const auto& project : ide_.projects) {
    if (ToUtf8(project->name) == name) return project;
  }
  throw std::runtime_error("no project " + name);
}

std::shared_ptr<Control> Commands::ControlAt(const Words& words) const {
  const auto index = words.size() > 1 ? static_cast<std::size_t>(Number(words[1]) - 1) : 0;
  for (const auto& bar : ide_.bars) {
    if (ToUtf8(bar->name) == words[0] && index < bar->controls.size()) {
      return bar->controls[index];
    }
  }
  throw std::runtime_error("no such control");
}

void Commands::AddStateCommands() {
  commands_["project"] = {1, [this](const Words& words) {
                            auto project = std::make_shared<Project>();
                            project->name = FromUtf8(words[0]);
                            ide_.projects.push_back(project);
                            ide_.active_project = project;
                            return Outcome(model_.FireProject(kItemAdded, project));
                          }};
  // mode PROJECT MODE, protection PROJECT PROTECTION: of a VBA project
  commands_["mode"] = {2, [this](const Words& words) {
                         ProjectNamed(words[0])->mode = Number(words[1]);
                         return Ok();
                       }};
  commands_["protection"] = {2, [this](const Words& words) {
                               ProjectNamed(words[0])->protection = Number(words[1]);
                               return Ok();
                             }};
  // leftover BAR TAG: a control that an add-in left behind
  commands_["leftover"] = {2, [this](const Words& words) {
                             for (const auto& bar : ide_.bars) {
                               if (ToUtf8(bar->name) != words[0]) continue;
                               bar->controls.push_back(std::make_shared<Control>());
                               bar->controls.back()->tag = FromUtf8(words[1]);
                             }
                             return Ok();
                           }};
  // component PROJECT NAME TYPE: a type below 0 has no code
  commands_["component"] = {3, [this](const Words& words) {
                              const auto project = ProjectNamed(words[0]);
                              auto component = std::make_shared<Component>();
                              component->name = FromUtf8(words[1]);
                              component->type = Number(words[2]);
                              component->has_code = component->type >= 0;
                              component->project = project;
                              project->components.push_back(component);
                              return Outcome(model_.FireComponent(kItemAdded, component));
                            }};
  commands_["text"] = {1, [this](const Words& words) {
                         ComponentNamed(words[0])->code.Set(FromUtf8(Rest(words, 1)));
                         ide_.changed();
                         return Ok();
                       }};
  commands_["lines"] = {
      1, [this](const Words& words) { return Ok(ToUtf8(ComponentNamed(words[0])->code.text())); }};
  commands_["pane"] = {4, [this](const Words& words) {
                         auto& pane = ComponentNamed(words[0])->pane;
                         pane = {true, Number(words[1]), Number(words[2]), Number(words[3])};
                         return Ok();
                       }};
  commands_["pane?"] = {1, [this](const Words& words) {
                          const auto& pane = ComponentNamed(words[0])->pane;
                          return Ok(std::to_string(pane.top) + " " +
                                    std::to_string(pane.visible_lines) + " " +
                                    std::to_string(pane.caret));
                        }};
}

std::string Commands::SelectComponent(const std::shared_ptr<Component>& component) {
  ide_.selected = component;
  if (component->has_code) {
    component->pane.open = true;
    ide_.active_pane = component;
  }
  ide_.changed();
  return Outcome(model_.FireComponent(kComponentSelected, component));
}

std::string Commands::RemoveComponent(const std::shared_ptr<Component>& component) {
  // The event comes while the component still answers and its project still lists it.
  const HRESULT status = model_.FireComponent(kItemRemoved, component);
  component->removed = true;
  if (const auto project = component->project.lock()) std::erase(project->components, component);
  if (ide_.selected == component) ide_.selected = nullptr;
  if (ide_.active_pane == component) ide_.active_pane = nullptr;
  ide_.changed();
  return Outcome(status);
}

void Commands::AddEventCommands() {
  commands_["select"] = {
      1, [this](const Words& words) { return SelectComponent(ComponentNamed(words[0])); }};
  commands_["unselect"] = {0, [this](const Words&) {
                             ide_.selected = nullptr;
                             ide_.active_pane = nullptr;
                             ide_.changed();
                             return Ok();
                           }};
  commands_["activate-project"] = {
      1, [this](const Words& words) {
        ide_.active_project = ProjectNamed(words[0]);
        ide_.selected = nullptr;
        return Outcome(model_.FireProject(kProjectActivated, ide_.active_project));
      }};
  commands_["remove"] = {
      1, [this](const Words& words) { return RemoveComponent(ComponentNamed(words[0])); }};
  // As closing a component without telling anyone: calls fail from now on.
  commands_["vanish"] = {1, [this](const Words& words) {
                           ComponentNamed(words[0])->removed = true;
                           return Ok();
                         }};
  commands_["remove-project"] = {1, [this](const Words& words) {
                                   const auto project = ProjectNamed(words[0]);
                                   for (const auto& component : project->components) {
                                     component->removed = true;
                                     if (ide_.selected == component) ide_.selected = nullptr;
                                     if (ide_.active_pane == component) ide_.active_pane = nullptr;
                                   }
                                   std::erase(ide_.projects, project);
                                   if (ide_.active_project == project)
                                     ide_.active_project = nullptr;
                                   return Outcome(model_.FireProject(kItemRemoved, project));
                                 }};
  // click BAR [NUMBER]
  commands_["click"] = {
      1, [this](const Words& words) { return Outcome(model_.FireClick(ControlAt(words))); }};
}

void Commands::AddAddInCommands() {
  commands_["listed"] = {0, [this](const Words&) {
                           std::string names;
                           for (const auto& name : loader_.Listed()) names += ToUtf8(name) + " ";
                           return Ok(names.substr(0, names.find_last_not_of(' ') + 1));
                         }};
  // connect PROGID [v2|v1|dispatch] [MODE]: mode 0 is "after startup", 1 "startup"
  commands_["connect"] = {1, [this](const Words& words) {
                            const std::string kind = words.size() > 1 ? words[1] : "dispatch";
                            const auto entries = kind == "v2"   ? EntryInterface::kExtensibility2
                                                 : kind == "v1" ? EntryInterface::kExtensibility
                                                                : EntryInterface::kDispatch;
                            const int mode = words.size() > 2 ? Number(words[2]) : 1;
                            return Outcome(loader_.Connect(FromUtf8(words[0]), entries, mode));
                          }};
  // disconnect PROGID [MODE]: mode 0 is "host shutdown", 1 "user closed"
  commands_["disconnect"] = {1, [this](const Words& words) {
                               return Outcome(loader_.Disconnect(
                                   FromUtf8(words[0]), words.size() > 1 ? Number(words[1]) : 1));
                             }};
  commands_["connection-time"] = {
      0, [this](const Words&) {
        return Ok(static_cast<long long>(loader_.connection_time().count()));
      }};
  commands_["interfaces"] = {
      1, [](const Words& words) { return Outcome(RegisterEntryInterfaces(words[0] == "on")); }};
  commands_["quit"] = {0, [this](const Words&) {
                         quit_();
                         return Ok();
                       }};
}

void Commands::AddFaultCommands() {
  // fail NUMBER STATUS: a hexadecimal HRESULT
  commands_["fail"] = {2, [this](const Words& words) {
                         ide_.policy.FailCall(Number(words[0]), Status(words[1]));
                         return Ok();
                       }};
  commands_["fail-member"] = {2, [this](const Words& words) {
                                ide_.policy.FailMember(words[0], Status(words[1]));
                                return Ok();
                              }};
  commands_["lie"] = {2, [this](const Words& words) {
                        ide_.policy.Lie(words[0], words[1]);
                        return Ok();
                      }};
  commands_["die-at"] = {1, [this](const Words& words) {
                           ide_.policy.DieAtCall(Number(words[0]));
                           return Ok();
                         }};
  // busy reject|retry COUNT: -1 until further notice
  commands_["busy"] = {2, [this](const Words& words) {
                         const DWORD answer =
                             words[0] == "retry" ? SERVERCALL_RETRYLATER : SERVERCALL_REJECTED;
                         ide_.policy.BeBusy(answer, Number(words[1]));
                         return Ok();
                       }};
  commands_["well"] = {0, [this](const Words&) {
                         ide_.policy.Clear();
                         return Ok();
                       }};
}

void Commands::AddReportCommands() {
  // One word per control: BAR|caption|tooltip|fingerprint of face|of mask, separated by tabs
  commands_["controls"] = {0, [this](const Words&) {
                             std::string all;
                             for (const auto& bar : ide_.bars) {
                               for (const auto& control : bar->controls) {
                                 if (control->menu) continue;
                                 if (!all.empty()) all += '\t';
                                 all += ToUtf8(bar->name) + "|" + ToUtf8(control->caption) + "|" +
                                        ToUtf8(control->tooltip) + "|" +
                                        Fingerprint(control->face) + "|" +
                                        Fingerprint(control->mask);
                               }
                             }
                             return Ok(all);
                           }};
  commands_["stored-controls"] = {
      0, [this](const Words&) {
        long long count = 0;
        for (const auto& bar : ide_.bars) {
          count += std::ranges::count_if(
              bar->controls, [](const auto& one) { return !one->temporary && !one->menu; });
        }
        return Ok(count);
      }};
  commands_["calls"] = {0, [this](const Words& words) {
                          if (!words.empty() && words[0] == "reset") ide_.policy.Reset();
                          return Ok(ide_.policy.count());
                        }};
  commands_["call-names"] = {0, [this](const Words&) {
                               std::string all;
                               for (const auto& name : ide_.policy.names())
                                 all += (all.empty() ? "" : " ") + name;
                               return Ok(all);
                             }};
  commands_["rejected"] = {0, [this](const Words&) { return Ok(ide_.policy.rejected()); }};
  commands_["sinks"] = {0, [this](const Words&) {
                          int count = ide_.project_events->count();
                          for (const auto& project : ide_.projects)
                            count += project->component_events->count();
                          for (const auto& bar : ide_.bars) {
                            for (const auto& control : bar->controls)
                              count += control->clicks->count();
                          }
                          return Ok(count);
                        }};
  commands_["reset-questions"] = {0, [this](const Words&) { return Ok(ide_.reset_questions); }};
  commands_["objects"] = {0, [](const Words&) { return Ok(ModelObject::count()); }};
  commands_["process"] = {
      0, [](const Words&) { return Ok(static_cast<long long>(GetCurrentProcessId())); }};
}

}  // namespace declarium::vbhost
