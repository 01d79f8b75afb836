// The handle on one protocol of the storage library. Every storage and link call of the module
// goes through it. An operation checks that the object is ready, makes one library call and
// reports a failure with a fixed message; text outputs are empty after a failure.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/ErrorLog.h"
#include "base/Texts.h"
#include "base/WindowActivator.h"
#include "protocol/ProtocolLibraries.h"

namespace quillmar {

// What every protocol object needs; outlives all of them.
struct ProtocolContext {
  const StorageTable& storage;
  const LinkTable& links;
  ErrorLog& errors;
  const WindowActivator& activator;
};

// The two spellings of reference texts.
enum class Markers { Standard, Alternate };

class VXProtocol {
 public:
  explicit VXProtocol(const ProtocolContext& context);
  // Opens the protocol at once; IsReady tells whether that worked.
  VXProtocol(const ProtocolContext& context, const std::string& protocolId);
  VXProtocol(const VXProtocol&) = delete;
  VXProtocol& operator=(const VXProtocol&) = delete;
  // Closes; an object that was never opened reports "Protocol is not ready".
  virtual ~VXProtocol();

  // Opens the protocol that a reference text carries and makes it anew from the text when the
  // store does not have it or its owner is gone. 1 also when a live calculation window holds the
  // protocol and `activate` is false: the object then stays not ready. With `activate` that
  // window is brought to the front, OwnerActive becomes true and the result is 0.
  virtual int OpenFromReference(const std::string& reference, bool activate, Markers markers);
  // Closes what is open and makes a new, empty protocol.
  virtual int CreateNew();

  // --- life of the protocol ---
  bool Open(const std::string& protocolId);
  // Takes a protocol that is open already as it is (it is then not closed by this object), opens
  // any other.
  bool Attach(const std::string& protocolId);
  // Attach for a protocol that the store has: opening would make one that it does not have.
  bool AttachExisting(const std::string& protocolId);
  bool OpenClipboard();
  bool ReopenClipboard();
  int OpenClipboardReference(const std::string& reference, bool activate);
  bool Close();
  bool Erase();
  // Makes this object hold a copy of the source under a new identifier.
  bool Copy(const std::string& sourceId);
  const std::string& GetProtocolID() const { return protocolId; }
  bool IsReady() const { return ready == 1; }
  bool OwnerActive() const { return ownerActive; }
  const ProtocolContext& Context() const { return context; }

  // QM_PROTOCOL_MISSING, _OPEN, _CLOSED or _HELD_BY_CALCULATION.
  static int ProtocolExists(const ProtocolContext& context, const std::string& protocolId);
  // Whether opening would make the protocol anew. A library that cannot say so may have it.
  static bool IsMissing(const ProtocolContext& context, const std::string& protocolId);
  static bool OpenById(const ProtocolContext& context, const std::string& protocolId);
  static bool CloseById(const ProtocolContext& context, const std::string& protocolId);
  static bool EraseById(const ProtocolContext& context, const std::string& protocolId);

  // --- sections, global data, data parameters ---
  bool GetKeyWord(TextRef section, TextRef keyword, std::string& value);
  // `value` is untouched on failure.
  bool GetKeyWordInt(TextRef section, TextRef keyword, int& value);
  bool PutKeyWord(TextRef section, TextRef keyword, TextRef value);
  bool PutKeyWordInt(TextRef section, TextRef keyword, int value);
  bool EraseKeyWord(TextRef section, TextRef keyword);
  bool EraseSection(TextRef section);
  bool GetKeyList(TextRef section, std::vector<std::string>& keywords);
  // Number of keywords of a section; an empty section is reported like one that cannot be read.
  int GetKeyCount(TextRef section);
  bool GetOneKey(short index, std::string& keyword, std::string& value);
  bool GetGlobalData(TextRef item, std::string& value);
  bool PutGlobalData(TextRef item, TextRef value);
  bool GetModelID(std::string& modelId);
  bool PutModelID(TextRef modelId);
  bool GetDataCount(short& count);
  bool GetDataItem(short index, std::string& name, std::string& value, std::string& unit);
  bool GetDataParam(TextRef name, std::string& value, std::string& unit);
  // The same for a parameter that may well be missing: a failed read is not reported.
  bool FindDataParam(TextRef name, std::string& value, std::string& unit);
  bool PutDataParam(TextRef name, TextRef value, TextRef unit);
  // A number becomes the parameter's value, any other text a link to the expression it is.
  bool SetParam(TextRef name, const std::string& value, TextRef unit);
  bool WriteDescription(TextRef keyword, TextRef text);
  // Texts of the protocol's buffer. They belong to the library and are valid until the next
  // operation on the same protocol.
  bool GetBuffer(std::vector<std::string_view>& texts);
  bool PutBuffer(const std::vector<std::string_view>& texts);
  bool GetViewKey(std::string& text);
  bool PutViewKey(TextRef text);
  bool GetDataFile(std::string& fileName);
  bool GetStandard(std::string& text);
  bool PutStandard(TextRef text);
  bool GetPartKey(std::string& text);
  bool PutPartKey(TextRef text);
  bool GetVersion(int& major, int& minor);
  bool SetVersion(int major, int minor);

  // --- fixed keys ---
  bool GetCadx(TextRef keyword, std::string& value);
  bool PutCadx(TextRef keyword, TextRef value);
  bool EraseCadx(TextRef keyword);
  bool GetTypeOfPart(int& type);
  bool SetTypeOfPart(int type);
  bool GetBom(int number, std::string& text);
  bool GetPartName(std::string& name);
  bool PutPartName(TextRef name);
  bool GetUnit(std::string& unit);
  // "mm" or "in".
  std::string GetUnitText();
  bool GetDriver(std::string& driver);
  bool GetViewData(std::string& data);
  bool PutViewData(TextRef data);
  bool GetViewDescription(std::string& description);
  bool GetLevel(std::string& level);
  bool PutLevel(TextRef level);
  bool IsVisible(int& visible);
  bool SetVisible(bool visible);
  // 0 when missing.
  int GetFromPin();
  int GetToPin();
  int GetOrientPin();
  bool GetDrawingName(std::string& name);
  bool PutDrawingName(TextRef name);
  bool GetMeasure(std::string& measure);
  bool KeepsInfo();
  // 1.0 unless a positive number is stored.
  double GetScale();
  bool SetScale(double scale);
  int GetNewView();
  bool SetNewView(int newView);
  // The data-file name without what stands in front of the first "|".
  bool GetDataFileName(std::string& name);
  int IsChanged();
  bool SetChanged(int changed);
  // Marks the CAD object as drawn; with `fromCad` also as coming from the CAD.
  bool SetDrawn(bool fromCad);
  bool HasMcwData();

  // --- links ---
  static bool CreateUniquePID(const ProtocolContext& context, std::string& protocolId);
  // All incoming links, or only those that refer to protocols.
  int GetLinksFromCount(bool all);
  bool GetLinkFrom(int index, std::string& first, std::string& second, int& enabled, int& level);
  bool GetLinkFrom2(TextRef linkName, std::string& text, int& enabled, int& level);
  bool EnableLinkFrom(TextRef linkName, int enable);
  bool SetLevelLinkFrom(TextRef linkName, int first, int second);
  bool SetLinkFrom(TextRef name, TextRef text);
  bool WriteLinkParam(TextRef name, const std::string& expression);
  bool DeleteLinkFrom(TextRef linkName);
  bool GetLinkFromParentList(int index, std::vector<std::string>& identifiers);
  bool GetLinkFromParentList2(TextRef linkName, std::vector<std::string>& identifiers);
  bool GetParentsList(std::vector<std::string>& identifiers);
  int GetLinksToCount();
  bool GetLinkTo(int index, std::string& first, std::string& second);
  bool DeleteLinkTo(TextRef first, TextRef second);
  bool SetLinkTo(TextRef first, TextRef second);
  // Translates in place; the result has at most `capacity` characters.
  static bool Translate(const ProtocolContext& context, std::string& text, int capacity);

  // --- super protocols ---
  bool IsSuperProtocol(int& answer);
  bool GetProtocolList(std::vector<std::string>& members);
  bool GetProtocolCount(short& count);
  bool GetProtocol(TextRef memberName, std::string& memberId);
  bool PutProtocol(TextRef memberName, TextRef memberId);
  bool RemoveProtocol(TextRef memberName);
  // The order of members to be written when the protocol is closed.
  void SetSuperProtocolOrder(std::string order) { superProtocolOrder = std::move(order); }

  // --- reference texts ---
  static bool ExtractProtocolID(const std::string& reference, std::string& protocolId,
                                Markers markers);
  bool MakeReference(std::string& reference, Markers markers);
  bool PutBufferFromReference(const std::string& reference, Markers markers);

 private:
  // Empties the outputs; false, with a report, when the object is not ready.
  template <class... Out>
  bool CheckReady(Out&... outputs);
  // Reports and returns false.
  bool Report(const std::string& message, const SourceStamp& source) const;
  const char* Id() const { return protocolId.c_str(); }

  bool AttachInState(int state, const std::string& id);
  int OpenExisting(const std::string& id, const std::string& reference, bool activate,
                   Markers markers);
  int OpenHeldByCalculation(const std::string& id, const std::string& reference, bool activate,
                            Markers markers);
  int LeaveToOwner(QmWindow owner, bool activate);
  int MakeAnew(const std::string& id, const std::string& reference, Markers markers);
  bool CopyByBuffer(const std::string& sourceId);
  int ReadPin(TextRef item);

  const ProtocolContext& context;
  int ready = 0;
  bool ownerActive = false;
  std::string protocolId;
  bool keepOpen = false;
  std::string superProtocolOrder;
};

}  // namespace quillmar
