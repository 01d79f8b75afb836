#include "core/Journal.h"

#include "core/Store.h"

namespace quillmar::strict {

Journal& Journal::Instance() {
  static Journal& journal = *new Journal;
  return journal;
}

void Journal::Reset() {
  entries.clear();
  violations.clear();
  answers.clear();
  visitor = nullptr;
  caller = {};
}

int Journal::Begin(const std::string& function) {
  if (caller == std::thread::id()) caller = std::this_thread::get_id();
  if (caller != std::this_thread::get_id()) Violate(function, "called on another thread");
  entries.push_back({function, {}, 0, false});
  const int call = CallCount() - 1;
  if (visitor != nullptr && visitor(function.c_str()) != 0) {
    entries[static_cast<std::size_t>(call)].refused = true;
  }
  return call;
}

void Journal::AddArgument(int call, const std::string& text) {
  if (At(call) != nullptr) entries[static_cast<std::size_t>(call)].arguments.push_back(text);
}

void Journal::End(int call, int result) {
  if (At(call) != nullptr) entries[static_cast<std::size_t>(call)].result = result;
}

void Journal::Violate(const std::string& function, const std::string& promise) {
  violations.push_back(function + ": " + promise);
}

void Journal::SetAnswer(const std::string& key, const char* answer) {
  if (answer == nullptr) {
    answers.erase(key);
  } else {
    answers[key] = answer;
  }
}

const std::string* Journal::Answer(const std::string& key) const {
  const auto found = answers.find(key);
  return found == answers.end() ? nullptr : &found->second;
}

const JournalEntry* Journal::At(int call) const {
  return call >= 0 && call < CallCount() ? &entries[static_cast<std::size_t>(call)] : nullptr;
}

}  // namespace quillmar::strict

using quillmar::strict::Journal;
using quillmar::strict::JournalEntry;
using quillmar::strict::Store;

#define STRICT_DECLARE(name, result, parameters, arguments) \
  QM_EXTERN_C QM_EXPORT result QM_CDECL name parameters;
STRICT_CORE_FUNCTIONS(STRICT_DECLARE)
#undef STRICT_DECLARE

namespace {

const char* Shown(const char* text) { return text == nullptr ? "(null)" : text; }

}  // namespace

void Strict_Reset() {
  Journal::Instance().Reset();
  Store::Instance().Reset();
}

int Strict_BeginCall(const char* function) { return Journal::Instance().Begin(Shown(function)); }

void Strict_AddArgument(int call, const char* text) {
  Journal::Instance().AddArgument(call, Shown(text));
}

void Strict_EndCall(int call, int result) { Journal::Instance().End(call, result); }

void Strict_Violate(const char* function, const char* promise) {
  Journal::Instance().Violate(Shown(function), Shown(promise));
}

int Strict_CallCount() { return Journal::Instance().CallCount(); }

const char* Strict_CallFunction(int call) {
  const JournalEntry* entry = Journal::Instance().At(call);
  return entry == nullptr ? nullptr : entry->function.c_str();
}

int Strict_CallArgumentCount(int call) {
  const JournalEntry* entry = Journal::Instance().At(call);
  return entry == nullptr ? 0 : static_cast<int>(entry->arguments.size());
}

const char* Strict_CallArgument(int call, int argument) {
  if (argument < 0 || argument >= Strict_CallArgumentCount(call)) return nullptr;
  return Journal::Instance().At(call)->arguments[static_cast<std::size_t>(argument)].c_str();
}

int Strict_CallResult(int call) {
  const JournalEntry* entry = Journal::Instance().At(call);
  return entry == nullptr ? 0 : entry->result;
}

int Strict_ViolationCount() { return static_cast<int>(Journal::Instance().Violations().size()); }

const char* Strict_Violation(int violation) {
  if (violation < 0 || violation >= Strict_ViolationCount()) return nullptr;
  return Journal::Instance().Violations()[static_cast<std::size_t>(violation)].c_str();
}

void Strict_SetAnswer(const char* key, const char* answer) {
  Journal::Instance().SetAnswer(Shown(key), answer);
}

void Strict_SetVisitor(StrictVisitor visitor) { Journal::Instance().SetVisitor(visitor); }

int Strict_CallRefused(int call) { return Journal::Instance().Refused(call) ? 1 : 0; }

const char* Strict_Answer(const char* key) {
  const std::string* answer = Journal::Instance().Answer(Shown(key));
  return answer == nullptr ? nullptr : answer->c_str();
}

void Strict_HoldByCalculation(const char* protocolId, QmWindow window) {
  Store::Instance().HoldByCalculation(Shown(protocolId), window);
}

void Strict_SetDataFile(const char* protocolId, const char* name) {
  Store::Instance().Make(Shown(protocolId)).texts["DataFile"] = Shown(name);
}

int Strict_OpenProtocols() { return Store::Instance().OpenCount(); }

int Strict_StoredProtocols() { return Store::Instance().StoredCount(); }
