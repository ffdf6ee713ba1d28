// The fixture of the contract suite: the demo form of the linked backend, and a log of events.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "gmock/gmock.h"
#include "gtest/gtest.h"

#include "toolkit/backend.h"
#include "toolkit/demo_form.h"
#include "toolkit/progress_bar.h"
#include "toolkit/rich_text.h"
#include "toolkit/timer.h"

namespace declarium {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Contract : public ::testing::Test {
 protected:
  Contract() : form_(user().TheToolkit().CreateForm(demo::kForm)) {}
  ~Contract() override { form_.reset(); }

  Backend& user() { return *backend_; }
  Toolkit& toolkit() { return backend_->TheToolkit(); }
  Form& form() { return *form_; }
  void DestroyForm() { form_.reset(); }

  template <class T>
  T& Get(std::string_view name) {
    return form_->Get<T>(name);
  }

  // An event's subscriber that writes a line into the log.
  auto Log(std::string line) {
    return [this, line = std::move(line)](auto&&...) { log_.push_back(line); };
  }
  std::vector<std::string> TakeLog() { return std::exchange(log_, {}); }
  std::vector<std::string> log_;

 private:
  std::unique_ptr<Backend> backend_ = MakeBackend();
  std::unique_ptr<Form> form_;
};

// The form is shown when the test begins.
class ShownContract : public Contract {
 protected:
  ShownContract() { form().Show(); }
};

}  // namespace declarium
