#include "record_translator.h"

#include <algorithm>

#include "record_names.h"
#include "text_records.h"
#include "vb/name.h"

namespace declarium::win32_library {
namespace {

constexpr long kLargestRecord = 65535;

const HeaderType& InnermostElement(const HeaderType& type) {
  return type.kind == TypeKind::kArray ? InnermostElement(*type.target) : type;
}

bool IsCharacter(const HeaderType& type) {
  return type.kind == TypeKind::kInteger && type.size == 1 && type.is_signed;
}

// A text that the headers declare as bytes: DEVMODE's names of a device and of a form.
bool IsTextOfBytes(const HeaderType& element, const std::string& count_constant) {
  return element.IsNamed("BYTE") && count_constant.starts_with("CCH");
}

long RoundedUp(long value, long step) {
  return (value + step - 1) / step * step;
}

std::string Bounds(long count) {
  return "(" + std::to_string(count - 1) + ")";
}

// What the names of a record's forms begin with: INPUT of tagINPUT, a name that the language keeps
// to itself.
std::string FormName(const Record& record) {
  const std::string name = RecordName(record);
  return name.starts_with("tag") ? name.substr(3) : name;
}

// The records that procedures take by address.
std::set<int> TakenRecords(const Headers& headers) {
  std::set<int> taken;
  for (const Function& function : headers.functions)
    for (const Parameter& parameter : function.parameters)
      if (parameter.type.kind == TypeKind::kPointer &&
          parameter.type.target->kind == TypeKind::kRecord)
        taken.insert(parameter.type.target->record);
  return taken;
}

std::string Joined(const std::vector<std::string>& paths) {
  std::string text;
  for (const std::string& path : paths) text += (text.empty() ? "" : ", ") + path;
  return text;
}

}  // namespace

// A member line is: name, bounds, " As ", type. `extent` is that of one element.
struct RecordTranslator::Form {
  std::string bounds;
  std::string type;
  vb::Extent extent;
  long size = 0;
  std::string remark;  // what the headers say where the form cannot
};

struct RecordTranslator::Draft {
  TypeRow& row;
  std::set<std::string> names;
  long size = 0;
  long alignment = 1;

  std::string UniqueName(const std::string& wanted) {
    std::string base = vb::LegalName(wanted);
    if (base.empty()) base = "member";
    std::string name = base;
    for (int i = 2; !names.insert(vb::Lower(name)).second; ++i) name = base + std::to_string(i);
    return name;
  }

  void Add(RowValue value, const Form& form) {
    row.members.push_back(value.name + form.bounds + " As " + form.type);
    row.values.push_back(std::move(value));
    size += form.size;
    alignment = std::max(alignment, form.extent.alignment);
  }

  void Fill(long bytes) {
    if (bytes == 0) return;
    row.members.push_back("'header: nothing, filler");
    Add({.name = UniqueName("filler")}, {Bounds(bytes), "Byte", {1, 1}, bytes, ""});
  }
};

RecordTranslator::RecordTranslator(const Headers& headers, ConstantLookup constants,
                                   Platform platform)
    : headers_(headers),
      constants_(std::move(constants)),
      address_(platform == Platform::kX86 ? vb::Extent{4, 4} : vb::Extent{8, 8}),
      address_type_(platform == Platform::kX86 ? "Long" : "LongPtr"),
      text_records_(TextRecords(headers)),
      taken_(TakenRecords(headers)),
      rows_(headers.records.size()),
      extents_(headers.records.size()) {}

const std::expected<TypeRow, std::string>& RecordTranslator::Translate(int index) {
  if (!rows_[index]) {
    in_progress_.insert(index);
    auto row = Make(index);
    in_progress_.erase(index);
    rows_[index] = std::move(row);
  }
  return *rows_[index];
}

void RecordTranslator::LeaveOut(int index, const std::string& reason) {
  rows_[index] = std::unexpected(reason);
}

std::string RecordTranslator::NameOf(int index) {
  if (in_progress_.contains(index)) return "";
  const auto& row = Translate(index);
  return row ? row->name : std::string();
}

std::vector<TypeRow> RecordTranslator::FormsOf(int index) {
  const Record& record = headers_.records[index];
  if (!taken_.contains(index) || record.is_union || record.tag == "tagVARIANT" || !Translate(index))
    return {};
  const vb::Extent extent = extents_[index];
  std::vector<TypeRow> forms;
  for (const Alternative& alternative : AlternativesOf(headers_, record)) {
    const std::string other = NameOf(alternative.record);
    if (other.empty()) continue;
    TypeRow form{FormName(record) + "_" + other, {}, record.header, Translate(index)->c_names, {}};
    form.members = {"'record: " + HeaderName(record), "'instead of: " + RecordName(record)};
    if (WriteAll(index, PiecesOf(headers_, record, alternative.path), form))
      forms.push_back(std::move(form));
  }
  extents_[index] = extent;
  return forms;
}

std::expected<TypeRow, std::string> RecordTranslator::Make(int index) {
  const Record& record = headers_.records[index];
  if (record.header.empty()) return std::unexpected("not declared by a Windows header");
  if (!record.is_complete) return std::unexpected("its members are not declared");
  if (record.is_ambiguous) return std::unexpected("a member on which compilers disagree");
  if (IsInterface(record)) return std::unexpected("a COM interface or its table of functions");
  if (IsHandle(record)) return std::unexpected("it only gives a handle its type");
  TypeRow row{RecordName(record), {}, record.header, record.typedefs, {}};
  if (!record.tag.empty()) row.c_names.push_back(record.tag);
  if (row.name.empty()) return std::unexpected("no legal name");
  if (record.size == 0) return std::unexpected("it has no size");
  if (record.size > kLargestRecord) return std::unexpected("larger than a VB record can be");
  const std::vector<Piece> pieces = PiecesOf(headers_, record);
  for (const Piece& piece : pieces)
    if (piece.offset < 0) return std::unexpected("a member without a known place");
  if (const std::string header = HeaderName(record); header != row.name)
    row.members.push_back("'record: " + header);
  if (!WriteAll(index, pieces, row)) return std::unexpected("its layout cannot be written in VB");
  return row;
}

bool RecordTranslator::WriteAll(int index, const std::vector<Piece>& pieces, TypeRow& row) {
  const std::size_t begin = row.members.size();
  Draft draft{row, {}};
  for (const Piece& piece : pieces) {
    if (piece.size == 0) continue;
    Form form = FittingForm(index, piece);
    if (piece.offset < draft.size) return false;
    const long natural = RoundedUp(draft.size, form.extent.alignment);
    if (natural != piece.offset) draft.Fill(piece.offset - draft.size);
    draft.size = piece.offset;
    const std::string name = draft.UniqueName(piece.name);
    Remark(piece, name, form, row);
    draft.Add({.name = name, .c_name = piece.name, .c_type = piece.type.text}, form);
  }
  return Close(index, begin, draft);
}

// The comment lines before a member.
void RecordTranslator::Remark(const Piece& piece, const std::string& name, const Form& form,
                              TypeRow& row) {
  const std::string paths = Joined(piece.paths);
  // An underscore at the end of a line would join the next one to it.
  const std::string holds = form.remark.empty() && paths.ends_with('_') ? form.type : form.remark;
  if (!piece.overlaid.empty()) row.members.push_back("'also here: " + Joined(piece.overlaid) + ".");
  if (piece.kind == Piece::Kind::kUnion) row.members.push_back("'header: union of " + paths);
  if (piece.kind == Piece::Kind::kBits) row.members.push_back("'header: bits " + paths);
  if (piece.kind == Piece::Kind::kField && (paths != name || !holds.empty()))
    row.members.push_back("'header: " + paths + (holds.empty() ? "" : ", holds " + holds));
}

// Brings the record to its size. The language rounds a record up to its largest alignment; where
// the compiler does not, the record says its true size, which is what a size member gets.
bool RecordTranslator::Close(int index, std::size_t begin, Draft& draft) {
  const long whole = headers_.records[index].size;
  if (draft.size > whole) return false;
  long rounded = RoundedUp(draft.size, draft.alignment);
  if (rounded < whole) {
    draft.Fill(whole - draft.size);
    rounded = RoundedUp(whole, draft.alignment);
  }
  if (rounded != whole)
    draft.row.members.insert(draft.row.members.begin() + static_cast<std::ptrdiff_t>(begin),
                             "'size: " + std::to_string(whole) + " bytes");
  extents_[index] = {rounded, draft.alignment};
  return draft.size > 0;
}

// The piece as it is where its place is the language's own, smaller pieces where it is not.
RecordTranslator::Form RecordTranslator::FittingForm(int index, const Piece& piece) {
  Form form = NaturalForm(index, piece);
  if (piece.offset % form.extent.alignment == 0 && form.size == piece.size) return form;
  std::string remark = form.remark.empty() ? form.type : form.remark;
  if (remark == "String")
    remark = address_type_;  // in pieces the language knows it as an address only
  if (piece.offset % 2 == 0 && piece.size % 2 == 0)
    return {Bounds(piece.size / 2), "Integer", {2, 2}, piece.size, remark};
  return {Bounds(piece.size), "Byte", {1, 1}, piece.size, remark};
}

RecordTranslator::Form RecordTranslator::NaturalForm(int index, const Piece& piece) {
  if (piece.type.kind == TypeKind::kArray) return ArrayForm(piece, piece.type);
  return FormOf(index, piece.type, piece);
}

RecordTranslator::Form RecordTranslator::FormOf(int index, const HeaderType& type,
                                                const Piece& piece) {
  const vb::Extent wide{8, address_.alignment};
  if (IsWideInteger(type)) return {"", "Currency", wide, 8, ""};
  if (type.kind == TypeKind::kInteger || type.kind == TypeKind::kReal) {
    const bool real = type.kind == TypeKind::kReal;
    if (type.size == 1) return {"", "Byte", {1, 1}, 1, ""};
    if (type.size == 2) return {"", "Integer", {2, 2}, 2, ""};
    if (type.size == 4) return {"", real ? "Single" : "Long", {4, 4}, 4, ""};
    return {"", real ? "Double" : "Currency", wide, 8, ""};
  }
  if (type.kind == TypeKind::kPointer) {
    const bool text = IsCharacter(*type.target) && text_records_.contains(index);
    return {"", text ? "String" : address_type_, address_, address_.size, ""};
  }
  if (type.kind == TypeKind::kRecord) {
    const std::string name = NameOf(type.record);
    if (!name.empty()) return {"", name, extents_[type.record], extents_[type.record].size, ""};
    const std::string shown = RecordName(headers_.records[type.record]);
    return {Bounds(piece.size), "Byte", {1, 1}, piece.size, shown.empty() ? "a record" : shown};
  }
  return {Bounds(piece.size), "Byte", {1, 1}, piece.size, "a value VB has no type for"};
}

RecordTranslator::Form RecordTranslator::ArrayForm(const Piece& piece, const HeaderType& type) {
  const HeaderType& element = InnermostElement(type);
  const bool one_dimension = type.target->kind != TypeKind::kArray;
  if (one_dimension && (IsCharacter(element) || IsTextOfBytes(element, piece.count_constant))) {
    const auto named = constants_(piece.count_constant);
    const bool keep_name = named && *named == type.count;
    const std::string length = keep_name ? piece.count_constant : std::to_string(type.count);
    return {"", "String * " + length, {piece.size, 1}, piece.size, ""};
  }
  Piece one = piece;
  one.size = element.size;
  Form form = FormOf(-1, element, one);
  if (!form.bounds.empty() || form.size == 0 || piece.size % form.size != 0)
    return {Bounds(piece.size), "Byte", {1, 1}, piece.size, form.remark};
  form.bounds = Bounds(piece.size / form.size);
  form.size = piece.size;
  return form;
}

}  // namespace declarium::win32_library
