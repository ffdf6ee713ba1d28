#include "host/com/posted_calls.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <vector>

namespace declarium::com {
namespace {

void HandleMessages() {
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
}

TEST(PostedCalls, RunInOrderFromTheMessageLoop) {
  Boundary boundary;
  PostedCalls calls(boundary);
  std::vector<int> run;
  calls.Post([&] { run.push_back(1); });
  calls.Post([&] { run.push_back(2); });
  EXPECT_TRUE(run.empty());
  HandleMessages();
  EXPECT_EQ(run, (std::vector{1, 2}));
}

TEST(PostedCalls, ExceptionOfOneEndsNeitherTheLoopNorTheNext) {
  Boundary boundary;
  PostedCalls calls(boundary);
  int reports = 0;
  boundary.SetReport([&](const std::exception_ptr&) { ++reports; });
  bool next = false;
  calls.Post([] { throw std::runtime_error("a call that fails"); });
  calls.Post([&] { next = true; });
  EXPECT_NO_THROW(HandleMessages());
  EXPECT_TRUE(next);
  EXPECT_EQ(reports, 1);
}

}  // namespace
}  // namespace declarium::com
