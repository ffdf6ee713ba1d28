#include "rows.h"

#include "library/item.h"
#include "text/code_page.h"
#include "text/text.h"
#include "vb/layout.h"
#include "vb/module.h"
#include "vb/name.h"

namespace declarium::win32_library_test {
namespace {

constexpr std::string_view kRecordRemark = "'record: ";
constexpr std::string_view kHeaderRemark = "'header: ";
constexpr std::string_view kSizeRemark = "'size: ";
constexpr std::string_view kOverlaidRemark = "'also here: ";
constexpr std::string_view kFormRemark = "'instead of: ";

TypeRow TypeRowOf(const std::string& name, std::u16string_view item) {
  TypeRow row{name, name, 0, {}};
  std::string remark;
  for (const std::u16string_view part : Split(SplitType(item).members, kMemberSeparator)) {
    std::string line = EncodeCodePage(part);
    if (line.starts_with(kRecordRemark)) {
      row.header_name = line.substr(kRecordRemark.size());
    } else if (line.starts_with(kSizeRemark)) {
      row.stated_size = std::stol(line.substr(kSizeRemark.size()));
    } else if (line.starts_with(kOverlaidRemark) || line.starts_with(kFormRemark)) {
      continue;
    } else if (line.starts_with(kHeaderRemark)) {
      remark = line.substr(kHeaderRemark.size());
    } else {
      row.members.push_back({std::move(line), std::move(remark)});
      remark.clear();
    }
  }
  return row;
}

}  // namespace

std::expected<DeclareMeaning, std::string> MeaningOf(const DeclareRow& row) {
  const auto text = FromUtf8("Declare " + std::string(row.is_function ? "Function " : "Sub ") +
                             row.name + " Lib " + row.tail);
  const auto module = vb::ReadModule(text);
  if (!module.errors.empty())
    return std::unexpected(std::string(module.errors.front().expected) + " is missing");
  const auto& external = *module.declarations.at(0).As<vb::External>();
  DeclareMeaning meaning{ToUtf8(external.library),
                         ToUtf8(external.EntryOr(FromUtf8(row.name))),
                         {},
                         0,
                         external.is_function};
  for (const auto& parameter : external.parameters) {
    if (!parameter.type.is_written) return std::unexpected(ToUtf8(parameter.name) + " has no type");
    meaning.parameters.push_back(ToUtf8(parameter.name));
    meaning.argument_bytes += vb::ArgumentBytes(parameter, vb::Target::kVb6);
  }
  if (external.is_function && !external.result.is_written)
    return std::unexpected("a Function has a result and a Sub has none");
  return meaning;
}

Rows RowsOf(const Library& library) {
  Rows rows;
  const KindLists& constants = library[Kind::kConst];
  for (std::size_t i = 0; i < constants.names.size(); ++i) {
    const ConstFields fields = SplitConst(constants.ItemAt(i));
    rows.constants.push_back({EncodeCodePage(constants.names[i]), EncodeCodePage(fields.type),
                              EncodeCodePage(fields.value)});
    rows.constant_positions[vb::Lower(rows.constants.back().name)] = i;
  }
  const KindLists& declares = library[Kind::kDeclare];
  for (std::size_t i = 0; i < declares.names.size(); ++i) {
    const std::u16string_view item = declares.ItemAt(i);
    rows.declares.push_back({EncodeCodePage(declares.names[i]), item.starts_with(kFunctionMarker),
                             EncodeCodePage(SplitDeclare(item).tail)});
  }
  const KindLists& types = library[Kind::kType];
  for (std::size_t i = 0; i < types.names.size(); ++i) {
    rows.types.push_back(TypeRowOf(EncodeCodePage(types.names[i]), types.ItemAt(i)));
    rows.type_positions[vb::Lower(rows.types.back().name)] = i;
  }
  return rows;
}

}  // namespace declarium::win32_library_test
