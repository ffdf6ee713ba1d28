#include "audit/edit_order.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "audit/audited.h"

namespace declarium::audit {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::size_t> OrderOf(const Files& files) {
  return ModulesInOrder(Audited(files).audit);
}

constexpr const char* kUse = "Sub Run()\r\n  Debug.Print N\r\nEnd Sub\r\n";

TEST(ModulesInOrder, AreThoseWithEdits) {
  EXPECT_THAT(OrderOf({{"A", kUse}, {"B", "Private Const OLD = 1\r\n"}}), ElementsAre(1U));
  EXPECT_THAT(OrderOf({{"A", kUse}}), IsEmpty());
}

TEST(ModulesInOrder, WhatStandsForOthersComesBeforeTheyGo) {
  // The only standard module is the last.
  EXPECT_THAT(OrderOf({{"A", std::string("Private Const N = 1\r\n") + kUse, vb::ModuleKind::kClass},
                       {"B", std::string("Private Const N = 1\r\n") + kUse, vb::ModuleKind::kForm},
                       {"C", std::string("Private Const N = 1\r\n") + kUse}}),
              ElementsAre(2U, 0U, 1U));
}

TEST(ModulesInOrder, WhoUsesSomethingGoesBeforeIt) {
  EXPECT_THAT(OrderOf({{"A", "Public Const X = 1\r\n"},
                       {"B", "Public Const Y = X\r\n"},
                       {"C", "Public Const Z = Y\r\n"}}),
              ElementsAre(2U, 1U, 0U));
}

TEST(ModulesInOrder, ModulesThatWaitForEachOtherComeOnce) {
  EXPECT_THAT(OrderOf({{"A", "Public Const X = 1\r\nPublic Const Z = Y\r\n"},
                       {"B", "Public Const Y = X\r\n"},
                       {"C", "Private Const OLD = 1\r\n"}}),
              ElementsAre(1U, 0U, 2U));
}

TEST(ModulesInOrder, AChainOfAllModulesIsNoRecursion) {
  Files files;
  constexpr int kModules = 20000;
  for (int i = 0; i < kModules; ++i) {
    const auto next = i + 1 < kModules ? "N" + std::to_string(i + 1) : std::string("1");
    files.push_back(
        {"M" + std::to_string(i), "Public Const N" + std::to_string(i) + " = " + next + "\r\n"});
  }
  const auto order = OrderOf(files);
  ASSERT_EQ(order.size(), files.size());
  for (std::size_t i = 0; i < order.size(); ++i) ASSERT_EQ(order[i], i);
}

}  // namespace
}  // namespace declarium::audit
