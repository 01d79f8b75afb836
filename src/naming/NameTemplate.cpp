#include "naming/NameTemplate.h"

#include <string_view>
#include <utility>

#include "platform/System.h"

namespace quillmar {
namespace {

constexpr char kSign = '%';
constexpr std::string_view kBlanks = " \t\n\v\f\r";

void TrimEnd(std::string& text, std::size_t from) {
  const auto last = text.find_last_not_of(kBlanks);
  const std::size_t end = last == std::string::npos ? 0 : last + 1;
  text.resize(end > from ? end : from);
}

// The text is held in two pieces: what is done, in which no pair of signs is left, and what still
// has to be looked at. So every token is filled in where the reading stands, and a long template
// is not moved about for each of them.
class Expansion {
 public:
  Expansion(std::string text, const TokenValue& valueOf)
      : pending(std::move(text)), valueOf(valueOf) {
    done.reserve(pending.size());
  }

  std::string Run() {
    while (FillIn()) {
    }
    done.append(pending, next, std::string::npos);
    return std::move(done);
  }

 private:
  // Replaces the first token of what is pending; false when there is none or a bound is reached.
  bool FillIn() {
    const auto opening = pending.find(kSign, next);
    if (opening == std::string::npos) return false;
    const auto closing = pending.find(kSign, opening + 1);
    if (closing == std::string::npos) return false;

    token.assign(pending, opening + 1, closing - opening - 1);
    std::string value = valueOf(token);
    done.append(pending, next, opening - next);
    next = closing + 1;
    if (value.empty() && platform::EqualsNoCase(token, "subtype")) TrimWholeText();
    if (value.find(kSign) == std::string::npos) {
      done += value;
      return nestedValues == 0 || done.size() <= kMaxNestedLength;
    }
    return LookAtAgain(std::move(value));
  }

  // A value with signs of its own is looked at together with what follows.
  bool LookAtAgain(std::string value) {
    value.append(pending, next, std::string::npos);
    pending = std::move(value);
    next = 0;
    return ++nestedValues < kMaxNestedValues && done.size() + pending.size() <= kMaxNestedLength;
  }

  void TrimWholeText() {
    TrimEnd(pending, next);
    if (pending.size() == next) TrimEnd(done, 0);
  }

  std::string done;
  std::string pending;
  std::string token;
  std::size_t next = 0;  // where `pending` still has to be read from
  int nestedValues = 0;
  const TokenValue& valueOf;
};

}  // namespace

std::string ExpandNameTemplate(std::string text, const TokenValue& valueOf) {
  return Expansion(std::move(text), valueOf).Run();
}

}  // namespace quillmar
