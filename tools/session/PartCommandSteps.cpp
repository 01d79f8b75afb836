// The user's commands on the part that he has selected: update, copy, replace.
#include <fmt/format.h>

#include "drawboard/CodePage.h"
#include "session/Session.h"

namespace session {
namespace {

using drawboard::ToUtf8;

// Of CallUTFunction.
constexpr int kReplaceSelected = 2;
constexpr int kUpdateSelected = 4;
constexpr int kCopySelected = 5;

}  // namespace

void Session::CommandSelected(const std::string& stepName, int command) {
  for (const std::string& object : started[stepName].objects) Obtain(object);
  Select(stepName);
  Call("CallUTFunction", std::to_string(command),
       [&] { return module->call.CallUTFunction(command); });
}

void Session::Perform(const Update& update) {
  const Started calculation = started[update.name];
  const DocumentJson before = Document();
  const std::string order = Order(calculation.calculation,
                                  ProtocolOf(before, calculation.objects.front()), update.inputs);
  CommandSelected(update.name, kUpdateSelected);
  AwaitAnswer(order);
  AwaitChanges(before, calculation.objects);
  Done(fmt::format("\"{}\" is updated by a command; changed in the CAD are {}", ToUtf8(update.name),
                   ListOf(calculation.objects)));
  Leave(calculation.calculation, calculation.objects, false);
}

void Session::Perform(const Copy& copy) {
  const std::string calculation = started[copy.of].calculation;
  if (const Names standing = Standing(copy.objects); !standing.empty()) {
    return Recalculate(calculation, standing, copy.inputs);
  }
  const std::string order = Order(calculation, {}, copy.inputs);
  CommandSelected(copy.of, kCopySelected);
  AwaitParts(calculation, order);
}

void Session::Perform(const Replace& replace) {
  const Started replaced = started[replace.of];
  if (const Names standing = Standing(replace.objects); !standing.empty()) {
    return Recalculate(replaced.calculation, standing, replace.inputs);
  }
  const DocumentJson before = Document();
  const std::string object = replaced.objects.front();
  const std::string order = Order(replaced.calculation, {}, replace.inputs);
  CommandSelected(replace.of, kReplaceSelected);
  AwaitAnswer(order);
  AwaitChanges(before, replaced.objects);
  Done(fmt::format("The protocol {} of \"{}\" is replaced by {}", ProtocolOf(before, object),
                   object, ProtocolOf(Document(), object)));
  Leave(replaced.calculation, replaced.objects, false);
}

}  // namespace session
