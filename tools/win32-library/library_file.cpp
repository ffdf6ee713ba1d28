#include "library_file.h"

#include <algorithm>

#include "import/merge.h"
#include "import/parser.h"
#include "library/library_file.h"
#include "source/item_text.h"
#include "text/code_page.h"

namespace declarium::win32_library {
namespace {

std::string LineOf(const ConstRow& row) {
  return "Const " + row.name + " As " + row.type + " = " + row.value;
}

// The record as the renderer writes it.
std::string TextOf(const TypeRow& row) {
  std::string text = "Type " + row.name + "\r\n";
  for (const std::string& member : row.members)
    text += (member.starts_with('\'') ? "\t\t\t" : "\t") + member + "\r\n";
  return text + "End Type";
}

// The first line that differs, as it is in both.
std::string FirstDifference(const std::string& wanted, const std::string& got) {
  const auto [a, b] = std::ranges::mismatch(wanted, got);
  const auto line_at = [](const std::string& text, std::size_t position) {
    const std::size_t begin = text.rfind('\n', position) + 1;
    return text.substr(begin, text.find('\r', position) - begin);
  };
  return line_at(wanted, static_cast<std::size_t>(a - wanted.begin())) + " into " +
         line_at(got, static_cast<std::size_t>(b - got.begin()));
}

}  // namespace

std::string SourceOf(const Library& library) {
  std::string source;
  for (const ConstRow& row : library.constants) source += LineOf(row) + "\r\n";
  for (const DeclareRow& row : library.declares) source += row.line + "\r\n";
  for (const TypeRow& row : library.types) source += TextOf(row) + "\r\n";
  return source;
}

std::expected<void, std::string> WriteLibrary(const Library& library, const std::string& title,
                                              const std::filesystem::path& path) {
  const std::string source = SourceOf(library);
  const ParsedItems parsed = ParseDeclarations(ReadSource(std::string_view(source)));
  if (!parsed.skipped.empty())
    return std::unexpected("the importer skips " + EncodeCodePage(parsed.skipped[0].text));
  declarium::Library made;
  made.SetTitle(DecodeCodePage(title));
  MergeItems(made, parsed, Existing::kReplace);
  // What the library exports must be what went in: the rows are sorted as the importer sorts them.
  const std::string exported = EncodeCodePage(ExportText(made)) + "\r\n";
  if (exported != source)
    return std::unexpected("the importer changes " + FirstDifference(source, exported));
  // Without a history: what the generator makes can be made again.
  FileSaver saver(SystemFiles(), History(SystemFiles(), {}));
  const auto saved = SaveLibraryFile(saver, made, path);
  if (!saved) return std::unexpected(saved.error().error.Message());
  return {};
}

std::string ProvenanceOf(const Library& library) {
  std::string text = "kind\tname\theader\n";
  for (const auto& row : library.constants) text += "Const\t" + row.name + "\t" + row.header + "\n";
  for (const auto& row : library.declares)
    text += "Declare\t" + row.name + "\t" + row.header + "\n";
  for (const auto& row : library.types) text += "Type\t" + row.name + "\t" + row.header + "\n";
  return text;
}

}  // namespace declarium::win32_library
