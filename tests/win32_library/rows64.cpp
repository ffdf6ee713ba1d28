#include "rows64.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <stdexcept>

#include "bundled.h"
#include "facts/facts_file.h"
#include "record_facts.h"
#include "text/text.h"

namespace declarium::win32_library_test {
namespace {

// Other names of records that x86 has, and records of their own, or of others, on x64.
bool IsAnotherRecord(const std::string& name) {
  static constexpr std::string_view kNames[] = {"IMAGE_LOAD_CONFIG_DIRECTORY",
                                                "IMAGE_NT_HEADERS",
                                                "IMAGE_OPTIONAL_HEADER",
                                                "IMAGE_TLS_DIRECTORY",
                                                "IRQ_DES",
                                                "IRQ_RESOURCE",
                                                "SLIST_ENTRY",
                                                "VDMCONTEXT"};
  return std::ranges::find(kNames, name) != std::end(kNames);
}

// A member line with another type.
std::string WithType(const std::string& line, std::string_view type) {
  if (type.empty()) return line;
  return line.substr(0, line.find(" As ") + 4) + std::string(type);
}

// The members of a form, each with what the row says of its member of that name. Unions and bits
// are others in 64 bits, so of those only the size of the record is known.
std::vector<MemberRow> MembersOf(std::string_view form, const TypeRow& row) {
  std::vector<MemberRow> members;
  for (std::size_t begin = 0; begin <= form.size();) {
    const auto end = std::min(form.find('|', begin), form.size());
    MemberRow member{std::string(form.substr(begin, end - begin)), "nothing, filler"};
    const auto known = std::ranges::find(row.members, member.Name(), &MemberRow::Name);
    if (known != row.members.end() && MeaningOf(*known).kind == Meaning::Kind::kField)
      member.remark = known->remark;
    members.push_back(std::move(member));
    begin = end + 1;
  }
  return members;
}

std::optional<TypeRow> FormOf(const FactsFile& file, const TypeRow& row) {
  const auto facts = file.Find(Kind::kType, FromUtf8(row.name));
  if (!facts) return std::nullopt;
  TypeRow wide = row;
  if (IsAnotherRecord(row.name)) wide.header_name = row.name;
  if (const auto form = file.FindForm64(Kind::kType, FromUtf8(row.name))) {
    if (form->text.empty()) return std::nullopt;
    wide.members = MembersOf(form->text, row);
    return wide;
  }
  if (facts->values.size() != row.members.size())
    throw std::runtime_error(row.name + ": the facts have other members");
  for (std::size_t i = 0; i < row.members.size(); ++i)
    wide.members[i].line = WithType(row.members[i].line, facts->values[i].type64);
  return wide;
}

}  // namespace

Rows RowsFor64(const Rows& rows) {
  std::vector<FactsFile> files;
  for (const std::string& name : LibraryNames())
    files.push_back(FactsFile::OpenBeside(LibraryPath(name)).value());
  Rows wide;
  wide.constants = rows.constants;
  for (const TypeRow& row : rows.types) {
    std::optional<TypeRow> form;
    for (std::size_t i = 0; i < files.size() && !form; ++i) form = FormOf(files[i], row);
    if (form) wide.types.push_back(*std::move(form));
  }
  return wide;
}

}  // namespace declarium::win32_library_test
