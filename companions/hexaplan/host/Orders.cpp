#include "hexaplan/host/Orders.h"

#include "platform/Files.h"
#include "platform/Profile.h"
#include "platform/System.h"

namespace hexaplan {

namespace {

namespace platform = quillmar::platform;

constexpr int kMostOrders = 10000;
constexpr std::size_t kValueSize = 1024;

bool Fits(const std::string& wanted, const std::string& text) {
  return wanted.empty() || platform::EqualsNoCase(wanted, text);
}

std::string Value(const std::string& file, const char* section, const std::string& key) {
  return platform::ReadProfileText(file, section, key, "", kValueSize);
}

// The keys of a section.
std::vector<std::string> Keys(const std::string& file, const char* section) {
  std::string buffer(4096, '\0');
  std::size_t length = 0;
  for (;;) {
    length = platform::GetProfileText(file, section, nullptr, "", buffer.data(), buffer.size());
    if (length + 2 < buffer.size()) break;
    buffer.assign(buffer.size() * 2, '\0');
  }
  std::vector<std::string> keys;
  for (std::size_t place = 0; place < length;) {
    keys.emplace_back(buffer.c_str() + place);
    place += keys.back().size() + 1;
  }
  return keys;
}

}  // namespace

std::optional<Order> Orders::Find(const std::string& dataFileType,
                                  const std::string& protocolId) const {
  for (int number = 1; number <= kMostOrders; ++number) {
    Order order;
    order.file = folder + "\\" + std::to_string(number) + ".ini";
    if (!platform::FileExists(order.file)) return std::nullopt;
    if (!Value(order.file, "Answer", "Result").empty()) continue;
    if (!Fits(Value(order.file, "Calculation", "DataFile"), dataFileType)) continue;
    if (!Fits(Value(order.file, "Calculation", "Protocol"), protocolId)) continue;
    for (const std::string& key : Keys(order.file, "Inputs")) {
      order.fields.emplace_back(key, Value(order.file, "Inputs", key));
    }
    return order;
  }
  return std::nullopt;
}

void Orders::AnswerCalculated(const Order& order, int code, const std::string& protocols) const {
  const std::string text = std::to_string(code);
  platform::WriteProfileText(order.file, "Answer", "Code", text.c_str());
  platform::WriteProfileText(order.file, "Answer", "Protocols", protocols.c_str());
  platform::WriteProfileText(order.file, "Answer", "Result", "Calculated");
}

void Orders::AnswerRefused(const Order& order, const std::string& message) const {
  platform::WriteProfileText(order.file, "Answer", "Message", message.c_str());
  platform::WriteProfileText(order.file, "Answer", "Result", "Refused");
}

}  // namespace hexaplan
