#include "source/item_text.h"

#include "library/item.h"
#include "text/text.h"

namespace declarium {
namespace {

void AppendConst(std::u16string_view name, std::u16string_view item, std::u16string& out) {
  const auto [type, value] = SplitConst(item);
  out.append(u"Const ").append(name);
  if (!type.empty()) out.append(u" As ").append(type);
  out.append(u" = ").append(value);
}

void AppendWithMarkersSpelled(std::u16string_view text, std::u16string& out) {
  for (const char16_t unit : text) {
    if (unit == kSubMarker) {
      out += u"Sub ";
    } else if (unit == kFunctionMarker) {
      out += u"Function ";
    } else {
      out += unit;
    }
  }
}

void AppendDeclare(std::u16string_view name, std::u16string_view item, std::u16string& out) {
  const auto [marker, tail] = SplitDeclare(item);
  out += u"Declare ";
  AppendWithMarkersSpelled(marker, out);
  AppendWithMarkersSpelled(name, out);
  out += u" Lib ";
  AppendWithMarkersSpelled(tail, out);
}

void AppendMember(std::u16string_view line, std::u16string& out) {
  const bool is_comment = line.starts_with(u'\'');
  out.append(is_comment ? u"\t\t\t" : u"\t").append(line).append(kCrLf);
}

void AppendType(std::u16string_view name, std::u16string_view item, std::u16string& out) {
  const auto [header_rest, members] = SplitType(item);
  out.append(u"Type ").append(name);
  if (!header_rest.empty()) out.append(u" ").append(header_rest);
  out += kCrLf;
  for (const auto line : Split(members, kMemberSeparator)) AppendMember(line, out);
  out += u"End Type";
}

}  // namespace

void AppendItemText(Kind kind, std::u16string_view name, std::u16string_view item,
                    std::u16string_view scope, std::u16string& out) {
  if (!scope.empty()) out.append(scope).append(u" ");
  switch (kind) {
    case Kind::kConst:
      return AppendConst(name, item, out);
    case Kind::kDeclare:
      return AppendDeclare(name, item, out);
    case Kind::kType:
      return AppendType(name, item, out);
  }
}

std::u16string ItemText(Kind kind, std::u16string_view name, std::u16string_view item) {
  std::u16string text;
  AppendItemText(kind, name, item, {}, text);
  return text;
}

std::u16string ExportText(const Library& library) {
  return ExportText(library, [](std::size_t) {});
}

std::u16string ExportText(const Library& library,
                          const std::function<void(std::size_t start)>& begins) {
  std::u16string text;
  bool first = true;
  for (const auto kind : kKinds) {
    const auto& lists = library[kind];
    for (std::size_t i = 0; i < lists.names.size(); ++i) {
      if (!first) text += kCrLf;
      first = false;
      begins(text.size());
      AppendItemText(kind, lists.names[i], lists.ItemAt(i), {}, text);
    }
  }
  return text;
}

}  // namespace declarium
