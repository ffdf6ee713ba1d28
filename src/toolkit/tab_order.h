// The order in which the tab key goes through a form's controls: that of the form's table.
#pragma once

#include <cstddef>
#include <vector>

#include "toolkit/control.h"
#include "toolkit/form_definition.h"

namespace declarium {

class TabOrder {
 public:
  // Both must live as long as this.
  void Append(const ControlDefinition& definition, Control& control);

  // The visible and enabled control behind `control` at which the tab key stops, around the end;
  // nullptr when there is none but itself. For nullptr, or one that is not in the order, the first.
  [[nodiscard]] Control* Next(const Control* control) const { return Find(control, 1); }
  // The same in the other direction.
  [[nodiscard]] Control* Previous(const Control* control) const {
    return Find(control, Count() - 1);
  }
  // The first control of that role; nullptr when there is none.
  [[nodiscard]] Control* WithRole(ButtonRole role) const;
  // Whether Enter in the control is its own key rather than the default button's.
  [[nodiscard]] bool TakesEnter(const Control& control) const;

 private:
  struct Entry {
    const ControlDefinition* definition;
    Control* control;
  };

  [[nodiscard]] std::size_t Count() const { return entries_.size(); }
  [[nodiscard]] Control* Find(const Control* from, std::size_t stride) const;

  std::vector<Entry> entries_;
};

}  // namespace declarium
