// The session's job: what is read from it, and how a wrong one is refused.
#include <gtest/gtest.h>

#include <string>

#include "session/BillOfMaterials.h"
#include "session/Failures.h"
#include "session/Job.h"
#include "session/JobWriter.h"
#include "session/Model.h"
#include "session/Units.h"

namespace {

// A job with one calculation, of which `member` is one more member.
std::string JobWith(const std::string& member) {
  return R"({"calculations": [{"name": "a", "calculation": "SHAFT", "inputs": {}}], )" + member +
         "}";
}

// A job whose one calculation has these members besides its name.
std::string CalculationWith(const std::string& members) {
  return R"({"calculations": [{"name": "a", )" + members + "}]}";
}

// A job of one step with these members.
std::string StepWith(const std::string& members) { return R"({"steps": [{)" + members + "}]}"; }

}  // namespace

TEST(Job, IsReadWithItsDefaults) {
  const session::Job job = session::ReadJob(R"({
    "name": "Przek\u0142adnia", "standard": "DIN",
    "calculations": [
      {"name": "gears", "calculation": "GEAR1", "inputs": {"m": 2.5, "z1": 21, "i": "3,0"}},
      {"name": "shaft", "calculation": "SHAFT", "standard": "ISO", "inputs": {"#spiCount": 4}}],
    "changes": [{"name": "gears", "inputs": {"b": 1e1}}]})");
  EXPECT_EQ(job.name,
            "Przek\xB3"
            "adnia");
  EXPECT_EQ(job.document, "Session");
  EXPECT_EQ(job.unit, "mm");
  ASSERT_EQ(job.steps.size(), 3u);
  EXPECT_EQ(std::get<session::Calculation>(job.steps[0]).standard, "DIN");
  EXPECT_EQ(std::get<session::Calculation>(job.steps[1]).standard, "ISO");
  const session::Inputs gears = {{"m", "2.5"}, {"z1", "21"}, {"i", "3,0"}};
  EXPECT_EQ(std::get<session::Calculation>(job.steps[0]).inputs, gears);
  EXPECT_EQ(std::get<session::Change>(job.steps[2]).inputs, (session::Inputs{{"b", "10.0"}}));
}

TEST(Job, StepsAreReadInTheirOrder) {
  const session::Job job = session::ReadJob(R"({"steps": [
    {"do": "calculate", "name": "shaft", "calculation": "SHAFT", "inputs": {}},
    {"do": "settings", "key": "Drawboard\\OptGeneral2", "values": {"a": "%x%", "b": 4294967295}},
    {"do": "log in again"},
    {"do": "calculate", "name": "key", "calculation": "KEYWAY", "on": "shaft", "inputs": {}},
    {"do": "change", "name": "shaft", "inputs": {"d_1": 30}}]})");
  ASSERT_EQ(job.steps.size(), 5u);
  const auto& settings = std::get<session::Settings>(job.steps[1]);
  EXPECT_EQ(settings.key, "Drawboard\\OptGeneral2");
  EXPECT_EQ(std::get<std::string>(settings.values[0].value), "%x%");
  EXPECT_EQ(std::get<std::uint32_t>(settings.values[1].value), 0xFFFFFFFFu);
  EXPECT_TRUE(std::holds_alternative<session::NewLogin>(job.steps[2]));
  EXPECT_EQ(std::get<session::Calculation>(job.steps[3]).on, "shaft");
  EXPECT_EQ(std::get<session::Change>(job.steps[4]).name, "shaft");
}

TEST(Job, AWrongValueIsRefusedWithItsFieldAndWhatWasExpected) {
  const struct {
    std::string text;
    const char* message;
  } cases[] = {
      {"{\n\"calculations\": [}\n", "The job is not JSON: line 2 is wrong at or just before: }"},
      {"{\"calculations\": [", "The job is not JSON: line 1 is wrong at its end"},
      {"[]", "The job must be a JSON object"},
      {"{}", "Field \"steps\": a job has either steps, or calculations and changes"},
      {R"({"calculations": [], "steps": []})", "Field \"steps\": a job has either steps, or"},
      {R"({"calculations": []})",
       "Field \"calculations\": expected a list that is not empty, found []"},
      {StepWith(R"("do": "dance")"),
       "Field \"steps[0].do\": expected one of \"calculate\", \"change\", \"settings\", "},
      {StepWith(R"("name": "a")"), "Field \"steps[0].do\": is missing"},
      {StepWith(R"("do": "log in again", "name": "a")"), "Field \"steps[0].name\": there is no"},
      {StepWith(R"("do": "settings", "values": {})"), "Field \"steps[0].key\": is missing"},
      {StepWith(R"("do": "settings", "key": "OptBom", "values": {"a": -1})"),
       "Field \"steps[0].values.a\": expected a text, or a whole number not below 0, found -1"},
      {StepWith(R"("do": "calculate", "name": "a", "calculation": "CAM", "on": "b", "inputs": {})"),
       "Field \"steps[0].on\": expected the name of a calculation before this one, found \"b\""},
      {StepWith(R"("do": "group", "name": "a", "members": [])"),
       "Field \"steps[0].members\": expected a list of calculations that is not empty, found []"},
      {StepWith(
           R"("do": "group", "name": "a", "members": [{"calculation": "SHAFT", "inputs": {"d": "x"}}])"),
       "Field \"steps[0].members[0].inputs.d\": expected a number"},
      {StepWith(R"("do": "drawing", "name": "a", "of": "b")"),
       "Field \"steps[0].of\": expected the name of a calculation before this one, found \"b\""},
      {StepWith(R"("do": "update", "name": "b", "inputs": {})"),
       "Field \"steps[0].name\": expected the name of one of the calculations, found \"b\""},
      {StepWith(R"("do": "copy", "name": "a", "of": "a", "inputs": {})"),
       "Field \"steps[0].of\": expected the name of a calculation before this one, found \"a\""},
      {StepWith(R"("do": "format", "name": "a", "scale": 0)"),
       "Field \"steps[0].scale\": expected a number above 0, found 0"},
      {StepWith(R"("do": "old part", "name": "a", "calculation": "SHAFT", "kind": "bolt")"),
       "Field \"steps[0].kind\": expected one of \"part\", "},
      {StepWith(R"("do": "user part", "name": "a", "as": "SVG")"),
       "Field \"steps[0].as\": expected one of \"LISP\", \"DXF\", found \"SVG\""},
      {StepWith(R"("do": "user part", "name": "a/b")"),
       "Field \"steps[0].name\": expected a name that a file can bear"},
      {StepWith(R"("do": "group manager", "name": "a")"),
       "Field \"steps[0].name\": expected the name of a group before this step, found \"a\""},
      {StepWith(R"("do": "assembly", "name": "a", "objects": ["x"])"),
       "Field \"steps[0].objects\": expected an object with the names of objects"},
      {R"({"calculations": [7]})", "Field \"calculations[0]\": expected an object, found 7"},
      {JobWith(R"("unit": "ft")"), "Field \"unit\": expected \"mm\" or \"in\", found \"ft\""},
      {JobWith(R"("unit": 1)"), "Field \"unit\": expected a text, found 1"},
      {JobWith(R"("colour": 1)"), "Field \"colour\": there is no such field here; known are "},
      {JobWith(R"("document": "a/b")"), "Field \"document\": expected a name that a file can bear"},
      {JobWith(R"("document": "")"), "Field \"document\": expected a text that is not empty"},
      {JobWith(R"("name": "\u03b1")"), "Field \"name\": holds a character that Windows-1250 lacks"},
      {JobWith(R"("name": "a\nb")"), "Field \"name\": must not hold control characters"},
      {CalculationWith(R"("inputs": {})"), "Field \"calculations[0].calculation\": is missing"},
      {CalculationWith(R"("calculation": "SPRING", "inputs": {})"),
       "Field \"calculations[0].calculation\": expected one of \"GEAR1\", \"SHAFT\", "},
      {CalculationWith(R"("calculation": "SHAFT")"),
       "Field \"calculations[0].inputs\": is missing"},
      {CalculationWith(R"("calculation": "SHAFT", "inputs": [1])"),
       "Field \"calculations[0].inputs\": expected an object with a value for each input"},
      {CalculationWith(R"("calculation": "SHAFT", "inputs": {"d_1": true})"),
       "Field \"calculations[0].inputs.d_1\": expected a number, or a text that holds one, found "
       "true"},
      {CalculationWith(R"("calculation": "SHAFT", "inputs": {"d_1": "thick"})"), "found \"thick\""},
      {CalculationWith(R"("calculation": "SHAFT", "inputs": {"a=b": 1})"),
       "is no name of an input"},
      {CalculationWith(R"("calculation": "SHAFT", "inputs": {}, "input": {})"),
       "Field \"calculations[0].input\": there is no such field here"},
      {R"({"calculations": [{"name": "a", "calculation": "SHAFT", "inputs": {}},
                            {"name": "a", "calculation": "SHAFT", "inputs": {}}]})",
       "Field \"calculations[1].name\": another step has this name already"},
      {JobWith(R"("changes": {})"), "Field \"changes\": expected a list of changes, found {}"},
      {JobWith(R"("changes": [{"name": "b", "inputs": {}}])"),
       "Field \"changes[0].name\": expected the name of one of the calculations, found \"b\""},
      {JobWith(R"("changes": [{"name": "a", "inputs": {"x": null}}])"),
       "Field \"changes[0].inputs.x\": expected a number"},
  };
  for (const auto& each : cases) {
    try {
      session::ReadJob(each.text);
      ADD_FAILURE() << "not refused: " << each.text;
    } catch (const session::JobError& error) {
      EXPECT_NE(std::string(error.what()).find(each.message), std::string::npos)
          << error.what() << "\nexpected: " << each.message;
    }
  }
}

// A job that is written back is read again, with the values that stand in the model.
TEST(Job, IsWrittenBackAsTheSessionEnded) {
  const session::Job job = session::ReadJob(R"({"name": "Przek\u0142adnia", "unit": "in", "steps": [
    {"do": "calculate", "name": "shaft", "calculation": "SHAFT", "inputs": {"d_1": "2,5", "l_1": 7}},
    {"do": "change", "name": "shaft", "inputs": {"l_1": 8, "l_2": 9}},
    {"do": "settings", "key": "OptBom", "values": {"a": "%x%", "b": 2}},
    {"do": "log in again"},
    {"do": "group", "name": "bolts", "members": [{"calculation": "THRJOIN", "inputs": {"d": 1}}]},
    {"do": "assembly", "name": "all"},
    {"do": "drawing", "name": "sheet 1", "of": "shaft"},
    {"do": "picture", "name": "view", "of": "shaft"},
    {"do": "format", "name": "A3", "scale": 0.5},
    {"do": "old part", "name": "old", "calculation": "SHAFT", "kind": "shaft", "values": {"ElNum": 1}},
    {"do": "user part", "name": "lever", "views": "front", "unit": "in", "x": 1, "as": "DXF"},
    {"do": "refresh links"},
    {"do": "refresh bill"},
    {"do": "group manager", "name": "bolts"}]})");
  session::SessionData data;
  data.document = R"({"objects": [{"name": "S1", "protocolId": "P1",
    "parameters": {"d_1": "2.5", "l_1": "8.25", "mass": "1.5"}}]})";
  data.steps.emplace_back();
  data.steps[0].name = "shaft";
  data.steps[0].objects = {"S1", "gone"};
  const std::string text = session::WriteJob(job, data);
  const session::Job read = session::ReadJob(text);
  ASSERT_EQ(read.steps.size(), job.steps.size() - 1) << "the change went into the calculation";
  const auto& shaft = std::get<session::Calculation>(read.steps[0]);
  EXPECT_EQ(shaft.inputs, (session::Inputs{{"d_1", "2.5"}, {"l_1", "8.25"}, {"l_2", "9"}}));
  EXPECT_EQ(shaft.objects, std::vector<std::string>{"S1"});
  const auto json = session::DocumentJson::parse(text);
  EXPECT_EQ(json["name"], "Przek\u0142adnia");
  EXPECT_EQ(json["steps"][0]["objects"]["S1"]["parameters"]["mass"], 1.5);
  EXPECT_EQ(session::WriteJob(read, data), text);
  for (std::size_t i = 1; i < read.steps.size(); ++i) {
    EXPECT_EQ(session::TitleOf(read.steps[i]), session::TitleOf(job.steps[i + 1]));
  }
}

TEST(BillOfMaterials, EqualPartsAreOneRowAndViewsAndDrawingsAreNoParts) {
  const auto document = session::DocumentJson::parse(R"({"objects": [
    {"viewOf": "", "extendedData": {"Description": "Bolt", "Size": "M8"}},
    {"viewOf": "", "extendedData": {}},
    {"viewOf": "", "extendedData": {"Description": "Drive"}, "kind": "assembly"},
    {"viewOf": "P1", "extendedData": {"Description": "Bolt", "Size": "M8"}},
    {"viewOf": "", "extendedData": {"Description": "Bolt", "Size": "M8"}, "placement": {}},
    {"viewOf": "", "extendedData": {"Description": "Pin, \"hard\"", "Mass": "2"}},
    {"viewOf": "", "extendedData": {"Size": "M8", "Description": "Bolt"}}]})");
  const auto bill = session::MakeBillOfMaterials(document);
  EXPECT_EQ(session::BillCsv(bill),
            "Pos,Qty,Description,Size,Mass\r\n1,2,Bolt,M8,\r\n2,1,\"Pin, \"\"hard\"\"\",,2\r\n");
  EXPECT_EQ(session::BillText(bill),
            "Pos   Qty   Description   Size   Mass\n"
            "1     2     Bolt          M8\n"
            "2     1     Pin, \"hard\"          2\n");
}

// The bolt and its nut are one set, which a joint of four bolts needs four times.
TEST(BillOfMaterials, BoltsAreCountedAndWeighedWithTheirViews) {
  const auto document = session::DocumentJson::parse(R"({"unit": "in", "objects": [
    {"viewOf": "", "protocolId": "P2", "formerIds": ["P1"], "extendedData": {"Size": "M8"},
     "connection": "P2<@PID>KC1|K|Main|DataFile|KEELDATA%7CThrJoin<@EL>",
     "parameters": {"N": "4"}, "physicalProperties": {"Mass": "0.5"}},
    {"viewOf": "P1", "extendedData": {"Size": "M8"}, "physicalProperties": {"Mass": "0.25"}},
    {"viewOf": "", "protocolId": "P3", "formerIds": [], "extendedData": {"Size": "4"},
     "connection": "P3<@PID>KC1|K|Main|DataFile|KEELDATA%7CCAM<@EL>", "parameters": {"N": "3"}}]})");
  EXPECT_EQ(session::BillCsv(session::MakeBillOfMaterials(document)),
            "Pos,Qty,Size,Body mass\r\n1,4,M8,0.75 lb\r\n2,1,4,\r\n");
}

// One row a call: what it was, and whether it counts as failed.
TEST(Failures, AreNeitherNegativeAnswersNorWhatIsClosedAlready) {
  const struct {
    std::uint32_t process;
    const char* to;
    const char* function;
    std::vector<std::string> arguments;
    const char* result;
    bool failed;
  } rows[] = {
      {1, "Keelcomm", "Com_OpenProtocol", {"&\"P1\""}, "1", false},
      {2, "Keelcomm", "Com_CloseProtocol", {"\"P1\""}, "0", false},
      {1, "Keelcomm", "Com_CloseProtocol", {"\"P1\""}, "0", true},
      {1, "Keelcomm", "Com_CloseProtocol", {"\"P1\""}, "1", false},
      {1, "Keelcomm", "Com_CloseProtocol", {"\"P1\""}, "0", false},
      {1, "Keelcomm", "Com_CopyProtocol", {"\"P1\"", "&\"P2\""}, "1", false},
      {1, "Keelcomm", "Com_CloseProtocol", {"\"P2\""}, "0", true},
      {1, "Keelcomm", "Com_GetKeyWord", {}, "0", false},
      {1, "Keelcomm", "Com_PutKeyWord", {}, "0", true},
      {1, "Drawboard", "GetAllParts", {}, "0", false},  // asked again below, with more room
      {1, "Keelcomm", "Com_PutKeyWord", {}, "threw: no memory", true},
      {1, "Drawboard", "GetAllParts", {}, "1", false},
      {1, "Drawboard", "GetAssembly", {}, "0", true},
      {1, "Drawboard", "GetAllParts", {}, "1", false},
      {1, "Drawboard", "GetMainHwnd", {}, "0", false},
      {1, "Drawboard", "InsertPart", {}, "0", true},
      {1, "Hexaplan", "Synchronize", {}, "unknown member", true},
      {1, "Datrova", "Datrova", {}, "0", false},
  };
  std::vector<quillmar::recorder::TracedCall> calls;
  for (const auto& row : rows) {
    auto& call = calls.emplace_back();
    call.process = row.process;
    call.to = row.to;
    call.function = row.function;
    call.arguments = row.arguments;
    call.result = row.result;
  }
  const std::vector<bool> failed = session::FailedCalls(calls);
  for (std::size_t i = 0; i < calls.size(); ++i) {
    EXPECT_EQ(failed[i], rows[i].failed) << i << " " << rows[i].function;
  }
}

TEST(Units, AreReadFromTheDataParametersOfAReference) {
  const auto units = session::UnitsOfReference(
      "P1<@PID>KC1|V|2|0<@EL>KC1|D|Data|m|2.5|mm<@EL>KC1|D|Data|n%7C1|1450|1/min<@EL>"
      "KC1|D|Data|z1|21|ND<@EL>KC1|D|Other|x|1|kg<@EL>KC1|K|Data|y|1<@EL>");
  const std::map<std::string, std::string> expected = {{"m", "mm"}, {"n|1", "1/min"}, {"z1", ""}};
  EXPECT_EQ(units, expected);
  EXPECT_TRUE(session::UnitsOfReference("P1<@PID>anything<@EL>").empty());
  const std::string dated = "P1<@PID>KC1|V|2|0<@EL>KC1|K|a|b|c<@EL>";
  EXPECT_EQ(session::LayoutOfReference(dated), "2.0");
  EXPECT_EQ(session::WithoutLayout(dated), "P1<@PID>KC1|K|a|b|c<@EL>");
  const std::map<std::string, std::string> keywords = {{"y", "1|2"}};
  EXPECT_EQ(
      session::KeywordsOfReference("P1<@PID>KC1|K|Data|y|1%7C2<@EL>KC1|K|Other|z|3<@EL>", "Data"),
      keywords);
}
