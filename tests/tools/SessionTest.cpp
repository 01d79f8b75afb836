// The session program on a copy of the image: the whole tour, a saved job on its document, an
// interruption.
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "ToolRun.h"

namespace quillmar::test {
namespace {

using Json = nlohmann::ordered_json;
using testing::HasSubstr;

class SessionTool : public testing::Test {
 protected:
  SessionTool() { std::filesystem::copy(IMAGE, image, std::filesystem::copy_options::recursive); }

  // `before` may put a command in front of the program.
  Ran Session(const std::string& arguments, const std::string& before = {}) const {
    return RunLine(before + " '" + (image / "drive_c/Drawboard/session.exe").string() +
                   "' --out '" + out.string() + "' " + arguments);
  }
  std::string Write(const char* name, const Json& job) const {
    std::ofstream(folder / name) << job.dump();
    return "'" + (folder / name).string() + "'";
  }
  static Json Read(const std::filesystem::path& path) {
    std::ifstream file(path);
    std::stringstream text;
    text << file.rdbuf();
    return Json::parse(text.str(), nullptr, false);
  }
  Json Document() const { return Read(out / "document.json"); }
  // The object of a document by its name.
  static Json Object(const Json& document, const std::string& name) {
    for (const Json& object : document["objects"]) {
      if (object["name"] == name) return object;
    }
    return {};
  }
  static Json& Step(Json& job, const std::string& name) {
    for (Json& step : job["steps"]) {
      if (step.value("name", "") == name) return step;
    }
    throw std::runtime_error("no step " + name);
  }

  TestMachine machine;
  std::filesystem::path folder = machine.HostPath(machine.Folder());
  std::filesystem::path image = folder / "machine";
  std::filesystem::path out = folder / "out";
  std::filesystem::path saved = folder / "saved.json";
};

TEST_F(SessionTool, TheTourShowsAllKindsOfObjectsAndGoesOnFromWhatItSaved) {
  const std::string save = " --save-job '" + saved.string() + "'";
  Ran ran = Session("--job " TOUR_JOB + save);
  ASSERT_EQ(ran.status, 0) << ran.output;
  const Ran check =
      RunLine("'" TOOLS_FOLDER "/quillmar-store' --image '" + image.string() + "' check");
  EXPECT_EQ(check.status, 0) << check.output;
  const Json before = Document();
  std::set<std::string> kinds;
  for (const Json& object : before["objects"]) {
    kinds.insert(object["kind"].get<std::string>());
    // A reference text carries its protocol, or the object has lost it.
    EXPECT_THAT(object["connection"].get<std::string>(), HasSubstr("<@PID>KC1|")) << object["name"];
    EXPECT_THAT(ran.output, HasSubstr(object["name"].get<std::string>() + "  ("));
  }
  EXPECT_EQ(kinds,
            (std::set<std::string>{"parametric part", "shaft", "feature", "cam", "assembly",
                                   "named protocol", "drawing", "symbol", "format", "part"}));
  EXPECT_THAT(ran.output,
              HasSubstr("\"shaft of 1997\" is converted (layout 1.0 before, 2.0 after)"));
  EXPECT_THAT(ran.output, HasSubstr("Quillmar → Hexaplan  Session(130,")) << "the group manager's";

  Json job = Read(saved);
  Step(job, "gears")["inputs"]["b"] = 41;
  // What is cut into the sections of a shaft goes round with the job.
  EXPECT_EQ(Step(job, "output shaft")["inputs"]["KEY_B_4"], 8);
  Step(job, "input shaft")["inputs"]["KEY_L_2"] = 32;
  Step(job, "Cover bolts")["members"][0]["inputs"]["d"] = 10;
  Step(job, "sheet")["scale"] = 0.2;
  ran = Session("--continue --job " + Write("changed.json", job) + save);
  ASSERT_EQ(ran.status, 0) << ran.output;
  EXPECT_THAT(ran.output, HasSubstr("\"output shaft\" has these values"));
  const Json after = Document();
  ASSERT_EQ(after["objects"].size(), before["objects"].size());
  for (const Json& object : before["objects"]) {
    const Json now = Object(after, object["name"]);
    EXPECT_EQ(now["protocolId"], object["protocolId"]) << object["name"];
    EXPECT_THAT(now["connection"].get<std::string>(), HasSubstr("<@PID>KC1|")) << object["name"];
  }
  const auto firstOf = [&](const char* step) {
    return Object(after, Step(job, step)["objects"].begin().key());
  };
  EXPECT_EQ(firstOf("gears")["parameters"]["b"], "41");
  EXPECT_EQ(firstOf("gears")["parameters"]["bk"], "8") << "a keyway in the pinion's bore";
  EXPECT_EQ(firstOf("input shaft")["parameters"]["KEY_L_2"], "32");
  EXPECT_EQ(firstOf("output shaft")["parameters"]["RR_d1_3"], "28.6");
  EXPECT_EQ(firstOf("shaft of 1997")["parameters"]["#spiCount"], "3");
  EXPECT_EQ(firstOf("sheet")["placement"]["scale"], 0.2);
  const Json drawing = firstOf("pinion drawing");
  EXPECT_GT(drawing["changes"], Object(before, drawing["name"])["changes"]);
  job = Read(saved);
  EXPECT_EQ(Step(job, "gears")["inputs"]["b"], 41);
  EXPECT_EQ(Step(job, "input shaft")["inputs"]["KEY_L_2"], 32);
  EXPECT_EQ(Step(job, "input shaft")["inputs"]["#spiType_1"], 4);
  const Json gears = Step(job, "gears")["objects"];
  EXPECT_EQ(gears.begin().value()["parameters"]["b"], 41);
}

TEST_F(SessionTool, ChangedSettingsShowInWhatIsMadeAndChangedLater) {
  const auto cam = [](const char* name, int radius) -> Json {
    return {
        {"do", "calculate"}, {"name", name}, {"calculation", "CAM"}, {"inputs", {{"rb", radius}}}};
  };
  const Json job = {
      {"document", "Names"},
      {"steps",
       {cam("untouched", 30),
        cam("changed", 40),
        {{"do", "settings"}, {"key", "OptBom"}, {"values", {{"TitleExt", "%BOM1% (%CBFName%)"}}}},
        {{"do", "settings"},
         {"key", "Drawboard\\OptGeneral2"},
         {"values", {{"LocalFileName", "%BOM1% %UniqueId%"}, {"ReplaceSpaces", 2}}}},
        {{"do", "log in again"}},
        cam("later", 50),
        {{"do", "change"}, {"name", "changed"}, {"inputs", {{"h", 24}}}}}}};
  const Ran ran = Session("--job " + Write("names.json", job));
  ASSERT_EQ(ran.status, 0) << ran.output;
  std::ifstream file(out / "session.txt");
  const std::string report(std::istreambuf_iterator<char>(file), {});
  struct Row {
    const char* radius;
    const char* caption;
    const char* name;
  };
  const Row rows[] = {{"30", "Disc cam R30 h20 b20", "CAM R30 h20 b20 \\w{8}"},
                      {"40", "Disc cam (CAM)", "CAM R40 h20 b20 \\w{8}"},
                      {"50", "Disc cam (CAM)", "Disc_cam_\\w{8}"}};
  const Json document = Document();
  ASSERT_EQ(document["objects"].size(), std::size(rows));
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    const Json& object = document["objects"][i];
    EXPECT_EQ(object["parameters"]["rb"], rows[i].radius);
    EXPECT_EQ(object["caption"], rows[i].caption);
    const std::string path = object["file"];
    EXPECT_THAT(path,
                testing::ContainsRegex("\\\\Names\\\\" + std::string(rows[i].name) + "\\.dbp$"));
    EXPECT_THAT(report, HasSubstr(std::string("caption    ") + rows[i].caption + "\n"));
    EXPECT_THAT(report, HasSubstr("file       " + path + "\n"));
    EXPECT_THAT(report, HasSubstr(std::string("rb = ") + rows[i].radius + " mm  "));
  }
  EXPECT_THAT(report, testing::ContainsRegex("\n *[0-9.]+ s +session → Quillmar  "
                                             "StartCalculation\\(\"CAM\", \"ISO\"\\) = 1\n"));
}

// A bolt has its nut as a view, which goes along with what becomes of the bolt.
TEST_F(SessionTool, CommandsOnTheSelectedPartEndInTheCad) {
  Json job = {
      {"steps",
       {{{"do", "calculate"}, {"name", "bolt"}, {"calculation", "THRJOIN"}, {"inputs", {{"N", 2}}}},
        {{"do", "update"}, {"name", "bolt"}, {"inputs", {{"t_1", 20}}}},
        {{"do", "copy"}, {"name", "spare"}, {"of", "bolt"}, {"inputs", {{"d", 16}}}},
        {{"do", "replace"}, {"name", "new"}, {"of", "bolt"}, {"inputs", {{"t_1", 30}}}},
        {{"do", "change"}, {"name", "bolt"}, {"inputs", {{"N", 3}}}}}}};
  const std::string save = " --save-job '" + saved.string() + "'";
  Ran ran = Session("--job " + Write("job.json", job) + save);
  ASSERT_EQ(ran.status, 0) << ran.output;
  const Json before = Document();
  const struct {
    const char *diameter, *thickness, *bolts;
    std::size_t formerIds;
  } rows[] = {
      {"12", "30", "3", 1}, {"12", "30", "3", 0}, {"16", "20", "2", 0}, {"16", "20", "2", 0}};
  ASSERT_EQ(before["objects"].size(), std::size(rows));
  std::set<std::string> identities;
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    const Json& object = before["objects"][i];
    EXPECT_EQ(object["parameters"]["d"], rows[i].diameter) << i;
    EXPECT_EQ(object["parameters"]["t_1"], rows[i].thickness) << i;
    EXPECT_EQ(object["parameters"]["N"], rows[i].bolts) << i;
    EXPECT_EQ(object["formerIds"].size(), rows[i].formerIds) << i;
    identities.insert(object["protocolId"].get<std::string>());
  }
  EXPECT_EQ(identities.size(), std::size(rows));

  job = Read(saved);
  Step(job, "spare")["inputs"]["d"] = 20;
  ran = Session("--continue --job " + Write("changed.json", job) + save);
  ASSERT_EQ(ran.status, 0) << ran.output;
  const Json after = Document();
  ASSERT_EQ(after["objects"].size(), std::size(rows));
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    const Json& object = after["objects"][i];
    EXPECT_EQ(object["protocolId"], before["objects"][i]["protocolId"]) << i;
    EXPECT_EQ(object["parameters"]["d"], i < 2 ? "12" : "20") << i;
  }
}

TEST_F(SessionTool, AnInterruptedSessionLeavesWholeFiles) {
  // Nobody plays the data wizard, for which the session waits.
  std::filesystem::remove(image / "drive_c/Vantorel/Fendrake/Datrova.exe");
  const Json job = {{"steps",
                     {{{"do", "calculate"},
                       {"name", "shaft"},
                       {"calculation", "SHAFT"},
                       {"inputs", Json::object()}},
                      {{"do", "user part"}, {"name", "Lever"}}}}};
  const Ran ran = Session(
      "--patience 60 --job " + Write("job.json", job) + " --save-job '" + saved.string() + "'",
      "timeout --signal INT 2");
  EXPECT_THAT(ran.output, HasSubstr("The session has ended early. It was interrupted."));
  EXPECT_THAT(ran.output, HasSubstr("Logged out"));
  EXPECT_EQ(Document()["objects"].size(), 1u);
  EXPECT_EQ(Read(image / "drive_c/Drawboard/Document/Session.json")["objects"].size(), 1u);
  EXPECT_FALSE(std::filesystem::exists(saved)) << "it was not carried out";
}

TEST_F(SessionTool, OnlyADocumentThatIsThereCanBeGoneOnWith) {
  const Json job = {{"document", "Nowhere"}, {"steps", {{{"do", "refresh links"}}}}};
  const Ran ran = Session("--continue --job " + Write("job.json", job));
  EXPECT_EQ(ran.status, 1);
  EXPECT_THAT(ran.output, HasSubstr("There is no document \"Nowhere\" to go on with"));
}

}  // namespace
}  // namespace quillmar::test
