// Declarations of libraries as a target wants them, by all facts there are.
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

#include "target/form_for_64.h"
#include "target/rewrite.h"
#include "vb/audience.h"

namespace declarium {

class TargetWriter {
 public:
  // `program` is the program's folder; the facts of the libraries there count where a library has
  // none of its own. Empty for none.
  TargetWriter(vb::Audience target, std::filesystem::path program)
      : target_(target), program_(std::move(program)) {}

  [[nodiscard]] vb::Audience Target() const { return target_; }
  void SetTarget(vb::Audience target) { target_ = target; }

  // `text` holds declarations of the library at `library`, as source. Facts are read when they are
  // first needed, which is never for VB6, and again for another library.
  [[nodiscard]] Rewriting Write(std::u16string_view text, const std::filesystem::path& library);

  // What Write goes by for declarations of that library; null for VB6, which needs none. It stands
  // until it is asked for another library.
  [[nodiscard]] const KnowledgeOf64* Knowledge(const std::filesystem::path& library) {
    return target_ == vb::Audience::kVb6 ? nullptr : &KnowledgeFor(library);
  }

 private:
  [[nodiscard]] const KnowledgeOf64& KnowledgeFor(const std::filesystem::path& library);

  vb::Audience target_;
  std::filesystem::path program_;
  std::filesystem::path library_;  // whose knowledge it is
  std::optional<KnowledgeOf64> knowledge_;
};

}  // namespace declarium
