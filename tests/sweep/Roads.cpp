// What the host reports.
#include "Roads.h"

#include "Conversions.h"
#include "Steps.h"

namespace quillmar::test {
namespace {

// What the CAD is asked for, and how the procedure behind it goes on.
struct Act {
  Procedure shaft = Jump("failed");
  Procedure plain = Jump("failed");  // of a protocol whose kind could not be read
  std::string failure = "";
  bool updateFailed = false;
  bool tellsHost = false;
  Procedure convert = Store("Com_SetVersion 2|0", "", "", Effect::Any);
};

enum class Insertion { Plain, Clipboard, Child, View };

bool IsView(Insertion mode) { return mode == Insertion::Child || mode == Insertion::View; }

std::string View(int number) { return "view" + std::to_string(number); }

Procedure Numbered(int count, Procedure (*piece)(int number)) {
  Procedure steps;
  for (int number = 1; number <= count; ++number) steps = Joined({steps, piece(number)});
  return steps;
}

Procedure CloseViews(int count) {
  return Numbered(count, [](int number) { return On(View(number), {Close()}); });
}

// The store is asked under the view's name while nobody has it open.
Procedure Announce(const std::string& view) {
  return Joined({On(view, {Close()}), HostCall(34), On(view, {Open()})});
}

// --- insert ---

Procedure TakeOver(const std::string& withoutLoop = "") {
  return Joined({GetKey("Cadx", "FromCad"), GetModelId(), PutGlobal("OldModelId"),
                 GetKey("Cadx", "Loop", withoutLoop)});
}

Procedure Mark(Insertion mode) {
  return Joined({PutKey("Cadx", "Loop"), PutKey("Cadx", "Optim"),
                 IsView(mode) ? PutKey("Cadx", "NewView") : Procedure(), PutGlobal("BOM7"), Mass(),
                 mode != Insertion::Plain ? EraseKey("Cadx", "PartName") : Procedure()});
}

Procedure InsertShaft(const std::vector<std::string>& reports, const std::string& onFailure) {
  return Joined({ParameterList(true), ModelPath(), DataFileName(), GetGlobal("Model"),
                 Call("InsertShaft", onFailure, reports)});
}

const std::vector<std::string> kNotDrawn = {"Cannot insert parameter part - SHAFT"};
const std::vector<std::string> kNotInserted = {"Cannot insert parameter part - SHAFT",
                                               "Cannot insert part into cad system."};

Procedure FinishOptim() { return Joined({GetKey("Cadx", "Optim"), PutKey("Cadx", "Optim")}); }

Procedure InsertPlain(Insertion mode, const std::string& next) {
  return Joined({TakeOver(), Mark(mode), Report("Cannot create part file.", next)});
}

// A view that fails ends the views.
Procedure InsertView(int number) {
  return On(View(number),
            {MakePart("plain"), LocalFlag("endViews"), Caption(), TakeOver(), Mark(Insertion::View),
             Connection(), InsertShaft(kNotInserted, "endViews"), FinishOptim(), Jump("inserted"),
             Label("plain"), InsertPlain(Insertion::View, "endViews"), Label("inserted")});
}

// What the CAD is told of a calculation with views, around `draw` and `drawView`.
Procedure DrawViews(int count, const Procedure& draw, Procedure (*drawView)(int number)) {
  return Block({GetKey("Calc", "CalcName"), GetGlobal("Unit"), ParameterList(true),
                Call("McStart", "abandoned"), draw, Numbered(count, drawView),
                Named("endViews", Call("McEnd")), Label("notDrawn"), CloseViews(count),
                Jump("drawn"), Label("abandoned"), CloseViews(count), Jump("failed"),
                Label("drawn")});
}

Procedure ReadBackAfterLoop() {
  return Block({MakePart("undescribed"), ReadBack("undescribed"), PhysicalProperties(),
                Jump("failed"), Label("undescribed"),
                Report("Cannot get extended information", "failed")});
}

Procedure Draw(int views, bool loop = false) {
  return Block({Connection(),
                views == 0 ? InsertShaft(kNotInserted, "failed")
                           : DrawViews(views, InsertShaft(kNotDrawn, "notDrawn"), InsertView),
                FinishOptim(), loop ? ReadBackAfterLoop() : Jump("succeeded")});
}

// A view that cannot be made is there, but not ready.
Procedure MakeView(int number, bool filled) {
  return Block({On(View(number), {CreateNew("unmade"),
                                  Store("Com_PutBuffer", "Cannot write buffer data", "",
                                        filled ? Effect::Fills : Effect::None),
                                  Store("Link_SetLinkFrom NewView", "Cannot set LinkFrom")}),
                Store("Link_SetLinkTo NewView", "Cannot set LinkTo"),
                PutKey("McwProtOrder", "View" + std::to_string(number)),
                On(View(number), {Store("Com_PutViewKey", "Cannot write view."),
                                  Store("Com_PutModelID", "Cannot write model ID")}),
                Announce(View(number)), Label("unmade")});
}

Procedure DrawWithMadeViews(bool filled) {
  return Block({GetKey("Globals", "Path"), GetKey("McwViews", "View1", "none"), MakeView(1, filled),
                GetKey("McwViews", "View2", "one"), MakeView(2, filled),
                Missing(GetKey("McwViews", "View3")), Draw(2), Label("one"), Draw(1), Label("none"),
                Draw(0)});
}

// Views get the protocol's buffer; when it cannot be read, they stay empty.
Procedure DrawWithViews() {
  return Block({GetKey("McwViews", "View1", "none"),
                Store("Com_GetBuffer", "Cannot read buffer data", "empty"), DrawWithMadeViews(true),
                Label("empty"), DrawWithMadeViews(false), Label("none"), Draw(0)});
}

Procedure DrawWithoutViews(bool loop = false) {
  return Joined({Missing(GetKey("McwViews", "View1")), Draw(0, loop)});
}

Procedure Insert(Insertion mode, const Procedure& draw) {
  return On("main", {LocalFlag("failed"), Caption(), TakeOver(), Mark(mode), draw});
}

// A loop that cannot be read is none.
Procedure InsertInLoop() {
  return On("main", {LocalFlag("failed"), Caption(), TakeOver("noLoop"), Mark(Insertion::Plain),
                     DrawWithoutViews(true), Label("noLoop"), Mark(Insertion::Plain),
                     DrawWithoutViews(false)});
}

// The object of another protocol is connected once more. `closing` is what is still open.
Procedure Reconnect(const Procedure& closing) {
  return Block({On("other", {Open("unconnected"), MakePart("kindless"), Label("kindless"),
                             Connection(), Call("ConnectProtocol", "unconnected")}),
                On("other", {Close()}), closing, Jump("connected"), Label("unconnected"),
                On("other", {Close()}), closing, Jump("failed"), Label("connected")});
}

Procedure ReconnectClipboard() {
  const Procedure close = On("clipboard", {Close()});
  return Block({On("clipboard", {Open("unopened"), GetKey("Object", "ProtID", "unopened")}),
                Reconnect(close), Jump("connected"), Label("unopened"), close, Jump("failed"),
                Label("connected")});
}

Procedure ReconnectParent() {
  return Joined(
      {Store("Link_GetParentsList", "Cannot read parent list no. 0.", "failed"), Reconnect({})});
}

// --- update ---

Procedure StartUpdate() {
  return Joined({Mass(), GetKey("Cadx", "Loop"), PutKey("Cadx", "Loop"), GetKey("Cadx", "FromCad"),
                 PutKey("Cadx", "Optim")});
}

Procedure ChangeShaft(const std::string& onFailure) {
  return Joined({ParameterList(true), GetGlobal("Changed"), ModelPath(),
                 Call("ChangeShaft", onFailure, kNotDrawn), ParameterList(false)});
}

Procedure UpdatePlain(const std::string& next) {
  return Joined({Caption(), StartUpdate(), Jump(next)});
}

Procedure ChangeView(int number) {
  return On(View(number),
            {MakePart("plain"), StartUpdate(), PutKey("Cadx", "ModelError"),
             Store("Link_GetLinksToCount"), Connection(), ChangeShaft("endViews"), FinishOptim(),
             Jump("changed"), Label("plain"), UpdatePlain("endViews"), Label("changed")});
}

// The CAD's values go to the view.
Procedure CopyCadValues() {
  return Block(
      {GetKey("McwProtOrder", "View1", "ordered"), Missing(GetKey("McwProtOrder", "View2")),
       Label("ordered"),
       Store("Com_GetKeyList Data", "Cannot read list key words from section Data.", "copied"),
       GetKey("Data", "VXP_RD_a", "copied"), On(View(1), {PutKey("Data", "VXP_RD_a")}),
       Label("copied"), Announce(View(1))});
}

Procedure Change(int views) {
  return Block({Connection(),
                views == 0 ? ChangeShaft("failed")
                           : Joined({CopyCadValues(),
                                     DrawViews(views, ChangeShaft("notDrawn"), ChangeView)}),
                FinishOptim(), Jump("succeeded")});
}

Procedure ObtainView() {
  return Block({Store("Link_GetLinksToCount", "", "none"),
                Store("Link_GetLinkTo 1", "Cannot read LinkTo", "none"), Obtain("none"),
                On(View(1), {Open("unopened")}), Jump("opened"), Label("unopened"), CloseViews(1),
                Label("none"), Change(0), Label("opened"), Change(1)});
}

Procedure Update(const Procedure& change) {
  return On("main", {StartUpdate(), PutKey("Cadx", "ModelError"), change});
}

// --- the dispatcher ---

Procedure FirstLook() {
  return On("look",
            {Open(), GetKey("Main", "DataFile"), Missing(GetKey("Special", "LetMeKnow")), Close()});
}

Procedure Activate() {
  return Block({Call("GetMainHwndForActivation"), Call("McSetForegroundWindow"),
                GetKey("Hexaplan", "UpdateAll"), GetGlobal("WDOperation", "activated"),
                PutGlobal("WDOperation"), Label("activated")});
}

// The protocol is opened again when the store says that it is gone, and brought up to date, but for
// one of an unknown version or kind.
Procedure BringUpToDate(const Procedure& convert) {
  Procedure exists = Call("Com_IsProtocolExists");
  exists.front().onSuccess = "open";
  return Block({exists, Open(),
                Named("open", Store("Com_GetVersion", "", "unversioned", Effect::Any)),
                DataFileName("mass"), convert, Jump("mass"), Label("unversioned"), DataFileName(),
                Label("mass"), Mass()});
}

Procedure Succeed(const Act& act) {
  return On("main", {act.tellsHost ? HostCall(19) : Procedure(), BringUpToDate(act.convert),
                     GetKey("Cadx", "DoNotErase", "close"), PutKey("Cadx", "FromCad"),
                     PutKey("Cadx", "Drawn"), Named("close", Close()), Jump(kEnd)});
}

// The calculation is shown again, which closes its protocol once more.
Procedure FailStep(const Act& act) {
  return On("main", {act.failure.empty() ? Procedure() : Report(act.failure, ""),
                     act.tellsHost ? HostCall(19) : Procedure(), BringUpToDate(act.convert),
                     GetKey("Hexaplan", "FromSymbols"), EraseKey("Hexaplan", "FromSymbols"),
                     act.updateFailed ? Procedure() : EraseKey("Cadx", "ReallySmartPart"), Close(),
                     Call("Com_CloseProtocol"), HostCall(2), Jump(kEnd)});
}

Procedure Dispatch(const Act& act) {
  return Block({FirstLook(), On("main", {Open("unopened"), MakePart("plain"), Activate()}),
                act.shaft, Label("plain"), On("main", {Activate(), act.plain}), Label("succeeded"),
                Succeed(act), Label("failed"), FailStep(act), Label("unopened"),
                Report("Cannot open protocol", ""), On("main", {Close()}), Jump(kEnd)});
}

// Without its code the host's message asks for no CAD action.
Procedure Callback(const Act& act) {
  const Act nothing{.convert = act.convert};
  return Joined({HostCall(3, "codeLost"), HostCall(7, kEnd), Dispatch(act), Label("codeLost"),
                 HostCall(7, kEnd), Dispatch(nothing)});
}

Procedure Inserting(Insertion mode, const Procedure& draw, const std::string& failure) {
  return Callback(
      {.shaft = Insert(mode, draw), .plain = InsertPlain(mode, "failed"), .failure = failure});
}

Procedure Updating(const Procedure& change) {
  return Callback({.shaft = Update(change),
                   .plain = UpdatePlain("failed"),
                   .failure = "Cannot update part",
                   .updateFailed = true});
}

constexpr const char* kCannotInsert = "Cannot insert part";

}  // namespace

Procedure PlainInsert() { return Inserting(Insertion::Plain, DrawWithoutViews(), kCannotInsert); }

Procedure InsertWithViews() { return Inserting(Insertion::Plain, DrawWithViews(), kCannotInsert); }

// Whether the type changed is asked first.
Procedure ClipboardInsert() {
  const auto mode = Insertion::Clipboard;
  const Procedure asked = GetKey("Cadx", "Update");
  return Callback(
      {.shaft = Joined(
           {On("main", {asked}), Insert(mode, Joined({ReconnectClipboard(), DrawWithoutViews()}))}),
       .plain = Joined({asked, InsertPlain(mode, "failed")}),
       .failure = "Cannot draw part according to",
       .tellsHost = true});
}

Procedure ChildInsert() {
  return Inserting(Insertion::Child, Joined({ReconnectParent(), Draw(0)}),
                   "Cannot insert new view");
}

Procedure LoopInsert() {
  return Callback({.shaft = InsertInLoop(),
                   .plain = InsertPlain(Insertion::Plain, "failed"),
                   .failure = kCannotInsert});
}

Procedure PlainUpdate() { return Updating(Joined({Store("Link_GetLinksToCount"), Change(0)})); }

Procedure UpdateWithView() { return Updating(ObtainView()); }

Procedure OtherCode() { return Callback({}); }

Procedure OldGear() { return Callback({.convert = ConvertGear()}); }

Procedure OldShaft() { return Callback({.convert = ConvertShaft()}); }

}  // namespace quillmar::test
