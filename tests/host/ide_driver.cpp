#include "host/ide_driver.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <iterator>
#include <thread>
#include <utility>

#include "win32/program.h"

namespace declarium {
namespace {

constexpr auto kLimit = std::chrono::seconds(20);

using win32::UniqueKernelObject;

// Both ends; the one that `kept` names stays with this process, the other is for the started one.
struct Pipe {
  UniqueKernelObject read;
  UniqueKernelObject write;

  explicit Pipe(UniqueKernelObject Pipe::* kept) {
    SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
    CreatePipe(read.Receive(), write.Receive(), &inheritable, 0);
    SetHandleInformation((this->*kept).Get(), HANDLE_FLAG_INHERIT, 0);
  }
};

UniqueKernelObject Start(std::wstring command_line, HANDLE input, HANDLE output) {
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = input;
  startup.hStdOutput = output;
  startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(nullptr, command_line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                      &startup, &process)) {
    return {};
  }
  CloseHandle(process.hThread);
  return UniqueKernelObject(process.hProcess);
}

}  // namespace

std::filesystem::path Beside(const std::filesystem::path& program) {
  const std::filesystem::path own(win32::ProgramPath());
  return (own.parent_path() / program).lexically_normal();
}

int RunProgram(const std::wstring& command_line, std::string& output) {
  Pipe pipe(&Pipe::read);
  const auto process = Start(command_line, nullptr, pipe.write.Get());
  pipe.write.Reset();
  char buffer[512];
  DWORD read = 0;
  while (process && ReadFile(pipe.read.Get(), buffer, sizeof buffer, &read, nullptr) && read > 0) {
    output.append(buffer, read);
  }
  DWORD status = static_cast<DWORD>(-1);
  if (process) {
    WaitForSingleObject(process.Get(), 20000);
    GetExitCodeProcess(process.Get(), &status);
  }
  return static_cast<int>(status);
}

bool Eventually(const std::function<bool()>& condition) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return true;
}

IdeProcess::IdeProcess(Face face) {
  Pipe input(&Pipe::write);
  Pipe output(&Pipe::read);
  const auto* const arguments = face == Face::kVbaEditor ? L"\" vba" : L"\"";
  process_ = Start(L"\"" + Beside(L"../vbhost/vbhost.exe").wstring() + arguments, input.read.Get(),
                   output.write.Get());
  input_ = std::move(input.write);
  output_ = std::move(output.read);
}

IdeProcess::~IdeProcess() {
  Kill();
}

void IdeProcess::Kill() {
  TerminateProcess(process_.Get(), 3);
  WaitForSingleObject(process_.Get(), 10000);
}

void IdeProcess::Send(const std::string& line) {
  const std::string bytes = line + "\n";
  DWORD written = 0;
  WriteFile(input_.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

std::string IdeProcess::Answer() {
  const auto end = std::chrono::steady_clock::now() + kLimit;
  for (;;) {
    if (const auto line_end = unread_.find('\n'); line_end != std::string::npos) {
      std::string line = unread_.substr(0, line_end);
      unread_.erase(0, line_end + 1);
      std::erase(line, '\r');
      return line;
    }
    DWORD available = 0;
    if (!PeekNamedPipe(output_.Get(), nullptr, 0, nullptr, &available, nullptr)) return "dead";
    if (available > 0) {
      std::string bytes(available, '\0');
      DWORD read = 0;
      ReadFile(output_.Get(), bytes.data(), available, &read, nullptr);
      unread_.append(bytes, 0, read);
      continue;
    }
    if (WaitForSingleObject(process_.Get(), 0) == WAIT_OBJECT_0) return "dead";
    if (std::chrono::steady_clock::now() > end) return "no answer";
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
}

std::string IdeProcess::Tell(const std::string& line) {
  Send(line);
  return Answer();
}

long long IdeProcess::Ask(const std::string& line) {
  const std::string answer = Tell(line);
  return answer.starts_with("ok ") ? std::stoll(answer.substr(3)) : -1;
}

ProbeLog::ProbeLog() {
  static int number = 0;
  path_ = std::filesystem::temp_directory_path() /
          (L"declarium_probe_" + std::to_wstring(GetCurrentProcessId()) + L"_" +
           std::to_wstring(++number) + L".log");
  SetEnvironmentVariableW(L"DECLARIUM_PROBE_LOG", path_.c_str());
}

ProbeLog::~ProbeLog() {
  std::error_code ignored;
  for (const char* suffix :
       {"", ".text", ".answer", ".stay", ".noload", ".process", ".read", ".edit"}) {
    auto path = path_;
    std::filesystem::remove(path += suffix, ignored);
  }
}

std::vector<std::string> ProbeLog::Lines() const {
  std::ifstream file(path_, std::ios::binary);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

int ProbeLog::Count(const std::string& line) const {
  return static_cast<int>(std::ranges::count(Lines(), line));
}

bool ProbeLog::Comes(const std::string& line, int times) const {
  return Eventually([&] { return Count(line) >= times; });
}

DWORD ProbeLog::Process() const {
  return static_cast<DWORD>(std::stoul(Get(".process")));
}

void ProbeLog::Set(const char* suffix, const std::string& text) const {
  auto path = path_;
  std::ofstream(path += suffix, std::ios::binary | std::ios::trunc) << text;
}

std::string ProbeLog::Get(const char* suffix) const {
  auto path = path_;
  std::ifstream file(path += suffix, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace declarium
