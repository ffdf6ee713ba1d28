// Drives stand-in IDEs and watches the add-in from a test.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>
#include <windows.h>

#include "win32/unique_handle.h"

namespace declarium {

// A program beside the test's own, for example L"../vbhost/vbhost.exe".
[[nodiscard]] std::filesystem::path Beside(const std::filesystem::path& program);

// Runs a program to its end and returns its exit status; what it printed goes to `output`.
int RunProgram(const std::wstring& command_line, std::string& output);

// Whether the condition became true within ten seconds.
[[nodiscard]] bool Eventually(const std::function<bool()>& condition);

// A running stand-in IDE. It is ended with the object.
class IdeProcess {
 public:
  enum class Face { kIde, kVbaEditor };
  explicit IdeProcess(Face face = Face::kIde);
  IdeProcess(const IdeProcess&) = delete;
  IdeProcess& operator=(const IdeProcess&) = delete;
  ~IdeProcess();

  // Sends a command and returns its answer. "dead" when the IDE ended instead.
  std::string Tell(const std::string& line);
  // Sends a command whose answer is to be read later with Answer.
  void Send(const std::string& line);
  std::string Answer();
  // The number in an "ok NUMBER" answer, -1 for any other.
  long long Ask(const std::string& line);

  // Ends the process as a crash does.
  void Kill();

 private:
  win32::UniqueKernelObject process_;
  win32::UniqueKernelObject input_;   // what the IDE reads
  win32::UniqueKernelObject output_;  // what the IDE writes
  std::string unread_;
};

// The log of the probe, see addin_probe.cpp.
class ProbeLog {
 public:
  ProbeLog();
  ~ProbeLog();
  ProbeLog(const ProbeLog&) = delete;
  ProbeLog& operator=(const ProbeLog&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }
  [[nodiscard]] std::vector<std::string> Lines() const;
  [[nodiscard]] int Count(const std::string& line) const;
  [[nodiscard]] bool Comes(const std::string& line, int times = 1) const;
  // The id of the probe's process, which has answered a host already.
  [[nodiscard]] DWORD Process() const;
  // Sets one of the files beside the log.
  void Set(const char* suffix, const std::string& text) const;
  [[nodiscard]] std::string Get(const char* suffix) const;

 private:
  std::filesystem::path path_;
};

}  // namespace declarium
