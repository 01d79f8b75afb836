#include "Steps.h"

namespace quillmar::test {
namespace {

constexpr const char* kCannotReadList = "Cannot get list of parameters from CAD";

Procedure Reading(Procedure read, const std::string& onSuccess = "") {
  read.front().reads = true;
  read.front().onSuccess = onSuccess;
  return read;
}

Procedure FirstOfCaption() {
  return Block({GetKey("Object", "CadDescription", "global", "known"),
                Named("global", GetGlobal("Caption", "boms", "known")),
                Named("boms", GetGlobal("Bom1")), GetGlobal("Bom2"), GetGlobal("Bom3"),
                Label("known")});
}

}  // namespace

Procedure Label(const std::string& label) { return {{.label = label}}; }

Procedure Jump(const std::string& label) { return {{.onFailure = label}}; }

Procedure Report(const std::string& report, const std::string& next) {
  return {{.reports = {report}, .onFailure = next}};
}

Procedure Result(int result, const std::string& next) {
  return {{.onFailure = next, .result = result}};
}

Procedure Call(const std::string& call, const std::string& onFailure,
               const std::vector<std::string>& reports) {
  return {{.call = call, .reports = reports, .onFailure = onFailure}};
}

Procedure Store(const std::string& call, const std::string& report, const std::string& onFailure,
                Effect effect) {
  Step step{.call = call, .onFailure = onFailure, .object = kThis, .effect = effect};
  if (!report.empty()) step.reports = {report};
  return {step};
}

Procedure Missing(Procedure read) {
  read.front().missing = true;
  return read;
}

Procedure Named(const std::string& label, Procedure steps) {
  steps.front().label = label;
  return steps;
}

Procedure GetKey(const std::string& section, const std::string& keyword,
                 const std::string& onFailure, const std::string& onSuccess) {
  return Reading(
      Store("Com_GetKeyWord " + section + "|" + keyword,
            "Cannot read from section " + section + ", keyword " + keyword + ".", onFailure),
      onSuccess);
}

Procedure PutKey(const std::string& section, const std::string& keyword,
                 const std::string& onFailure) {
  return Store("Com_PutKeyWord " + section + "|" + keyword,
               "Cannot write to section " + section + ", keyword " + keyword + ".", onFailure);
}

Procedure EraseKey(const std::string& section, const std::string& keyword) {
  return Reading(Store("Com_PutKeyWord " + section + "|" + keyword,
                       "Cannot erase keyword " + keyword + " in section " + section + "."));
}

Procedure GetGlobal(const std::string& item, const std::string& onFailure,
                    const std::string& onSuccess) {
  return Reading(
      Store("Com_GetGlobalData " + item, "Cannot read global data, item: " + item, onFailure),
      onSuccess);
}

Procedure PutGlobal(const std::string& item, const std::string& onFailure) {
  return Store("Com_PutGlobalData " + item, "Cannot write global data", onFailure);
}

Procedure GetParameter(const std::string& name) {
  return Reading(Store("Com_GetDataParam " + name, "Cannot read data param"));
}

Procedure GetModelId() { return Store("Com_GetModelID", "Cannot read model ID"); }

Procedure Open(const std::string& onFailure) {
  return Store("Com_OpenProtocol", "Cannot open protocol.", onFailure, Effect::Opens);
}

Procedure Close() { return Store("Com_CloseProtocol"); }

// What cannot be erased is closed.
Procedure EraseById() {
  Procedure erase = Call("Com_EraseProtocol");
  erase.front().onSuccess = "erased";
  return Block({erase, Call("Com_CloseProtocol"), Label("erased")});
}

Procedure Erase() {
  Procedure erase = Store("Com_EraseProtocol", "", "", Effect::Erases);
  erase.front().onSuccess = "erased";
  return Block({erase, Call("Com_CloseProtocol"), Label("erased")});
}

// --- protocols ---

// The object had none before. What was made and cannot be opened again is erased.
Procedure CreateNew(const std::string& onFailure) {
  return Block(
      {Close(), Store("Com_OpenProtocol", "Cannot open protocol.", onFailure, Effect::Creates),
       Open("made"), Jump("usable"), Named("made", EraseById()), Jump(onFailure), Label("usable")});
}

// What the store holds under that identifier is thrown away.
Procedure OpenReference(Held held, const std::string& unopened, const std::string& unfilled) {
  const Procedure exists = Call("Com_IsProtocolExists", "anew");
  return Block({held == Held::InStore ? exists : Missing(exists), Open(unopened),
                Missing(GetGlobal("OwnerHWND")), Erase(), Named("anew", Open(unopened)),
                Store("Com_SetVersion 1|0", "", unfilled, Effect::Any),
                Store("Com_PutBuffer", "Cannot write buffer data", unfilled, Effect::Fills)});
}

Procedure Connection() {
  return Joined({Store("Com_GetBuffer", "Cannot read buffer data"), GetKey("Object", "ProtID")});
}

// The second place is asked when the first does not tell.
Procedure DataFileName(const std::string& onUnknown) {
  return Block({GetKey("Main", "DataFile", "files", "known"),
                Named("files", Missing(GetKey("Files", "DataFile", onUnknown))), Label("known")});
}

Procedure Mass() { return Joined({GetParameter("mass"), PutGlobal("BOM5"), PutGlobal("BOM6")}); }

// --- parts ---

Procedure MakePart(const std::string& none) {
  return Block({DataFileName(), GetGlobal("TypeOfPart", none), LocalFlag(""), Caption()});
}

Procedure LocalFlag(const std::string& whenNotKept) {
  return Joined(
      {GetKey("Cadx", "ReallySmartPart"), PutKey("Cadx", "ReallySmartPart", whenNotKept)});
}

// The caption, then the template "%Caption%" expanded.
Procedure Caption() {
  return Joined({FirstOfCaption(), GetKey("Grupova", "UseUserDescription"), FirstOfCaption()});
}

Procedure ParameterList(bool withHead) {
  Procedure count = Store("Com_GetDataCount", "Cannot data count", "built");
  count.front().reports.push_back("There are no data in protocol");
  return Block({count, Store("Com_GetDataItem 1", "Cannot read data item"),
                withHead ? Store("Com_GetViewKey") : Procedure(), Label("built")});
}

Procedure ModelPath() { return Joined({GetModelId(), GetGlobal("Path")}); }

Procedure ReadBack(const std::string& onFailure) {
  return Block({GetModelId(), PutGlobal("OldModelId"),
                // Twice: the length is asked for, then the list.
                Call("GetParameterListEx", onFailure, {kCannotReadList}),
                Call("GetParameterListEx", onFailure, {kCannotReadList}),
                GetKey("Cadx", "CADVars", "forgotten"), EraseKey("Data", "a"),
                Named("forgotten", Missing(GetParameter("b"))),
                Store("Com_PutDataParam b", "Cannot write data param"), PutKey("Cadx", "CADVars"),
                Call("GetFeaturesState", "", {"Cannot get list of feature states from CAD"})});
}

Procedure PhysicalProperties() {
  return Block({GetGlobal("TypeOfPart", "bodiless"),
                Call("GetReferenceDims", "", {"Cannot get list of reference dims from CAD"}),
                Call("GetPhysicalPropertiesEx", "", {kCannotReadList}), Label("bodiless")});
}

Procedure PartsVisibility() {
  return Call("GetPartsVisibility", "", {"Cannot get list of parts state from CAD"});
}

Procedure Obtain(const std::string& onFailure) {
  return Block(
      {// Twice: the length is asked for, then the text.
       Call("GetProtocol", onFailure), Call("GetProtocol", onFailure),
       On("obtained", {OpenReference(Held::InStore, "unopened", "unopened"),
                       PutKey("Cadx", "FromCad"), PutKey("Cadx", "Drawn"), PutGlobal("Changed"),
                       GetModelId(), PutGlobal("OldModelId"), PartsVisibility(), Close(),
                       Jump("done"), Label("unopened"), Close(), Jump(onFailure), Label("done")})});
}

// --- host ---

Procedure HostCall(int method, const std::string& onFailure) {
  Procedure ready = Call("host 16", "connected");
  ready.front().askedAgain = true;
  return Block({ready, Call("GetMainHwnd"), Call("host 50"), Call("host 47"), Call("host 33"),
                Call("host 30"), Call("host 29"), Call("host 49"), Label("connected"),
                Call("host " + std::to_string(method), onFailure)});
}

}  // namespace quillmar::test
