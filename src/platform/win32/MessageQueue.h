// The message queue of the calling thread.
#pragma once

#include <optional>

namespace quillmar::platform::win32 {

// Dispatches messages on behalf of a host whose own loop is waiting. A request to quit is meant
// for that loop: it is kept while this object lives and posted again when it is destroyed.
class MessageQueue {
 public:
  MessageQueue() = default;
  ~MessageQueue();
  MessageQueue(const MessageQueue&) = delete;
  MessageQueue& operator=(const MessageQueue&) = delete;

  // Removes and dispatches every queued message.
  void Pump();

 private:
  std::optional<int> quitCode;
};

}  // namespace quillmar::platform::win32
