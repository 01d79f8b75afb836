// Every export called when and as nobody should: before a login, with null pointers, after the
// logout. The calls are made from the list of exports, so that none can be left out.
#include <algorithm>
#include <cstring>
#include <functional>
#include <memory>
#include <string_view>
#include <tuple>
#include <type_traits>

#include "Calculation.h"
#include "UserDialog.h"
#include "platform/Messages.h"
#include "quillmar/Version.h"

namespace quillmar::contract {
namespace {

constexpr int kRoom = 1 << 19;  // 4 KB and four times the longest text that goes in, or more
constexpr const char* kUntouched = "untouched";
constexpr int kUntouchedNumber = 77;
ExtDataPair* const kUntouchedPairs = reinterpret_cast<ExtDataPair*>(16);

// What an argument is good for, by its name in the list of exports.
struct Values {
  std::string protocolId;
  std::string reference;
};

// One call's arguments: what goes in, and room for what comes out.
class Arguments {
 public:
  // Names as the list of exports has them: "(const char* protocolId, int* metric)".
  Arguments(const Values& inputs, std::string_view parameters) : values(inputs) {
    for (std::size_t end = parameters.find_first_of(",)"); end != parameters.npos;
         end = parameters.find_first_of(",)", end + 1)) {
      const std::size_t begin = parameters.find_last_of(" *", end) + 1;
      names.emplace_back(parameters.substr(begin, end - begin));
    }
  }
  // The pointer at this place will be null.
  void LeaveOut(int place) { leftOut = place; }
  // The text that goes in at this place will be another one.
  void Replace(int place, const std::string& text) {
    replaced = place;
    replacement = &text;
  }
  static constexpr int kNone = -1;
  static constexpr int kAll = -2;

  template <class Value>
  Value Next() {
    const std::string& name = names.at(static_cast<std::size_t>(next));
    if constexpr (std::is_pointer_v<Value>) {
      const int place = next++;
      if (place == leftOut || leftOut == kAll) return nullptr;
      if constexpr (std::is_same_v<Value, const char*>) {
        if (place == replaced) return replacement->c_str();
      }
      return Pointer(Value{}, name);
    } else {
      ++next;
      return static_cast<Value>(name == "outSize" ? kRoom : 1);
    }
  }

  // A letter for each output: (u)ntouched, (e)mptied, (w)ritten.
  std::string Outputs() const {
    std::string seen;
    for (const auto& look : outputs) seen += look();
    return seen;
  }
  // Gives extended data back that the call has handed out.
  void FreePairs(const Exports& module) const {
    if (pairs == nullptr || count == nullptr || *pairs == kUntouchedPairs) return;
    module.DeleteBomInfo(*pairs, *count);
  }

 private:
  template <class Number>
  static char Look(Number value, Number untouched) {
    return value == untouched ? 'u' : value == Number{} ? 'e' : 'w';
  }

  const char* Pointer(const char*, const std::string& name) {
    if (name == "protocolId") return values.protocolId.c_str();
    if (name == "reference" || name == "referenceText") return values.reference.c_str();
    return "x";
  }
  char* Pointer(char*, const std::string&) {
    auto buffer = std::make_shared<std::string>(kRoom, '\0');
    buffer->replace(0, std::strlen(kUntouched), kUntouched);
    outputs.emplace_back([buffer] {
      return buffer->front() == '\0' ? 'e' : buffer->c_str() == std::string(kUntouched) ? 'u' : 'w';
    });
    return buffer->data();
  }
  int* Pointer(int*, const std::string& name) {
    const bool room = name == "size" || name.ends_with("apacity");
    int* number = Number(room ? kRoom : kUntouchedNumber);
    if (name == "count") count = number;
    return number;
  }
  double* Pointer(double*, const std::string&) { return Number<double>(kUntouchedNumber); }
  ExtDataPair** Pointer(ExtDataPair**, const std::string&) {
    return pairs = Number(kUntouchedPairs);
  }
  template <class Array>
  static Array* Pointer(Array*, const std::string&) {
    return nullptr;
  }

  template <class Type>
  Type* Number(Type untouched) {
    auto number = std::make_shared<Type>(untouched);
    outputs.emplace_back([=] { return Look(*number, untouched); });
    return number.get();
  }

  const Values& values;
  std::vector<std::string> names;
  std::vector<std::function<char()>> outputs;
  ExtDataPair** pairs = nullptr;
  int* count = nullptr;
  int leftOut = kNone;
  int replaced = kNone;
  const std::string* replacement = nullptr;
  int next = 0;
};

template <class Signature>
struct Call;
template <class Result, class... Parameters>
struct Call<Result(Parameters...)> {
  static constexpr int kCount = static_cast<int>(sizeof...(Parameters));
  static bool IsText(int place) {
    // The last one keeps the list of an export without arguments from being empty.
    constexpr bool texts[] = {std::is_same_v<Parameters, const char*>..., false};
    return texts[place];
  }

  template <class Function>
  static int With(Function* function, Arguments& arguments) {
    // In braces one argument is made after the other.
    const std::tuple<Parameters...> made{arguments.Next<Parameters>()...};
    if constexpr (std::is_void_v<Result>) {
      std::apply(function, made);
      return 0;
    } else if constexpr (std::is_pointer_v<Result>) {
      return std::apply(function, made) != nullptr ? 1 : 0;
    } else {
      return std::apply(function, made);
    }
  }
};

struct Export {
  const char* name;
  const char* parameters;
  int count;  // of arguments
  bool (*isText)(int place);
  int (*call)(const Exports& module, Arguments& arguments);
};

#define CONTRACT_EXPORT(name, convention, result, parameters, arguments)                 \
  {#name, #parameters, Call<result parameters>::kCount, Call<result parameters>::IsText, \
   [](const Exports& module, Arguments& made) {                                          \
     return Call<result parameters>::With(module.name, made);                            \
   }},
constexpr Export kExports[] = {QM_EXPORTS(CONTRACT_EXPORT)};
#undef CONTRACT_EXPORT

// What comes of a call: its result, how many protocols the store holds more, the look of outputs.
struct Outcome {
  int result;
  int stored;
  const char* outputs = "";
};
constexpr int kTimer = -100;  // any identifier but 0

struct Row {
  const char* name;
  Outcome beforeLogin;
  Outcome withNulls;
  Outcome afterLogout;
};

// The arguments name a protocol and a reference text that are there. What needs neither the CAD nor
// its names works without a session, and goes on after one: the add-in stays bound. The host
// answers 0. A protocol that was made stays, as does the exit request of a logout; the working copy
// of IsSmartPart is erased.
constexpr Row kRows[] = {
    {"AddBomTag", {1, 0}, {1, 0}, {1, 0}},
    {"AddUTDXFPart", {0, 0}, {0, 0}, {0, 0}},
    {"AddUTPart", {0, 0}, {0, 0}, {0, 0}},
    {"CallFem", {0, 1}, {0, 1}, {0, 1}},
    {"CallOptim", {0, 0}, {0, 0}, {0, 0}},
    {"CallOptimGM", {1, 0}, {0, 0}, {1, 0}},
    {"CallUTFunction", {1, 0}, {1, 0}, {1, 0}},
    {"CopyProtocol", {1, 1, "ww"}, {0, 0}, {1, 1, "ww"}},
    {"CorrectProtocol", {0, 0}, {0, 0}, {0, 0}},
    {"Create2dPart", {1, 1, "wwweeeeeww"}, {0, 0}, {0, 0, "euueuuuuee"}},
    {"CreateAssemblyProtocol", {1, 1, "ww"}, {1, 1}, {1, 1, "ww"}},
    {"CreateFileName", {1, 0, "ew"}, {0, 0}, {1, 0, "ew"}},
    {"CreatePartProtocol", {1, 1, "wwe"}, {0, 1}, {1, 1, "wwe"}},
    {"CreateUniqueCopy", {0, 0}, {0, 0}, {0, 0}},
    {"CreateUserProtocol", {1, 1, "ww"}, {1, 1}, {1, 1, "ww"}},
    {"DataWizard", {0, 0}, {0, 0}, {0, 0}},
    {"DeleteBomInfo", {1, 0}, {1, 0}, {1, 0}},
    {"DoWDOperation", {0, 0}, {0, 0}, {0, 0}},
    {"EditLinks", {0, 0}, {0, 0}, {0, 0}},
    {"EditOneLink", {0, 0}, {0, 0}, {0, 0}},
    {"EndSolution", {1, 0}, {1, 0}, {1, 0}},
    {"GMInsertNextObject", {kTimer, 0}, {kTimer, 0}, {kTimer, 0}},
    {"GenerateFamTable", {0, 0}, {0, 0}, {0, 0}},
    {"GetAllMCWProtocolIDs", {0, 0, "eu"}, {0, 0}, {0, 0, "eu"}},
    {"GetAssemblyPath", {0, 0, "u"}, {0, 0}, {1, 0, "u"}},
    {"GetCadHinstance", {0, 0}, {1, 0}, {1, 0}},
    {"GetDataValues", {0, 0, "e"}, {0, 0}, {0, 0, "e"}},
    {"GetPartInformation", {0, 0, "uuuu"}, {0, 0}, {1, 0, "ewww"}},
    {"GetProtocolItem", {0, 0, "u"}, {0, 0}, {0, 0, "u"}},
    {"GetProtocolType", {1, 0, "ew"}, {0, 0}, {1, 0, "ew"}},
    {"GetQuillmarVersion", {QM_VERSION_NUMBER, 0}, {QM_VERSION_NUMBER, 0}, {QM_VERSION_NUMBER, 0}},
    {"GetUnitList", {1, 0, "ww"}, {0, 0}, {1, 0, "ww"}},
    {"ImportWizard", {1, 1}, {1, 1}, {1, 1}},
    {"InitSolution", {0, 0}, {0, 0}, {0, 0}},
    {"IsFeaturePositive", {0, 0, "u"}, {0, 0}, {0, 0, "u"}},
    {"IsPartMetrics", {0, 0, "e"}, {0, 0}, {0, 0, "e"}},
    {"IsSmartPart", {0, -1}, {0, 0}, {0, -1}},
    {"LoginCad", {0, 0, "u"}, {1, 0}, {1, 0, "u"}},
    {"LogoutCad", {1, 0}, {1, 1}, {1, 1}},
    {"MCWRecalculate", {1, 0}, {0, 0}, {1, 0}},
    {"MakePicture", {0, 0, "e"}, {0, 0}, {0, 0, "e"}},
    {"ObtainProtocol", {0, 0}, {0, 0}, {0, 0}},
    {"ReadConfiguration", {1, 0}, {1, 0}, {1, 0}},
    {"ReceiveMessage", {1, 0}, {1, 0}, {1, 0}},
    {"RefreshAllLinks", {0, 0}, {1, 2}, {1, 2}},
    {"Set2dAxisOverlap", {1, 0}, {1, 0}, {1, 0}},
    {"Set2dFileType", {0, 0}, {1, 0}, {1, 0}},
    {"SetCadIniFile", {0, 0}, {0, 0}, {0, 0}},
    {"SetDefaultUserBTSection", {1, 0}, {1, 0}, {1, 0}},
    {"SetMeasureValue", {1, 0}, {1, 0}, {1, 0}},
    {"SetOptions", {0, 0}, {0, 0}, {0, 0}},
    {"ShowAboutDlg", {1, 0}, {1, 0}, {1, 0}},
    {"ShowDialogUT", {0, 0}, {0, 0}, {0, 0}},
    {"ShowFormat", {0, 1}, {0, 1}, {0, 1}},
    {"ShowMCWDialog", {1, 0}, {1, 0}, {1, 0}},
    {"ShowOptionsDialog", {0, 0}, {0, 0}, {0, 0}},
    {"ShowToolbar", {1, 0}, {1, 0}, {1, 0}},
    {"SolveOneLink", {0, 0}, {0, 0}, {0, 0}},
    {"StartCalculation", {0, 1}, {0, 1}, {0, 1}},
    {"StartNewBC", {1, 1}, {1, 1}, {1, 1}},
    {"Synchronize", {0, 0}, {0, 0}, {0, 0}},
    {"UpdateExtendedData", {0, 0}, {1, 0}, {1, 0}},
};

constexpr bool CoversAllExports() {
  return std::equal(
      std::begin(kRows), std::end(kRows), std::begin(kExports), std::end(kExports),
      [](const Row& row, const Export& each) { return std::string_view(row.name) == each.name; });
}
static_assert(CoversAllExports(), "a row for each export, in their order");

class ExportTable : public Calculation {
 protected:
  // Each call has a freshly loaded library.
  ExportTable() {
    UnloadModule();
    // No wizard stands there.
    host.Answer("32", "C:\\Nowhere");
    Record record;
    Fill(record, kShaft);
    values = {record.Id(), record.Reference()};
  }

  void Load(bool session) {
    ASSERT_TRUE(LoadModule());
    if (session) {
      ASSERT_EQ(Login(), 1);
    }
  }

  void Expect(const Export& each, const Outcome& outcome, int leftOut = Arguments::kNone) {
    SCOPED_TRACE(each.name);
    // The calls may erase it.
    Record(values.protocolId).SetFromReference(values.reference);
    Arguments arguments(values, each.parameters);
    arguments.LeaveOut(leftOut);
    const int before = Stored();
    const int result = Run(each, arguments);
    EXPECT_EQ(outcome.result == kTimer && result != 0 ? kTimer : result, outcome.result);
    EXPECT_EQ(arguments.Outputs(), outcome.outputs);
    arguments.FreePairs(module);
    if (!kStrictCompanions) return;
    EXPECT_EQ(Stored() - before, outcome.stored);
    EXPECT_EQ(strict::Core().Strict_OpenProtocols(), 0);
  }

  int Run(const Export& each, Arguments& arguments) {
    const UserWhoLeaves user;
    const int result = each.call(module, arguments);
    platform::PumpMessages();
    return result;
  }

  // Protocols in the store; the suite's store cannot be counted.
  static int Stored() { return kStrictCompanions ? strict::Core().Strict_StoredProtocols() : 0; }

  Values values;
};

TEST_F(ExportTable, BeforeALogin) {
  for (std::size_t i = 0; i < std::size(kRows); ++i) {
    Load(false);
    Expect(kExports[i], kRows[i].beforeLogin);
    UnloadModule();
  }
}

TEST_F(ExportTable, WithNullPointers) {
  for (std::size_t i = 0; i < std::size(kRows); ++i) {
    Load(true);
    Expect(kExports[i], kRows[i].withNulls, Arguments::kAll);
    UnloadModule();
  }
}

TEST_F(ExportTable, AfterTheLogout) {
  for (std::size_t i = 0; i < std::size(kRows); ++i) {
    Load(true);
    module.LogoutCad();
    Expect(kExports[i], kRows[i].afterLogout);
    UnloadModule();
  }
}

// A pointer that is missing alone is met behind the checks of the others.
TEST_F(ExportTable, WithOneNullPointer) {
  Load(true);
  for (const Export& each : kExports) {
    SCOPED_TRACE(each.name);
    for (int place = 0; place < each.count; ++place) {
      Record(values.protocolId).SetFromReference(values.reference);
      Arguments arguments(values, each.parameters);
      arguments.LeaveOut(place);
      Run(each, arguments);
      arguments.FreePairs(module);
      if (kStrictCompanions) {
        EXPECT_EQ(strict::Core().Strict_OpenProtocols(), 0) << place;
      }
    }
  }
}

// The longest path, one more than that, the longest menu text and a value of no sensible length: a
// call does what it does with another text, or fails.
TEST_F(ExportTable, WithOneOverlongText) {
  for (const std::size_t length : {260u, 261u, 1024u, 100'000u}) {
    const std::string text(length, 'x');
    Load(true);
    for (const Export& each : kExports) {
      SCOPED_TRACE(each.name);
      int usual = 0;
      for (int place = Arguments::kNone; place < each.count; ++place) {
        if (place != Arguments::kNone && !each.isText(place)) continue;
        Record(values.protocolId).SetFromReference(values.reference);
        Arguments arguments(values, each.parameters);
        arguments.Replace(place, text);
        const int result = Run(each, arguments);
        arguments.FreePairs(module);
        if (place == Arguments::kNone) usual = result;
        EXPECT_THAT(result, testing::AnyOf(0, usual)) << place << " of " << length;
        if (kStrictCompanions) {
          EXPECT_EQ(strict::Core().Strict_OpenProtocols(), 0) << place << " of " << length;
        }
      }
    }
    UnloadModule();
  }
}

}  // namespace
}  // namespace quillmar::contract
