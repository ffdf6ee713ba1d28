#include "record_members.h"

#include "record_names.h"

namespace declarium::win32_library {
namespace {

class Opener {
 public:
  Opener(const Headers& headers, std::vector<Piece>& pieces) : headers_(headers), pieces_(pieces) {}

  void Open(const Record& record, const std::string& path, long offset_bits) {
    if (record.is_union) {
      AddUnion(record, path, "", offset_bits / 8);
      return;
    }
    for (const Field& field : record.fields) AddField(field, path, offset_bits + field.offset_bits);
  }

 private:
  void AddField(const Field& field, const std::string& path, long offset_bits) {
    if (field.is_bit_field) {
      if (!field.name.empty()) AddBits(field, path, offset_bits);
      return;
    }
    const std::string own_path = field.name.empty() ? path : path + field.name;
    if (field.type.kind == TypeKind::kRecord) {
      const Record& inner = headers_.records[field.type.record];
      const bool nameless = RecordName(inner).empty();
      if (nameless && inner.is_union) {
        AddUnion(inner, field.name.empty() ? path : own_path + ".", field.name, offset_bits / 8);
        return;
      }
      if (nameless) {
        Open(inner, field.name.empty() ? path : own_path + ".", offset_bits);
        return;
      }
    }
    pieces_.push_back({Piece::Kind::kField,
                       field.name,
                       {own_path},
                       offset_bits / 8,
                       field.type.size,
                       field.type,
                       field.count_constant});
  }

  void AddUnion(const Record& record, const std::string& path, const std::string& name,
                long offset) {
    Piece piece{Piece::Kind::kUnion, name.empty() ? "u" : name, {}, offset, record.size, {}, ""};
    AddAlternatives(record, path, piece.paths);
    pieces_.push_back(std::move(piece));
  }

  // The named fields of the union; those of a nameless record in it are reached through it.
  void AddAlternatives(const Record& record, const std::string& path,
                       std::vector<std::string>& paths) {
    for (const Field& field : record.fields) {
      if (field.is_bit_field) continue;
      if (!field.name.empty())
        paths.push_back(path + field.name);
      else if (field.type.kind == TypeKind::kRecord)
        AddAlternatives(headers_.records[field.type.record], path, paths);
    }
  }

  void AddBits(const Field& field, const std::string& path, long offset_bits) {
    const long size = field.type.size;
    const long offset = offset_bits / (8 * size) * size;
    if (pieces_.empty() || pieces_.back().kind != Piece::Kind::kBits ||
        pieces_.back().offset != offset || pieces_.back().size != size)
      pieces_.push_back({Piece::Kind::kBits, "fBitFields", {}, offset, size, field.type, ""});
    pieces_.back().paths.push_back(path + field.name);
  }

  const Headers& headers_;
  std::vector<Piece>& pieces_;
};

}  // namespace

std::vector<Piece> PiecesOf(const Headers& headers, const Record& record) {
  std::vector<Piece> pieces;
  Opener(headers, pieces).Open(record, "", 0);
  return pieces;
}

}  // namespace declarium::win32_library
