#include "vb/project.h"

#include <algorithm>
#include <utility>

#include "text/text.h"
#include "vb/declaration_reader.h"

namespace declarium::vb {
namespace {

// A piece of the project's text and where it begins.
struct Piece {
  std::u16string_view text;
  Place place;

  [[nodiscard]] Piece From(std::size_t position) const {
    Piece rest{text.substr(position), place};
    rest.place.offset += position;
    rest.place.column += static_cast<std::uint32_t>(position);
    return rest;
  }
  [[nodiscard]] Piece Trimmed() const {
    constexpr std::u16string_view kBlanks = u" \t";
    const auto start = text.find_first_not_of(kBlanks);
    if (start == text.npos) return From(text.size());
    auto trimmed = From(start);
    trimmed.text = trimmed.text.substr(0, trimmed.text.find_last_not_of(kBlanks) + 1);
    return trimmed;
  }
  // Without the quotes around it.
  [[nodiscard]] Piece Unquoted() const {
    if (!text.starts_with(u'"')) return *this;
    auto inside = From(1);
    if (inside.text.ends_with(u'"')) inside.text.remove_suffix(1);
    return inside;
  }
};

// Up to `separator`, and behind it; everything and nothing where it is missing.
std::pair<Piece, std::optional<Piece>> Cut(const Piece& piece, char16_t separator) {
  const auto at = piece.text.find(separator);
  if (at == piece.text.npos) return {piece.Trimmed(), std::nullopt};
  return {Piece{piece.text.substr(0, at), piece.place}.Trimmed(), piece.From(at + 1).Trimmed()};
}

// Calls `read` with every line that is not blank, up to the sections of add-ins.
template <class Read>
void ForEachLine(std::u16string_view text, const Read& read) {
  Place place;
  while (place.offset < text.size()) {
    const auto end = std::min(text.find_first_of(u"\r\n", place.offset), text.size());
    const auto line = Piece{text.substr(place.offset, end - place.offset), place}.Trimmed();
    if (line.text.starts_with(u'[')) return;
    if (!line.text.empty()) read(line);
    place.offset = text.substr(end).starts_with(kCrLf) ? end + 2 : end + 1;
    ++place.line;
  }
}

SyntaxError Missing(const Piece& found, std::string_view expected, const Piece& line) {
  return {found.place, expected, found.text, line.place};
}

class ProjectReader {
 public:
  explicit ProjectReader(std::u16string_view text) : text_(text) {}

  Project Read() {
    ForEachLine(text_, [this](const Piece& line) { ReadLine(line); });
    return std::move(project_);
  }

 private:
  void ReadLine(const Piece& line) {
    const auto [key, value] = Cut(line, u'=');
    if (!value) return ReadFile(line);
    const auto is = [&](std::u16string_view name) { return EqualIgnoringCase(key.text, name); };
    if (const auto kind = KindOf(key.text)) return ReadModule(*kind, *value, line);
    if (is(u"Reference")) return ReadReference(*value);
    if (is(u"Object")) return ReadObject(*value);
    if (is(u"CondComp")) return ReadConstants(value->Unquoted(), line);
    if (is(u"Name")) project_.name = value->Unquoted().text;
  }

  static std::optional<ModuleKind> KindOf(std::u16string_view key) {
    // A designer's code is that of a class.
    static constexpr std::pair<std::u16string_view, ModuleKind> kKeys[] = {
        {u"Module", ModuleKind::kStandard},
        {u"Class", ModuleKind::kClass},
        {u"Form", ModuleKind::kForm},
        {u"UserControl", ModuleKind::kControl},
        {u"UserDocument", ModuleKind::kDocument},
        {u"PropertyPage", ModuleKind::kPropertyPage},
        {u"Designer", ModuleKind::kClass}};
    const auto* const found = std::ranges::find_if(
        kKeys, [key](const auto& each) { return EqualIgnoringCase(key, each.first); });
    return found == std::end(kKeys) ? std::nullopt : std::optional(found->second);
  }

  // A .mak names its files without a key.
  void ReadFile(const Piece& line) {
    constexpr std::u16string_view kControls = u".vbx";
    const auto size = line.text.size();
    if (size > kControls.size() &&
        EqualIgnoringCase(line.text.substr(size - kControls.size()), kControls)) {
      project_.references.push_back({{}, line.text, {}, line.place});
    } else {
      project_.modules.push_back({{}, line.text, ModuleKindOf(line.text), line.place});
    }
  }

  void ReadModule(ModuleKind kind, const Piece& value, const Piece& line) {
    const auto [name, behind] = Cut(value, u';');
    const auto path = behind.value_or(name).Unquoted();
    if (path.text.empty()) return project_.errors.push_back(Missing(path, "a file", line));
    project_.modules.push_back(
        {behind ? name.text : std::u16string_view(), path.text, kind, path.place});
  }

  void ReadReference(const Piece& value) {
    constexpr std::u16string_view kTypeLibrary = u"*\\G";
    constexpr std::u16string_view kProject = u"*\\A";
    if (value.text.starts_with(kProject)) {
      const auto path = value.From(kProject.size());
      return project_.references.push_back({{}, path.text, {}, path.place});
    }
    const auto library =
        value.text.starts_with(kTypeLibrary) ? value.From(kTypeLibrary.size()) : value;
    // The identity is three parts; a path or description may hold "#" no more than they do.
    std::size_t end = 0;
    for (int part = 0; part < 3 && end != library.text.npos; ++part)
      end = library.text.find(u'#', part == 0 ? 0 : end + 1);
    if (end == library.text.npos)
      return project_.references.push_back({library.text, {}, {}, library.place});
    const auto [path, description] = Cut(library.From(end + 1), u'#');
    project_.references.push_back({library.text.substr(0, end), path.text,
                                   description ? description->text : std::u16string_view(),
                                   path.place});
  }

  void ReadObject(const Piece& value) {
    const auto [id, path] = Cut(value, u';');
    if (!path) return project_.references.push_back({{}, id.text, {}, id.place});
    project_.references.push_back({id.text, path->text, {}, path->place});
  }

  // "A = 1 : B = -1"
  void ReadConstants(const Piece& list, const Piece& line) {
    Tokenizer tokenizer(text_.substr(0, list.place.offset + list.text.size()), list.place);
    std::vector<Token> tokens;
    for (;;) {
      const auto token = tokenizer.NextSignificant();
      const bool ends = token.kind == TokenKind::kEnd;
      if (!ends && !token.IsOperator(u':')) {
        tokens.push_back(token);
        continue;
      }
      if (!tokens.empty()) ReadConstant({tokens, token.place}, line);
      if (ends) return;
      tokens.clear();
    }
  }

  void ReadConstant(TokenCursor cursor, const Piece& line) {
    auto constant = vb::ReadConstant(cursor);
    if (constant && cursor.AtEnd()) {
      project_.constants.push_back({constant->name, constant->constant.value, constant->place, 0});
      return;
    }
    auto error = constant ? SyntaxError{cursor.Peek().place, "\":\" or the end of the constants",
                                        cursor.Peek().text}
                          : constant.error();
    error.statement = line.place;
    project_.errors.push_back(error);
  }

  std::u16string_view text_;
  Project project_;
};

}  // namespace

std::optional<ProjectFileKind> ProjectFileKindOf(std::u16string_view file_name) {
  const auto extension = file_name.substr(std::min(file_name.rfind(u'.'), file_name.size()));
  const auto is = [extension](std::u16string_view other) {
    return EqualIgnoringCase(extension, other);
  };
  if (is(u".vbp") || is(u".mak")) return ProjectFileKind::kProject;
  if (is(u".vbg")) return ProjectFileKind::kGroup;
  return std::nullopt;
}

Project ReadProject(std::u16string_view text) {
  return ProjectReader(text).Read();
}

ProjectGroup ReadProjectGroup(std::u16string_view text) {
  ProjectGroup group;
  ForEachLine(text, [&group](const Piece& line) {
    const auto [key, value] = Cut(line, u'=');
    const bool starts = EqualIgnoringCase(key.text, u"StartupProject");
    if (!value || (!starts && !EqualIgnoringCase(key.text, u"Project"))) return;
    const auto path = value->Unquoted();
    if (path.text.empty()) return group.errors.push_back(Missing(path, "a project's file", line));
    // The project to start is listed once, or here and among the others.
    const bool is_there = std::ranges::any_of(group.projects, [&](const GroupedProject& each) {
      return EqualIgnoringCase(each.path, path.text);
    });
    const bool is_none = starts && path.text.starts_with(u'(');  // "(None)"
    if (!is_there && !is_none) group.projects.push_back({path.text, path.place});
  });
  return group;
}

}  // namespace declarium::vb
