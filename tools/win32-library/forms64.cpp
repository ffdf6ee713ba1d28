#include "forms64.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>
#include <unordered_map>

#include "coff_object.h"
#include "text/text.h"
#include "vb/layout.h"
#include "vb/module.h"
#include "vb/name.h"

namespace declarium::win32_library {
namespace {

constexpr const char* kOnly32 = "!it exists in 32 bits only";
constexpr const char* kNoForm = "!its 64-bit form cannot be written";

// The type in 64 bits where it is another one than in 32; empty for the same. Nothing when no one
// text can be both.
std::optional<std::string> UnifiedType(std::u16string_view narrow, std::u16string_view wide,
                                       bool is_value) {
  const bool is_wide_number = wide == u"LongLong" || wide == u"Currency";
  if (narrow == u"Long" && (wide == u"LongPtr" || is_wide_number)) return "LongPtr";
  if (narrow == u"Currency" && is_wide_number) return is_value ? "LongLong" : "";
  // What is left open in one of them is left open in both.
  if (narrow == wide || narrow == u"Any" || wide == u"Any") return "";
  return std::nullopt;
}

// A declaration parsed from its text, which it owns.
class Parsed {
 public:
  explicit Parsed(const std::string& text)
      : text_(FromUtf8(text)), module_(vb::ReadModule(text_)) {}

  template <class Kind>
  [[nodiscard]] const Kind& As() const {
    return *module_.declarations.at(0).As<Kind>();
  }

 private:
  std::u16string text_;
  vb::Module module_;
};

std::string TextOf(const TypeRow& row) {
  std::string text = "Type " + row.name + "\n";
  for (const std::string& member : row.members) text += member + "\n";
  return text + "End Type\n";
}

struct Unified {
  std::vector<std::string> values;  // with "*" behind what stands at an address
  std::string result;
};

std::optional<Unified> UnifiedTypes(const vb::External& narrow, const vb::External& wide) {
  if (narrow.parameters.size() != wide.parameters.size() || narrow.alias != wide.alias)
    return std::nullopt;
  Unified unified;
  for (std::size_t i = 0; i < narrow.parameters.size(); ++i) {
    const auto& one = narrow.parameters[i];
    const auto& other = wide.parameters[i];
    if (one.name != other.name || one.passing != other.passing) return std::nullopt;
    const bool is_value = one.passing == vb::Passing::kByValue;
    const auto type = UnifiedType(one.type.Text(), other.type.Text(), is_value);
    if (!type) return std::nullopt;
    const bool is_address = !is_value || one.type.name == u"String";
    unified.values.push_back(*type + (is_address ? "*" : ""));
  }
  const auto result = UnifiedType(narrow.result.Text(), wide.result.Text(), true);
  if (!result) return std::nullopt;
  unified.result = *result;
  return unified;
}

bool HasSameBounds(const vb::Member& one, const vb::Member& other) {
  return one.is_array == other.is_array &&
         std::ranges::equal(one.dimensions, other.dimensions, {}, &vb::Bounds::upper,
                            &vb::Bounds::upper);
}

std::optional<Unified> UnifiedTypes(const vb::Record& narrow, const vb::Record& wide) {
  if (narrow.members.size() != wide.members.size()) return std::nullopt;
  Unified unified;
  for (std::size_t i = 0; i < narrow.members.size(); ++i) {
    const auto& one = narrow.members[i];
    const auto& other = wide.members[i];
    if (one.name != other.name || !HasSameBounds(one, other)) return std::nullopt;
    const auto type = UnifiedType(one.type.Text(), other.type.Text(), false);
    if (!type) return std::nullopt;
    unified.values.push_back(*type);
  }
  return unified;
}

void Take(const Unified& unified, std::vector<RowValue>& values) {
  for (std::size_t i = 0; i < values.size(); ++i) values[i].type64 = unified.values.at(i);
}

// The declaration. A number of 8 bytes that is a Long in 32 bits has the size of an address.
std::string FormOf(const vb::External& narrow, const DeclareRow& wide) {
  std::string form = wide.line;
  for (const auto& parameter : narrow.parameters) {
    if (parameter.type.name != u"Long") continue;
    const std::string number = " " + ToUtf8(parameter.name) + " As LongLong";
    const std::string first = "(" + ToUtf8(parameter.name) + " As LongLong";
    for (const std::string& text : {number, first})
      if (const auto at = form.find(text); at != form.npos)
        form.replace(at + text.size() - 4, 4, "Ptr");
  }
  constexpr std::string_view kResult = ") As LongLong";
  if (narrow.result.name == u"Long" && form.ends_with(kResult))
    form.replace(form.size() - 4, 4, "Ptr");
  return form;
}

// The members of a record in one line. A number of 8 bytes that is a Long in 32 bits has the size
// of an address.
std::string FormOf(const vb::Record& narrow, const vb::Record& wide) {
  std::string form;
  for (const auto& member : wide.members) {
    const auto same = std::ranges::find(narrow.members, member.name, &vb::Member::name);
    const bool is_address = same != narrow.members.end() && same->type.name == u"Long" &&
                            member.type.name == u"Currency" && !member.is_array;
    std::string bounds;
    if (member.is_array) bounds = "(" + ToUtf8(member.dimensions.at(0).upper) + ")";
    form += (form.empty() ? "" : "|") + ToUtf8(member.name) + bounds + " As " +
            (is_address ? "LongPtr" : ToUtf8(member.type.Text()));
  }
  return form;
}

template <class Row>
std::unordered_map<std::string, const Row*> ByName(const std::vector<Row>& rows) {
  std::unordered_map<std::string, const Row*> by_name;
  for (const Row& row : rows) by_name.emplace(vb::Lower(row.name), &row);
  return by_name;
}

// The line under another name, which asks for the same entry.
std::string Renamed(std::string line, const std::string& name, const std::string& to) {
  if (!line.contains("\" Alias \"")) line.insert(line.find(" ("), " Alias \"" + name + "\"");
  const auto at = line.find(" " + name + " ");
  return line.replace(at + 1, name.size(), to);
}

class Comparison {
 public:
  Comparison(const Library& narrow, const Library& wide, const Exports64& exports,
             const Metadata& metadata, const Successors& successors)
      : exports_(exports),
        metadata_(metadata),
        successors_(successors),
        records_(ByName(narrow.types)),
        declares_(ByName(wide.declares)),
        types_(ByName(wide.types)) {
    for (const DeclareRow& row : wide.declares)
      if (!row.function.empty()) functions_.emplace(row.function, &row);
  }

  void Complete(DeclareRow& row) const {
    if (const auto successor = SuccessorOf(row)) {
      const Parsed narrow(row.line);
      row.form64 =
          Renamed(FormOf(narrow.As<vb::External>(), *successor), successor->name, row.name);
      return;
    }
    const auto found = declares_.find(vb::Lower(row.name));
    if (!IsExported(row)) {
      row.form64 = kOnly32;
      return;
    }
    if (found == declares_.end()) {
      row.form64 = row.function.empty() ? kOnly32 : kNoForm;
      return;
    }
    const Parsed narrow(row.line);
    const Parsed wide(found->second->line);
    const auto unified = UnifiedTypes(narrow.As<vb::External>(), wide.As<vb::External>());
    if (!unified) {
      row.form64 = HasTypesOf(wide.As<vb::External>().parameters)
                       ? FormOf(narrow.As<vb::External>(), *found->second)
                       : kNoForm;
      return;
    }
    AddUnmentioned(narrow.As<vb::External>(), row);
    Take(*unified, row.parameters);
    row.result.type64 = unified->result;
  }

  void Complete(TypeRow& row) const {
    const auto found = types_.find(vb::Lower(row.name));
    if (found == types_.end()) {
      row.form64 = kNoForm;
      return;
    }
    const Parsed narrow(TextOf(row));
    const Parsed wide(TextOf(*found->second));
    const auto unified = UnifiedTypes(narrow.As<vb::Record>(), wide.As<vb::Record>());
    if (unified)
      Take(*unified, row.values);
    else if (HasTypesOf(wide.As<vb::Record>().members))
      row.form64 = FormOf(narrow.As<vb::Record>(), wide.As<vb::Record>());
    else
      row.form64 = kNoForm;
  }

 private:
  // Whether the library has every record in the list: some are declared for x64 only.
  template <class Values>
  [[nodiscard]] bool HasTypesOf(const Values& values) const {
    return std::ranges::all_of(values, [this](const auto& value) {
      const auto& type = value.type;
      return !type.length.empty() || type.name == u"Any" ||
             vb::BuiltInExtent(type.name, vb::Target::kVba7x64) ||
             records_.contains(vb::Lower(ToUtf8(type.name)));
    });
  }

  const DeclareRow* SuccessorOf(const DeclareRow& row) const {
    const auto successor = successors_.find(row.function);
    if (successor == successors_.end()) return nullptr;
    const auto found = functions_.find(successor->second);
    return found == functions_.end() ? nullptr : found->second;
  }

  bool IsExported(const DeclareRow& row) const {
    return row.function.empty() || exports_.Has(row.function) ||
           metadata_.FindFunction(row.function) != nullptr;
  }

  // A row that no function of C stands behind has no values yet.
  static void AddUnmentioned(const vb::External& external, DeclareRow& row) {
    if (!row.parameters.empty()) return;
    for (const auto& parameter : external.parameters)
      row.parameters.push_back({.name = ToUtf8(parameter.name)});
  }

  const Exports64& exports_;
  const Metadata& metadata_;
  const Successors& successors_;
  std::unordered_map<std::string, const TypeRow*> records_;  // of the library
  std::unordered_map<std::string, const DeclareRow*> declares_;
  std::unordered_map<std::string, const DeclareRow*> functions_;
  std::unordered_map<std::string, const TypeRow*> types_;
};

}  // namespace

std::expected<void, std::string> Exports64::Add(const std::string& path) {
  constexpr std::string_view kImport = "__imp_";
  std::ifstream file(path, std::ios::binary);
  const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  const bool is_archive = ForEachMember(bytes, [&](std::string_view member) {
    const auto object = ReadObject(member);
    if (!object) return;
    for (const CoffSymbol& symbol : object->symbols)
      if (symbol.section > 0 && symbol.name.starts_with(kImport))
        names_.insert(symbol.name.substr(kImport.size()));
  });
  if (!is_archive) return std::unexpected(path + ": no import library");
  return {};
}

std::expected<Successors, std::string> ReadSuccessors(const std::string& path) {
  std::ifstream file(path);
  if (!file) return std::unexpected(path + ": cannot be read");
  Successors successors;
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line.starts_with('#')) continue;
    std::istringstream words(line);
    std::string name;
    std::string successor;
    if (!(words >> name >> successor)) return std::unexpected(path + ": not understood: " + line);
    successors.emplace(name, successor);
  }
  return successors;
}

void AddForms64(Library& library, const Library& wide, const Exports64& exports,
                const Metadata& metadata, const Successors& successors) {
  const Comparison comparison(library, wide, exports, metadata, successors);
  for (DeclareRow& row : library.declares) comparison.Complete(row);
  for (TypeRow& row : library.types) comparison.Complete(row);
}

}  // namespace declarium::win32_library
