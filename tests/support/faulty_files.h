// Files of the system that can be made to fail.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "library/file_system.h"

namespace declarium {

// The system's files, with a call after which every further one, or only that one, fails.
class FaultyFiles : public FileSystem {
 public:
  enum class Fault { kNone, kOnce, kFromThenOn };

  // Fails the call of this number, counted from 0 by the calls that come from now on.
  void FailAt(int call, Fault fault) {
    calls_ = 0;
    fail_at_ = call;
    fault_ = fault;
  }
  void FailNever() { fault_ = Fault::kNone; }
  // Fails every call of this method.
  void FailEvery(std::string method, int system_code = 28) {
    method_ = std::move(method);
    system_code_ = system_code;
  }
  [[nodiscard]] int Calls() const { return calls_; }

  std::expected<std::string, Error> Read(const std::filesystem::path& path) override {
    return Fails("Read") ? std::unexpected(Failure(ErrorKind::kCannotRead, path))
                         : real_.Read(path);
  }
  std::optional<FileStatus> Status(const std::filesystem::path& path) override {
    return real_.Status(path);
  }
  bool HaveSameContent(const std::filesystem::path& first,
                       const std::filesystem::path& second) override {
    return !Fails("HaveSameContent") && real_.HaveSameContent(first, second);
  }
  std::filesystem::path Target(const std::filesystem::path& path) override {
    return real_.Target(path);
  }
  std::expected<WriteTarget, Error> CheckTarget(const std::filesystem::path& path) override {
    if (Fails("CheckTarget")) return Refuse(path);
    return real_.CheckTarget(path);
  }
  std::vector<std::filesystem::path> List(const std::filesystem::path& folder) override {
    return Fails("List") ? std::vector<std::filesystem::path>() : real_.List(folder);
  }
  bool IsHeld(const std::filesystem::path& temporary) override { return real_.IsHeld(temporary); }
  FileHold Lock(const std::filesystem::path& path) override {
    return Fails("Lock") ? nullptr : real_.Lock(path);
  }
  std::expected<FileHold, Error> Create(const std::filesystem::path& path, std::string_view bytes,
                                        const std::filesystem::path& model) override {
    if (Fails("Create")) return Refuse(path);
    return real_.Create(path, bytes, model);
  }
  std::expected<void, Error> Overwrite(const std::filesystem::path& path,
                                       std::string_view bytes) override {
    if (!Fails("Overwrite")) return real_.Overwrite(path, bytes);
    // As a full disk does.
    (void)real_.Overwrite(path, bytes.substr(0, bytes.size() / 2));
    return Refuse(path);
  }
  std::expected<void, Error> Replace(const std::filesystem::path& from,
                                     const std::filesystem::path& to) override {
    if (Fails("Replace")) return Refuse(to);
    return real_.Replace(from, to);
  }
  std::expected<void, Error> Move(const std::filesystem::path& from,
                                  const std::filesystem::path& to) override {
    if (Fails("Move")) return Refuse(to);
    return real_.Move(from, to);
  }
  std::expected<void, Error> Link(const std::filesystem::path& from,
                                  const std::filesystem::path& to) override {
    if (Fails("Link")) return Refuse(to);
    return real_.Link(from, to);
  }
  std::expected<void, Error> Remove(const std::filesystem::path& path) override {
    if (Fails("Remove")) return Refuse(path);
    return real_.Remove(path);
  }
  std::expected<void, Error> MakeFolder(const std::filesystem::path& folder) override {
    if (Fails("MakeFolder")) return Refuse(folder);
    return real_.MakeFolder(folder);
  }

 private:
  bool Fails(std::string_view method) {
    const int call = calls_++;
    if (method == method_) return true;
    return (fault_ == Fault::kOnce && call == fail_at_) ||
           (fault_ == Fault::kFromThenOn && call >= fail_at_);
  }
  Error Failure(ErrorKind kind, const std::filesystem::path& path) const {
    return {kind, PathText(path), "made to fail", system_code_};
  }
  std::unexpected<Error> Refuse(const std::filesystem::path& path) const {
    return std::unexpected(Failure(ErrorKind::kCannotWrite, path));
  }

  FileSystem& real_ = SystemFiles();
  Fault fault_ = Fault::kNone;
  int fail_at_ = 0;
  int calls_ = 0;
  std::string method_;
  int system_code_ = 28;  // a full disk on POSIX
};

}  // namespace declarium
