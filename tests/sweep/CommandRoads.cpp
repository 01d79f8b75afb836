// What the user and the CAD add-in ask for.
#include "Roads.h"
#include "Steps.h"

namespace quillmar::test {
namespace {

// --- commands on the selected object ---

// A calculation of a kind without changes between the layouts.
Procedure Convert() {
  return Block({Store("Com_GetVersion", "", "unversioned", Effect::Any), DataFileName("converted"),
                Store("Com_SetVersion 2|0", "", "converted", Effect::Any),
                GetKey("Main", "DataFile"), Jump("converted"), Label("unversioned"), DataFileName(),
                Label("converted")});
}

Procedure Register() {
  return Block({PutKey("Object", "ProtID"),
                Missing(Store("Com_GetDataFile", "Cannot read DataFile name")),
                PutKey("Cadx", "FromCad"), PutKey("Cadx", "Drawn"), PutGlobal("Changed"),
                MakePart("undescribed"), ReadBack("undescribed"), Call("GetAssemblyPath"),
                PartsVisibility(), PhysicalProperties(), Jump("registered"), Label("undescribed"),
                Report("Cannot get extended information", "discard"), Label("registered")});
}

// The selected object's protocol is a working copy: `work` keeps it, or goes to "discard". Objects
// that were erased or never open say at their end that they are not ready.
Procedure OnSelected(const Procedure& work) {
  return On("selected", {Call("GetPart", "end"),
                         // Twice: the length is asked for, then the text.
                         Call("GetProtocol", "end"), Call("GetProtocol", "end"),
                         OpenReference(Held::Nowhere, "end", "discard"), Convert(), Register(),
                         Call("Com_IsProtocolExists"), work, Jump("end"), Label("discard"), Erase(),
                         Named("end", Close())});
}

Procedure Mark(const char* flag) { return PutKey("Cadx", flag, "discard"); }

// The copy gets an identity of its own and is what the host works on.
Procedure HandOverCopy() {
  return Block(
      {On("copy", {Store("Com_CopyProtocol", "Cannot copy protocol.", "uncopied", Effect::Opens),
                   PutKey("Object", "ProtID", "anonymous"), Jump("copied"),
                   Named("anonymous", Erase()), Named("uncopied", Close()), Jump("discard")}),
       Label("copied"), Close(), On("copy", {Close()}), HostCall(19), On("copy", {Close()})});
}

Procedure NoNewView() { return GetKey("Cadx", "NewView"); }

// --- exports ---

// A protocol that lives for one question. When it cannot be filled, it goes on at `unfilled`; the
// question then ends with Forget.
Procedure Temporary(const std::string& unmade, const std::string& unfilled) {
  return Joined({CreateNew(unmade),
                 Store("Com_PutBuffer", "Cannot write buffer data", unfilled, Effect::Fills)});
}

Procedure Forget(const std::string& unmade) { return Joined({Erase(), Named(unmade, Close())}); }

// The writes of a new protocol stop at the first that fails.
Procedure Written(std::initializer_list<Procedure> writes) {
  Procedure steps = Joined(writes);
  for (Step& step : steps) step.onFailure = "end";
  return steps;
}

Procedure NewProtocol(const Procedure& contents) {
  return On("new", {CreateNew("end"), contents, Connection(), Result(1), Named("end", Close())});
}

Procedure PutViewKey() { return Store("Com_PutViewKey", "Cannot write view."); }

}  // namespace

Procedure ReplaceCommand() {
  return OnSelected(Joined({DataFileName(), Mark("id"), Mark("update"), GetKey("Object", "ProtID"),
                            Mark("OldPartPID"), HandOverCopy()}));
}

Procedure UpdateCommand() {
  return OnSelected(
      Joined({NoNewView(), DataFileName(), Mark("id"), Mark("update"), Close(), HostCall(27)}));
}

Procedure CopyCommand() {
  return OnSelected(Joined({NoNewView(), DataFileName(), Mark("id"), HandOverCopy()}));
}

Procedure CopyOfProtocol() {
  return On("copy",
            {Call("Link_CreateUniquePID", kEnd, {"Cannot create ProtocolID"}),
             OpenReference(Held::Nowhere, "unmade", "unfilled"),
             Store("Com_EraseSection LinksFrom"), Store("Com_EraseSection LinksTo"),
             Store("Com_EraseSection MCWData"), Store("Com_EraseSection McwParts"), Connection(),
             Result(1), Close(), Jump(kEnd), Label("unfilled"), Forget("unmade")});
}

// Of a bolted connection; without the name of its calculation it passes for another one.
Procedure TypeOfProtocol() {
  return On(
      "question",
      {Temporary("unmade", "forget"), GetKey("MCWData", "MCWDataFile", "calculation"),
       Result(2, "kind"), Label("calculation"), Result(1), GetKey("Calc", "CalcName"),
       Label("kind"), DataFileName(), GetGlobal("TypeOfPart"), Label("forget"), Forget("unmade")});
}

// A bolt is all that the main protocol names.
Procedure BoltedProtocols() {
  const auto parts = [] {
    Procedure steps = Block({GetKey("MCWParts", "Bolt", "others"), Result(2), Label("others")});
    for (const char* part : {"TopWasher1", "TopWasher2", "BottomWasher1", "BottomWasher2", "Nut1",
                             "Nut2", "SplitPin", "Hole1", "Hole2", "Hole3"}) {
      steps = Joined({steps, Missing(GetKey("MCWParts", part))});
    }
    return steps;
  };
  return Joined(
      {On("question", {Temporary("unmade", "forget"), GetKey("MCWData", "MCWMainProt", "unknown"),
                       Erase(), Close(), Jump("main"), Label("unknown"), Erase(), Close(),
                       Jump("nameless"), Label("forget"), Forget("unmade"), Jump(kEnd)}),
       Label("main"), Result(1),
       On("main", {Temporary("unmade", ""), parts(), Forget("end"), Jump(kEnd), Label("unmade"),
                   parts(), Close(), Jump(kEnd)}),
       Label("nameless"),
       On("main", {CreateNew("unmade"), parts(), Forget("end"), Jump(kEnd), Label("unmade"),
                   parts(), Close()})});
}

Procedure ObtainedProtocol() { return Joined({Obtain(kEnd), Result(1)}); }

Procedure UserProtocol() {
  return NewProtocol(Written(
      {PutGlobal("Standard"), PutGlobal("PrfStd"), PutGlobal("Language"),
       PutKey("Main", "DataFile"), PutViewKey(), PutGlobal("Model"), PutGlobal("TypeOfPart"),
       PutKey("Cadx", "SmartPart"), PutGlobal("Caption"), PutKey("Grupova", "UseUserDescription"),
       PutKey("Grupova", "UserDescription"), PutKey("Object", "CADDescription")}));
}

// The parameter writer goes on to its end before it tells of a failure.
Procedure PartProtocol() {
  const std::string notWritten = "Cannot write data param";
  return NewProtocol(
      Joined({Written({PutGlobal("Standard"), PutGlobal("Language"), PutKey("Main", "DataFile"),
                       PutViewKey(), PutGlobal("TypeOfPart")}),
              Missing(GetKey("Cadx", "CADVars")), Missing(GetParameter("b")),
              Store("Com_PutDataParam b", notWritten, "incomplete"),
              PutKey("Cadx", "CADVars", "end"), Jump("complete"),
              Named("incomplete", PutKey("Cadx", "CADVars")), Jump("end"), Label("complete")}));
}

}  // namespace quillmar::test
