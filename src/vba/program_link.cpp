#include "vba/program_link.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <objbase.h>

#include "host/com/editor_interface.h"
#include "host/failure_text.h"
#include "host/registration.h"
#include "text/text.h"
#include "text/user_texts.h"
#include "win32/wide.h"

namespace declarium::vba {
namespace {

using com::HostMember;
using com::HostObject;
using com::Variant;

constexpr HostMember kOnDisconnection{2, L"OnDisconnection"};

HostResult<HostObject> StartProgram() {
  CLSID class_id{};
  win32::ComPtr<IDispatch> program;
  HRESULT status = CLSIDFromString(win32::WideString(kDeclariumServer.class_id).c_str(), &class_id);
  if (SUCCEEDED(status)) {
    status = CoCreateInstance(class_id, nullptr, CLSCTX_LOCAL_SERVER, IID_IDispatch,
                              reinterpret_cast<void**>(program.Receive()));
  }
  if (FAILED(status)) return std::unexpected(HostError{static_cast<std::int32_t>(status)});
  return HostObject(std::move(program));
}

// How the system says that there is no such program.
bool IsNotInstalled(const HostError& error) {
  static constexpr HRESULT kMissing[] = {
      REGDB_E_CLASSNOTREG, REGDB_E_KEYMISSING, CO_E_SERVER_EXEC_FAILURE,
      HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND), HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND)};
  return std::ranges::find(kMissing, static_cast<HRESULT>(error.code)) != std::end(kMissing);
}

}  // namespace

HostResult<> ProgramLink::ShowWindow() {
  if (program_) {
    auto shown = AskToShow();
    if (shown || !IsHostGone(shown.error())) return shown;
    Forget();
  }
  if (auto connected = Connect(); !connected) return connected;
  return AskToShow();
}

HostResult<> ProgramLink::Connect() {
  const auto program = StartProgram();
  if (!program) return std::unexpected(program.error());
  // Starting lets the editor in, which may have taken the add-in out.
  if (!application_) return std::unexpected(HostError{static_cast<std::int32_t>(E_ABORT)});
  program_ = *program;
  editor_ = win32::ComPtr<EditorObject>::Attach(new EditorObject(application_));
  auto connected = program->Do(com::editor::kConnectEditor, {Variant(editor_.Get())});
  if (!connected) Forget();
  return connected;
}

HostResult<> ProgramLink::AskToShow() {
  const auto program = program_;
  if (!program) return std::unexpected(HostError{static_cast<std::int32_t>(E_ABORT)});
  // The editor is in the foreground and hands that on; without it the window comes up behind.
  CoAllowSetForegroundWindow(program.Get(), nullptr);
  return program.Do(com::editor::kShowWindow);
}

void ProgramLink::Forget() {
  program_ = {};
  if (const auto editor = std::exchange(editor_, {})) {
    editor->Leave();
    CoDisconnectObject(editor.Get(), 0);
  }
}

void ProgramLink::Disconnect() {
  application_ = {};
  const auto program = program_;
  if (program) [[maybe_unused]]
    const auto told = program.Do(kOnDisconnection);
  Forget();
}

std::u16string NotShownText(const HostError& error) {
  std::u16string text(texts::kProgramNotShown);
  text.append(kCrLf).append(kCrLf);
  if (IsNotInstalled(error)) text.append(texts::kProgramNotInstalled).append(u" ");
  return text.append(ReasonText(error));
}

}  // namespace declarium::vba
