#include "host/code_reading.h"

#include <algorithm>
#include <utility>

#include "text/text.h"

namespace declarium {
namespace {

// So many components that fail in a row mean that the host fails.
constexpr int kMostFailures = 3;

std::size_t CountLines(std::u16string_view text) {
  std::size_t count = 1;
  for (auto at = text.find(kCrLf); at != text.npos; at = text.find(kCrLf, at + kCrLf.size())) {
    ++count;
  }
  return count;
}

}  // namespace

HostResult<std::u16string> ReadText(CodeModule& module) {
  const auto count = module.CountOfLines(BusyHost::kWaitFor);
  if (!count) return std::unexpected(count.error());
  if (*count < 0 || *count > kMostLinesOfModule)
    return std::unexpected(HostError{kUnreliableAnswer});
  if (*count == 0) return std::u16string();
  auto text = module.Lines(1, *count);
  if (text && CountLines(*text) != static_cast<std::size_t>(*count)) {
    return std::unexpected(HostError{kUnreliableAnswer});
  }
  return text;
}

HostResult<ReadCode> ReadModule(std::shared_ptr<CodeModule> module) {
  ReadCode code;
  auto component = module->Owner();
  if (!component) return std::unexpected(component.error());
  code.component = *std::move(component);
  auto name = code.component->Name();
  if (!name) return std::unexpected(name.error());
  code.name = *std::move(name);
  const auto kind = code.component->Kind();
  if (!kind) return std::unexpected(kind.error());
  code.kind = kind->value_or(vb::ModuleKind::kClass);
  auto text = ReadText(*module);
  if (!text) return std::unexpected(text.error());
  code.text = *std::move(text);
  code.module = std::move(module);
  return code;
}

ProjectReading::ProjectReading(std::unique_ptr<HostProject> project, const ReadCode* read)
    : project_(std::move(project)), read_(read ? read->component : nullptr) {}

HostResult<> ProjectReading::Begin() {
  if (!project_) return {};
  auto name = project_->Name();
  if (!name) return std::unexpected(name.error());
  name_ = *std::move(name);
  const auto count = project_->CountOfComponents();
  if (!count) return std::unexpected(count.error());
  if (*count < 0 || *count > kMostComponents) return std::unexpected(HostError{kUnreliableAnswer});
  count_ = *count;
  return {};
}

HostResult<> ProjectReading::Read(int position, std::u16string& name) {
  auto component = project_->Component(position);
  if (!component) return std::unexpected(component.error());
  if (!*component) return std::unexpected(HostError{kUnreliableAnswer});
  if (read_ && (*component)->IsSameAs(*read_)) return {};
  ReadCode code{.component = *std::move(component)};
  auto own_name = code.component->Name();
  if (!own_name) return std::unexpected(own_name.error());
  name = code.name = *std::move(own_name);
  const auto kind = code.component->Kind();
  if (!kind) return std::unexpected(kind.error());
  if (!*kind) return {};
  code.kind = **kind;
  auto module = code.component->Module();
  if (!module) return std::unexpected(module.error());
  if (!*module) return {};
  code.module = *std::move(module);
  auto text = ReadText(*code.module);
  if (!text) return std::unexpected(text.error());
  code.text = *std::move(text);
  modules_.push_back(std::move(code));
  return {};
}

HostResult<> ProjectReading::ReadNext() {
  if (IsAtEnd()) return {};
  std::u16string name;
  const auto read = Read(++position_, name);
  if (read) {
    failures_ = 0;
    return {};
  }
  unread_.push_back(name.empty() ? u"#" + CountText(static_cast<std::uint64_t>(position_)) : name);
  if (IsBusy(read.error()) || ++failures_ == kMostFailures) return read;
  return {};
}

}  // namespace declarium
