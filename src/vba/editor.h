// The editor as the program sees it: answers to the members of host/com/editor_interface.h. Knows
// nothing of declarations.
#pragma once

#include <span>
#include <string>

#include "host/com/host_calls.h"
#include "vba/shares.h"

namespace declarium::vba {

class Editor {
 public:
  explicit Editor(com::HostObject application) : application_(std::move(application)) {}

  // DISP_E_MEMBERNOTFOUND for an unknown member, DISP_E_BADPARAMCOUNT and DISP_E_TYPEMISMATCH for
  // arguments that are not its own.
  [[nodiscard]] HostResult<com::Variant> Answer(DISPID member,
                                                std::span<const com::Variant> arguments);

 private:
  // The arguments of one call, whose number and types are those of the member.
  class Arguments {
   public:
    explicit Arguments(std::span<const com::Variant> values) : values_(values) {}
    [[nodiscard]] int Number(std::size_t index) const;
    [[nodiscard]] const com::Variant& Value(std::size_t index) const { return values_[index]; }

   private:
    std::span<const com::Variant> values_;
  };

  using Answering = HostResult<com::Variant> (Editor::*)(const Arguments& arguments);
  struct Member {
    DISPID id;
    std::string_view arguments;  // "n" a number, "t" a text
    Answering answer;
  };
  static const Member* FindMember(DISPID id);

  HostResult<com::Variant> Window(const Arguments&);
  HostResult<com::Variant> Selection(const Arguments&);
  HostResult<com::Variant> ActiveComponent(const Arguments&);
  HostResult<com::Variant> ActiveProject(const Arguments&);
  HostResult<com::Variant> GiveBack(const Arguments& number);
  HostResult<com::Variant> CountOfProjects(const Arguments&);
  HostResult<com::Variant> ProjectName(const Arguments& project);
  HostResult<com::Variant> CountOfComponents(const Arguments& project);
  HostResult<com::Variant> ComponentAt(const Arguments& project_and_position);
  HostResult<com::Variant> ComponentName(const Arguments& component);
  HostResult<com::Variant> ComponentType(const Arguments& component);
  HostResult<com::Variant> ComponentProject(const Arguments& component);
  HostResult<com::Variant> HasCode(const Arguments& component);
  HostResult<com::Variant> CountOfDeclarationLines(const Arguments& component);
  HostResult<com::Variant> CountOfLines(const Arguments& component);
  HostResult<com::Variant> Lines(const Arguments& component_first_count);
  HostResult<com::Variant> InsertLines(const Arguments& component_line_text);
  HostResult<com::Variant> DeleteLines(const Arguments& component_first_count);
  HostResult<com::Variant> ReplaceLine(const Arguments& component_line_text);

  // The selected component, or that of the active code pane; empty without both.
  [[nodiscard]] com::HostObject SelectedComponent() const;
  [[nodiscard]] HostResult<com::Variant> Given(const HostResult<com::HostObject>& object);
  // The components of a project that is not locked.
  [[nodiscard]] HostResult<com::HostObject> ComponentsOf(const Arguments& project) const;
  // The code of a component, once its project has been asked whether it can be read or changed.
  enum class Use { kRead, kWrite };
  [[nodiscard]] HostResult<com::HostObject> CodeOf(const Arguments& component, Use use) const;
  [[nodiscard]] HostResult<com::Variant> Write(com::HostMember member, const Arguments& arguments);

  com::HostObject application_;
  Shares shares_;
  com::HostObject selected_;  // when the program asked last
  int selections_ = 1;
};

}  // namespace declarium::vba
