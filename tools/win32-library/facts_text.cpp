#include "facts_text.h"

#include <algorithm>
#include <cctype>
#include <set>
#include <unordered_map>
#include <unordered_set>

#include "text/text.h"
#include "vb/module.h"
#include "vb/name.h"

namespace declarium::win32_library {
namespace {

constexpr const char* kFirstLine = "Declarium facts 1";

// Without the fields at the end that are empty.
std::string Joined(std::vector<std::string> fields, char separator) {
  while (!fields.empty() && fields.back().empty()) fields.pop_back();
  std::string text;
  for (const std::string& field : fields)
    text += (&field == fields.data() ? "" : std::string(1, separator)) + field;
  return text;
}

std::string Words(const std::vector<std::string>& words) {
  return Joined(words, ' ');
}

// "windows5.1.2600" is 5.1.2600, "windowsServer2008" Server2008.
std::string SinceOf(const MetaFunction& function) {
  constexpr std::string_view kSystem = "windows";
  if (!function.since.starts_with(kSystem)) return "";
  return function.since.substr(kSystem.size()) + " metadata";
}

// The name in a C type: "WINDOW_STYLE" of "const WINDOW_STYLE *".
std::string NameInType(const std::string& type) {
  const auto is_letter = [](unsigned char c) { return std::isalnum(c) != 0 || c == '_'; };
  const auto end = std::find_if(type.rbegin(), type.rend(), is_letter).base();
  const auto begin =
      std::find_if_not(std::make_reverse_iterator(end), type.rend(), is_letter).base();
  return {begin, end};
}

std::string DirectionOf(const RowValue& value, const MetaValue* facts) {
  if (facts == nullptr) return value.is_input ? "i" : "";
  std::string letters;
  if (facts->Has("in")) letters += 'i';
  if (facts->Has("out")) letters += 'o';
  if (facts->Has("optional")) letters += '?';
  if (facts->Has("reserved")) letters += 'r';
  return letters;
}

class Writer {
 public:
  Writer(const Library& library, const Metadata& metadata, ConstantSets& sets,
         const Prefixes& prefixes)
      : library_(library), metadata_(metadata), prefixes_(prefixes), sets_(sets) {
    for (const ConstRow& row : library.constants) constants_.insert(row.name);
    for (const MetaRecord& record : metadata.records) records_.emplace(record.name, &record);
    for (const MetaTypedef& item : metadata.typedefs)
      if (!item.free.empty()) closing_.emplace(item.name, item.free);
    for (const DeclareRow& row : library.declares)
      if (!row.function.empty()) by_function_.emplace(row.function, row.name);
  }

  std::string Text() {
    for (const ConstRow& row : library_.constants)
      lines_.push_back(Joined({"c", vb::Lower(row.name), row.header}, '\t'));
    for (const DeclareRow& row : library_.declares) AddDeclare(row);
    for (const TypeRow& row : library_.types) AddType(row);
    for (const std::string& name : used_sets_) AddSet(*sets_.Find(name));
    std::ranges::sort(lines_);
    std::string text = std::string(kFirstLine) + "\n";
    for (const std::string& line : lines_) text += line + "\n";
    return text;
  }

  std::set<std::string> Belonging() {
    for (const DeclareRow& row : library_.declares) AddDeclare(row);
    for (const TypeRow& row : library_.types) AddType(row);
    std::set<std::string> names;
    for (const std::string& name : used_sets_) {
      const ConstantSet& set = *sets_.Find(name);
      const bool is_list = set.constants.empty();
      if (is_list && !Present(set.by_prefix).empty()) continue;
      const std::vector<std::string>& constants = is_list ? set.by_prefix : set.constants;
      names.insert(constants.begin(), constants.end());
    }
    return names;
  }

 private:
  void AddDeclare(const DeclareRow& row) {
    const std::u16string line = FromUtf8(row.line);
    const vb::Module module = vb::ReadModule(line);
    const vb::External& external = *module.declarations.at(0).As<vb::External>();
    const MetaFunction* facts = metadata_.FindFunction(row.function);
    std::vector<std::string> fields = {"d",
                                       vb::Lower(row.name),
                                       row.header,
                                       ToUtf8(external.library),
                                       ToUtf8(external.alias),
                                       facts == nullptr ? "" : SinceOf(*facts),
                                       facts != nullptr && facts->last_error ? "e" : "",
                                       Words(RelatedTo(row, facts)),
                                       ValueField(row.result, "", "")};
    for (const vb::Parameter& parameter : external.parameters)
      fields.push_back(ParameterField(row, facts, ToUtf8(parameter.name)));
    lines_.push_back(Joined(std::move(fields), '\t'));
    if (!row.form64.empty()) lines_.push_back(Joined({"D", vb::Lower(row.name), row.form64}, '\t'));
  }

  static std::string ValueField(const RowValue& value, const std::string& direction,
                                const std::string& set) {
    return Joined({value.name, direction, value.c_type, set, value.type64}, '|');
  }

  // What C and the metadata say of a parameter of the row; its name alone where C declares none.
  std::string ParameterField(const DeclareRow& row, const MetaFunction* facts,
                             const std::string& name) {
    const auto found = std::ranges::find(row.parameters, name, &RowValue::name);
    if (found == row.parameters.end()) return name;
    const MetaValue* known = ParameterFacts(facts, *found);
    const std::string set = SetOf(PlainName(row.function) + " " + name, known, found->c_type);
    return ValueField(*found, DirectionOf(*found, known), set);
  }

  // A record by value is several values of the row, and one parameter of the metadata's.
  static const MetaValue* ParameterFacts(const MetaFunction* facts, const RowValue& value) {
    const auto index = static_cast<std::size_t>(value.parameter);
    return facts == nullptr || value.parameter < 0 || index >= facts->parameters.size()
               ? nullptr
               : &facts->parameters[index];
  }

  // The entry for the other kind of text, and what closes the handle that comes back.
  std::vector<std::string> RelatedTo(const DeclareRow& row, const MetaFunction* facts) const {
    std::vector<std::string> related;
    const std::string plain = PlainName(row.function);
    if (row.function.ends_with('A')) AddRelated("wide=", plain + "W", related);
    if (row.function.ends_with('W')) AddRelated("ansi=", plain + "A", related);
    if (facts == nullptr) return related;
    for (const std::string& function : ClosingFunctions(*facts))
      AddRelated("close=", function, related);
    return related;
  }

  // What closes the handles that come back. What a procedure gets for its caller is not the
  // caller's to close, nor is a module that it did not load.
  std::set<std::string> ClosingFunctions(const MetaFunction& facts) const {
    if (facts.name.starts_with("Get")) return {};
    std::set<std::string> closing;
    const auto add = [&](const std::string& type) {
      const auto found = closing_.find(type);
      if (found == closing_.end() || found->second == facts.name) return;
      if (found->second != "FreeLibrary" || facts.name.starts_with("Load"))
        closing.insert(found->second);
    };
    add(facts.result);
    for (const MetaValue& parameter : facts.parameters)
      if (parameter.type.starts_with('*') && parameter.Has("out") && !parameter.Has("in"))
        add(parameter.type.substr(1));
    return closing;
  }

  void AddRelated(const std::string& how, const std::string& function,
                  std::vector<std::string>& related) const {
    if (const auto found = by_function_.find(function); found != by_function_.end())
      related.push_back(how + found->second);
  }

  static std::string PlainName(const std::string& function) {
    const bool has_ending = function.ends_with('A') || function.ends_with('W');
    return has_ending ? function.substr(0, function.size() - 1) : function;
  }

  void AddType(const TypeRow& row) {
    const MetaRecord* record = RecordOf(row);
    std::vector<std::string> fields = {"t", vb::Lower(row.name), row.header};
    for (const RowValue& value : row.values) {
      const MetaValue* known =
          record == nullptr || value.c_name.empty() ? nullptr : MemberOf(*record, value.c_name);
      const std::string set = SetOf(row.name + " " + value.name, known, value.c_type);
      fields.push_back(ValueField(value, "", set));
    }
    lines_.push_back(Joined(std::move(fields), '\t'));
    if (!row.form64.empty()) lines_.push_back(Joined({"T", vb::Lower(row.name), row.form64}, '\t'));
  }

  const MetaRecord* RecordOf(const TypeRow& row) const {
    for (const std::string& name : row.c_names)
      if (const auto found = records_.find(name); found != records_.end()) return found->second;
    return nullptr;
  }

  static const MetaValue* MemberOf(const MetaRecord& record, const std::string& name) {
    const auto found = std::ranges::find(record.members, name, &MetaValue::name);
    if (found != record.members.end()) return &*found;
    for (const MetaRecord& nested : record.nested)
      if (const MetaValue* member = MemberOf(nested, name)) return member;
    return nullptr;
  }

  // The set of a parameter or member: what the metadata says of it, else its C type, else the list.
  std::string SetOf(const std::string& row_and_name, const MetaValue* facts,
                    const std::string& c_type) {
    const ConstantSet* set = facts == nullptr ? nullptr : sets_.Find(BaseOf(facts->type));
    if (set == nullptr) set = sets_.Find(NameInType(c_type));
    if (set == nullptr)
      if (const auto listed = prefixes_.find(row_and_name); listed != prefixes_.end())
        set = sets_.WithPrefixes(listed->second);
    if (set == nullptr) return "";
    used_sets_.insert(set->name);
    const bool is_empty = Present(set->constants).empty() && Present(set->by_prefix).empty();
    return is_empty ? "" : set->name;
  }

  void AddSet(const ConstantSet& set) {
    if (Present(set.constants).empty() && Present(set.by_prefix).empty()) return;
    lines_.push_back(Joined({"s", set.name, set.is_flags ? "f" : "", Words(Present(set.constants)),
                             Words(Present(set.by_prefix))},
                            '\t'));
  }

  // Those of the names that the library has.
  std::vector<std::string> Present(std::vector<std::string> names) const {
    std::erase_if(names, [this](const std::string& name) { return !constants_.contains(name); });
    return names;
  }

  const Library& library_;
  const Metadata& metadata_;
  const Prefixes& prefixes_;
  ConstantSets& sets_;
  std::unordered_set<std::string> constants_;  // of the library
  std::unordered_map<std::string, const MetaRecord*> records_;
  std::unordered_map<std::string, std::string> closing_;      // function, by the handle's type
  std::unordered_map<std::string, std::string> by_function_;  // row's name, by the name in C
  std::set<std::string> used_sets_;
  std::vector<std::string> lines_;
};

}  // namespace

std::string FactsOf(const Library& library, const Metadata& metadata, ConstantSets& sets,
                    const Prefixes& prefixes) {
  return Writer(library, metadata, sets, prefixes).Text();
}

std::set<std::string> BelongingConstants(const Library& library, const Metadata& metadata,
                                         ConstantSets& sets, const Prefixes& prefixes) {
  return Writer(library, metadata, sets, prefixes).Belonging();
}

}  // namespace declarium::win32_library
