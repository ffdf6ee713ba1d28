// The main window in a host that a test stands in for, with a project open in it.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/window_fixture.h"
#include "host/fake_host.h"
#include "host/host_connection.h"
#include "toolkit/list_view.h"

namespace declarium {

class HostWindowTest : public WindowTest {
 protected:
  HostWindowTest() {
    WriteWinLibrary();
    options_.mode = RunMode::kInHost;
    options_.host.connection = [this] { return connection_; };
    options_.host.has_code_module = [this] {
      return connection_ && connection_->HasActiveCodeModule();
    };
  }
  ~HostWindowTest() override {
    if (window_) (void)window_->Unload();
    if (connection_) connection_->Abandon();
  }

  // Connects a host with a project of these modules and opens the window and the library.
  void Start(std::vector<std::shared_ptr<FakeModule>> modules) {
    host_.OpenProject(std::move(modules));
    connection_ = std::make_shared<HostConnection>(std::make_unique<FakeApplication>(host_),
                                                   clipboard_, windows_, [](auto) {});
    connection_->Connect();
    Open();
    User().ChooseRow(Form().cmbDatabase, 0);
    host_.record = {};
  }

  // The rows of the form's list, each behind its box.
  static std::vector<std::u16string> Rows(declarium::Form& form) {
    std::vector<std::u16string> rows;
    const auto& list = form.Get<ListView>("LV1");
    for (int i = 1; i <= list.Count(); ++i) {
      const auto entry = list.Entry(i);
      const auto* mark = entry.check == CheckMark::kNone      ? u"    "
                         : entry.check == CheckMark::kChecked ? u"[x] "
                                                              : u"[ ] ";
      rows.push_back(mark + std::u16string(entry.text));
    }
    return rows;
  }
  [[nodiscard]] std::u16string Code(std::size_t module = 0) const {
    return host_.project->modules[module]->code.text();
  }

  FakeHostState host_;
  FakeClipboard clipboard_{host_.record};
  FakeWindows windows_{host_.record};
  std::shared_ptr<HostConnection> connection_;
};

}  // namespace declarium
