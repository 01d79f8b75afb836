#include "userparts/LispGenerator.h"

#include "platform/ForeignCall.h"
#include "quillmar/UserParts.h"

namespace quillmar {
namespace {

constexpr const char* kView = "USER";
constexpr const char* kNoPicture = "";
constexpr double kFirstTolerance = 0.001;
constexpr double kSecondTolerance = 0.01;

}  // namespace

bool LispGenerator::Bind(const std::string& folder) {
  if (IsBound()) return true;
  if (folder.empty()) return false;
  platform::Library loaded = platform::LoadLibraryAt(folder + "\\" QM_LISP_LIBRARY).library;
  if (!loaded) return false;
  generate = platform::FindFunction(loaded.Get(), "GenerateLisp");
  if (IsBound()) library = std::move(loaded);
  return IsBound();
}

void LispGenerator::Unbind() {
  generate = nullptr;
  library.Free();
}

bool LispGenerator::GenerateLisp(const std::string& dxfPath, const std::string& outputBase,
                                 double x, double y) const {
  using platform::Word;
  const platform::ForeignArgument arguments[] = {Word(dxfPath.c_str()),
                                                 Word(outputBase.c_str()),
                                                 Word(kView),
                                                 Word(kNoPicture),
                                                 Word(0),
                                                 x,
                                                 y,
                                                 Word(0),
                                                 Word(0),
                                                 Word(0),
                                                 kFirstTolerance,
                                                 kSecondTolerance};
  return platform::CallForeign(generate, arguments) != 0;
}

}  // namespace quillmar
