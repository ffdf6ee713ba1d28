// The pictures of the program, by name. Backends draw them in the size that the screen asks for.
#pragma once

namespace declarium {

enum class Icon {
  kNone = 0,
  kConst = 1,  // the first three are the kinds: kind code + 1, also the icon number of list entries
  kDeclare = 2,
  kType = 3,
  kNew,
  kOpen,
  kSave,
  kAdd,
  kCopy,
  kDelete,
  kExport,
  kInsert,
  kFind,
  kSettings,
  kInsertMissing,
  kApplication,
};

}  // namespace declarium
