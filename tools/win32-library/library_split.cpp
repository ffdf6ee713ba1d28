#include "library_split.h"

#include <cctype>
#include <set>
#include <sstream>
#include <unordered_map>
#include <utility>

#include "facts_text.h"
#include "vb/name.h"

namespace declarium::win32_library {
namespace {

// The words of a text outside quotes.
std::vector<std::string> WordsOf(const std::string& text) {
  std::vector<std::string> words;
  bool quoted = false;
  std::string word;
  for (const char c : text + " ") {
    if (c == '"') quoted = !quoted;
    const bool in_word = !quoted && (std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_');
    if (in_word) word += c;
    if (!in_word && !word.empty()) words.push_back(std::exchange(word, ""));
  }
  return words;
}

// All rows, found by name without regard to case.
class RowNames {
 public:
  explicit RowNames(const Library& library) {
    for (const ConstRow& row : library.constants) constants_.emplace(vb::Lower(row.name), &row);
    for (const TypeRow& row : library.types) types_.emplace(vb::Lower(row.name), &row);
  }

  // nullptr when there is none.
  [[nodiscard]] const ConstRow* Constant(const std::string& name) const {
    const auto found = constants_.find(vb::Lower(name));
    return found == constants_.end() ? nullptr : found->second;
  }
  [[nodiscard]] const TypeRow* Type(const std::string& name) const {
    const auto found = types_.find(vb::Lower(name));
    return found == types_.end() ? nullptr : found->second;
  }

 private:
  std::unordered_map<std::string, const ConstRow*> constants_;
  std::unordered_map<std::string, const TypeRow*> types_;
};

// The rows of one library, taken with what they need.
class PartNames {
 public:
  explicit PartNames(const RowNames& names) : names_(names) {}

  void Take(const ConstRow& row) {
    if (!constants_.insert(&row).second || row.type == "String") return;
    TakeConstantsIn(row.value);
  }

  void Take(const TypeRow& row) {
    if (!types_.insert(&row).second) return;
    for (const std::string& member : row.members)
      if (!member.starts_with('\'')) TakeMember(member);
    if (row.form64.starts_with('!')) return;
    std::istringstream members(row.form64);
    for (std::string member; std::getline(members, member, '|');) TakeMember(member);
  }

  void Take(const DeclareRow& row) {
    if (!declares_.insert(&row).second) return;
    TakeTypesIn(row.line);
    TakeTypesIn(row.form64);
  }

  // The rows in the order of the whole library.
  [[nodiscard]] Library RowsOf(const Library& whole) const {
    Library rows;
    for (const ConstRow& row : whole.constants)
      if (constants_.contains(&row)) rows.constants.push_back(row);
    for (const DeclareRow& row : whole.declares)
      if (declares_.contains(&row)) rows.declares.push_back(row);
    for (const TypeRow& row : whole.types)
      if (types_.contains(&row)) rows.types.push_back(row);
    return rows;
  }

 private:
  // "NAME(BOUNDS) As TYPE".
  void TakeMember(const std::string& member) {
    TakeTypeIn(member.substr(member.find(" As ")));
    TakeConstantsIn(member.substr(member.find_first_of(" (")));
  }

  // Of the whole of a Declare.
  void TakeTypesIn(const std::string& line) {
    constexpr std::string_view kAs = " As ";
    for (std::size_t as = line.find(kAs); as != std::string::npos; as = line.find(kAs, as + 1))
      TakeTypeIn(line.substr(as, line.find_first_of(",)", as) - as));
  }

  void TakeConstantsIn(const std::string& text) {
    for (const std::string& word : WordsOf(text))
      if (const ConstRow* row = names_.Constant(word)) Take(*row);
  }

  // `text` is " As TYPE" and what follows.
  void TakeTypeIn(const std::string& text) {
    const std::vector<std::string> words = WordsOf(text);
    if (words.size() > 1)
      if (const TypeRow* row = names_.Type(words[1])) Take(*row);
  }

  const RowNames& names_;
  std::set<const ConstRow*> constants_;
  std::set<const DeclareRow*> declares_;
  std::set<const TypeRow*> types_;
};

}  // namespace

std::vector<LibraryPart> SplitLibrary(const Library& library, const Areas& areas,
                                      const Metadata& metadata, ConstantSets& sets,
                                      const Prefixes& prefixes) {
  const Homes homes(library, areas, metadata);
  const RowNames names(library);
  std::vector<PartNames> taken(areas.titles.size(), PartNames(names));
  for (const ConstRow& row : library.constants) taken[homes.Of(row)].Take(row);
  for (const TypeRow& row : library.types) taken[homes.Of(row)].Take(row);
  for (const DeclareRow& row : library.declares) taken[homes.Of(row)].Take(row);
  std::vector<LibraryPart> parts;
  for (std::size_t i = 0; i < taken.size(); ++i) {
    for (const std::string& name :
         BelongingConstants(taken[i].RowsOf(library), metadata, sets, prefixes)) {
      const ConstRow* row = names.Constant(name);
      if (homes.GoesAlong(*row)) taken[i].Take(*row);
    }
    const auto& [file, title] = areas.titles[i];
    parts.push_back({file, title, taken[i].RowsOf(library)});
  }
  return parts;
}

}  // namespace declarium::win32_library
