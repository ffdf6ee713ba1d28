#include "target/form_for_64.h"

#include <algorithm>
#include <optional>

#include "check/c_type.h"
#include "facts/dll_key.h"
#include "text/text.h"

namespace declarium {
namespace {

constexpr std::u16string_view kAddress = u"LongPtr";
constexpr std::u16string_view kWide = u"LongLong";

bool IsLong(const vb::TypeReference& type) {
  return type.length.empty() && EqualIgnoringCase(type.name, u"Long");
}

bool IsCurrency(const vb::TypeReference& type) {
  return type.length.empty() && EqualIgnoringCase(type.name, u"Currency");
}

// The type in 64 bits of something that is written as a Long or Currency. The facts put a star
// behind a type that stands at an address.
std::u16string TypeFor64(const vb::TypeReference& type, bool is_value, std::string_view known) {
  const bool is_at_address = known.ends_with('*');
  if (is_at_address) known.remove_suffix(1);
  if (IsLong(type)) {
    const bool is_address =
        is_value ? is_at_address || known == "LongPtr" : is_at_address && known == "LongPtr";
    return std::u16string(is_address ? kAddress : u"");
  }
  if (IsCurrency(type) && is_value && known == "LongLong") return std::u16string(kWide);
  return {};
}

// Whether a name says an address: hWnd, lpRect, pData, wParam.
bool SoundsLikeAddress(std::u16string_view name) {
  const auto is_upper = [&](std::size_t at) {
    return at < name.size() && name[at] >= u'A' && name[at] <= u'Z';
  };
  if (name.starts_with(u"lpfn") || name.starts_with(u"lp")) return is_upper(2) || is_upper(4);
  if (name.starts_with(u"h") || name.starts_with(u"p")) return is_upper(1);
  static constexpr std::u16string_view kWords[] = {u"hwnd", u"hdc", u"wparam", u"lparam",
                                                   u"wndproc"};
  const auto lowered = LowerCase(name);
  return std::ranges::find(kWords, lowered) != std::end(kWords);
}

// Whether the name of a variable that is passed by reference says a handle: hKey, phToken. What
// stands at lpSize or pCount is a number.
bool SoundsLikeHandle(std::u16string_view name) {
  for (const std::u16string_view prefix : {u"lph", u"ph", u"h"}) {
    if (name.starts_with(prefix)) return SoundsLikeAddress(name.substr(prefix.size() - 1));
  }
  return false;
}

bool SoundsLikeAddress(const vb::Parameter& parameter) {
  return parameter.passing == vb::Passing::kByValue ? SoundsLikeAddress(parameter.name)
                                                    : SoundsLikeHandle(parameter.name);
}

bool SoundsLikeAddress(const vb::Member& member) {
  return SoundsLikeAddress(member.name);
}

template <class Values>
FormFor64 GuessedForm(const Values& values) {
  FormFor64 form;
  for (const auto& value : values) {
    const bool is_guessed = IsLong(value.type) && SoundsLikeAddress(value);
    form.types.emplace_back(is_guessed ? kAddress : u"");
    if (is_guessed) form.guessed.emplace_back(value.name);
  }
  return form;
}

bool HasTypes(const vb::External& external, const vb::External& wanted) {
  const auto type_of = [](const vb::Parameter& parameter) { return parameter.type.Text(); };
  return std::ranges::equal(external.parameters, wanted.parameters, {}, type_of, type_of) &&
         external.result.Text() == wanted.result.Text() && external.alias == wanted.alias;
}

// "(ByVal Point As LongLong) As LongPtr" of a whole declaration, unless the old one is that
// already.
void TakeDeclaration(const vb::External& old, std::string_view text, FormFor64& form) {
  const auto source = FromUtf8(text);
  const auto module = vb::ReadModule(source);
  if (module.declarations.empty()) return;
  const auto* external = module.declarations.front().As<vb::External>();
  const auto bracket = source.find(u'(');
  if (external == nullptr || bracket == source.npos || HasTypes(old, *external)) return;
  form.signature = source.substr(bracket);
  form.alias = external->EntryOr(module.declarations.front().name);
}

// Whether the record has exactly these members already.
bool HasMembers(const vb::Record& record, const std::vector<std::u16string>& members) {
  return std::ranges::equal(record.members, members, [](const auto& member, const auto& wanted) {
    const auto type = u" As " + std::u16string(member.type.Text());
    return wanted.starts_with(member.name) && wanted.ends_with(type);
  });
}

void TakeMembers(std::string_view text, FormFor64& form) {
  for (std::size_t begin = 0; begin <= text.size();) {
    const auto end = std::min(text.find('|', begin), text.size());
    form.members.push_back(FromUtf8(text.substr(begin, end - begin)));
    begin = end + 1;
  }
}

// Whether the facts of a row of this name are about the same entry point of the same library.
bool IsAbout(const RowFacts& facts, std::u16string_view row, const vb::External& external,
             std::u16string_view entry) {
  const auto known = facts.entry.empty() ? std::u16string(row) : FromUtf8(facts.entry);
  return facts.values.size() == external.parameters.size() && EqualIgnoringCase(known, entry) &&
         DllKey(FromUtf8(facts.library)) == DllKey(external.library);
}

FormFor64 FormOf(const RowFacts& facts, const vb::External& external) {
  FormFor64 form;
  for (std::size_t i = 0; i < external.parameters.size(); ++i) {
    const auto& parameter = external.parameters[i];
    const bool is_value = parameter.passing == vb::Passing::kByValue && !parameter.is_array;
    form.types.push_back(TypeFor64(parameter.type, is_value, facts.values[i].type64));
  }
  if (external.is_function) form.result = TypeFor64(external.result, true, facts.result.type64);
  return form;
}

// The entry that takes UTF-16 where this one takes ANSI; empty where more than the texts differ:
// then callers would have to change too.
std::u16string WideEntryOf(const FactsFile& file, const RowFacts& facts,
                           const vb::External& external) {
  const auto wide = std::ranges::find(facts.related, "wide", &RelatedRow::how);
  if (external.is_wide || wide == facts.related.end()) return {};
  const auto name = FromUtf8(wide->name);
  const auto other = file.Find(Kind::kDeclare, name);
  if (!other || other->values.size() != facts.values.size()) return {};
  bool has_text = false;
  for (std::size_t i = 0; i < facts.values.size(); ++i) {
    const auto& parameter = external.parameters[i];
    const bool is_string = EqualIgnoringCase(parameter.type.name, u"String");
    const bool is_text = check::CTypeOf(facts.values[i].c_type) == check::CType::kText &&
                         check::CTypeOf(other->values[i].c_type) == check::CType::kWideText;
    const bool is_same = facts.values[i].c_type == other->values[i].c_type;
    // What is text for the entry is a String here, and nothing else is.
    const bool is_plain_text =
        is_text && is_string && !parameter.is_array && parameter.passing == vb::Passing::kByValue;
    if (!is_plain_text && (is_string || !is_same)) return {};
    has_text = has_text || is_plain_text;
  }
  if (!has_text) return {};
  return other->entry.empty() ? name : FromUtf8(other->entry);
}

// A row has the name of the entry point, that without its A, or the name of the declaration.
std::optional<FormFor64> KnownForm(const FactsFile& file, std::u16string_view declared,
                                   const vb::External& external, TextEntries entries) {
  const auto entry = external.EntryOr(declared);
  const auto plain = entry.substr(0, entry.size() - (entry.ends_with(u'A') ? 1 : 0));
  for (const auto name : {declared, entry, plain}) {
    const auto facts = file.Find(Kind::kDeclare, name);
    if (!facts || !IsAbout(*facts, name, external, entry)) continue;
    const auto whole = file.FindForm64(Kind::kDeclare, name);
    if (!whole) {
      auto form = FormOf(*facts, external);
      if (entries == TextEntries::kWide) form.wide_entry = WideEntryOf(file, *facts, external);
      return form;
    }
    FormFor64 form;
    form.missing = FromUtf8(whole->reason);
    TakeDeclaration(external, whole->text, form);
    return form;
  }
  return std::nullopt;
}

std::optional<FormFor64> KnownForm(const FactsFile& file, std::u16string_view declared,
                                   const vb::Record& record) {
  const auto facts = file.Find(Kind::kType, declared);
  if (!facts) return std::nullopt;
  FormFor64 form;
  const auto whole = file.FindForm64(Kind::kType, declared);
  if (whole && whole->reason.empty()) {
    TakeMembers(whole->text, form);
    if (HasMembers(record, form.members)) return FormFor64();
  }
  if (facts->values.size() != record.members.size()) return std::nullopt;
  if (whole) {
    form.missing = FromUtf8(whole->reason);
    return form;
  }
  for (std::size_t i = 0; i < record.members.size(); ++i) {
    const bool is_address = facts->values[i].type64 == "LongPtr";
    form.types.emplace_back(is_address && IsLong(record.members[i].type) ? kAddress : u"");
  }
  return form;
}

}  // namespace

bool FormFor64::IsSame() const {
  return signature.empty() && members.empty() && missing.empty() && result.empty() &&
         wide_entry.empty() && std::ranges::all_of(types, &std::u16string::empty);
}

bool FormFor64::HasLongLong() const {
  return result == kWide || std::ranges::find(types, kWide) != types.end();
}

FormFor64 KnowledgeOf64::Of(const vb::Declaration& declaration) const {
  if (const auto* external = declaration.As<vb::External>()) {
    for (const auto& file : facts_)
      if (auto form = KnownForm(file, declaration.name, *external, entries_))
        return *std::move(form);
    return GuessedForm(external->parameters);
  }
  if (const auto* record = declaration.As<vb::Record>()) {
    for (const auto& file : facts_)
      if (auto form = KnownForm(file, declaration.name, *record)) return *std::move(form);
    return GuessedForm(record->members);
  }
  return {};
}

std::vector<FormFor64> KnowledgeOf64::FormsOf(const vb::Module& module) const {
  std::vector<FormFor64> forms;
  forms.reserve(module.declarations.size());
  for (const auto& declaration : module.declarations) forms.push_back(Of(declaration));
  return forms;
}

}  // namespace declarium
