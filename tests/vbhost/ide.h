// What the stand-in IDE holds: command bars with controls, projects with components, and which of
// them is active. Plain state; object_model.h shows it to add-ins.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>
#include <windows.h>

#include "vbhost/call_policy.h"
#include "vbhost/model_object.h"
#include "vbhost/module_text.h"

namespace declarium::vbhost {

// Whose object model add-ins see.
enum class Face { kIde, kVbaEditor };

struct Bar;

struct Control {
  std::u16string caption;
  std::u16string tooltip;
  std::u16string tag;
  bool visible = true;
  bool temporary = false;          // not stored with its bar
  std::vector<std::uint8_t> face;  // the packed bitmap that was pasted
  std::vector<std::uint8_t> mask;
  std::shared_ptr<Bar> menu;  // of a menu in the menu bar
  std::shared_ptr<SinkList> clicks = std::make_shared<SinkList>();
  bool deleted = false;
};

struct Bar {
  std::u16string name;
  bool found_by_name = true;
  std::vector<std::shared_ptr<Control>> controls;
};

struct Pane {
  bool open = false;
  int top = 1;
  int visible_lines = 20;
  int caret = 1;
};

struct Project;

struct Component {
  std::u16string name;
  int type = 1;
  bool has_code = true;
  ModuleText code;
  Pane pane;
  bool removed = false;
  std::weak_ptr<Project> project;
};

struct Project {
  std::u16string name;
  std::vector<std::shared_ptr<Component>> components;
  int mode = 2;        // of a VBA project: 0 runs, 1 is interrupted, 2 design
  int protection = 0;  // 1 locked
  std::shared_ptr<SinkList> component_events = std::make_shared<SinkList>();
};

struct Ide {
  Face face = Face::kIde;
  CallPolicy policy;
  std::vector<std::shared_ptr<Bar>> bars;
  std::vector<std::shared_ptr<Project>> projects;
  std::shared_ptr<SinkList> project_events = std::make_shared<SinkList>();
  std::shared_ptr<Project> active_project;
  std::shared_ptr<Component> selected;     // in the project window
  std::shared_ptr<Component> active_pane;  // whose code window is the active one
  int reset_questions = 0;                 // a VBA editor asked whether to end the running program
  HWND window = nullptr;
  std::function<void()> changed = [] {};  // what the window shows changed
};

}  // namespace declarium::vbhost
