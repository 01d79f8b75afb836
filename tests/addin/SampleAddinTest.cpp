// A spur gear gets into the document of the sample add-in, and the module can ask it back.
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "common/Place.h"
#include "platform/Messages.h"
#include "platform/Modules.h"
#include "quillmar/Conventions.h"
#include "session/Orders.h"

namespace {

namespace platform = quillmar::platform;
using session::Answer;
using session::Orders;

constexpr auto kPatience = std::chrono::seconds(60);

template <typename Function>
Function* Find(const platform::Library& library, const char* name) {
  return reinterpret_cast<Function*>(platform::FindFunction(library.Get(), name));
}

using Reader = int QM_CDECL(const char* key, char* text, int* size);

std::string Read(Reader* reader, const std::string& key) {
  std::vector<char> buffer(65537);
  int size = 65536;
  return reader(key.c_str(), buffer.data(), &size) != 0 ? std::string(buffer.data())
                                                        : std::string();
}

TEST(SampleAddinTest, ACalculationComesBackAsParts) {
  Orders orders("C:\\Vantorel\\Fendrake\\Inputs");
  const auto addin = platform::LoadLibraryAt("C:\\Tests\\SampleAddin.dll").library;
  ASSERT_TRUE(static_cast<bool>(addin));
  const auto connect = Find<int(const char*)>(addin, "ConnectToQuillmar");
  const auto start = Find<void()>(addin, "StartSpurGear");
  const auto disconnect = Find<void()>(addin, "DisconnectFromQuillmar");
  const auto protocolOf = Find<Reader>(addin, "GetProtocol");
  const auto parametersOf = Find<Reader>(addin, "GetParameterList");

  ASSERT_EQ(connect(tools::SystemPath("C:\\Vantorel\\Quillmar\\Quillmar.dll").string().c_str()), 1);
  const std::string order = orders.Write("GEAR1", {}, {{"z1", "20"}});
  start();
  Answer answer;
  std::vector<std::string> missing{"?"};
  const auto begin = std::chrono::steady_clock::now();
  while (!missing.empty() && std::chrono::steady_clock::now() - begin < kPatience) {
    platform::PumpMessages();
    answer = Orders::Read(order);
    missing = answer.protocols;
    std::erase_if(missing, [&](const auto& id) { return !Read(protocolOf, id).empty(); });
    if (answer.result == Answer::Result::Pending) missing = {"?"};
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  ASSERT_EQ(answer.result, Answer::Result::Calculated) << answer.message;
  ASSERT_TRUE(missing.empty()) << missing.front();
  ASSERT_FALSE(answer.protocols.empty());
  for (const std::string& id : answer.protocols) {
    EXPECT_EQ(Read(protocolOf, id).rfind(id + "<@PID>", 0), 0u);
    EXPECT_EQ(Read(parametersOf, id).rfind("*view*,", 0), 0u) << Read(parametersOf, id);
  }
  disconnect();
}

}  // namespace
