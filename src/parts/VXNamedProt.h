// A group of protocols, as the group manager makes them: its members are inserted or updated in one
// operation, and the group itself may stand in the CAD as a named protocol.
#pragma once

#include <string>
#include <vector>

#include "parts/VXPart.h"

namespace quillmar {

class VXNamedProt : public VXPart {
 public:
  using VXPart::VXPart;

  bool CreatePartFile() override;
  // The whole group operation: members that stand in the CAD already are updated.
  bool InsertIntoCad(const std::string& connection, const ExtDataPairs& pairs) override;
  // The same.
  bool ChangeInCad(const std::string& connection, const ExtDataPairs& pairs) override;
  bool WantsDescription() override;

 private:
  using Members = std::vector<std::string>;

  // What became of one member.
  enum class Outcome { PassedBy, Failed, Updated, Inserted };
  struct MemberResult {
    Outcome outcome = Outcome::PassedBy;
    int typeOfPart = 0;
  };

  bool IsMember(const std::string& memberId) const;
  void ShowParts(const Members& members);
  bool NameWanted(std::string& name, std::string& connection);
  bool IsOptimizing();
  MemberResult DriveMember(const std::string& memberId);
  bool HandOverBoltedJoint(VXProtocol& member);
  bool PerformOn(VXProtocol& member, VXPart& part, bool fromMemberCad);
  void LeaveMember(VXProtocol& member);
  bool EndsEarly(const MemberResult& last) const;
  void PutNamedProtocol(const std::string& name, const std::string& connection);
  bool ReadMembersBack(const Members& members);
  bool ReadMemberBack(const std::string& memberId);
};

}  // namespace quillmar
