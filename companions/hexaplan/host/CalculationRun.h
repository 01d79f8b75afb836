// One calculation of the host from the protocol that is shown to the parts that go to the CAD.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "hexaplan/calculation/Calculation.h"
#include "hexaplan/host/Orders.h"
#include "hexaplan/host/ProtocolStore.h"

namespace hexaplan {

// Why a calculation is run.
enum class RunReason {
  Shown,      // the user was shown it: runs when it is due or ordered
  Commanded,  // a command of the CAD asks for the new result: always runs
  Silent      // only the values are wanted; nothing goes to the CAD
};

struct RunResult {
  bool shown = false;  // the host knows the protocol and its calculation
  bool calculated = false;
  bool olderLayout = false;            // not calculated: the CAD side must convert it first
  int code = 0;                        // callback code of what was calculated
  std::vector<std::string> protocols;  // their identifiers, the one that was shown first
  std::string message;                 // what the user is told when it could not be calculated
};

class CalculationRun {
 public:
  // `modelsFolder` is where library models lie, with a trailing backslash.
  CalculationRun(const ProtocolStore& store, Orders orders, std::string modelsFolder);

  // A view of a calculation is calculated with its main protocol, which is what the result names.
  // A protocol of the older layout that was shown is left waiting with its order.
  RunResult Run(const std::string& protocolId, RunReason reason) const;

  // Runs it with the fields of a group's order, which is not answered here.
  RunResult RunMember(const std::string& protocolId, const Order& fields) const;

  // From now on views of the one protocol are views of the other.
  void NoteReplacement(const std::string& replaced, const std::string& by) {
    successors[replaced] = by;
  }

  const Orders& Ordered() const { return orders; }

  // Writes into the protocol of a view what its main protocol's calculation says about it. Other
  // protocols stay as they are.
  void CompleteView(const std::string& protocolId) const;

 private:
  RunResult TryToCalculate(const Calculation& calculation, ProtocolRecord& record,
                           const std::optional<Order>& order) const;
  RunResult Calculate(const Calculation& calculation, ProtocolRecord& record,
                      const std::optional<Order>& order) const;
  void WritePart(ProtocolRecord& record, const Calculation& calculation, const CalculatedPart& part,
                 UnitSystem units) const;
  // What parts and views have in common.
  void WriteObject(ProtocolRecord& record, const Calculation& calculation,
                   const CalculatedPart& object, UnitSystem units) const;

  // The main protocol of a view, as it stands now; empty for a protocol that is no view.
  std::string MainProtocolOf(const ProtocolRecord& record) const;

  const ProtocolStore& store;
  std::map<std::string, std::string> successors;  // of protocols that were replaced
  Orders orders;
  std::string modelsFolder;
};

}  // namespace hexaplan
