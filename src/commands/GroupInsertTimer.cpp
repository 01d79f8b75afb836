#include "commands/GroupInsertTimer.h"

#include <utility>

#include "commands/GroupScans.h"
#include "platform/Messages.h"
#include "quillmar/CalculationHost.h"

namespace quillmar {
namespace {

constexpr std::chrono::milliseconds kDelay{500};

}  // namespace

GroupInsertTimer::GroupInsertTimer(const CommandContext& owner, CallbackDispatcher& target)
    : context(owner), dispatcher(target) {}

std::uintptr_t GroupInsertTimer::Arm() {
  // The old one goes last: the system would give its identifier to the new one.
  const std::uintptr_t replaced = armed;
  armed = platform::StartTimer(kDelay, [this](std::uintptr_t timer) { OnExpired(timer); });
  if (replaced != 0) platform::StopTimer(replaced);
  return armed;
}

void GroupInsertTimer::Stop() {
  if (armed != 0) platform::StopTimer(std::exchange(armed, 0));
}

void GroupInsertTimer::OnExpired(std::uintptr_t timer) {
  if (timer != armed) return;
  armed = 0;
  try {
    InsertNext();
  } catch (...) {
    context.services.errors.ReportException("Timed insert", QM_HERE);
  }
}

// The field moves on first: the insert may let the group manager in, which asks for the next one.
void GroupInsertTimer::InsertNext() {
  const std::string object = context.state.nextGroupObject;
  FindNextGroupObject(context);
  dispatcher.Dispatch(QM_CALLBACK_NEW_PART, object);
}

}  // namespace quillmar
