// An entry of a form's menu bar or of one of its popup menus.
#pragma once

#include <string>
#include <string_view>

#include "toolkit/control.h"

namespace declarium {

class MenuItem : public Component {
 public:
  // "&" marks the access key. The shortcut is not part of the caption.
  [[nodiscard]] virtual std::u16string Caption() const = 0;
  virtual void SetCaption(std::u16string_view caption) = 0;
  // A disabled entry cannot be chosen, nor reached by its shortcut.
  [[nodiscard]] virtual bool Enabled() const = 0;
  virtual void SetEnabled(bool enabled) = 0;

  // The entry was chosen. For an entry with entries of its own: it is about to open, which is also
  // raised before a shortcut of one of its entries is looked up.
  Event<> on_click;

 protected:
  using Component::Component;
};

}  // namespace declarium
