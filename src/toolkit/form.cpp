#include "toolkit/form.h"

#include <stdexcept>

#include "toolkit/held_flag.h"

namespace declarium {

Form::~Form() = default;

bool Form::Unload(UnloadReason reason) {
  return AskToUnload(reason) && UnloadUnasked();
}

bool Form::AskToUnload(UnloadReason reason) {
  if (unloading_) return false;
  if (!IsLoaded()) return true;
  const HeldFlag unloading(unloading_);
  QueryUnload query{.reason = reason};
  on_query_unload.Raise(query);
  return !query.cancel;
}

bool Form::UnloadUnasked() {
  if (unloading_) return false;
  if (!IsLoaded()) return true;
  bool cancel = false;
  {
    const HeldFlag unloading(unloading_);
    on_unload.Raise(cancel);
  }
  if (!cancel) Close();
  return !cancel;
}

void Form::FailWrongType(std::string_view name, const char* wanted) const {
  throw std::logic_error("form " + name_ + ": " + std::string(name) + " is not a " + wanted);
}

}  // namespace declarium
