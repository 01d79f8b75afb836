#include "core/EntryCall.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "core/Journal.h"
#include "quillmar/Storage.h"

namespace quillmar::strict {
namespace {

constexpr std::size_t kGrowingStep = 1024;
// Fills what a caller must not look at. No text holds it, and it is no blank.
constexpr char kScribble = '\xA5';

}  // namespace

EntryCall::EntryCall(const char* function)
    : function(function), entry(Journal::Instance().Begin(function)) {
  const std::string* answer = Journal::Instance().Answer(function);
  if (answer != nullptr && std::atoi(answer->c_str()) == 0) sound = false;
  if (Journal::Instance().Refused(entry)) sound = false;
}

EntryCall::~EntryCall() { Journal::Instance().End(entry, result); }

Protocol* EntryCall::Named(const char* id) {
  const std::string text = Text(id);
  if (text.size() > QM_NEW_PROTOCOL_BLANKS) sound = false;
  Store::Instance().ExpireLists(text);
  Protocol* protocol = Store::Instance().Find(text);
  if (protocol == nullptr) sound = false;
  return protocol;
}

Protocol* EntryCall::Opened(const char* id) {
  Protocol* protocol = Named(id);
  if (protocol == nullptr) return nullptr;
  if (protocol->state != Protocol::State::Open) sound = false;
  return protocol;
}

std::string EntryCall::Text(const char* text) {
  if (text == nullptr) {
    Note("(null)");
    Violate("null text");
    return {};
  }
  Note(text);
  return text;
}

void EntryCall::Number(int number) { Note(std::to_string(number)); }

bool EntryCall::Output(const void* output) {
  Note(output == nullptr ? "(null)" : "out");
  if (output == nullptr) Violate("null output");
  return output != nullptr;
}

void EntryCall::Growing(std::initializer_list<char*> buffers) {
  for (char* buffer : buffers) {
    if (buffer == nullptr) {
      Note("(null)");
      Violate("null growing buffer");
      continue;
    }
    const std::size_t length = std::strlen(buffer);
    Note(std::string("[").append(std::to_string(length)).append("]"));
    if (length == 0 || length % kGrowingStep != 0 ||
        std::count(buffer, buffer + length, ' ') != static_cast<std::ptrdiff_t>(length)) {
      Violate("a growing buffer is not a multiple of 1024 blanks");
    } else if (!growing.empty() && length != capacity) {
      Violate("growing buffers of one call differ in length");
    }
    growing.push_back(buffer);
    capacity = length;
  }
}

std::string EntryCall::IdentifierBuffer(char* buffer) {
  const std::string id = Text(buffer);
  if (buffer != nullptr) buffer[QM_PROTOCOL_ID_BUFFER - 1] = '\0';
  if (id.size() > QM_NEW_PROTOCOL_BLANKS) sound = false;
  Store::Instance().ExpireLists(id);
  return id;
}

void EntryCall::Note(const std::string& argument) {
  Journal::Instance().AddArgument(entry, argument);
}

void EntryCall::Violate(const std::string& promise) {
  sound = false;
  Journal::Instance().Violate(function, promise);
}

short EntryCall::Accept(short value) { return static_cast<short>(result = value); }

short EntryCall::Fill(std::initializer_list<std::string> values) {
  auto buffer = growing.begin();
  for (const std::string& value : values) {
    const std::size_t length = std::min(value.size(), capacity);
    std::memcpy(*buffer, value.data(), length);
    std::memset(*buffer + length, kScribble, capacity - length);
    (*buffer)[length] = '\0';
    (*buffer)[capacity] = '\0';
    ++buffer;
  }
  return Accept();
}

short EntryCall::Refuse(short value) { return static_cast<short>(result = value); }

int EntryCall::Count(int count) { return result = count; }

void WriteIdentifier(char* buffer, const std::string& id) {
  std::memset(buffer, kScribble, QM_PROTOCOL_ID_BUFFER);
  std::memcpy(buffer, id.c_str(), id.size() + 1);
  buffer[QM_PROTOCOL_ID_BUFFER - 1] = '\0';
}

}  // namespace quillmar::strict
