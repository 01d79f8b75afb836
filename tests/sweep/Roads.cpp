#include "Roads.h"

#include "quillmar/CalculationHost.h"

namespace quillmar::test {
namespace {

constexpr const char* kNotReady = "Protocol is not ready";

std::vector<std::string> NotReady(std::size_t times) {
  return std::vector<std::string>(times, kNotReady);
}

void Append(Procedure& procedure, const Procedure& more) {
  procedure.insert(procedure.end(), more.begin(), more.end());
}

Step Label(const std::string& label) { return {.label = label, .call = ""}; }

Step Report(const std::string& label, const std::string& report, const std::string& next) {
  return {.label = label, .call = "", .reports = {report}, .onFailure = next};
}

Step GetKey(const std::string& section, const std::string& keyword,
            const std::string& onFailure = "", const std::string& onSuccess = "") {
  return {.label = "",
          .call = "Com_GetKeyWord " + section + "|" + keyword,
          .reports = {"Cannot read from section " + section + ", keyword " + keyword + "."},
          .onFailure = onFailure,
          .onSuccess = onSuccess};
}

Step MissingKey(const std::string& section, const std::string& keyword) {
  Step step = GetKey(section, keyword);
  step.missing = true;
  return step;
}

Step PutKey(const std::string& section, const std::string& keyword,
            const std::string& onFailure = "") {
  return {.label = "",
          .call = "Com_PutKeyWord " + section + "|" + keyword,
          .reports = {"Cannot write to section " + section + ", keyword " + keyword + "."},
          .onFailure = onFailure};
}

Step EraseKey(const std::string& section, const std::string& keyword) {
  return {.label = "",
          .call = "Com_PutKeyWord " + section + "|" + keyword,
          .reports = {"Cannot erase keyword " + keyword + " in section " + section + "."}};
}

Step GetGlobal(const std::string& item, const std::string& onFailure = "",
               const std::string& onSuccess = "") {
  return {.label = "",
          .call = "Com_GetGlobalData " + item,
          .reports = {"Cannot read global data, item: " + item},
          .onFailure = onFailure,
          .onSuccess = onSuccess};
}

Step PutGlobal(const std::string& item) {
  return {
      .label = "", .call = "Com_PutGlobalData " + item, .reports = {"Cannot write global data"}};
}

// A call whose failure is nobody's report.
Step Silent(const std::string& call) { return {.label = "", .call = call}; }

Step Named(const std::string& label, Step step) {
  step.label = label;
  return step;
}

// The data-file name: the second place is asked when the first does not tell.
Procedure DataFileName(const std::string& name) {
  return {GetKey("Main", "DataFile", name + "Files", name + "Known"),
          Named(name + "Files", MissingKey("Files", "DataFile")), Label(name + "Known")};
}

Procedure FirstOfCaption(const std::string& name) {
  return {GetKey("Object", "CadDescription", name + "Global", name + "Known"),
          Named(name + "Global", GetGlobal("Caption", name + "Boms", name + "Known")),
          Named(name + "Boms", GetGlobal("Bom1")),
          GetGlobal("Bom2"),
          GetGlobal("Bom3"),
          Label(name + "Known")};
}

// The caption, then the template "%Caption%" expanded.
Procedure Caption(const std::string& name) {
  Procedure steps = FirstOfCaption(name + "Caption");
  steps.push_back(GetKey("Grupova", "UseUserDescription"));
  Append(steps, FirstOfCaption(name + "Token"));
  return steps;
}

Procedure LocalFlag(const std::string& whenNotKept) {
  return {GetKey("Cadx", "ReallySmartPart"), PutKey("Cadx", "ReallySmartPart", whenNotKept)};
}

Procedure Mass() {
  return {{.label = "", .call = "Com_GetDataParam mass", .reports = {"Cannot read data param"}},
          PutGlobal("BOM5"),
          PutGlobal("BOM6")};
}

Step ModelId() {
  return {.label = "", .call = "Com_GetModelID", .reports = {"Cannot read model ID"}};
}

// The protocol has one data parameter, the mass. A list without group ends with the view key.
Procedure ParameterList(const std::string& name, bool withHead) {
  Procedure steps{{.label = "",
                   .call = "Com_GetDataCount",
                   .reports = {"Cannot data count", "There are no data in protocol"},
                   .onFailure = name + "Built"},
                  {.label = "", .call = "Com_GetDataItem 1", .reports = {"Cannot read data item"}}};
  if (withHead) steps.push_back(Silent("Com_GetViewKey"));
  steps.push_back(Label(name + "Built"));
  return steps;
}

Procedure Connection() {
  return {{.label = "", .call = "Com_GetBuffer", .reports = {"Cannot read buffer data"}},
          GetKey("Object", "ProtID")};
}

Procedure FinishOptim() { return {GetKey("Cadx", "Optim"), PutKey("Cadx", "Optim")}; }

Procedure ModelPath() { return {ModelId(), GetGlobal("Path")}; }

// --- the dispatcher ---

// Before each call the host is asked whether it is ready, and told of the session.
Procedure Connect(const std::string& name) {
  return {{.label = "", .call = "host 16", .onFailure = name + "Connected", .askedAgain = true},
          Silent("GetMainHwnd"),
          Silent("host 50"),
          Silent("host 47"),
          Silent("host 33"),
          Silent("host 30"),
          Silent("host 29"),
          Silent("host 49"),
          Label(name + "Connected")};
}

Procedure AskHost() {
  Procedure steps = Connect("code");
  steps.push_back(Silent("host 3"));
  Append(steps, Connect("list"));
  steps.push_back({.label = "", .call = "host 7", .onFailure = kEnd});
  return steps;
}

Procedure FirstLook() {
  std::vector<std::string> unopened = NotReady(3);
  unopened.insert(unopened.begin(), "Cannot open protocol.");
  return {{.label = "", .call = "Com_OpenProtocol", .reports = unopened, .onFailure = "perform"},
          GetKey("Main", "DataFile"),
          MissingKey("Special", "LetMeKnow"),
          Silent("Com_CloseProtocol")};
}

Procedure OpenAndMakePart() {
  Procedure steps{{.label = "perform",
                   .call = "Com_OpenProtocol",
                   .reports = {"Cannot open protocol.", "Cannot open protocol", kNotReady},
                   .onFailure = kEnd}};
  Append(steps, DataFileName("factory"));
  steps.push_back(GetGlobal("TypeOfPart", "plain"));
  Append(steps, LocalFlag(""));
  Append(steps, Caption("factory"));
  return steps;
}

Procedure Activate(const std::string& name) {
  return {Silent("GetMainHwndForActivation"), Silent("McSetForegroundWindow"),
          GetKey("Hexaplan", "UpdateAll"),    GetGlobal("WDOperation", name + "Activated"),
          PutGlobal("WDOperation"),           Label(name + "Activated")};
}

Procedure TakeOverState() {
  Procedure steps{GetKey("Cadx", "FromCad"), ModelId(),
                  PutGlobal("OldModelId"),   GetKey("Cadx", "Loop"),
                  PutKey("Cadx", "Loop"),    PutKey("Cadx", "Optim"),
                  PutGlobal("BOM7")};
  Append(steps, Mass());
  return steps;
}

Procedure InsertShaft() {
  Procedure steps = LocalFlag("failed");
  Append(steps, Caption("insert"));
  Append(steps, TakeOverState());
  steps.push_back(MissingKey("McwViews", "View1"));
  Append(steps, Connection());
  Append(steps, ParameterList("parameters", true));
  Append(steps, ModelPath());
  Append(steps, DataFileName("name"));
  steps.push_back(GetGlobal("Model"));
  steps.push_back(
      {.label = "",
       .call = "InsertShaft",
       .reports = {"Cannot insert parameter part - SHAFT", "Cannot insert part into cad system."},
       .onFailure = "failed"});
  Append(steps, FinishOptim());
  return steps;
}

// A protocol whose kind could not be read gets a part that cannot be inserted.
Procedure InsertPlain() {
  Procedure steps = TakeOverState();
  steps.push_back(Report("", "Cannot create part file.", "failed"));
  return steps;
}

Procedure StartUpdate() {
  Procedure steps = Mass();
  Append(steps, {GetKey("Cadx", "Loop"), PutKey("Cadx", "Loop"), GetKey("Cadx", "FromCad"),
                 PutKey("Cadx", "Optim")});
  return steps;
}

Procedure UpdateShaft() {
  Procedure steps = StartUpdate();
  steps.push_back(PutKey("Cadx", "ModelError"));
  steps.push_back(Silent("Link_GetLinksToCount"));
  Append(steps, Connection());
  Append(steps, ParameterList("parameters", true));
  steps.push_back(GetGlobal("Changed"));
  Append(steps, ModelPath());
  steps.push_back({.label = "",
                   .call = "ChangeShaft",
                   .reports = {"Cannot insert parameter part - SHAFT"},
                   .onFailure = "failed"});
  Append(steps, ParameterList("states", false));
  Append(steps, FinishOptim());
  return steps;
}

Procedure UpdatePlain() {
  Procedure steps = Caption("update");
  Append(steps, StartUpdate());
  steps.push_back(Report("", "", "failed"));
  steps.back().reports.clear();
  return steps;
}

// The protocol is opened again when the store says that it is gone, and brought up to date.
Procedure BringUpToDate(const std::string& name) {
  Procedure steps{
      {.label = name + "UpToDate",
       .call = "Com_IsProtocolExists",
       .onFailure = name + "Reopen",
       .onSuccess = name + "Open"},
      {.label = name + "Reopen",
       .call = "Com_OpenProtocol",
       .reports = {"Cannot open protocol."},
       .onFailure = name + "NotReady"},
      {.label = name + "Open", .call = "Com_GetVersion", .onFailure = name + "Unversioned"},
      GetKey("Main", "DataFile", name + "Files", name + "Version"),
      Named(name + "Files", MissingKey("Files", "DataFile"))};
  steps.back().onFailure = name + "Mass";
  // A protocol of an unknown version stays as it is.
  steps.push_back(
      Named(name + "Unversioned", GetKey("Main", "DataFile", name + "Files", name + "Mass")));
  steps.push_back(Named(name + "Version", Silent("Com_SetVersion 2|0")));
  steps.push_back(Label(name + "Mass"));
  Append(steps, Mass());
  return steps;
}

// The data file is looked for in two places, then three values of the mass, then `more` operations.
Step NothingReady(std::size_t more, const std::string& next) {
  return {.label = "", .call = "", .reports = NotReady(2 + 3 + more), .onFailure = next};
}

Procedure Succeed() {
  Procedure steps = BringUpToDate("success");
  Append(steps, {GetKey("Cadx", "DoNotErase", "successClose"),
                 PutKey("Cadx", "FromCad"),
                 PutKey("Cadx", "Drawn"),
                 Named("successClose", Silent("Com_CloseProtocol")),
                 {.label = "", .call = "", .onFailure = kEnd},
                 Named("successNotReady", Silent("Com_GetVersion")),
                 // the marker "do not erase" and closing
                 NothingReady(2, kEnd)});
  return steps;
}

Procedure FailStep(const std::string& message, bool updateFailed) {
  Procedure steps{Label("failed")};
  if (!message.empty()) steps.push_back(Report("", message, ""));
  Append(steps, BringUpToDate("failure"));
  steps.push_back(GetKey("Hexaplan", "FromSymbols"));
  steps.push_back(EraseKey("Hexaplan", "FromSymbols"));
  if (!updateFailed) steps.push_back(EraseKey("Cadx", "ReallySmartPart"));
  steps.push_back(Silent("Com_CloseProtocol"));
  steps.push_back(Named("show", Silent("Com_CloseProtocol")));
  Append(steps, Connect("show"));
  Append(steps, {Silent("host 2"),
                 {.label = "", .call = "", .onFailure = kEnd},
                 Named("failureNotReady", Silent("Com_GetVersion")),
                 // reading and erasing of keywords, and closing
                 NothingReady(updateFailed ? 3 : 4, "show")});
  return steps;
}

}  // namespace

Procedure ShaftCallback(int code) {
  const bool insert = code == QM_CALLBACK_NEW_PART;
  const bool update = code == QM_CALLBACK_RECALCULATED;
  Procedure road = AskHost();
  Append(road, FirstLook());
  Append(road, OpenAndMakePart());
  Append(road, Activate("shaft"));
  if (insert) Append(road, InsertShaft());
  if (update) Append(road, UpdateShaft());
  if (insert || update) Append(road, Succeed());
  if (!insert && !update) road.push_back({.label = "", .call = "", .onFailure = "failed"});
  road.push_back(Label("plain"));
  Append(road, Activate("plain"));
  if (insert) Append(road, InsertPlain());
  if (update) Append(road, UpdatePlain());
  Append(road, FailStep(insert   ? "Cannot insert part"
                        : update ? "Cannot update part"
                                 : "",
                        update));
  return road;
}

}  // namespace quillmar::test
