// Each function of each companion missing in turn: what needs it fails as if the function had
// failed, and the rest goes on.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>

#include "Calculation.h"
#include "quillmar/BoltedConnections.h"
#include "quillmar/CalculationHost.h"
#include "quillmar/Ipc.h"

namespace quillmar::contract {
namespace {

namespace fs = std::filesystem;

std::string ReadBytes(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// Made anew: the file may be shared with another machine's by a hard link.
void WriteBytes(const fs::path& file, const std::string& bytes) {
  fs::remove(file);
  std::ofstream(file, std::ios::binary) << bytes;
  fs::permissions(file, fs::perms::all);
}

// Gives the exported name another last letter, the one before it, so that the table of names keeps
// its order.
std::string WithoutFunction(std::string bytes, const std::string& function) {
  const std::string wanted = std::string(1, '\0') + function + std::string(1, '\0');
  bool found = false;
  for (std::size_t at = bytes.find(wanted); at != std::string::npos; at = bytes.find(wanted, at)) {
    --bytes[at + function.size()];
    found = true;
  }
  EXPECT_TRUE(found) << function;
  return bytes;
}

class MissingFunctions : public Calculation {
 protected:
  enum class Lack { Missing, Failing };

  // What the library does for others in a session from its beginning to its end while the function
  // is missing or fails.
  std::vector<std::string> Walk(const std::string& function, Lack lack) {
    const std::string inserted = Calculated(kShaft);
    const std::string pasted = Calculated(kParametricPart);
    const std::string reference = Record(pasted).Reference();
    strict::Core().Strict_SetAnswer("GetProtocol.text", reference.c_str());
    module.LogoutCad();
    UnloadModule();
    if (lack == Lack::Missing) {
      WriteBytes(file, WithoutFunction(whole, function));
    } else {
      strict::Core().Strict_SetAnswer(function.c_str(), "0");
    }
    ForgetCalls();
    host.Forget();
    std::vector<std::string> seen = RunSession(inserted);
    UnloadModule();
    WriteBytes(file, whole);
    strict::Core().Strict_SetAnswer(function.c_str(), nullptr);
    std::erase(seen, function);
    for (std::string& line : seen) {
      line = std::regex_replace(line, std::regex("STRICTPID-[0-9]+"), "ID");
    }
    // For the next preparations.
    EXPECT_TRUE(LoadModule());
    return seen;
  }

  void CompareEach(const char* library, const std::vector<std::string>& functions) {
    file = OwnPath(kSuiteFolder + "\\" + library);
    whole = ReadBytes(file);
    for (const std::string& function : functions) {
      EXPECT_EQ(Walk(function, Lack::Missing), Walk(function, Lack::Failing)) << function;
    }
  }

  fs::path file;
  std::string whole;

 private:
  std::vector<std::string> RunSession(const std::string& inserted) {
    EXPECT_TRUE(LoadModule());
    LoadCad();
    std::vector<std::string> seen;
    const auto note = [&](int result) { seen.push_back(std::to_string(result)); };
    note(Login());
    module.StartCalculation("shaft", "ISO");
    host.Finish(QM_CALLBACK_NEW_PART, inserted);
    host.Finish(QM_CALLBACK_RECALCULATED, inserted);
    note(module.ObtainProtocol("Shaft:1"));
    note(module.ShowDialogUT(inserted.c_str()));
    note(module.LogoutCad());
    for (const std::string& function : CalledFunctions()) seen.push_back(function);
    for (const std::string& command : host.Commands()) seen.push_back(command);
    return seen;
  }
};

#define CONTRACT_NAME(name, ...) #name,

TEST_F(MissingFunctions, OfTheStorageLibrary) {
  CompareEach("Keelcomm.dll", {QM_STORAGE_FUNCTIONS(CONTRACT_NAME)});
}

TEST_F(MissingFunctions, OfTheLinkLibrary) {
  CompareEach("Keellink.dll", {QM_LINK_FUNCTIONS(CONTRACT_NAME)});
}

TEST_F(MissingFunctions, OfTheBoltedConnectionLibrary) {
  CompareEach("QmarBC.dll", {QM_BOLTED_CONNECTION_FUNCTIONS(CONTRACT_NAME)});
}

TEST_F(MissingFunctions, OfTheWindowHelper) {
  CompareEach("vxfwnd.dll", {QM_FOREGROUND_FUNCTIONS(CONTRACT_NAME)});
}

// The binding stops at the first that is missing; those before it work. With the library built for
// the address sanitizer the renaming also hides functions that were not renamed.
TEST_F(MissingFunctions, OfTheInterProcessLibrary) {
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
  GTEST_SKIP() << "names cannot be changed in an instrumented library";
#endif
#endif
  const std::vector<std::string> functions = {QM_IPC_FUNCTIONS(CONTRACT_NAME)};
  file = OwnPath(kSuiteFolder + "\\Tessio.dll");
  whole = ReadBytes(file);
  for (std::size_t missing = 0; missing < functions.size(); ++missing) {
    const std::vector<std::string> seen = Walk(functions[missing], Lack::Missing);
    const auto isCalled = [&](const char* function) {
      return std::find(seen.begin(), seen.end(), function) != seen.end();
    };
    EXPECT_EQ(seen.at(0), "1") << "the login";
    EXPECT_EQ(isCalled("LoginToCom"), missing > 0) << functions[missing];
    EXPECT_EQ(isCalled("SendModelessMessage"), missing > 4) << functions[missing];
  }
}

}  // namespace
}  // namespace quillmar::contract
