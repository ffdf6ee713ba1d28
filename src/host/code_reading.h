// Reading the code of the host's modules as plain data. No answer of the host is believed beyond
// what a module or a project can be.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/host_object_model.h"

namespace declarium {

// What the host's limits allow.
inline constexpr int kMostLinesOfModule = 65534;
inline constexpr int kMostComponents = 32767;

// E_UNEXPECTED: the host's answers contradict each other or its own limits.
inline constexpr auto kUnreliableAnswer = static_cast<std::int32_t>(0x8000FFFF);

// A module as it stood when it was read.
struct ReadCode {
  std::u16string name = {};  // of its component
  vb::ModuleKind kind = vb::ModuleKind::kStandard;
  std::u16string text = {};  // lines joined by CR LF, none behind the last
  std::shared_ptr<CodeModule> module = {};
  std::shared_ptr<HostComponent> component = {};
};

// All lines, in two calls. kUnreliableAnswer when they are not as many as counted.
[[nodiscard]] HostResult<std::u16string> ReadText(CodeModule& module);

// `module` and what it belongs to, in five calls.
[[nodiscard]] HostResult<ReadCode> ReadModule(std::shared_ptr<CodeModule> module);

// Reads the modules of a project one after the other, with at most six calls each, so that the
// caller can handle events in between.
class ProjectReading {
 public:
  // The project, when there is one, must come from the same application as `read`, which is read
  // already and not read again; nullptr for none.
  explicit ProjectReading(std::unique_ptr<HostProject> project, const ReadCode* read = nullptr);

  // Asks how many components there are, and for the project's name. To be called first.
  [[nodiscard]] HostResult<> Begin();

  // Reads the next component. One that fails is left out and named in Unread; the error of a host
  // that is busy or fails time after time ends the reading.
  [[nodiscard]] HostResult<> ReadNext();

  [[nodiscard]] bool IsAtEnd() const noexcept { return position_ >= count_; }
  [[nodiscard]] int Count() const noexcept { return count_; }
  [[nodiscard]] int Position() const noexcept { return position_; }  // components dealt with
  [[nodiscard]] const std::u16string& ProjectName() const noexcept { return name_; }
  // Without the one that was read already.
  [[nodiscard]] std::vector<ReadCode>& Modules() noexcept { return modules_; }
  // The names of components that could not be read, or their positions as "#2".
  [[nodiscard]] const std::vector<std::u16string>& Unread() const noexcept { return unread_; }

 private:
  [[nodiscard]] HostResult<> Read(int position, std::u16string& name);

  std::unique_ptr<HostProject> project_;
  std::shared_ptr<HostComponent> read_;
  std::u16string name_;
  int count_ = 0;
  int position_ = 0;
  int failures_ = 0;  // one after the other
  std::vector<ReadCode> modules_;
  std::vector<std::u16string> unread_;
};

}  // namespace declarium
