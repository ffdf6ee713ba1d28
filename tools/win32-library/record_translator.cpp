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

std::string Bounds(long count) {
  return "(" + std::to_string(count - 1) + ")";
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

  void Add(const std::string& name, const Form& form) {
    row.members.push_back(name + form.bounds + " As " + form.type);
    size += form.size;
    alignment = std::max(alignment, form.extent.alignment);
  }

  void Fill(long bytes) {
    if (bytes == 0) return;
    row.members.push_back("'header: nothing, filler");
    Add(UniqueName("filler"), {Bounds(bytes), "Byte", {1, 1}, bytes, ""});
  }
};

RecordTranslator::RecordTranslator(const Headers& headers, ConstantLookup constants)
    : headers_(headers),
      constants_(std::move(constants)),
      text_records_(TextRecords(headers)),
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

std::expected<TypeRow, std::string> RecordTranslator::Make(int index) {
  const Record& record = headers_.records[index];
  if (record.header.empty()) return std::unexpected("not declared by a Windows header");
  if (!record.is_complete) return std::unexpected("its members are not declared");
  if (record.is_ambiguous) return std::unexpected("a member on which compilers disagree");
  if (IsInterface(record)) return std::unexpected("a COM interface or its table of functions");
  if (IsHandle(record)) return std::unexpected("it only gives a handle its type");
  TypeRow row{RecordName(record), {}, record.header};
  if (row.name.empty()) return std::unexpected("no legal name");
  if (record.size == 0) return std::unexpected("it has no size");
  if (record.size > kLargestRecord) return std::unexpected("larger than a VB record can be");
  const std::vector<Piece> pieces = PiecesOf(headers_, record);
  for (const Piece& piece : pieces)
    if (piece.offset < 0) return std::unexpected("a member without a known place");
  for (const long cap : {4L, 2L, 1L}) {
    row.members.clear();
    if (const std::string header = HeaderName(record); header != row.name)
      row.members.push_back("'record: " + header);
    if (WriteAll(index, pieces, cap, row)) return row;
  }
  return std::unexpected("its layout cannot be written in VB");
}

bool RecordTranslator::WriteAll(int index, const std::vector<Piece>& pieces, long cap,
                                TypeRow& row) {
  Draft draft{row, {}};
  for (const Piece& piece : pieces) {
    if (piece.size == 0) continue;
    Form form = NaturalForm(index, piece);
    if (form.extent.alignment > cap || piece.offset % form.extent.alignment != 0 ||
        form.size != piece.size) {
      const bool pairs = cap >= 2 && piece.offset % 2 == 0 && piece.size % 2 == 0;
      const std::string remark = form.remark.empty() ? form.type : form.remark;
      form = pairs ? Form{Bounds(piece.size / 2), "Integer", {2, 2}, piece.size, remark}
                   : Form{Bounds(piece.size), "Byte", {1, 1}, piece.size, remark};
    }
    if (piece.offset < draft.size) return false;
    const long natural =
        (draft.size + form.extent.alignment - 1) / form.extent.alignment * form.extent.alignment;
    if (natural != piece.offset) draft.Fill(piece.offset - draft.size);
    draft.size = piece.offset;
    const std::string name = draft.UniqueName(piece.name);
    const std::string paths = Joined(piece.paths);
    if (piece.kind == Piece::Kind::kUnion) row.members.push_back("'header: union of " + paths);
    if (piece.kind == Piece::Kind::kBits) row.members.push_back("'header: bits " + paths);
    if (piece.kind == Piece::Kind::kField && (paths != name || !form.remark.empty()))
      row.members.push_back("'header: " + paths +
                            (form.remark.empty() ? "" : ", holds " + form.remark));
    draft.Add(name, form);
  }
  const long whole = headers_.records[index].size;
  if (draft.size > whole) return false;
  const long rounded = (draft.size + draft.alignment - 1) / draft.alignment * draft.alignment;
  if (rounded != whole) {
    if (whole % draft.alignment != 0) return false;
    draft.Fill(whole - draft.size);
  }
  extents_[index] = {whole, draft.alignment};
  return !row.members.empty();
}

RecordTranslator::Form RecordTranslator::NaturalForm(int index, const Piece& piece) {
  if (piece.kind == Piece::Kind::kUnion)
    return {Bounds(piece.size), "Byte", {1, 1}, piece.size, ""};
  if (piece.type.kind == TypeKind::kArray) return ArrayForm(piece, piece.type);
  return FormOf(index, piece.type, piece);
}

RecordTranslator::Form RecordTranslator::FormOf(int index, const HeaderType& type,
                                                const Piece& piece) {
  if (IsWideInteger(type)) return {"", "Currency", {8, 4}, 8, ""};
  if (type.kind == TypeKind::kInteger || type.kind == TypeKind::kReal) {
    const bool real = type.kind == TypeKind::kReal;
    if (type.size == 1) return {"", "Byte", {1, 1}, 1, ""};
    if (type.size == 2) return {"", "Integer", {2, 2}, 2, ""};
    if (type.size == 4) return {"", real ? "Single" : "Long", {4, 4}, 4, ""};
    return {"", real ? "Double" : "Currency", {8, 4}, 8, ""};
  }
  if (type.kind == TypeKind::kPointer) {
    const bool text = IsCharacter(*type.target) && text_records_.contains(index);
    return {"", text ? "String" : "Long", {4, 4}, 4, ""};
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
  if (one_dimension && IsCharacter(element)) {
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
