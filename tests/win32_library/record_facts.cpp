#include "record_facts.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <stdexcept>

#include "text/text.h"
#include "vb/definitions.h"
#include "vb/name.h"

namespace declarium::win32_library_test {
namespace {

constexpr std::size_t kBitsAlignment = 16;
constexpr int kRealClass = 8;

std::vector<std::string> SplitPaths(std::string_view list) {
  std::vector<std::string> paths;
  while (!list.empty()) {
    const std::size_t comma = std::min(list.find(", "), list.size());
    paths.emplace_back(list.substr(0, comma));
    list = list.substr(std::min(comma + 2, list.size()));
  }
  return paths;
}

// The numbers about the fields of a record: for each its offset, size and class; bit fields are
// found in records that have all bits of one field set.
class Probe {
 public:
  void Add(const TypeRow& row) {
    rows_.push_back(&row);
    numbers_ += "sizeof(" + row.header_name + "),\n";
    for (const MemberRow& member : row.members) {
      const Meaning meaning = MeaningOf(member);
      for (const std::string& path : meaning.paths) {
        if (meaning.kind == Meaning::Kind::kBits)
          AddBits(row.header_name, path);
        else
          AddField(row.header_name, path);
      }
    }
  }

  [[nodiscard]] std::string Source() const {
    return "\n__attribute__((section(\".number\"))) const long declarium_numbers[] = {\n" +
           numbers_ + "};\n" + bits_;
  }

  void Read(const std::map<std::string, std::string>& sections, RecordFacts& facts) {
    numbers_bytes_ = sections.at(".number");
    bits_bytes_ = sections.at(".bits");
    for (const TypeRow* row : rows_) {
      RecordFact& fact = facts[row->name];
      fact.size = NextNumber();
      for (const MemberRow& member : row->members) {
        const Meaning meaning = MeaningOf(member);
        for (const std::string& path : meaning.paths)
          fact.fields[path] =
              meaning.kind == Meaning::Kind::kBits ? NextBits(fact.size) : NextField();
      }
    }
  }

 private:
  void AddField(const std::string& record, const std::string& path) {
    const std::string field = "((" + record + "*)0)->" + path;
    numbers_ += "__builtin_offsetof(" + record + ", " + path + "), sizeof(" + field +
                "), __builtin_classify_type(" + field + "),\n";
  }

  void AddBits(const std::string& record, const std::string& path) {
    bits_ += "__attribute__((section(\".bits\"), aligned(16))) const " + record +
             " declarium_bits" + std::to_string(bits_count_++) + " = {." + path + " = -1};\n";
  }

  long NextNumber() {
    std::int32_t number = 0;
    if (numbers_at_ + sizeof number > numbers_bytes_.size())
      throw std::runtime_error("the probe is too short");
    std::memcpy(&number, numbers_bytes_.data() + numbers_at_, sizeof number);
    numbers_at_ += sizeof number;
    return number;
  }

  FieldFact NextField() {
    FieldFact fact;
    fact.offset = NextNumber();
    fact.size = NextNumber();
    fact.is_real = NextNumber() == kRealClass;
    return fact;
  }

  // The bytes that hold any bit of the field.
  FieldFact NextBits(long record_size) {
    const std::string record = bits_bytes_.substr(bits_at_, static_cast<std::size_t>(record_size));
    bits_at_ += (static_cast<std::size_t>(record_size) + kBitsAlignment - 1) / kBitsAlignment *
                kBitsAlignment;
    const std::size_t first = record.find_first_not_of('\0');
    if (first == std::string::npos) throw std::runtime_error("a bit field without bits");
    const std::size_t last = record.find_last_not_of('\0');
    return {static_cast<long>(first), static_cast<long>(last - first + 1), false};
  }

  std::vector<const TypeRow*> rows_;
  std::string numbers_;
  std::string bits_;
  int bits_count_ = 0;
  std::string numbers_bytes_;
  std::string bits_bytes_;
  std::size_t numbers_at_ = 0;
  std::size_t bits_at_ = 0;
};

// The layout of every record by the language's rules.
class Layouts {
 public:
  Layouts(const Rows& rows, vb::Target target)
      : text_(TextOf(rows)), module_(vb::ReadModule(text_)), definitions_(target) {
    definitions_.Add(module_);
    for (const auto& declaration : module_.declarations) {
      if (const auto* const record = declaration.As<vb::Record>())
        records_[ToUtf8(declaration.name)] = record;
    }
  }

  std::expected<vb::RecordLayout, std::string> Of(const TypeRow& row) {
    return definitions_.LayoutOf(*records_.at(row.name));
  }

 private:
  static std::u16string TextOf(const Rows& rows) {
    std::string text;
    for (const ConstRow& row : rows.constants)
      text += "Const " + row.name + " As " + row.type + " = " + row.value + "\n";
    for (const TypeRow& row : rows.types) {
      text += "Type " + row.name + "\n";
      for (const MemberRow& member : row.members) text += member.line + "\n";
      text += "End Type\n";
    }
    return FromUtf8(text);
  }

  std::u16string text_;
  vb::Module module_;
  vb::Definitions definitions_;
  std::map<std::string, const vb::Record*> records_;
};

bool IsRealType(const std::string& line) {
  return line.ends_with(" As Single") || line.ends_with(" As Double");
}

// The reason why a member is not where the compiler has it; empty when it is.
std::string MemberProblem(const MemberRow& member, const vb::MemberPlace& place,
                          const RecordFact& fact) {
  const Meaning meaning = MeaningOf(member);
  long first = std::numeric_limits<long>::max();
  long end = 0;
  for (const std::string& path : meaning.paths) {
    const FieldFact& field = fact.fields.at(path);
    first = std::min(first, field.offset);
    end = std::max(end, field.offset + field.size);
    // An array is of the address class, so only single values show theirs.
    const bool single = member.line.find('(') == std::string::npos;
    if (meaning.kind == Meaning::Kind::kField && single && field.is_real != IsRealType(member.line))
      return "is a fraction only on one side";
  }
  switch (meaning.kind) {
    case Meaning::Kind::kFiller:
      return "";
    case Meaning::Kind::kBits:
      return first >= place.offset && end <= place.offset + place.size ? "" : "misses its bits";
    case Meaning::Kind::kUnion:
      return first == place.offset && end <= place.offset + place.size ? "" : "misses its union";
    case Meaning::Kind::kField:
      break;
  }
  if (first != place.offset) return "stands elsewhere";
  return end - first == place.size ? "" : "has another size";
}

// A record that says its size is rounded up by the language, by less than its alignment. It says
// that of 32 bits.
std::string SizeProblem(const TypeRow& row, const vb::RecordLayout& layout, const RecordFact& fact,
                        vb::Target target) {
  const auto [size, alignment] = layout.extent;
  const bool rounded = size > fact.size && size - fact.size < alignment;
  if (vb::Is64Bit(target)) return size == fact.size || rounded ? "" : "has another size";
  if (row.stated_size == 0) return size == fact.size ? "" : "has another size";
  return row.stated_size == fact.size && rounded ? "" : "says another size";
}

}  // namespace

Meaning MeaningOf(const MemberRow& member) {
  std::string_view remark = member.remark;
  if (remark.empty()) return {Meaning::Kind::kField, {member.Name()}};
  if (remark == "nothing, filler") return {Meaning::Kind::kFiller, {}};
  if (remark.starts_with("union of ")) return {Meaning::Kind::kUnion, SplitPaths(remark.substr(9))};
  if (remark.starts_with("bits ")) return {Meaning::Kind::kBits, SplitPaths(remark.substr(5))};
  return {Meaning::Kind::kField, {std::string(remark.substr(0, remark.find(", holds ")))}};
}

RecordFacts CompileRecords(const Rows& rows, const Toolchain& toolchain, const UnitMap& units,
                           const std::map<std::string, std::size_t>& provenance) {
  std::vector<Probe> probes(units.units.size());
  for (const TypeRow& row : rows.types) probes[provenance.at("Type\t" + row.name)].Add(row);
  RecordFacts facts;
  for (std::size_t i = 0; i < probes.size(); ++i)
    probes[i].Read(
        toolchain.Sections(toolchain.Preprocessed(units.units[i].source) + probes[i].Source(),
                           {".number", ".bits"}),
        facts);
  return facts;
}

void RenameFor64(Rows& rows, const UnitMap& units,
                 const std::map<std::string, std::size_t>& provenance, const Toolchain& x86,
                 const Toolchain& x64) {
  for (std::size_t i = 0; i < units.units.size(); ++i) {
    const auto old = x86.Synonyms(units.units[i].source);
    const auto synonyms = x64.Synonyms(units.units[i].source);
    for (TypeRow& row : rows.types) {
      if (provenance.at("Type\t" + row.name) != i || old.contains(row.header_name)) continue;
      const auto synonym = synonyms.find(row.header_name);
      if (synonym != synonyms.end()) row.header_name = synonym->second;
    }
  }
}

Mismatches CheckRecords(const Rows& rows, const RecordFacts& facts, vb::Target target) {
  Mismatches mismatches;
  Layouts layouts(rows, target);
  for (const TypeRow& row : rows.types) {
    const auto layout = layouts.Of(row);
    const RecordFact& fact = facts.at(row.name);
    if (!layout) {
      mismatches.push_back(row.name + ": " + layout.error());
      continue;
    }
    std::string problem = SizeProblem(row, *layout, fact, target);
    for (std::size_t i = 0; i < row.members.size() && problem.empty(); ++i)
      if (const auto found = MemberProblem(row.members[i], layout->places[i], fact); !found.empty())
        problem = row.members[i].line + " " + found;
    if (!problem.empty()) mismatches.push_back(row.name + ": " + problem);
  }
  return mismatches;
}

}  // namespace declarium::win32_library_test
