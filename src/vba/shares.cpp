#include "vba/shares.h"

#include <algorithm>
#include <utility>

#include "host/com/vb_code.h"

namespace declarium::vba {

int Shares::Give(const com::HostObject& object) {
  if (!object) return 0;
  const auto found = std::ranges::find_if(all_, [&](const auto& one) {
    return com::IdentityOf(one.second.object) == com::IdentityOf(object);
  });
  const int number = found == all_.end() ? ++last_number_ : found->first;
  auto& shared = all_[number];
  if (!shared.object) shared.object = object;
  ++shared.shares;
  return number;
}

void Shares::GiveBack(int number) {
  const auto found = all_.find(number);
  if (found == all_.end() || --found->second.shares > 0) return;
  // Releasing calls the editor, which may call in: the table is in order by then.
  const auto released = all_.extract(found);
}

com::HostObject Shares::Find(int number) const {
  const auto found = all_.find(number);
  return found == all_.end() ? com::HostObject() : found->second.object;
}

void Shares::Clear() {
  const auto released = std::exchange(all_, {});
}

}  // namespace declarium::vba
