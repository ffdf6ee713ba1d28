#include "vba/editor_add_in.h"

#include <memory>
#include <optional>
#include <utility>

#include "host/com/add_in_object.h"
#include "host/com/vb_host_application.h"
#include "text/user_texts.h"
#include "toolkit/boundary.h"
#include "toolkit/held_flag.h"
#include "vba/editor_controls.h"
#include "vba/program_link.h"
#include "win32/wide.h"

namespace declarium::vba {
namespace {

using win32::ComPtr;

// Every entry answers success: an editor that is answered with a failure takes the add-in off its
// list and never tries again.
class EditorAddIn final : public com::AddInObject {
 public:
  STDMETHODIMP OnConnection(IDispatch* application, int, IDispatch*, SAFEARRAY**) noexcept override;
  STDMETHODIMP OnDisconnection(int, SAFEARRAY**) noexcept override;
  // Some editors say only one of the two at their end.
  STDMETHODIMP OnBeginShutdown(SAFEARRAY** custom) noexcept override {
    return OnDisconnection(0, custom);
  }

 private:
  // What there is of the editor while the add-in is connected.
  struct Connection {
    Connection(const ComPtr<IDispatch>& editor, Boundary& boundary, std::function<void()> clicked)
        : application(editor),
          program(com::HostObject(editor)),
          controls(com::HostObject(editor), boundary, clicked) {}

    ComPtr<IDispatch> application;
    ProgramLink program;
    EditorControls controls;
  };

  ~EditorAddIn() override { OnDisconnection(0, nullptr); }
  void Clicked();

  Boundary boundary_;
  std::shared_ptr<Connection> connection_;
  bool clicked_ = false;  // and the program is being shown
};

STDMETHODIMP EditorAddIn::OnConnection(IDispatch* application, int, IDispatch*,
                                       SAFEARRAY**) noexcept {
  // Some editors connect twice.
  if (!application || connection_) return S_OK;
  boundary_.Run([&] {
    connection_ = std::make_shared<Connection>(ComPtr<IDispatch>(application), boundary_,
                                               [this] { Clicked(); });
  });
  return S_OK;
}

STDMETHODIMP EditorAddIn::OnDisconnection(int, SAFEARRAY**) noexcept {
  // A click that waits for the program keeps a share, but nothing of the editor.
  if (const auto connection = std::exchange(connection_, nullptr)) {
    boundary_.Run([&] {
      connection->program.Disconnect();
      connection->controls.Remove();
      connection->application = {};
    });
  }
  return S_OK;
}

void EditorAddIn::Clicked() {
  const auto connection = connection_;
  if (!connection || clicked_) return;
  // The editor may take the add-in out while it waits for the program.
  const ComPtr<com::AddInEntries> self(this);
  const HeldFlag clicked(clicked_);
  const auto shown = connection->program.ShowWindow();
  if (shown || !connection->application) return;
  const std::u16string text = NotShownText(shown.error());
  const std::u16string title(texts::kProgram);
  const HWND owner = com::HostMainWindow(connection->application).value_or(nullptr);
  MessageBoxW(owner, win32::Wide(text), win32::Wide(title), MB_ICONERROR);
}

class EditorAddInFactory final : public com::AddInFactory {
  ComPtr<com::AddInEntries> Make() noexcept override {
    return ComPtr<com::AddInEntries>::Attach(new (std::nothrow) EditorAddIn);
  }
};

}  // namespace

ComPtr<IClassFactory> MakeEditorAddInFactory() {
  return ComPtr<IClassFactory>::Attach(new (std::nothrow) EditorAddInFactory);
}

}  // namespace declarium::vba
