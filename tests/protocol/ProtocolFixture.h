// Protocol objects on the real storage and link libraries, with what they report.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/Profile.h"
#include "protocol/VXProtocol.h"
#include "support/DebuggerOutput.h"
#include "support/TestMachine.h"

namespace quillmar {

class ProtocolFixture : public ::testing::Test {
 protected:
  ProtocolFixture() {
    machine.Install("Keelcomm.dll", machine.Folder());
    machine.Install("Keellink.dll", machine.Folder());
    platform::WriteProfileText("Afx.ini", "Diagnostics", "TraceEnabled", "1");
    EXPECT_TRUE(libraries.Load(machine.Folder(), "Test"));
    debugger.Take();
  }
  ~ProtocolFixture() override {
    platform::WriteProfileText("Afx.ini", "Diagnostics", "TraceEnabled", nullptr);
    libraries.Free();
  }

  // First lines of the reports since the last call.
  std::vector<std::string> Reports() {
    std::vector<std::string> messages;
    for (const std::string& report : debugger.Take()) {
      messages.push_back(report.substr(0, report.find('\n')));
    }
    return messages;
  }

  // A new protocol that is closed again.
  std::string Stored() {
    VXProtocol protocol(context);
    EXPECT_EQ(protocol.CreateNew(), 1);
    return protocol.GetProtocolID();
  }

  TestMachine machine;
  DebuggerOutput debugger;
  ErrorLog errors;
  WindowActivator activator;
  ProtocolLibraries libraries;
  ProtocolContext context{libraries.Storage(), libraries.Links(), errors, activator};
};

using Messages = std::vector<std::string>;

}  // namespace quillmar
