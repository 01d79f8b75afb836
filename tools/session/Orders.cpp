#include "session/Orders.h"

#include <algorithm>

#include "drawboard/DriveFiles.h"
#include "platform/Files.h"
#include "platform/Profile.h"

namespace session {
namespace {

namespace platform = quillmar::platform;

constexpr std::size_t kValueSize = 4096;

std::string ReadAnswer(const std::string& order, const char* key) {
  return platform::ReadProfileText(order, "Answer", key, "", kValueSize);
}

bool IsOrder(const std::string& fileName) {
  const auto dot = fileName.find('.');
  return dot != 0 && fileName.substr(dot == std::string::npos ? 0 : dot) == ".ini" &&
         std::all_of(fileName.begin(), fileName.begin() + static_cast<long>(dot),
                     [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

Orders::Orders(std::string folder) : folder(std::move(folder)) {
  for (const std::string& name : drawboard::FilesOf(this->folder)) {
    if (IsOrder(name)) platform::RemoveFile(this->folder + "\\" + name);
  }
}

std::string Orders::Write(const std::string& calculation, const std::string& protocolId,
                          const Inputs& inputs) {
  std::string text = "[Calculation]\r\nDataFile=" + calculation + "\r\n";
  if (!protocolId.empty()) text += "Protocol=" + protocolId + "\r\n";
  text += "\r\n[Inputs]\r\n";
  for (const auto& [name, value] : inputs) text += name + "=" + value + "\r\n";
  const std::string path = folder + "\\" + std::to_string(last + 1) + ".ini";
  if (!drawboard::WriteWholeFile(path, text)) return {};
  ++last;
  return path;
}

Answer Orders::Read(const std::string& order) {
  Answer answer;
  const std::string result = ReadAnswer(order, "Result");
  if (result == "Refused") {
    answer.result = Answer::Result::Refused;
    answer.message = ReadAnswer(order, "Message");
  } else if (result == "Calculated") {
    answer.result = Answer::Result::Calculated;
    std::string list = ReadAnswer(order, "Protocols");
    while (!list.empty()) {
      const auto cut = std::min(list.find(','), list.size());
      if (cut > 0) answer.protocols.push_back(list.substr(0, cut));
      list.erase(0, cut + 1);
    }
  }
  return answer;
}

}  // namespace session
