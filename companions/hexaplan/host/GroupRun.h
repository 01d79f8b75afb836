// Groups of calculations. A group is shown like a calculation; what its user enters comes as an
// order:
//
//   [Calculation]
//   DataFile=xtalvek
//   [Inputs]
//   Name=Cover bolts   the CAD gets the group itself under this name; without one only its members
//   Member1=THRJOIN    data-file type of the first member; members are numbered without gaps
//   Member1.d=12       a field of its calculation
//
// Members that the group has already keep their protocols and are recalculated.
#pragma once

#include <string>
#include <vector>

#include "hexaplan/host/CalculationRun.h"

namespace hexaplan {

class GroupRun {
 public:
  GroupRun(const ProtocolStore& store, const CalculationRun& calculations)
      : store(store), calculations(calculations) {}

  bool IsGroup(const std::string& protocolId) const;
  // Without an order the group is only shown.
  RunResult Run(const std::string& protocolId) const;

 private:
  struct Member {
    std::string dataFile;
    Order fields;
  };
  static std::vector<Member> MembersOf(const Order& order);
  RunResult Calculate(ProtocolRecord& group, const Order& order) const;
  // Identifiers of the protocols of its parts, the first `id`'s own; empty, and why, when refused.
  std::vector<std::string> CalculateMember(const std::string& id, const Member& member,
                                           std::string& refusal) const;
  std::string NewMember(const ProtocolRecord& group, const Member& member) const;

  const ProtocolStore& store;
  const CalculationRun& calculations;
};

}  // namespace hexaplan
