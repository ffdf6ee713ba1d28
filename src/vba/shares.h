// Numbers for objects of the editor, as the program knows them.
#pragma once

#include <map>

#include "host/com/host_calls.h"

namespace declarium::vba {

class Shares {
 public:
  // A share of the object, by its number from 1 on; 0 for Nothing. An object that has a share has
  // one number.
  [[nodiscard]] int Give(const com::HostObject& object);
  // Ends one share; the last one lets the object go. An unknown number is ignored.
  void GiveBack(int number);
  // Empty for an unknown number.
  [[nodiscard]] com::HostObject Find(int number) const;
  void Clear();

 private:
  struct Shared {
    com::HostObject object;
    int shares = 0;
  };

  std::map<int, Shared> all_;
  int last_number_ = 0;
};

}  // namespace declarium::vba
