#include "addin/TryOut.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <thread>

#include "common/Program.h"
#include "platform/Messages.h"
#include "platform/Modules.h"
#include "quillmar/CadDriver.h"
#include "quillmar/Exports.h"
#include "session/Orders.h"

namespace tools {
namespace {

namespace platform = quillmar::platform;
using session::Answer;
using session::Orders;

constexpr auto kPatience = std::chrono::seconds(30);
constexpr auto kPollInterval = std::chrono::milliseconds(5);
constexpr int kRoom = 1 << 20;

// What an add-in gives at LoginCad; the models of the sample are those of Drawboard.
constexpr int kToolbarCommands = 0x10;
constexpr int kModelFileKind = 1;

Judgement Fail(std::string text) { return {Verdict::Failure, std::move(text)}; }

struct Session {
  Session(const std::string& library, Exports exports, const TryOutPlace& place)
      : addin(std::filesystem::path(library).filename().string()),
        exports(std::move(exports)),
        place(place),
        orders(place.suite + "\\Inputs") {}

  template <typename Function>
  Function* ModuleFunction(const char* name) const {
    return reinterpret_cast<Function*>(platform::FindFunction(module, name));
  }
  // The text that a reader of the add-in has for a protocol; nothing when it refuses.
  std::optional<std::string> Read(const char* reader, const std::string& id) const {
    using Reader = int QM_CDECL(const char*, char*, int*);
    auto* read = reinterpret_cast<Reader*>(exports(reader));
    std::string text(kRoom + 1, '\0');
    int size = kRoom;
    if (read == nullptr || read(id.c_str(), text.data(), &size) == 0) return std::nullopt;
    return text.substr(0, text.find('\0'));
  }

  std::string addin;  // file name
  Exports exports;
  TryOutPlace place;
  Orders orders;
  QmModule module = nullptr;  // kept until the process ends
  bool isLoggedIn = false;
  std::string order;
};

Judgement LoadModule(Session& session) {
  auto loaded = platform::LoadLibraryAt(session.place.module);
  if (!loaded.library) {
    return Fail(fmt::format("{} cannot be loaded (error {})", session.place.module, loaded.error));
  }
  session.module = loaded.library.Release();
  return {Verdict::Ok, session.place.module};
}

Judgement LogIn(Session& session) {
  const auto login = session.ModuleFunction<decltype(LoginCad)>("LoginCad");
  if (login == nullptr) return Fail("there is no LoginCad");
  int status = 0;
  session.isLoggedIn = login(session.addin.c_str(), kToolbarCommands, kModelFileKind, "Drawboard",
                             "dbp", "dbf", "Sample", &status) == 1;
  return session.isLoggedIn ? Judgement() : Fail("gave 0: is a required function missing?");
}

// The user's input goes first: the host asks for it as soon as it shows the calculation.
Judgement Start(Session& session) {
  if (!session.isLoggedIn) return {Verdict::NotTried, "nobody is logged in"};
  session.order = session.orders.Write("GEAR1", {}, {{"z1", "20"}});
  if (session.order.empty()) return Fail("the calculation's input cannot be written");
  session.ModuleFunction<decltype(StartCalculation)>("StartCalculation")("GEAR1", "ISO");
  return {};
}

Judgement WaitForParts(Session& session) {
  if (session.order.empty()) return {Verdict::NotTried, "nothing was calculated"};
  Answer answer;
  std::string missing;
  const auto isThere = [&] {
    platform::PumpMessages();
    answer = Orders::Read(session.order);
    if (answer.result != Answer::Result::Calculated) return false;
    const auto absent = std::ranges::find_if(
        answer.protocols, [&](const auto& id) { return !session.Read("GetProtocol", id); });
    missing = absent == answer.protocols.end() ? "" : *absent;
    return missing.empty();
  };
  const auto start = std::chrono::steady_clock::now();
  while (!isThere()) {
    if (answer.result == Answer::Result::Refused) return Fail(ForUser(answer.message));
    if (std::chrono::steady_clock::now() - start > kPatience) {
      return Fail(missing.empty() ? "the calculation has not ended"
                                  : "the add-in does not know " + ForUser(missing));
    }
    std::this_thread::sleep_for(kPollInterval);
  }
  Judgement judgement{Verdict::Ok, Counted(answer.protocols.size(), "part")};
  for (const std::string& id : answer.protocols) {
    judgement.details.push_back(
        fmt::format("{}: reference text of {} characters, parameters {}", ForUser(id),
                    session.Read("GetProtocol", id)->size(),
                    ForUser(session.Read("GetParameterList", id).value_or("(none)"))));
  }
  return judgement;
}

Judgement LogOut(Session& session) {
  if (!session.isLoggedIn) return {Verdict::NotTried, "nobody is logged in"};
  session.ModuleFunction<decltype(LogoutCad)>("LogoutCad")();
  return {};
}

}  // namespace

std::vector<Step> TryOutSteps(const std::string& library, const Exports& exports,
                              const TryOutPlace& place) {
  const auto session = std::make_shared<Session>(library, exports, place);
  const auto step = [&](const char* name, Judgement (*run)(Session&)) {
    return Step{name, Verdict::Failure, [session, run] { return run(*session); }};
  };
  return {step("The module is loaded", LoadModule), step("LoginCad finds the add-in", LogIn),
          step("StartCalculation starts a spur gear", Start),
          step("The gear's parts stand in the add-in", WaitForParts), step("LogoutCad", LogOut)};
}

}  // namespace tools
