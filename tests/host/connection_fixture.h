// The stand-in IDE and the probe, registered for the tests of one program.
#pragma once

#include <gtest/gtest.h>
#include <string>

#include "host/ide_driver.h"

namespace declarium {

inline const std::string kConnect = "connect Declarium.Probe";
inline const std::string kDisconnect = "disconnect Declarium.Probe";
inline const std::string kText = "Private Const A = 5";

inline std::wstring Probe(const wchar_t* arguments) {
  return L"\"" + Beside(L"addin_probe.exe").wstring() + L"\" " + arguments;
}

class Connection : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    std::string output;
    ASSERT_EQ(RunProgram(Probe(L"/RegServer:machine"), output), 0) << output;
    ASSERT_EQ(IdeProcess().Tell("interfaces on"), "ok");
  }
  static void TearDownTestSuite() {
    IdeProcess().Tell("interfaces off");
    std::string output;
    EXPECT_EQ(RunProgram(Probe(L"-unregserver:MACHINE"), output), 0) << output;
  }

  // No probe of one test serves the next.
  void TearDown() override {
    EXPECT_TRUE(log_.Lines().empty() || log_.Comes("end")) << "the add-in's process stays";
  }

  void OpenModule(IdeProcess& ide, const std::string& text) {
    ASSERT_EQ(ide.Tell("project Project1"), "ok");
    ASSERT_EQ(ide.Tell("component Project1 Module1 1"), "ok");
    ASSERT_EQ(ide.Tell("text Module1 " + text), "ok");
    ASSERT_EQ(ide.Tell("select Module1"), "ok");
  }

  // Connects, answers the insertion's question and clicks the button; the module's text afterwards.
  std::string InsertInto(IdeProcess& ide, const std::string& answer) {
    log_.Set(".text", kText);
    log_.Set(".answer", answer);
    EXPECT_EQ(ide.Tell(kConnect), "ok");
    EXPECT_EQ(ide.Tell("click Standard"), "ok");
    EXPECT_TRUE(log_.Comes(answer == "yes" ? "inserted" : "insert declined"));
    const std::string lines = ide.Tell("lines Module1");
    EXPECT_EQ(ide.Tell(kDisconnect), "ok");
    return lines;
  }

  ProbeLog log_;
};

}  // namespace declarium
