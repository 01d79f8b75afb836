#include "addin/Trials.h"

#include <fmt/format.h>

#include <memory>
#include <optional>

#include "addin/DriverFunctions.h"
#include "quillmar/BoundFunction.h"
#include "quillmar/CadDriver.h"

namespace tools {
namespace {

struct Driver {
  QM_CAD_FUNCTIONS(QM_BOUND_NEEDED)
  QM_CAD_2D_FUNCTIONS(QM_BOUND_NEEDED)
};

constexpr std::size_t kLongText = 70000;
constexpr int kRoomyCapacity = 65535;
constexpr int kLargestText = 1 << 26;
constexpr int kSmallCapacities[] = {0, 16, 1023};

// The specimen: a part with a text of every kind that has to come back as it was.
constexpr const char* kId = "QMADDINCHECK1";
constexpr const char* kMissingId = "QMADDINCHECK0";
constexpr const char* kReference = "QMADDINCHECK1<@PID>first \"item\"<@EL>%s%n \x8A\xB3<@EL>";
constexpr const char* kOtherReference = "QMADDINCHECK1<@PID>another<@EL>";
constexpr const char* kParameters = "*view*,MODELA_FM,d,20,L,100<VXCOMMA>5,";
constexpr const char* kCaption = "Add-in check";

Judgement Ok() { return {}; }
Judgement NotTried(std::string why) { return {Verdict::NotTried, std::move(why)}; }
Judgement Warn(std::string text) { return {Verdict::Warning, std::move(text)}; }
Judgement Fail(std::string text) { return {Verdict::Failure, std::move(text)}; }

std::shared_ptr<Driver> Bind(const Exports& exports) {
  auto driver = std::make_shared<Driver>();
#define QM_BIND(need, name, result, parameters, arguments) \
  driver->name.pointer = reinterpret_cast<result(QM_CDECL*) parameters>(exports(#name));
  QM_CAD_FUNCTIONS(QM_BIND)
  QM_CAD_2D_FUNCTIONS(QM_BIND)
#undef QM_BIND
  return driver;
}

int Insert(const Driver& driver) {
  return driver.InsertParamPart(kId, "", kParameters, kReference, 1, "<WORKSPACE>\\QMADDINCHECK",
                                kCaption, nullptr, 0);
}

// --- bad arguments ---

Judgement CallOnce(const DriverFunction& function, void* address, const Pattern& pattern) {
  CallMemory memory;
  const bool succeeded = function.Call(address, pattern, memory) != 0;
  if (memory.IsOverrun()) return Fail("wrote beyond the end of a buffer");
  if (succeeded && !memory.IsTerminated()) return Fail("left a text without its NUL");
  return Ok();
}

std::vector<Step> BadArguments(const DriverFunction& function, const Exports& exports) {
  const Pattern patterns[] = {
      {"empty texts", true, "", 0},
      {"texts of 70000 characters", true, std::string(kLongText, 'x'), 0},
      {"odd texts", true, "%s%n<@PID><@EL>,\"'\\..\x8A\xB3\x01", 0},
      {"negative numbers", true, "x", -1},
      {"null pointers", false, "", 0},
  };
  std::vector<Step> steps;
  void* address = exports(function.name);
  for (const Pattern& pattern : patterns) {
    // The module hands out no null pointer but for pairs.
    const Verdict whenCrashed = pattern.hasPointers ? Verdict::Failure : Verdict::Warning;
    steps.push_back(
        {fmt::format("{} with {}", function.name, pattern.name), whenCrashed,
         [&function, address, pattern] { return CallOnce(function, address, pattern); }});
  }
  return steps;
}

// --- list buffers ---

// Reads one list; `memory` gives the buffers of fixed size.
struct Reader {
  const char* name;
  std::function<int(const Driver&, char*, int*, CallMemory& memory)> read;
};

template <auto function>
int OfSpecimen(const Driver& driver, char* text, int* size, CallMemory&) {
  return (driver.*function)(kId, text, size);
}

const std::vector<Reader>& Readers() {
  static const std::vector<Reader> readers = {
      {"GetProtocol", OfSpecimen<&Driver::GetProtocol>},
      {"GetPart", [](const Driver& d, char* t, int* s,
                     CallMemory& m) { return d.GetPart(m.Buffer(1024), t, s); }},
      {"GetAssembly",
       [](const Driver& d, char* t, int* s, CallMemory& m) {
         char* first = m.Buffer(1024);
         return d.GetAssembly(first, m.Buffer(260), t, s);
       }},
      {"GetDataWD", [](const Driver& d, char* t, int* s,
                       CallMemory& m) { return d.GetDataWD(t, s, m.Buffer(10000)); }},
      {"GetParameterList", OfSpecimen<&Driver::GetParameterList>},
      {"GetParameterListEx", [](const Driver& d, char* t, int* s,
                                CallMemory&) { return d.GetParameterListEx(kId, t, s, 0, 0); }},
      {"GetPhysicalPropertiesEx", OfSpecimen<&Driver::GetPhysicalPropertiesEx>},
      {"GetShaftParameterList", OfSpecimen<&Driver::GetShaftParameterList>},
      {"GetAllParts",
       [](const Driver& d, char* t, int* s, CallMemory&) { return d.GetAllParts(t, s); }},
      {"GetFeaturesState", OfSpecimen<&Driver::GetFeaturesState>},
      {"GetReferenceDims", OfSpecimen<&Driver::GetReferenceDims>},
      {"GetPartsVisibility", OfSpecimen<&Driver::GetPartsVisibility>},
  };
  return readers;
}

struct Answer {
  int result = 0;
  int size = 0;
  std::string text;
  bool overrun = false;
  bool fixedOverrun = false;  // of a buffer of fixed size
  bool terminated = true;     // of a success
};

Answer Ask(const Reader& reader, const Driver& driver, int capacity) {
  CallMemory memory;
  char* text = memory.Buffer(static_cast<std::size_t>(capacity) + 1);
  Answer answer;
  answer.size = capacity;
  answer.result = reader.read(driver, text, &answer.size, memory);
  answer.overrun = memory.buffers.front().IsOverrun();
  answer.fixedOverrun = !answer.overrun && memory.IsOverrun();
  answer.terminated = answer.result == 0 || memory.IsTerminated();
  answer.text = memory.buffers.front().Text();
  return answer;
}

// The text that is there, with as much room as it takes.
Answer AskForAll(const Reader& reader, const Driver& driver) {
  const Answer answer = Ask(reader, driver, kRoomyCapacity);
  const bool asksForMore = answer.result == 0 && answer.size > kRoomyCapacity;
  return asksForMore && answer.size <= kLargestText ? Ask(reader, driver, answer.size) : answer;
}

// What holds whatever the buffer; nothing when it does.
std::optional<Judgement> BrokenRule(const Answer& answer, int capacity) {
  if (answer.overrun) return Fail(fmt::format("wrote beyond a buffer of {} characters", capacity));
  if (answer.fixedOverrun) return Fail("wrote beyond a buffer of fixed size");
  if (!answer.terminated) return Fail("left a text without its NUL");
  return std::nullopt;
}

Judgement AskWithRoom(const Reader& reader, const Driver& driver) {
  const Answer answer = AskForAll(reader, driver);
  if (auto broken = BrokenRule(answer, kRoomyCapacity)) return *broken;
  if (answer.result == 0) return NotTried("it has nothing to say of the specimen");
  if (answer.size != static_cast<int>(answer.text.size())) {
    return Fail(fmt::format("set *size to {} for a text of {} characters", answer.size,
                            answer.text.size()));
  }
  return Ok();
}

// Also asked of an add-in that has nothing to say: it may write nevertheless.
Judgement AskWith(const Reader& reader, const Driver& driver, int capacity, const Answer& whole) {
  const Answer answer = Ask(reader, driver, capacity);
  if (auto broken = BrokenRule(answer, capacity)) return *broken;
  if (whole.result == 0) return NotTried("");
  if (whole.size <= capacity) {
    if (answer.result != 0 && answer.text == whole.text) return Ok();
    return Fail("refused a buffer into which the text fits");
  }
  if (answer.result != 0) return Fail("said success though the text does not fit");
  if (answer.size != whole.size) {
    return Fail(
        fmt::format("asked for {} characters where {} are needed", answer.size, whole.size));
  }
  return Ok();
}

// With a buffer `less` characters too small for the text that is there.
Judgement AskWithLess(const Reader& reader, const Driver& driver, int less) {
  const Answer whole = AskForAll(reader, driver);
  if (whole.result == 0 || whole.size < less) return NotTried("");
  return AskWith(reader, driver, whole.size - less, whole);
}

std::vector<Step> ReaderSteps(const Exports& exports) {
  const auto driver = Bind(exports);
  std::vector<Step> steps;
  for (const Reader& reader : Readers()) {
    if (exports(reader.name) == nullptr) continue;
    const auto add = [&](const std::string& what, std::function<Judgement()> run) {
      steps.push_back({fmt::format("{}, {}", reader.name, what), Verdict::Failure, std::move(run)});
    };
    add("a roomy buffer", [&reader, driver] { return AskWithRoom(reader, *driver); });
    add("a buffer that just fits", [&reader, driver] { return AskWithLess(reader, *driver, 0); });
    add("a buffer one character too small",
        [&reader, driver] { return AskWithLess(reader, *driver, 1); });
    for (const int capacity : kSmallCapacities) {
      add(fmt::format("a buffer of {} characters", capacity), [&reader, driver, capacity] {
        return AskWith(reader, *driver, capacity, AskForAll(reader, *driver));
      });
    }
  }
  // The specimen stands before the first step, in each process.
  Insert(*driver);
  return steps;
}

// --- exchange ---

// Of the specimen.
std::string StoredProtocol(const Driver& driver) {
  const Answer answer = Ask(Readers().front(), driver, kRoomyCapacity);
  return answer.result != 0 ? answer.text : std::string();
}

std::vector<Step> ExchangeSteps(const Exports& exports) {
  const auto driver = Bind(exports);
  const bool inserted = Insert(*driver) != 0;
  const auto whenInserted = [inserted](std::function<Judgement()> run) {
    return [inserted, run = std::move(run)] {
      return inserted ? run() : NotTried("the add-in inserts nothing");
    };
  };
  std::vector<Step> steps;
  steps.push_back({"InsertParamPart inserts a part", Verdict::Failure, [inserted] {
                     return inserted ? Ok()
                                     : Warn("refused: does it need a document, or the CAD itself?");
                   }});
  steps.push_back(
      {"GetProtocol gives the reference text back", Verdict::Failure, whenInserted([driver] {
         const std::string text = StoredProtocol(*driver);
         return text == kReference ? Ok() : Fail("gave \"" + text + "\"");
       })});
  steps.push_back({"GetAllParts names the part", Verdict::Failure, whenInserted([driver] {
                     GuardedBuffer buffer(kRoomyCapacity);
                     int size = kRoomyCapacity;
                     driver->GetAllParts(buffer.Get(), &size);
                     const bool named = buffer.Text().find(kReference) != std::string::npos;
                     return named ? Ok() : Fail("the part's reference text is not in the list");
                   })});
  steps.push_back(
      {"ConnectProtocol replaces the reference text", Verdict::Failure, whenInserted([driver] {
         if (driver->ConnectProtocol(kId, kOtherReference) == 0) return Fail("gave 0");
         const std::string text = StoredProtocol(*driver);
         driver->ConnectProtocol(kId, kReference);
         return text == kOtherReference ? Ok() : Fail("gave \"" + text + "\"");
       })});
  steps.push_back({"ChangeParamPart changes the part", Verdict::Failure, whenInserted([driver] {
                     const int result = driver->ChangeParamPart(kId, "", kParameters, kReference, 1,
                                                                "<WORKSPACE>\\QMADDINCHECK",
                                                                kCaption, nullptr, 0, 0);
                     return result != 0 ? Ok() : Fail("gave 0");
                   })});
  steps.push_back({"ConnectProtocol refuses an unknown part", Verdict::Failure, [driver] {
                     return driver->ConnectProtocol(kMissingId, kReference) == 0
                                ? Ok()
                                : Warn("said success");
                   }});
  steps.push_back({"GetMainHwnd gives a window", Verdict::Failure, [driver] {
                     QmWindow window = 0;
                     return driver->GetMainHwnd(&window) != 0 ? Ok() : Warn("gave 0");
                   }});
  return steps;
}

}  // namespace

bool AsksUser(const std::string& function) {
  return function == "ShowFileDialog" || function == "GetPoint" || function == "StartMeasure";
}

std::vector<Step> StepsOf(const std::string& trial, const Exports& exports) {
  if (trial == kExchangeTrial) return ExchangeSteps(exports);
  if (trial == kReadersTrial) return ReaderSteps(exports);
  const DriverFunction* function = FindDriverFunction(trial);
  if (function == nullptr || exports(trial) == nullptr) return {};
  return BadArguments(*function, exports);
}

}  // namespace tools
