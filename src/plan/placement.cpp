#include "plan/placement.h"

#include <algorithm>
#include <map>
#include <unordered_map>

#include "plan/declaration_section.h"
#include "text/text.h"

namespace declarium::plan {
namespace {

using PositionsByName = std::unordered_map<std::u16string, std::vector<std::size_t>>;

// Kinds in the order in which they stand in one place: what a compiler that reads from the top must
// have met comes first.
int RankOf(Kind kind) {
  constexpr int kRanks[] = {0, 2, 1};  // Const, Declare, Type
  return kRanks[KindCode(kind)];
}

// Whether what stands under such a name must have been met in front of its use.
bool IsNeededAbove(vb::UseKind use, const vb::Declaration& declaration) {
  if (use == vb::UseKind::kType) return declaration.As<vb::Record>() != nullptr;
  return declaration.As<vb::Constant>() != nullptr || declaration.As<vb::Enumeration>() != nullptr;
}

class Placer {
 public:
  Placer(const ModuleText& module, std::span<const Piece> pieces)
      : module_(*module.parsed),
        pieces_(pieces),
        section_(module.text, module_),
        needs_(pieces.size()),
        low_(pieces.size()),
        high_(pieces.size(), kNoLimit),
        places_(pieces.size()) {}

  std::vector<PlacedPieces> Place() {
    ReadPieces();
    ReadModuleUses();
    OrderPieces();
    for (auto each = order_.rbegin(); each != order_.rend(); ++each)
      for (const auto need : needs_[*each]) high_[need] = std::min(high_[need], high_[*each]);
    for (const auto each : order_) {
      for (const auto need : needs_[each]) low_[each] = std::max(low_[each], places_[need]);
      places_[each] = section_.PlaceFor(pieces_[each].kind, low_[each], high_[each]);
    }
    return Gather();
  }

 private:
  static bool IsAmong(const PositionsByName& names, std::u16string_view name, auto&& take) {
    const auto found = names.find(LowerCase(vb::WithoutBrackets(name)));
    if (found == names.end()) return false;
    for (const auto position : found->second) take(position);
    return true;
  }

  // What the pieces need of each other and of the module.
  void ReadPieces() {
    PositionsByName declared;
    for (std::size_t i = 0; i < module_.declarations.size(); ++i) {
      const auto& declaration = module_.declarations[i];
      if (declaration.scope == vb::Scope::kLocal) continue;
      declared[LowerCase(declaration.name)].push_back(i);
      const auto* const enumeration = declaration.As<vb::Enumeration>();
      if (enumeration == nullptr) continue;
      for (const auto& member : enumeration->members) declared[LowerCase(member.name)].push_back(i);
    }
    for (std::size_t i = 0; i < pieces_.size(); ++i)
      pieces_by_name_[LowerCase(pieces_[i].name)].push_back(i);
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
      if (pieces_[i].kind == Kind::kDeclare) continue;
      for (const auto& use : vb::ReadNameUses(pieces_[i].text, *pieces_[i].parsed)) {
        ForPiecesUsed(use, [&](std::size_t need) {
          if (need != i) needs_[i].push_back(need);
        });
        IsAmong(declared, use.name, [&](std::size_t position) {
          const auto& declaration = module_.declarations[position];
          if (IsNeededAbove(use.kind, declaration))
            low_[i] = std::max(low_[i], declaration.end_line);
        });
      }
    }
  }

  template <class Take>
  void ForPiecesUsed(const vb::NameUse& use, const Take& take) const {
    const auto kind = use.kind == vb::UseKind::kType ? Kind::kType : Kind::kConst;
    IsAmong(pieces_by_name_, use.name, [&](std::size_t position) {
      if (pieces_[position].kind == kind) take(position);
    });
  }

  // What the module's own declarations and variables need of the pieces.
  void ReadModuleUses() {
    const auto& declarations = module_.declarations;
    std::size_t next = 0;
    for (const auto& use : vb::ReadNameUses(section_.Text(), module_)) {
      while (next < declarations.size() && declarations[next].end_line < use.place.line) ++next;
      const bool is_declared =
          next < declarations.size() && declarations[next].place.line <= use.place.line;
      if (is_declared && declarations[next].As<vb::External>() != nullptr) continue;
      // A variable may stand in front of its record, but not of what its bounds name.
      if (!is_declared && use.kind == vb::UseKind::kType) continue;
      const auto line = is_declared ? declarations[next].place.line : use.place.line;
      ForPiecesUsed(use, [&](std::size_t position) {
        high_[position] = std::min(high_[position], line - 1);
      });
    }
  }

  // Every piece behind those that it needs; those that need each other stand in some order.
  void OrderPieces() {
    std::vector<std::size_t> wanted(pieces_.size());
    for (std::size_t i = 0; i < wanted.size(); ++i) wanted[i] = i;
    std::ranges::stable_sort(wanted, {}, [this](auto i) { return RankOf(pieces_[i].kind); });
    struct Step {
      std::size_t piece;
      std::size_t entered = 0;  // how many of its needs were gone to
    };
    std::vector<bool> is_met(pieces_.size());
    std::vector<Step> way;
    const auto enter = [&](std::size_t piece) {
      if (is_met[piece]) return;
      is_met[piece] = true;
      way.push_back({piece});
    };
    for (const auto each : wanted) {
      enter(each);
      while (!way.empty()) {
        auto& step = way.back();
        if (step.entered < needs_[step.piece].size()) {
          enter(needs_[step.piece][step.entered++]);
        } else {
          order_.push_back(step.piece);
          way.pop_back();
        }
      }
    }
  }

  [[nodiscard]] std::vector<PlacedPieces> Gather() const {
    std::map<std::uint32_t, std::vector<std::size_t>> by_place;
    for (const auto each : order_) by_place[places_[each]].push_back(each);
    std::vector<PlacedPieces> placed;
    for (auto& [place, pieces] : by_place) {
      const auto goes_on = [&](const Piece& piece, std::uint32_t line) {
        return IsOneLine(piece) && section_.IsOf(piece.kind, line);
      };
      const auto& first = pieces_[pieces.front()];
      const auto& last = pieces_[pieces.back()];
      const bool continues = goes_on(first, place);
      const bool before = !continues && !section_.IsBlank(place);
      // What parted the lines above from those below still does behind more of the same kind.
      const bool is_more = continues && first.kind == last.kind && IsOneLine(last);
      const bool behind = !is_more && !goes_on(last, place + 1) && !section_.IsBlank(place + 1);
      placed.push_back({place + 1, std::move(pieces), before, behind});
    }
    return placed;
  }

  static bool IsOneLine(const Piece& piece) { return piece.kind != Kind::kType && !piece.is_block; }

  const vb::Module& module_;
  std::span<const Piece> pieces_;
  DeclarationSection section_;
  PositionsByName pieces_by_name_;
  std::vector<std::vector<std::size_t>> needs_;  // of each piece, among the pieces
  std::vector<std::uint32_t> low_;               // each piece stands behind this line
  std::vector<std::uint32_t> high_;              // and not behind any line after this one
  std::vector<std::uint32_t> places_;
  std::vector<std::size_t> order_;
};

}  // namespace

std::vector<PlacedPieces> Place(const ModuleText& module, std::span<const Piece> pieces) {
  if (pieces.empty()) return {};
  return Placer(module, pieces).Place();
}

bool ArePartedByBlank(const Piece& above, const Piece& below) {
  return above.kind != below.kind || above.kind == Kind::kType || above.is_block || below.is_block;
}

}  // namespace declarium::plan
