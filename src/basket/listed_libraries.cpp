#include "basket/listed_libraries.h"

#include <optional>
#include <utility>

#include "library/file_io.h"
#include "library/file_name.h"
#include "library/library_file.h"
#include "text/text.h"

namespace declarium {
namespace {

namespace fs = std::filesystem;

bool IsSameFile(const fs::path& one, const fs::path& other) {
  return !one.empty() && !other.empty() && IdentityOf(one) == IdentityOf(other);
}

std::optional<Library> LoadAt(const fs::path& path) {
  auto library = LoadLibraryFile(path);
  return library ? std::optional(*std::move(library)) : std::nullopt;
}

}  // namespace

fs::path PathFromList(const fs::path& list, std::u16string_view written) {
  return list.parent_path() / PathOfName(Replace(written, u"\\", u"/"));
}

std::u16string NameInList(const fs::path& list, const fs::path& path) {
  std::error_code ignored;
  const auto whole = fs::absolute(path, ignored).lexically_normal();
  const auto from = fs::absolute(list, ignored).lexically_normal().parent_path();
  const auto relative = whole.lexically_relative(from);
  return Replace(NameOfPath(relative.empty() ? whole : relative), u"\\", u"/");
}

ListedLibraries OpenListed(const ListFile& list, const fs::path& path, const Library& open,
                           const fs::path& folder) {
  ListedLibraries listed;
  for (const auto& written : list.libraries) {
    const auto named = PathFromList(path, written);
    const bool has_its_name =
        EqualIgnoringCase(NameOfPath(named.filename()), NameOfPath(open.path.filename()));
    auto library = IsSameFile(named, open.path) ? std::nullopt : LoadAt(named);
    if (!library && !has_its_name && !folder.empty()) library = LoadAt(folder / named.filename());
    if (library) {
      listed.all.push_back(&listed.loaded.emplace_back(*std::move(library)));
    } else if (has_its_name) {
      listed.all.push_back(&open);
    } else {
      listed.unreadable.push_back(written);
    }
  }
  if (listed.all.empty()) listed.all.push_back(&open);
  return listed;
}

BasketSources FindSources(std::span<const ItemView> items, const Library& open,
                          const std::vector<fs::path>& others) {
  BasketSources sources;
  std::vector<ItemView> left(items.begin(), items.end());
  const auto take = [&](const Library& library, const fs::path& path) {
    const auto found = std::erase_if(left, [&](const ItemView& item) {
      const auto in_library = FindItem(library, item.kind, item.name);
      if (in_library && in_library->item != item.item) sources.lost.emplace_back(item.name);
      return in_library.has_value();
    });
    if (found > 0 && !path.empty()) sources.libraries.push_back(path);
  };
  take(open, open.path);
  for (const auto& other : others) {
    if (left.empty()) break;
    if (IsSameFile(other, open.path)) continue;
    if (const auto library = LoadLibraryFile(other)) take(*library, other);
  }
  for (const auto& item : left) sources.lost.emplace_back(item.name);
  return sources;
}

}  // namespace declarium
