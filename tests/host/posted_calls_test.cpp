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
  PostedCalls calls;
  std::vector<int> run;
  calls.Post([&] { run.push_back(1); });
  calls.Post([&] { run.push_back(2); });
  EXPECT_TRUE(run.empty());
  HandleMessages();
  EXPECT_EQ(run, (std::vector{1, 2}));
}

TEST(PostedCalls, ExceptionOfOneEndsNeitherTheLoopNorTheNext) {
  PostedCalls calls;
  bool next = false;
  calls.Post([] { throw std::runtime_error("a call that fails"); });
  calls.Post([&] { next = true; });
  EXPECT_NO_THROW(HandleMessages());
  EXPECT_TRUE(next);
}

}  // namespace
}  // namespace declarium::com
