#include "audit/edit_order.h"

#include <map>
#include <set>
#include <utility>

namespace declarium::audit {
namespace {

class EditOrder {
 public:
  explicit EditOrder(const Audit& audit) {
    for (const auto& edit : audit.edits) before_[edit.module];
    for (const auto& row : audit.rows) AddRow(audit, row);
  }

  std::vector<std::size_t> Run() {
    for (const auto& [module, before] : before_) Visit(module);
    return std::move(order_);
  }

 private:
  void AddRow(const Audit& audit, const AuditedRow& row) {
    const auto module = row.row.module;
    if (row.fate.does == Fate::Does::kGoesForAnother)
      Add(module, audit.rows[row.fate.keeper].row.module);
    if (row.fate.does != Fate::Does::kGoes) return;
    for (const auto& use : row.uses) Add(module, use.module);
  }

  void Add(std::size_t module, std::size_t before) {
    if (module != before && before_.contains(before)) before_[module].insert(before);
  }

  // A chain may be as long as there are modules: no recursion.
  void Visit(std::size_t module) {
    std::vector<std::size_t> open{module};
    while (!open.empty()) {
      const auto next = open.back();
      const bool is_new = begun_.insert(next).second;
      const auto wait = is_new ? before_[next] : std::set<std::size_t>();
      for (const auto before : wait)
        if (!begun_.contains(before)) open.push_back(before);
      if (open.back() != next) continue;
      open.pop_back();
      if (done_.insert(next).second) order_.push_back(next);
    }
  }

  std::map<std::size_t, std::set<std::size_t>> before_;  // by module, what must come first
  std::set<std::size_t> begun_;
  std::set<std::size_t> done_;
  std::vector<std::size_t> order_;
};

}  // namespace

std::vector<std::size_t> ModulesInOrder(const Audit& audit) {
  return EditOrder(audit).Run();
}

}  // namespace declarium::audit
