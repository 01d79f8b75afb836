#include "HostSide.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "Machine.h"
#include "host/HostBrain.h"
#include "platform/Messages.h"
#include "platform/Processes.h"
#include "quillmar/CalculationHost.h"

namespace quillmar::contract {

using platform::AutomationType;

HostSide HostSide::Start() {
  if (!Runs()) {
    auto process = platform::StartProgram({kCadFolder + "\\" QM_HOST_PROGRAM, "", "",
                                           platform::ShowMode::MinimizedWithoutActivation});
    EXPECT_TRUE(process.has_value());
    if (process) process->WaitUntilIdle();
  }
  HostSide side = Attach();
  side.Forget();
  return side;
}

HostSide HostSide::Attach() {
  platform::InitializeAutomation();
  HostSide side;
  // A process of its own registers its object a moment after it became idle.
  for (int i = 0; i < 100 && !side.host; ++i) {
    if (i > 0) std::this_thread::sleep_for(std::chrono::milliseconds(50));
    side.host = platform::FindActiveObject(QM_HOST_CLASS_ID);
  }
  EXPECT_TRUE(side.host) << "the host did not start";
  return side;
}

bool HostSide::Runs() {
  platform::InitializeAutomation();
  return platform::FindActiveObject(QM_HOST_CLASS_ID) != nullptr;
}

platform::AutomationResult HostSide::Control(int method,
                                             const platform::AutomationArguments& arguments,
                                             AutomationType result) const {
  if (!host) return {};
  platform::AutomationResult answer = host->Call(method, arguments, result);
  EXPECT_EQ(answer.status, platform::AutomationStatus::Done) << "control " << method;
  return answer;
}

void HostSide::Answer(const std::string& key, const std::string& answer) {
  Control(strict::kHostSetAnswer, {key, answer}, AutomationType::None);
}

void HostSide::Forget() { Control(strict::kHostForget, {}, AutomationType::None); }

std::vector<std::string> HostSide::Calls() const {
  std::vector<std::string> calls;
  const auto count = Control(strict::kHostCallCount, {}, AutomationType::Int);
  if (count.status != platform::AutomationStatus::Done) return calls;
  for (int i = 0; i < std::get<int>(count.value); ++i) {
    const auto call = Control(strict::kHostCall, {i}, AutomationType::Text);
    if (call.status != platform::AutomationStatus::Done) break;
    const auto& text = std::get<std::string>(call.value);
    if (text != std::to_string(QM_HOST_IS_READY) + "()") calls.push_back(text);
  }
  return calls;
}

std::vector<std::string> HostSide::Commands() const {
  const std::vector<std::string> calls = Calls();
  const auto isCallOf = [&](std::size_t at, int method) {
    return at < calls.size() && calls[at].rfind(std::to_string(method) + "(", 0) == 0;
  };
  std::vector<std::string> commands;
  for (std::size_t at = 0; at < calls.size();) {
    std::size_t end = at;
    for (const int optional :
         {QM_HOST_SET_CAD_WINDOW, QM_HOST_SET_CAD_SPECIFIC, QM_HOST_SETTINGS_NAME}) {
      if (isCallOf(end, optional)) ++end;
    }
    if (isCallOf(end, QM_HOST_SHOW_FLAG) && isCallOf(end + 1, QM_HOST_SESSION)) {
      at = end + (isCallOf(end + 2, QM_HOST_SET_SMART_MODE) ? 3 : 2);
    } else {
      commands.push_back(calls[at++]);
    }
  }
  return commands;
}

std::string HostSide::Violations() const {
  const auto answer = Control(strict::kHostViolations, {}, AutomationType::Text);
  if (answer.status != platform::AutomationStatus::Done) return "the host cannot be asked";
  return std::get<std::string>(answer.value);
}

void HostSide::Announce(int code, const std::string& protocolList) {
  const auto told = Control(strict::kHostFinish, {code, protocolList}, AutomationType::Int);
  if (told.status == platform::AutomationStatus::Done) {
    EXPECT_EQ(std::get<int>(told.value), 1) << "the host knows no callback window";
  }
}

void HostSide::Finish(int code, const std::string& protocolList) {
  Announce(code, protocolList);
  platform::PumpMessages();
}

void HostSide::SetJournal(std::uint32_t window) {
  Control(strict::kHostSetJournal, {static_cast<int>(window)}, AutomationType::None);
}

void HostSide::End() { host->Call(strict::kHostEnd, {}, AutomationType::None); }

}  // namespace quillmar::contract
