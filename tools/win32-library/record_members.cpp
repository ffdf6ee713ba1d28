#include "record_members.h"

#include "record_names.h"

namespace declarium::win32_library {
namespace {

class Opener {
 public:
  // `wanted` is the path of an alternative that goes before the largest.
  Opener(const Headers& headers, std::string wanted)
      : headers_(headers), wanted_(std::move(wanted)) {}

  void Open(const Record& record, const std::string& path, long offset_bits) {
    if (record.is_union) {
      AddUnion(record, path, "", offset_bits / 8);
      return;
    }
    for (const Field& field : record.fields) AddField(field, path, offset_bits + field.offset_bits);
  }

  std::vector<Piece> pieces;
  std::vector<Alternative> alternatives;

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
    pieces.push_back({Piece::Kind::kField,
                      field.name,
                      {own_path},
                      offset_bits / 8,
                      field.type.size,
                      field.type,
                      field.count_constant,
                      {}});
  }

  void AddUnion(const Record& record, const std::string& path, const std::string& name,
                long offset) {
    std::vector<std::string> paths;
    AddAlternatives(record, path, paths);
    const Field* chosen = LargestAlternative(record);
    if (chosen == nullptr) return;
    for (const Field& field : record.fields) {
      if (field.name.empty() || field.type.kind != TypeKind::kRecord || IsNameless(field)) continue;
      if (path + field.name == wanted_) return AddWanted(field, offset, paths);
      if (&field != chosen && !IsWideInteger(field.type))
        alternatives.push_back({path + field.name, field.type.record});
    }
    if (chosen->name.empty() || IsNameless(*chosen)) {
      OpenAlternative(*chosen, path, offset, paths);
      return;
    }
    pieces.push_back({Piece::Kind::kUnion,
                      name.empty() ? chosen->name : name,
                      std::move(paths),
                      offset,
                      chosen->type.size,
                      chosen->type,
                      chosen->count_constant,
                      {}});
  }

  void AddWanted(const Field& field, long offset, const std::vector<std::string>& others) {
    pieces.push_back(
        {Piece::Kind::kField, field.name, {wanted_}, offset, field.type.size, field.type, "", {}});
    for (const std::string& other : others)
      if (other != wanted_) pieces.back().overlaid.push_back(other);
  }

  void OpenAlternative(const Field& field, const std::string& path, long offset,
                       const std::vector<std::string>& others) {
    const std::size_t first = pieces.size();
    const std::string own_path = field.name.empty() ? path : path + field.name + ".";
    Open(headers_.records[field.type.record], own_path, offset * 8);
    if (first == pieces.size()) return;
    std::vector<std::string>& overlaid = pieces[first].overlaid;
    for (const std::string& other : others)
      if (!IsWithin(other, first, own_path)) overlaid.push_back(other);
  }

  // Whether the path is one of the pieces from `first` on, or the record that was opened.
  [[nodiscard]] bool IsWithin(const std::string& path, std::size_t first,
                              const std::string& opened) const {
    if (path + "." == opened) return true;
    for (std::size_t i = first; i < pieces.size(); ++i)
      for (const std::string& known : pieces[i].paths)
        if (known == path) return true;
    return false;
  }

  [[nodiscard]] bool IsNameless(const Field& field) const {
    return field.type.kind == TypeKind::kRecord &&
           RecordName(headers_.records[field.type.record]).empty();
  }

  // The first of the largest; a record of nothing but bits only where there is no other.
  [[nodiscard]] const Field* LargestAlternative(const Record& record) const {
    const Field* chosen = nullptr;
    for (const Field& field : record.fields) {
      if (field.is_bit_field || field.type.size == 0) continue;
      const bool larger = chosen == nullptr || field.type.size > chosen->type.size;
      const bool same = chosen != nullptr && field.type.size == chosen->type.size;
      if (larger || (same && IsBits(*chosen) && !IsBits(field))) chosen = &field;
    }
    return chosen;
  }

  [[nodiscard]] bool IsBits(const Field& field) const {
    if (!IsNameless(field)) return false;
    const Record& record = headers_.records[field.type.record];
    return !record.fields.empty() && record.fields.front().is_bit_field;
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
    if (pieces.empty() || pieces.back().kind != Piece::Kind::kBits ||
        pieces.back().offset != offset || pieces.back().size != size)
      pieces.push_back({Piece::Kind::kBits, "fBitFields", {}, offset, size, field.type, "", {}});
    pieces.back().paths.push_back(path + field.name);
  }

  const Headers& headers_;
  const std::string wanted_;
};

}  // namespace

std::vector<Piece> PiecesOf(const Headers& headers, const Record& record,
                            const std::string& alternative) {
  Opener opener(headers, alternative);
  opener.Open(record, "", 0);
  return std::move(opener.pieces);
}

std::vector<Alternative> AlternativesOf(const Headers& headers, const Record& record) {
  Opener opener(headers, "");
  opener.Open(record, "", 0);
  return std::move(opener.alternatives);
}

}  // namespace declarium::win32_library
