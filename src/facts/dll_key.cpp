#include "facts/dll_key.h"

#include "text/text.h"

namespace declarium {

std::u16string DllKey(std::u16string_view written) {
  if (const auto slash = written.find_last_of(u"\\/"); slash != written.npos)
    written.remove_prefix(slash + 1);
  auto key = LowerCase(Trim(written));
  if (key.ends_with(u".dll")) key.resize(key.size() - 4);
  return key;
}

}  // namespace declarium
