#include "session/JobWriter.h"

#include <algorithm>
#include <map>
#include <set>

#include "drawboard/CodePage.h"
#include "session/JobFields.h"
#include "session/Model.h"

namespace session {
namespace {

using drawboard::ToUtf8;
using Names = std::vector<std::string>;

// Numbers as numbers, in the fewest digits.
JobJson NumberJson(const std::string& text) {
  const JobJson number = JobJson::parse(WithPoint(text), nullptr, false);
  return number.is_number() ? number : JobJson(text);
}

class Writer {
 public:
  Writer(const Job& job, const SessionData& session) : job(job) {
    document = session.document.empty() ? DocumentJson{{"objects", DocumentJson::array()}}
                                        : DocumentJson::parse(session.document);
    for (const StepRecord& step : session.steps) {
      if (!step.name.empty() && !step.objects.empty()) objects[step.name] = step.objects;
    }
    for (const Step& step : job.steps) {
      if (const auto* part = std::get_if<OldPart>(&step)) olderParts.insert(part->name);
      if (const auto* change = std::get_if<Change>(&step)) Add(*change);
      if (const auto* update = std::get_if<Update>(&step)) Add(*update);
    }
  }

  std::string Text() {
    JobJson steps = JobJson::array();
    for (const Step& step : job.steps) {
      if (!IsTakenUp(step)) steps.push_back(StepJson(step));
    }
    const JobJson json = {{"name", ToUtf8(job.name)},
                          {"document", ToUtf8(job.document)},
                          {"unit", job.unit},
                          {"steps", steps}};
    return json.dump(2) + "\n";
  }

 private:
  void Add(const auto& change) {
    for (const auto& input : change.inputs) changes[change.name].push_back(input);
  }

  // Changes stand in the calculations themselves. An older part is given in another layout, so its
  // changes stay steps of their own.
  bool IsTakenUp(const Step& step) const {
    const auto* change = std::get_if<Change>(&step);
    return change != nullptr && olderParts.count(change->name) == 0;
  }

  JobJson StepJson(const Step& step) {
    JobJson json = {{"do", WordOf(step)}};
    const std::string name = ToUtf8(NameOf(step));
    if (!name.empty()) json["name"] = name;
    std::visit([&](const auto& kind) { Write(kind, json); }, step);
    if (ObjectsOf(step) != nullptr) json["objects"] = ObjectsJson(name);
    return json;
  }

  void Write(const Calculation& step, JobJson& json) {
    json["calculation"] = step.calculation;
    json["standard"] = ToUtf8(step.standard);
    if (!step.on.empty()) json["on"] = ToUtf8(step.on);
    WriteInputs(step, json);
  }

  void WritePartCommand(const auto& step, JobJson& json) {
    json["of"] = ToUtf8(step.of);
    WriteInputs(step, json);
  }

  void WriteInputs(const auto& step, JobJson& json) {
    Inputs inputs = step.inputs;
    for (const auto& [name, value] : changes[step.name]) PutInput(inputs, name, value);
    json["inputs"] = InputsJson(inputs, objects[ToUtf8(step.name)]);
  }

  void Write(const Change& step, JobJson& json) {
    json["inputs"] = InputsJson(step.inputs, objects[ToUtf8(step.name)]);
  }
  void Write(const Update& step, JobJson& json) {
    json["inputs"] = InputsJson(step.inputs, objects[ToUtf8(step.name)]);
  }
  void Write(const Copy& step, JobJson& json) { WritePartCommand(step, json); }
  void Write(const Replace& step, JobJson& json) { WritePartCommand(step, json); }
  void Write(const NewLogin&, JobJson&) {}
  void Write(const Assembly&, JobJson&) {}
  void Write(const LinkRefresh&, JobJson&) {}
  void Write(const BillRefresh&, JobJson&) {}
  void Write(const GroupManager&, JobJson&) {}

  void Write(const Settings& step, JobJson& json) {
    json["key"] = ToUtf8(step.key);
    json["values"] = JobJson::object();
    for (const Settings::Value& each : step.values) {
      JobJson& value = json["values"][ToUtf8(each.name)];
      if (const auto* text = std::get_if<std::string>(&each.value)) {
        value = ToUtf8(*text);
      } else {
        value = std::get<std::uint32_t>(each.value);
      }
    }
  }

  // The members' own objects are not told apart by the group, so their inputs stay as the job has
  // them.
  void Write(const Group& step, JobJson& json) {
    json["members"] = JobJson::array();
    for (const Group::Member& member : step.members) {
      json["members"].push_back(
          {{"calculation", member.calculation}, {"inputs", InputsJson(member.inputs, {})}});
    }
  }

  void Write(const Drawing& step, JobJson& json) { json["of"] = ToUtf8(step.of); }
  void Write(const Picture& step, JobJson& json) { json["of"] = ToUtf8(step.of); }

  void Write(const Format& step, JobJson& json) {
    json["standard"] = ToUtf8(step.standard);
    json["scale"] = step.scale;
  }

  void Write(const OldPart& step, JobJson& json) {
    json["calculation"] = step.calculation;
    json["standard"] = ToUtf8(step.standard);
    json["kind"] = step.kind;
    json["values"] = InputsJson(step.values, {});
  }

  void Write(const UserPart& step, JobJson& json) {
    json["views"] = ToUtf8(step.views);
    json["unit"] = step.units == 0 ? "mm" : "in";
    json["x"] = step.x;
    json["y"] = step.y;
    json["as"] = step.description == UserPart::Description::Lisp ? "LISP" : "DXF";
  }

  // A value keeps its spelling while the model has the same.
  JobJson InputsJson(const Inputs& inputs, const Names& names) const {
    JobJson json = JobJson::object();
    for (const auto& [name, value] : inputs) {
      const auto stands = ParameterOf(document, names, ToUtf8(name));
      const bool kept = !stands || AreEqual(NumberOf(*stands), NumberOf(value));
      json[ToUtf8(name)] = NumberJson(kept ? ToUtf8(value) : *stands);
    }
    return json;
  }

  // Of what stands in the document.
  JobJson ObjectsJson(const std::string& step) {
    JobJson json = JobJson::object();
    for (const std::string& name : objects[step]) {
      for (const DocumentJson& object : document["objects"]) {
        if (object["name"] == name) json[name] = ObjectJson(object);
      }
    }
    return json;
  }

  static JobJson ObjectJson(const DocumentJson& object) {
    JobJson parameters = JobJson::object();
    for (const auto& [name, value] : object["parameters"].items()) {
      if (!BelongsToLongRow(object, name)) {
        parameters[name] = NumberJson(value.get<std::string>());
      }
    }
    return {{"protocol", object["protocolId"]}, {"parameters", parameters}};
  }

  const Job& job;
  DocumentJson document;
  std::map<std::string, Names> objects;   // by name of the step, UTF-8
  std::map<std::string, Inputs> changes;  // by name of the calculation
  std::set<std::string> olderParts;
};

}  // namespace

std::string WriteJob(const Job& job, const SessionData& session) {
  return Writer(job, session).Text();
}

}  // namespace session
