// Numbers of the notifications that travel through the inter-process library, with the integers
// that go with them. Their parameters lie in section "TessioCallParam" of the protocol that the
// text names.
#pragma once

namespace quillmar::notification {

// What the calculation applications tell the CAD side.
inline constexpr int kOptimizationEnded = 1003;
inline constexpr int kUpdateObject = 1004;
inline constexpr int kOptimizationWillStart = 1008;
inline constexpr int kReplyWanted = 2000;
inline constexpr int kMeasurementWanted = 4101;
inline constexpr int kReconnect = 5556;
inline constexpr int kFilesData = 6000;
inline constexpr int kFilesDataOfWizard = 6003;
inline constexpr int kStopWizard = 6100;
inline constexpr int kOptionsChanged = 6200;

// What this module tells the calculation applications.
inline constexpr int kReply = 2001;
inline constexpr int kReplyInteger = 8;
inline constexpr int kMeasured = 4102;
inline constexpr int kMeasuredInteger = 0;
inline constexpr int kExitRequest = 5000;
inline constexpr int kExitInteger = 3;
inline constexpr int kFilesDataDone = 6001;
inline constexpr int kFilesDataInteger = 11;         // answers kFilesData
inline constexpr int kFilesDataOfWizardInteger = 5;  // answers kFilesDataOfWizard

}  // namespace quillmar::notification
