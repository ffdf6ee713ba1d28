#include "import_library.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>

#include "coff_object.h"
#include "vb/name.h"

namespace declarium::win32_library {
namespace {

constexpr std::string_view kImport = "__imp__";
constexpr std::string_view kHead = "__head_";
constexpr std::string_view kName = "_iname";

// An archive imports from one or more dynamic libraries. The object that names one defines a symbol
// "..._iname"; every entry's object refers to the "__head_..." of its library.
std::map<std::string, std::string> LibraryNames(const std::vector<CoffObject>& objects) {
  std::map<std::string, std::string> names;
  for (const CoffObject& object : objects)
    for (const CoffSymbol& symbol : object.symbols) {
      if (symbol.section <= 0 || !symbol.name.ends_with(kName)) continue;
      const std::string_view content = object.sections[symbol.section - 1].content;
      names[symbol.name] = content.substr(0, content.find('\0'));
    }
  return names;
}

// Both symbols are made from the archive's name: __head_lib32_libx_a and __lib32_libx_a_iname.
std::string NameSymbolOf(std::string_view head) {
  return "__" + std::string(head.substr(kHead.size())) + std::string(kName);
}

std::string DeclaredLibrary(const std::string& file_name) {
  std::string name = vb::Lower(file_name);
  if (name.ends_with(".dll")) name.resize(name.size() - 4);
  return name;
}

// What the loader asks the library for: the text behind the hint, or the number of the entry.
std::string ExportedName(const CoffObject& object) {
  const std::string_view hint_and_name = object.Content(".idata$6");
  if (hint_and_name.size() > 2)
    return std::string(hint_and_name.substr(2, hint_and_name.find('\0', 2) - 2));
  const std::string_view thunk = object.Content(".idata$5");
  if (thunk.size() < 4) return "";
  const int low = static_cast<unsigned char>(thunk[0]);
  const int high = static_cast<unsigned char>(thunk[1]);
  return "#" + std::to_string(high * 256 + low);
}

struct Import {
  std::string symbol;  // without the prefix: "MessageBoxA@16"
  std::string head;
};

std::optional<Import> ImportOf(const CoffObject& object) {
  Import import;
  for (const CoffSymbol& symbol : object.symbols) {
    if (symbol.section > 0 && symbol.name.starts_with(kImport))
      import.symbol = symbol.name.substr(kImport.size());
    if (symbol.section == 0 && symbol.name.starts_with(kHead)) import.head = symbol.name;
  }
  return import.symbol.empty() || import.head.empty() ? std::nullopt : std::optional(import);
}

}  // namespace

std::expected<void, std::string> ImportLibraries::Add(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  std::vector<CoffObject> objects;
  const bool archive = ForEachMember(bytes, [&](std::string_view member) {
    if (auto object = ReadObject(member)) objects.push_back(std::move(*object));
  });
  if (!archive) return std::unexpected(path + ": no import library");
  const std::map<std::string, std::string> names = LibraryNames(objects);
  for (const CoffObject& object : objects) {
    const auto import = ImportOf(object);
    if (!import) continue;
    const auto library = names.find(NameSymbolOf(import->head));
    if (library == names.end()) continue;
    const std::size_t at = import->symbol.rfind('@');
    if (at == std::string::npos || at == 0) {
      undecorated_.emplace(import->symbol, true);
      continue;
    }
    ImportEntry entry{DeclaredLibrary(library->second), ExportedName(object), 0};
    std::from_chars(import->symbol.data() + at + 1, import->symbol.data() + import->symbol.size(),
                    entry.argument_bytes);
    entries_[import->symbol.substr(0, at)].push_back(std::move(entry));
  }
  return {};
}

const ImportEntry* ImportLibraries::Find(std::string_view name, std::string_view library) const {
  const auto found = entries_.find(name);
  if (found == entries_.end()) return nullptr;
  const auto entry = std::ranges::find(found->second, library, &ImportEntry::library);
  return entry == found->second.end() ? &found->second.front() : &*entry;
}

bool ImportLibraries::IsUndecorated(std::string_view name) const {
  return undecorated_.contains(name);
}

}  // namespace declarium::win32_library
