// Sections, keywords and global items of a protocol that the host writes.
#pragma once

namespace hexaplan {

inline constexpr char kMainSection[] = "Main";
inline constexpr char kDataFile[] = "DataFile";
inline constexpr char kView[] = "View";  // section, and keyword of "Main"
inline constexpr char kDescription[] = "Description";

inline constexpr char kCadSection[] = "Cadx";
inline constexpr char kRecalculate[] = "Recalc";
inline constexpr char kUpdate[] = "update";
inline constexpr char kFromCad[] = "FromCad";
inline constexpr char kDrawn[] = "Drawn";
inline constexpr char kDoNotErase[] = "DoNotErase";
inline constexpr char kSmartPart[] = "SmartPart";
inline constexpr char kHasIdentity[] = "id";  // the CAD side has given the protocol an identity
inline constexpr char kReplacedProtocol[] = "OldPartPID";

// The protocol that an object of the CAD belongs to, and the one that a result was written into.
inline constexpr char kObjectSection[] = "Object";
inline constexpr char kObjectProtocol[] = "ProtID";
inline constexpr char kReference[] = "RefKey";  // global item

// The host's own section.
inline constexpr char kHostSection[] = "Hexaplan";
inline constexpr char kPartNumber[] = "Part";  // which part of its calculation this one is, from 1
inline constexpr char kPartList[] = "Parts";   // the protocols of all parts, joined by ","
inline constexpr char kMessage[] = "Message";  // why the last run was refused

// Views of a calculation, and the link of a view to its main protocol, "<identifier>@NewView".
inline constexpr char kViewsSection[] = "McwViews";
inline constexpr char kLinksFromSection[] = "LinksFrom";
inline constexpr char kLinksToSection[] = "LinksTo";
inline constexpr char kViewOrderSection[] = "McwProtOrder";
inline constexpr char kNewView[] = "NewView";

inline constexpr char kDataSection[] = "Data";
// What the parameters mean, and by which formula a result was found.
inline constexpr char kMeaningsSection[] = "VarDescriptions";
inline constexpr char kFormulasSection[] = "VarFormulas";

// A group of calculations: its data file, the name by which the CAD has it, the order of its
// members.
inline constexpr char kGroupDataFile[] = "xtalvek";
inline constexpr char kGroupSection[] = "SPProp";
inline constexpr char kGroupName[] = "Name";
inline constexpr char kMemberOrderSection[] = "SuperProtocolOrder";
inline constexpr char kMemberOrder[] = "Order";

// Parts of a bolted joint. A joint with a bolt is drawn like any part, not by the joint's library.
inline constexpr char kJointSection[] = "MCWParts";
inline constexpr char kBolt[] = "Bolt";
inline constexpr char kJointDataSection[] = "MCWData";

}  // namespace hexaplan
