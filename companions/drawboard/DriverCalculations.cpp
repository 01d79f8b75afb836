// Objects without geometry of their own (calculations, assemblies, named protocols) and the calls
// that bracket the work of others.
#include "drawboard/BoardError.h"
#include "drawboard/Driver.h"

namespace drawboard {
namespace {

// What a call says about such an object; a null text is one that the call does not have.
struct ObjectCall {
  Kind kind;
  const char* protocolId;
  const char* connection;
  const char* caption = nullptr;
  const char* parameters = nullptr;
  const char* name = nullptr;
  const char* filePath = nullptr;
};

void Apply(BoardObject& object, const ObjectCall& call) {
  if (call.caption != nullptr) object.caption = call.caption;
  if (TextOf(call.parameters).empty()) return;
  ParameterList list = ParseParameters(call.parameters);
  object.view = std::move(list.view);
  object.parameters = std::move(list.parameters);
}

int InsertObject(const ObjectCall& call) {
  BoardObject object;
  object.kind = call.kind;
  object.protocolId = TextOf(call.protocolId);
  object.connection = TextOf(call.connection);
  Apply(object, call);
  TheAddin().board.Insert(std::move(object), TextOf(call.filePath),
                          [&](BoardObject& placed, Document& next, FileChanges&) {
                            if (TextOf(call.name).empty()) return;
                            placed.name.clear();
                            placed.name = next.FreeName(call.name);
                          });
  return 1;
}

int ChangeObject(const ObjectCall& call) {
  TheAddin().board.ChangeObjects(BearerOf(call.protocolId, call.connection), {},
                                 [&](BoardObject& object, Document&, FileChanges&) {
                                   Connect(object, TextOf(call.connection));
                                   Apply(object, call);
                                 });
  return 1;
}

}  // namespace

namespace driver {

int InsertCalculation(const char* protocolId, const char* connection, const char* caption) {
  return InsertObject({Kind::Calculation, protocolId, connection, caption});
}

int InsertCalculationEx(const char* protocolId, const char* connection, const char* caption,
                        const char* filePath) {
  return InsertObject(
      {Kind::Calculation, protocolId, connection, caption, nullptr, nullptr, filePath});
}

int InsertCalculationEx2(const char* protocolId, const char* connection, const char* parameters,
                         const char* caption, const char* filePath) {
  return InsertObject(
      {Kind::Calculation, protocolId, connection, caption, parameters, nullptr, filePath});
}

int ChangeCalculation(const char* protocolId, const char* connection, const char* caption) {
  return ChangeObject({Kind::Calculation, protocolId, connection, caption});
}

int ChangeCalculationEx2(const char* protocolId, const char* connection, const char* parameters,
                         const char* caption) {
  return ChangeObject({Kind::Calculation, protocolId, connection, caption, parameters});
}

// The document has one assembly. Another protocol for it takes the place of the one before.
int InsertAssembly(const char* protocolId, const char* parameters, const char* connection) {
  const ObjectCall call{Kind::Assembly, protocolId, connection, nullptr, parameters};
  Board& board = TheAddin().board;
  if (board.Current().AssemblyObject() == nullptr) {
    const std::string name = board.Current().Name();
    return InsertObject(
        {Kind::Assembly, protocolId, connection, nullptr, parameters, name.c_str()});
  }
  board.Change([&](Document& next, FileChanges&) {
    for (BoardObject& object : next.objects) {
      if (object.kind != Kind::Assembly) continue;
      object.protocolId = TextOf(protocolId);
      Connect(object, TextOf(connection));
      Apply(object, call);
    }
  });
  return 1;
}

int ChangeAssembly(const char* protocolId, const char* parameters, const char* connection) {
  return ChangeObject({Kind::Assembly, protocolId, connection, nullptr, parameters});
}

int ChangeAssemblyEx(const char* protocolId, const char* parameters, const char* connection,
                     const ExtDataPair* pairs, int count) {
  const ObjectCall call{Kind::Assembly, protocolId, connection, nullptr, parameters};
  const NamedTexts extendedData = CopyPairs(pairs, count);
  TheAddin().board.ChangeObjects(BearerOf(protocolId, connection), {},
                                 [&](BoardObject& object, Document&, FileChanges&) {
                                   Connect(object, TextOf(connection));
                                   Apply(object, call);
                                   object.extendedData = extendedData;
                                 });
  return 1;
}

int InsertNamedProtocol(const char* protocolId, const char* name, const char* connection) {
  return InsertObject({Kind::NamedProtocol, protocolId, connection, name, nullptr, name});
}

int ChangeNamedProtocol(const char* protocolId, const char* name, const char* connection) {
  return ChangeObject({Kind::NamedProtocol, protocolId, connection, name});
}

int McStart(int, const char*, const char*, const char* protocolId, const char*) {
  TheAddin().board.BeginViews(TextOf(protocolId));
  return 1;
}

int McEnd() {
  if (!TheAddin().board.EndViews()) throw BoardError("No calculation with views was begun");
  return 1;
}

int GroupInsertStart() {
  TheAddin().board.BeginGroup();
  return 1;
}

int GroupInsertEnd() {
  if (!TheAddin().board.EndGroup()) throw BoardError("No group insert was begun");
  return 1;
}

int OptimWillStart() {
  TheAddin().board.messages.push_back("An optimisation begins");
  return 1;
}

int OptimEnded() {
  TheAddin().board.messages.push_back("The optimisation has ended");
  return 1;
}

}  // namespace driver
}  // namespace drawboard
