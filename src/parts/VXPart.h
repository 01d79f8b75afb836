// The base of every object that turns one calculation's protocol into an object in the CAD and
// keeps it up to date. A part object is made for one open protocol and one insert or update. The
// base holds the whole procedure; each kind supplies the CAD calls for its kind of object.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "bom/ExtDataPairs.h"
#include "parts/CadListReaders.h"
#include "parts/ParameterLists.h"
#include "parts/PartServices.h"
#include "protocol/VXProtocol.h"

namespace quillmar {

enum class InsertMode {
  Plain = 0,
  Clipboard = 1,  // pasted: the object that the clipboard carries is reconnected first
  Child = 2,      // a new view of its single parent
  View = 3        // one view of a calculation with several, used by Insert itself
};

// What a CAD add-in may ask about a part before it is inserted.
struct PartInformation {
  bool local = false;     // made for this design only
  std::string modelPath;  // library model; empty when the kind has none
  std::string filePath;
  std::string caption;
};

class VXPart {
 public:
  // `protocol` is open, stays so, and outlives the part; so does `services`.
  VXPart(const PartServices& services, VXProtocol& protocol);
  VXPart(const VXPart&) = delete;
  VXPart& operator=(const VXPart&) = delete;

  // --- operations that kinds replace, in slot order ---

  // Makes the full model-file path. A local part whose change leaves its library model alone
  // keeps its file. False only when the user cancelled a question.
  virtual bool MakeFileName(bool change, bool modelChanged);
  // Path of the library model; false, and `path` untouched, when the kind has none.
  virtual bool GetModelFilePath(std::string& path);
  virtual ~VXPart() = default;
  // False here, so that a part without a kind can never be inserted.
  virtual bool CreatePartFile();
  virtual bool InsertIntoCad(const std::string& connection, const ExtDataPairs& pairs);
  virtual bool ChangeInCad(const std::string& connection, const ExtDataPairs& pairs);
  // Reads what the CAD knows of the object into the protocol.
  virtual bool ReadBackFromCad();
  // True when the kind has a description of its own: it is built before inserting, and the
  // user's folder rule counts for its file.
  virtual bool WantsDescription();
  virtual bool BeforeConnect();
  // Without dot.
  virtual std::string GetFileExtension();
  virtual std::string GetFileTypeName();
  virtual std::string DescriptionSuffix();

  // --- the procedures ---

  // Puts a new object into the CAD. False after a failure, and also after a successful insert
  // while the calculation runs an optimisation loop: the values that the loop wants have then
  // been read back.
  bool Insert(InsertMode mode);
  // Changes the existing object.
  bool Update();

  // Makes the part's file name as an insert or change would; nothing when the user cancelled it.
  std::optional<PartInformation> Inform(bool change, bool modelChanged);

  // Decides whether the part is local and keeps the decision in the protocol; false when it could
  // not be kept.
  bool DetermineLocalFlag();
  void BuildCaption();

  // The list that the CAD gets: "name,value," of all user parameters, or with `group` of the
  // values of that group. Always true: a protocol without data gives an empty list and a report.
  bool BuildParameterList(std::string& text, const std::string& group = {},
                          ListForm form = ListForm::Values);
  ExtDataPairs BuildExtendedData();

  const std::string& Caption() const { return caption; }

 protected:
  bool IsLocal() const { return smartPart != 0; }

  // BuildParameterList for the CAD; a failure is reported as the kind's.
  bool PrepareParameters(std::string& parameters, const SourceStamp& source);
  // Lets the CAD object follow the protocol as far as its change state asks for: it is changed by
  // `changeFully`, only given the protocol's new reference text, or left alone. A reference text
  // that the CAD does not take is reported as the kind's.
  bool ChangeByState(const std::string& connection, const SourceStamp& source,
                     const std::function<bool()>& changeFully);
  // The reference text under an identifier that no other object has, for a shared part in a session
  // that does not keep the identities of shared parts; else the reference text as it is.
  std::string WithFreshIdentity(const std::string& connection);
  // "<Path>\<model folder>\<model id>.<extension>".
  std::string LibraryModelPath(const std::string& modelId);
  void StoreModelId();
  // Whether another library model stands behind the part than when it was last read back.
  bool HasOtherModel();
  // The CAD's parameters into the protocol; without the extended function from `plainList`.
  bool ReadParametersBack(CadList plainList);
  void ReadFeatureStatesBack();
  bool SendFeatureStates(const SourceStamp& source);
  // Notes that this part drives `inner`: see IsDrivenFurtherUp.
  void Drive(VXPart& inner) const { inner.drivenBy = this; }
  // Damaged data may lead in a ring: true for a protocol whose own insert or update, or that of a
  // part it drives, is what runs now.
  bool IsDrivenFurtherUp(const std::string& protocolId) const;
  // Reports and gives the failure result.
  bool Fail(const char* message, const SourceStamp& source) const;

  const PartServices& services;
  VXProtocol& protocol;
  std::string drawingFile;  // temporary file that the calculation host writes; drawings and models
  int smartPart = 0;        // not 0: local
  std::string filePath;
  std::string caption;
  int fromCad = 0;
  int loop = 0;  // not 0: the calculation runs an optimisation loop

 private:
  using Views = std::vector<std::unique_ptr<VXProtocol>>;

  // steps of Insert
  bool Describe();
  void TakeOverState();
  void MarkView(InsertMode mode);
  bool DrawInCad(InsertMode mode);
  bool ReconnectSource(InsertMode mode);
  bool ReconnectOther(const std::string& protocolId);
  bool Reconnect(VXProtocol& other);
  bool ReconnectClipboard();
  bool ReconnectParent();
  Views MakeViews(InsertMode mode);
  std::unique_ptr<VXProtocol> MakeView(const std::vector<std::string_view>& buffer, int number,
                                       const std::string& viewName, const std::string& model);
  void ReadBackAfterLoop();
  // steps of Update
  bool ChangeObject(const std::string& connection, const ExtDataPairs& pairs);
  Views CollectViews();
  std::vector<std::string> LinkedViewIds();
  void OrderViews(Views& views);
  void CopyCadValues(Views& views);
  // of both
  void ReadLoop();
  void FinishOptimState();
  enum class Step { Insert, Change };
  bool DriveViews(Step step, Views& views, const std::string& connection,
                  const ExtDataPairs& pairs);
  bool DriveView(Step step, VXProtocol& view);
  bool StartViews();
  void EndViews();

  const VXPart* drivenBy = nullptr;  // the calculation or group that this part belongs to
};

}  // namespace quillmar
