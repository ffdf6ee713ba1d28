#include "audit/clean_up.h"

#include <algorithm>
#include <map>
#include <utility>

namespace declarium::audit {
namespace {

using Does = Fate::Does;

// Rows of one name and kind that are to be one.
struct Merge {
  std::vector<std::size_t> rows;
  std::size_t keeper;
};

class CleanUp {
 public:
  CleanUp(const std::vector<Row>& rows, const Uses& uses, const Certainty& certainty,
          const Likeness& likeness, const Rest& all, const std::vector<Obstacle>& kept)
      : rows_(rows),
        uses_(uses),
        certainty_(certainty),
        likeness_(likeness),
        kept_(kept),
        rest_(all),
        fates_(rows.size()) {}

  std::vector<Fate> Plan() {
    // What goes may leave others without a user; what is merged, too.
    for (bool is_changed = true; is_changed;) {
      is_changed = RemoveUnused();
      is_changed = MergeAlike() || is_changed;
    }
    return std::move(fates_);
  }

 private:
  bool RemoveUnused() {
    const auto is_needed = uses_.Needed(rest_);
    std::vector<bool> goes(rows_.size());
    std::vector<std::size_t> stay;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      if (!rest_.is_there[i] || is_needed[i]) continue;
      fates_[i].to_remove = ToRemove(i);
      goes[i] = fates_[i].to_remove == Obstacle::kNone;
      if (!goes[i]) stay.push_back(i);
    }
    const auto is_needed_then = uses_.Needed(rest_, stay);
    bool is_changed = false;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      if (!goes[i]) continue;
      if (is_needed_then[i]) {
        fates_[i].to_remove = Obstacle::kNeeded;
        continue;
      }
      fates_[i].does = Does::kGoes;
      rest_.is_there[i] = false;
      is_changed = true;
    }
    return is_changed;
  }

  [[nodiscard]] Obstacle ToRemove(std::size_t row) const {
    if (kept_[row] != Obstacle::kNone) return kept_[row];
    // One that others have got is theirs.
    return fates_[row].does == Does::kStays ? certainty_.ToChange(row) : Obstacle::kNeeded;
  }

  bool MergeAlike() {
    auto merges = PossibleMerges();
    while (RemoveThoseThatNeedPrivate(merges)) {
    }
    for (const auto& [group, keeper] : merges) {
      for (const auto row : group) {
        if (row == keeper) continue;
        fates_[row].does = Does::kGoesForAnother;
        fates_[row].keeper = keeper;
        rest_.is_there[row] = false;
      }
      if (!rest_.is_public[keeper]) fates_[keeper].does = Does::kBecomesPublic;
      rest_.is_public[keeper] = true;
    }
    return !merges.empty();
  }

  std::vector<Merge> PossibleMerges() {
    std::map<std::pair<std::size_t, Sort>, std::vector<std::size_t>> groups;
    for (std::size_t i = 0; i < rows_.size(); ++i)
      if (rest_.is_there[i]) groups[{uses_.NameOf(i), rows_[i].sort}].push_back(i);
    std::vector<Merge> merges;
    for (auto& [name, group] : groups) {
      if (group.size() < 2) continue;
      std::size_t keeper = kNoRow;
      const auto obstacle = ToMerge(group, keeper);
      for (const auto row : group) fates_[row].to_merge = obstacle;
      if (obstacle == Obstacle::kNone) merges.push_back({std::move(group), keeper});
    }
    return merges;
  }

  [[nodiscard]] Obstacle ToMerge(const std::vector<std::size_t>& group, std::size_t& keeper) const {
    for (const auto row : group)
      if (kept_[row] != Obstacle::kNone) return kept_[row];
    return certainty_.ToMerge(group, likeness_, rest_, keeper);
  }

  // A public declaration cannot hold a private record.
  bool RemoveThoseThatNeedPrivate(std::vector<Merge>& merges) {
    auto then = rest_;
    for (const auto& merge : merges) then.is_public[merge.keeper] = true;
    const Meant meant(uses_, rest_);
    const auto needs_private = [&](const Merge& merge) {
      const bool needs = NeedsPrivate(merge.keeper, meant, then);
      if (needs)
        for (const auto row : merge.rows) fates_[row].to_merge = Obstacle::kNeedsPrivate;
      return needs;
    };
    return std::erase_if(merges, needs_private) > 0;
  }

  [[nodiscard]] bool NeedsPrivate(std::size_t keeper, const Meant& meant, const Rest& then) const {
    if (rows_[keeper].sort == Sort::kConst) return false;
    return std::ranges::any_of(uses_.InsideOf(keeper), [&](std::size_t use) {
      bool needs = false;
      meant.ForEach(uses_.All()[use], [&](std::size_t row) {
        const bool is_type = rows_[row].sort == Sort::kType || rows_[row].sort == Sort::kEnum;
        needs = needs || (is_type && !then.is_public[row]);
      });
      return needs;
    });
  }

  const std::vector<Row>& rows_;
  const Uses& uses_;
  const Certainty& certainty_;
  const Likeness& likeness_;
  const std::vector<Obstacle>& kept_;
  Rest rest_;
  std::vector<Fate> fates_;
};

}  // namespace

std::vector<Fate> PlanCleanUp(const std::vector<Row>& rows, const Uses& uses,
                              const Certainty& certainty, const Likeness& likeness, const Rest& all,
                              const std::vector<Obstacle>& kept) {
  return CleanUp(rows, uses, certainty, likeness, all, kept).Plan();
}

}  // namespace declarium::audit
