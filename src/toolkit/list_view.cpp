#include "toolkit/list_view.h"

namespace declarium {

void ListView::AppendAll(std::vector<ListEntry> entries) {
  for (ListEntry& entry : entries) Append(std::move(entry));
}

}  // namespace declarium
