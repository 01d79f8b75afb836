// QmarBC.dll: stands for the bolted-connection library. It draws nothing; what it is given is in
// the trace, and its last connection is told to the debugger.
#include <string>

#include "platform/System.h"
#include "quillmar/BoltedConnections.h"
#include "recorder/Recorder.h"

namespace {

constexpr quillmar::recorder::Border border{"QmarBC", quillmar::recorder::Kind::BoltedConnection};

int Accept(const char* action, const char* protocolId) {
  if (protocolId == nullptr || *protocolId == '\0') return 0;
  quillmar::platform::DebugOutput(std::string("QmarBC: ") + action + " " + protocolId);
  return 1;
}

}  // namespace

namespace quillmar::qmarbc {
namespace {

int InsertBoltedConnection(const char* protocolId) { return Accept("inserted", protocolId); }
int EditBoltedConnection(const char* protocolId) { return Accept("edited", protocolId); }
int EditBoltedConnection2(const char* protocolId, int, int) { return Accept("edited", protocolId); }
int PrepareMCWProtocol(const char* protocolId) { return Accept("prepared", protocolId); }

}  // namespace
}  // namespace quillmar::qmarbc

#define EXPORT_BOLTED(...) QM_BORDER_EXPORT(border, quillmar::qmarbc, QM_CDECL, __VA_ARGS__)
QM_BOLTED_CONNECTION_FUNCTIONS(EXPORT_BOLTED)
