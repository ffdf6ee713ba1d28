#include "target/target_writer.h"

#include "facts/known_facts.h"

namespace declarium {

Rewriting TargetWriter::Write(std::u16string_view text, const std::filesystem::path& library) {
  if (target_ == vb::Audience::kVb6) return {std::u16string(text), {}, {}};
  return RewriteDeclarations(text, vb::ModuleKind::kStandard, target_, KnowledgeFor(library));
}

const KnowledgeOf64& TargetWriter::KnowledgeFor(const std::filesystem::path& library) {
  if (!knowledge_ || library_ != library) {
    knowledge_.emplace(FactsFor(library, program_));
    library_ = library;
  }
  return *knowledge_;
}

}  // namespace declarium
