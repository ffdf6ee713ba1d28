#include "plan/renaming.h"

#include <algorithm>
#include <vector>

#include "text/edit.h"
#include "text/text.h"
#include "vb/name_use.h"

namespace declarium::plan {
namespace {

using Names = std::unordered_map<std::u16string, std::u16string>;

class Renamer {
 public:
  Renamer(std::u16string_view text, const NewNames& names) : text_(text), names_(names) {}

  std::u16string Run() {
    const auto module = vb::ReadModule(text_);
    for (const auto& declaration : module.declarations) RenameDeclaration(declaration);
    for (const auto& use : vb::ReadNameUses(text_, module)) {
      if (!use.qualifier.empty()) continue;
      Rename(use.kind == vb::UseKind::kType ? names_.records : names_.values, use.name, use.place);
    }
    std::ranges::sort(edits_, {}, &Edit::offset);
    return Edited(text_, edits_);
  }

 private:
  void RenameDeclaration(const vb::Declaration& declaration) {
    const bool is_record = declaration.As<vb::Record>() != nullptr;
    const bool is_renamed = Rename(is_record ? names_.records : names_.values, declaration.name,
                                   declaration.name_place);
    const auto* const external = declaration.As<vb::External>();
    if (!is_renamed || external == nullptr || !external->alias.empty()) return;
    // Behind the quote that ends the library's name.
    const auto behind = static_cast<std::size_t>(external->library.data() - text_.data()) +
                        external->library.size() + 1;
    edits_.push_back(
        {behind, 0, u" Alias \"" + std::u16string(vb::WithoutBrackets(declaration.name)) + u"\""});
  }

  bool Rename(const Names& names, std::u16string_view name, const vb::Place& place) {
    const auto found = names.find(LowerCase(vb::WithoutBrackets(name)));
    if (found == names.end()) return false;
    const bool has_brackets = text_[place.offset] == u'[';
    const auto length = vb::WithoutBrackets(name).size() + (has_brackets ? 2 : 0);
    edits_.push_back({place.offset, length, found->second});
    return true;
  }

  std::u16string_view text_;
  const NewNames& names_;
  std::vector<Edit> edits_;
};

}  // namespace

std::u16string Renamed(std::u16string_view text, const NewNames& names) {
  return names.IsEmpty() ? std::u16string(text) : Renamer(text, names).Run();
}

}  // namespace declarium::plan
