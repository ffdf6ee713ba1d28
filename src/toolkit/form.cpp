#include "toolkit/form.h"

#include <stdexcept>

namespace declarium {

Form::~Form() = default;

bool Form::Unload(UnloadReason reason) {
  if (unloading_) return false;
  if (!IsLoaded()) return true;
  unloading_ = true;
  QueryUnload query{.reason = reason};
  on_query_unload.Raise(query);
  bool cancel = query.cancel;
  if (!cancel) on_unload.Raise(cancel);
  unloading_ = false;
  if (cancel) return false;
  Close();
  return true;
}

void Form::FailWrongType(std::string_view name, const char* wanted) const {
  throw std::logic_error("form " + name_ + ": " + std::string(name) + " is not a " + wanted);
}

}  // namespace declarium
