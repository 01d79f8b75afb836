// A second process on the test machine: does what its input says and answers each line.
//
//   SuiteClient <folder of the suite>
//
// Words of a line are separated by tabs: open ID, close ID, state ID, put ID SECTION KEYWORD VALUE,
// get ID SECTION KEYWORD, link ID NAME TEXT, lead ID NAME ID, links ID, post NUMBER VALUE TEXT,
// subscribe, wait (for notifications). An answer is the result, or the text that was read.
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "companions/Suite.h"
#include "platform/Messages.h"

namespace {

using quillmar::test::Growing;
using quillmar::test::Suite;
using Words = std::vector<std::string>;

std::vector<std::string> received;

int QM_CDECL Receive(void* context, int number, int value, const char* text) {
  std::ostringstream line;
  line << number << ' ' << value << ' ' << text;
  const auto* suite = static_cast<const Suite*>(context);
  const auto parameter = suite->Get(text, "TessioCallParam", "MeasuredValue");
  if (parameter) line << ' ' << *parameter;
  received.push_back(line.str());
  return 1;
}

// The first notifications that come in, within five seconds.
std::string Wait() {
  for (int i = 0; i < 500 && received.empty(); ++i) {
    quillmar::platform::PumpMessages();
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  std::string all;
  for (const std::string& line : received) all += line + ";";
  received.clear();
  return all;
}

// Incoming and outgoing links as "<first><<second> " and "<first>><second> ".
std::string Links(const Suite& suite, const std::string& id) {
  std::string all;
  for (int i = 1; i <= suite.links.Link_GetLinksFromCount(id.c_str()); ++i) {
    Growing first, second;
    suite.links.Link_GetLinkFrom(id.c_str(), i, first, second, nullptr, nullptr);
    all += first.Text() + "<" + second.Text() + " ";
  }
  for (int i = 1; i <= suite.links.Link_GetLinksToCount(id.c_str()); ++i) {
    Growing first, second;
    suite.links.Link_GetLinkTo(id.c_str(), i, first, second);
    all += first.Text() + ">" + second.Text() + " ";
  }
  return all;
}

// Logs in too: only then other processes reach this one.
int Subscribe(Suite& suite) {
  int result = 0;
  if (suite.ipc.LoginToCom(1, nullptr, "SuiteClient.exe", 0, &result) == 0) return 0;
  return suite.ipc.Tessio_Subscribe(&Receive, &suite);
}

std::string Answer(Suite& suite, const Words& words) {
  const std::string& what = words[0];
  const auto word = [&words](std::size_t i) { return i < words.size() ? words[i] : ""; };
  const std::string id = word(1);
  if (what == "open") return std::to_string(suite.Open(id));
  if (what == "close") return std::to_string(suite.Close(id));
  if (what == "state") return std::to_string(suite.storage.Com_IsProtocolExists(id.c_str()));
  if (what == "put") {
    return std::to_string(suite.Put(id, word(2).c_str(), word(3).c_str(), word(4).c_str()));
  }
  if (what == "get") return suite.Get(id, word(2).c_str(), word(3).c_str()).value_or("(none)");
  if (what == "link") {
    return std::to_string(
        suite.links.Link_SetLinkFrom(id.c_str(), word(2).c_str(), word(3).c_str()));
  }
  if (what == "lead") {
    return std::to_string(suite.links.Link_SetLinkTo(id.c_str(), word(2).c_str(), word(3).c_str()));
  }
  if (what == "links") return Links(suite, id);
  if (what == "subscribe") return std::to_string(Subscribe(suite));
  if (what == "wait") return Wait();
  if (what == "post") {
    return std::to_string(suite.ipc.SendModelessMessage(
        std::atoi(id.c_str()), std::atoi(word(2).c_str()), word(3).c_str()));
  }
  return "?";
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount != 2) return 2;
  Suite suite(arguments[1]);
  for (std::string line; std::getline(std::cin, line);) {
    Words words;
    std::istringstream in(line);
    for (std::string word; std::getline(in, word, '\t');) words.push_back(word);
    std::cout << Answer(suite, words) << std::endl;
  }
}
