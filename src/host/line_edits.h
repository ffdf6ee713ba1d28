// Editing a module of the host in several places as one step: all of it, or nothing, or an exact
// account of what stands in it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/host_object_model.h"

namespace declarium {

// `removed` lines from `line` on go, and `text` comes in their place; with none removed it comes in
// front of `line`. The text has CR LF between its lines and none behind the last, which may be
// empty; an empty text inserts nothing.
struct LineEdit {
  int line = 1;
  int removed = 0;
  std::u16string text = {};
};

struct EditReport {
  enum class Outcome {
    kDone,
    kChanged,  // the module is not what was read: nothing was done
    kRefused,  // a call failed, and the module is as it was
    kPartly,   // a call failed; what `standing` says is in the module
    kUnknown,  // a call failed, and the host does not say what is in the module
  };
  Outcome outcome = Outcome::kDone;
  std::vector<bool> standing = {};  // for each edit, when the outcome is kPartly
  HostError error = {};             // when a call failed
};

// Does the edits from the bottom up when the module still holds the text that was read, lines
// joined by CR LF. `edits` stand in the order of their lines and do not overlap. When a call fails
// in between, what was done is undone, as far as the module holds around it what was there before.
[[nodiscard]] EditReport ApplyEdits(CodeModule& module, std::u16string_view read,
                                    const std::vector<LineEdit>& edits);

}  // namespace declarium
