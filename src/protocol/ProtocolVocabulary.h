// Fixed sections, keywords and global items of protocols that several floors share. The letters
// are those that the calculations expect, also where they are spelt in two ways.
#pragma once

namespace quillmar {
inline constexpr const char* kGroupDataFile = "xtalvek";  // groups of the group manager
}  // namespace quillmar

namespace quillmar::section {
inline constexpr const char* kCadx = "Cadx";
inline constexpr const char* kView = "View";
inline constexpr const char* kObject = "Object";
inline constexpr const char* kMain = "Main";
inline constexpr const char* kFiles = "Files";
inline constexpr const char* kData = "Data";
inline constexpr const char* kGlobals = "Globals";
inline constexpr const char* kMcwData = "MCWData";
inline constexpr const char* kMcwParts = "MCWParts";
inline constexpr const char* kMcwPartsOfCopies = "McwParts";
inline constexpr const char* kMcwViews = "McwViews";
inline constexpr const char* kMcwProtOrder = "McwProtOrder";
inline constexpr const char* kVarDescriptions = "VarDescriptions";
inline constexpr const char* kSuperProtocolOrder = "SuperProtocolOrder";
inline constexpr const char* kLinksFrom = "LinksFrom";
inline constexpr const char* kLinksTo = "LinksTo";
inline constexpr const char* kSpecial = "Special";
inline constexpr const char* kHexaplan = "Hexaplan";
inline constexpr const char* kConfigurations = "Configurations";
inline constexpr const char* kCalc = "Calc";
inline constexpr const char* kMaterial = "Material";
inline constexpr const char* kGrupova = "Grupova";
// Parameters of a notification that names the protocol.
inline constexpr const char* kCallParameters = "TessioCallParam";
inline constexpr const char* kDataWizard = "DataWizard";
inline constexpr const char* kPosition = "Position";
inline constexpr const char* kLtParam = "LTParam";
inline constexpr const char* kLinkFrom = "LinkFrom";
inline constexpr const char* kLinkTo = "LinkTo";
inline constexpr const char* kSpProp = "SPProp";
}  // namespace quillmar::section

namespace quillmar::keyword {
inline constexpr const char* kDataFile = "DataFile";
inline constexpr const char* kProtId = "ProtID";
inline constexpr const char* kOrder = "Order";
inline constexpr const char* kNewView = "NewView";
inline constexpr const char* kPartName = "PartName";
inline constexpr const char* kDrawingName = "DrawingName";
inline constexpr const char* kFromCad = "FromCad";
inline constexpr const char* kDrawn = "Drawn";
inline constexpr const char* kDoNotErase = "DoNotErase";
inline constexpr const char* kReallySmartPart = "ReallySmartPart";
inline constexpr const char* kSmartPart = "SmartPart";
inline constexpr const char* kLoop = "Loop";
inline constexpr const char* kOptim = "Optim";
inline constexpr const char* kModelError = "ModelError";
inline constexpr const char* kUpdate = "Update";
inline constexpr const char* kHasIdentity = "id";    // the CAD knows the object by an identity
inline constexpr const char* kToUpdate = "update";   // the object is to follow the protocol
inline constexpr const char* kToOptimize = "optim";  // the optimizer is to run the calculation
inline constexpr const char* kOldPartPid = "OldPartPID";
inline constexpr const char* kRecalcNew = "Recalc";    // a new calculation is to be run
inline constexpr const char* kRecalcAgain = "recalc";  // an existing one is to be run again
inline constexpr const char* kAsmPath = "AsmPath";
inline constexpr const char* kCadVars = "CADVars";
inline constexpr const char* kDescription = "Description";
inline constexpr const char* kDriver = "Driver";
inline constexpr const char* kViewData = "Data";
inline constexpr const char* kVisibled = "Visibled";
inline constexpr const char* kCadDescription = "CadDescription";
inline constexpr const char* kCadDescriptionWritten = "CADDescription";
inline constexpr const char* kUseUserDescription = "UseUserDescription";
inline constexpr const char* kUserDescription = "UserDescription";
inline constexpr const char* kMcwDataFile = "MCWDataFile";
inline constexpr const char* kMcwMainProt = "MCWMainProt";
inline constexpr const char* kProtocols = "Protocols";
inline constexpr const char* kCaller = "Caller";
inline constexpr const char* kBolt = "Bolt";
inline constexpr const char* kLetMeKnow = "LetMeKnow";
inline constexpr const char* kUpdateAll = "UpdateAll";
inline constexpr const char* kFromSymbols = "FromSymbols";
inline constexpr const char* kCalcName = "CalcName";
inline constexpr const char* kPath = "Path";
inline constexpr const char* kActive = "Active";
inline constexpr const char* kUnit = "Unit";
inline constexpr const char* kMeasuredValue = "MeasuredValue";
inline constexpr const char* kInOutFile = "InOutFile";
inline constexpr const char* kType = "Type";
inline constexpr const char* kReturn = "Return";
inline constexpr const char* kCaption = "Caption";
inline constexpr const char* kName = "Name";
inline constexpr const char* kOutput = "Output";
}  // namespace quillmar::keyword

namespace quillmar::global {
inline constexpr const char* kTypeOfPart = "TypeOfPart";
inline constexpr const char* kUnit = "Unit";
inline constexpr const char* kUnitIsmm = "UnitIsmm";
inline constexpr const char* kLevel = "Level";
inline constexpr const char* kFromPin = "FromPin";
inline constexpr const char* kToPin = "ToPin";
inline constexpr const char* kOrientPin = "OrientPin";
inline constexpr const char* kMeasure = "Measure";
inline constexpr const char* kReallyRemoveInfo = "ReallyRemoveInfo";
inline constexpr const char* kRemoveInfo = "RemoveInfo";
inline constexpr const char* kScale = "Scale";
inline constexpr const char* kChanged = "Changed";
inline constexpr const char* kOwnerWindow = "OwnerHWND";
inline constexpr const char* kOldOwnerWindow = "OldOwnerHWND";
inline constexpr const char* kOldModelId = "OldModelId";
inline constexpr const char* kStandard = "Standard";
inline constexpr const char* kPreferredStandard = "PrfStd";
inline constexpr const char* kLanguage = "Language";
inline constexpr const char* kFirstRun = "FirstRun";
inline constexpr const char* kCaption = "Caption";
inline constexpr const char* kModel = "Model";
inline constexpr const char* kPath = "Path";
inline constexpr const char* kGenPartType = "GenPartType";
inline constexpr const char* kGenCopyFile = "GenCopyFile";
inline constexpr const char* kRefKey = "RefKey";
inline constexpr const char* kDataChanged = "DataChanged";
inline constexpr const char* kExit = "Exit";
inline constexpr const char* kWdOperation = "WDOperation";
inline constexpr const char* kWdProtocol = "WDProtocol";
inline constexpr const char* kBomMassValue = "BOM5";
inline constexpr const char* kBomMassUnit = "BOM6";
inline constexpr const char* kBomCount = "BOM7";
inline constexpr const char* kBomCountOfCalculations = "Bom7";
inline constexpr const char* kReallyScan = "ReallyScan";
inline constexpr const char* kPartUnit = "PartUnit";
inline constexpr const char* kNamePrefix = "NamePrefix";
}  // namespace quillmar::global

namespace quillmar::parameter {
inline constexpr const char* kScale = "xxScale";
}  // namespace quillmar::parameter
