// Sections and keywords under which the library keeps what its entry points speak of.
#pragma once

namespace quillmar::keelcomm {

inline constexpr char kGlobalsSection[] = "Globals";
inline constexpr char kOwnerWindowItem[] = "OwnerHWND";

inline constexpr char kDataSection[] = "Data";

// Single texts of a protocol.
inline constexpr char kProtocolSection[] = "Protocol";
inline constexpr char kModelIdKeyword[] = "ModelID";
inline constexpr char kPartKeyKeyword[] = "PartKey";
inline constexpr char kViewKeyKeyword[] = "ViewKey";
inline constexpr char kStandardKeyword[] = "Standard";

// The data file stands where calculations look for it.
inline constexpr char kMainSection[] = "Main";
inline constexpr char kFilesSection[] = "Files";
inline constexpr char kDataFileKeyword[] = "DataFile";

// Members of a super protocol: member name and identifier.
inline constexpr char kMembersSection[] = "SuperProtocol";

}  // namespace quillmar::keelcomm
