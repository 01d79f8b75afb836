// Parts: inserting, changing, reconnecting, renaming, feature states, configurations, visibility.
#include <algorithm>
#include <cmath>

#include "drawboard/BoardError.h"
#include "drawboard/Driver.h"
#include "drawboard/Folders.h"
#include "drawboard/Imports.h"
#include "drawboard/LibraryModel.h"
#include "platform/System.h"

namespace drawboard {
namespace {

// What the insert and change calls of all kinds have in common.
struct PartCall {
  std::string connection;
  std::string caption;
  NamedTexts extendedData;
};

PartCall MakePartCall(const char* connection, const char* caption, const ExtDataPair* pairs,
                      int count) {
  return {TextOf(connection), TextOf(caption), CopyPairs(pairs, count)};
}

void Apply(BoardObject& object, const PartCall& call) {
  Connect(object, call.connection);
  object.caption = call.caption;
  object.extendedData = call.extendedData;
}

// An empty list leaves the parameters alone: a shared part may be made without any.
void ApplyParameters(BoardObject& object, const char* text) {
  if (TextOf(text).empty()) return;
  ParameterList list = ParseParameters(text);
  object.view = std::move(list.view);
  object.parameters =
      RenewTexts(std::move(list.parameters), object.parameters, object.cadParameters);
}

BoardObject NewObject(Kind kind, const char* protocolId, const PartCall& call) {
  BoardObject object;
  object.kind = kind;
  object.protocolId = TextOf(protocolId);
  object.connection = call.connection;
  object.caption = call.caption;
  object.extendedData = call.extendedData;
  return object;
}

Profile MakeProfile(int pointCount, const double* first, const double* second, double baseValue,
                    const char* baseUnit) {
  Profile profile;
  profile.baseValue = baseValue;
  profile.baseUnit = TextOf(baseUnit);
  if (first != nullptr && second != nullptr && pointCount > 0) {
    profile.first.assign(first, first + pointCount);
    profile.second.assign(second, second + pointCount);
  }
  const auto finite = [](double value) { return std::isfinite(value); };
  if (!std::all_of(profile.first.begin(), profile.first.end(), finite) ||
      !std::all_of(profile.second.begin(), profile.second.end(), finite) || !finite(baseValue)) {
    throw BoardError("The cam's profile holds values that are no numbers");
  }
  return profile;
}

// The imported file and the body that it holds.
void ImportModel(BoardObject& object, const Document& document, const std::string& source,
                 FileChanges& files) {
  ImportFile(document, object.name, source, object.modelPath, files);
  object.facets = ReadModelFile(object.modelPath);
}

// Gives the object a new name and moves its file along, unless others bear that file too.
void Rename(Document& next, BoardObject& object, const std::string& name, FileChanges& files,
            const Kernel& kernel) {
  if (const BoardObject* other = next.FindName(name); other != nullptr && other != &object) {
    throw BoardError("The name \"" + name + "\" belongs to another object");
  }
  for (BoardObject& feature : next.objects) {
    if (quillmar::platform::EqualsNoCase(feature.featureOf, object.name)) feature.featureOf = name;
  }
  object.name = name;
  const bool alone = !object.file.empty() && !IsBorneByOther(next, object, object.file) &&
                     !quillmar::platform::EqualsNoCase(object.file, object.modelPath);
  if (!alone) return;
  const std::string path = FolderOf(object.filePath) + "\\" + name + ExtensionOf(object.file);
  StorePart(next, object, path, {}, kernel, files);
}

Board& TheBoard() { return TheAddin().board; }

}  // namespace

namespace driver {

int InsertPart(const char* fileName, const char* protocolId, const char* connection, int local,
               const char* secondFileName, const char* caption, const ExtDataPair* pairs,
               int count) {
  const PartCall call = MakePartCall(connection, caption, pairs, count);
  BoardObject object = NewObject(Kind::Part, protocolId, call);
  object.local = local != 0;
  TheBoard().Insert(std::move(object), TextOf(secondFileName),
                    [&](BoardObject& placed, Document& next, FileChanges& files) {
                      ImportModel(placed, next, TextOf(fileName), files);
                    });
  return 1;
}

int ChangePart(const char* fileName, const char* protocolId, const char* connection, int local,
               const char* secondFileName, const char* caption, const ExtDataPair* pairs,
               int count) {
  const PartCall call = MakePartCall(connection, caption, pairs, count);
  TheBoard().ChangeObjects(BearerOf(protocolId, connection), TextOf(secondFileName),
                           [&](BoardObject& object, Document& next, FileChanges& files) {
                             Apply(object, call);
                             object.local = local != 0;
                             ImportModel(object, next, TextOf(fileName), files);
                           });
  return 1;
}

int InsertParamPart(const char* protocolId, const char* modelPath, const char* parameters,
                    const char* connection, int local, const char* filePath, const char* caption,
                    const ExtDataPair* pairs, int count) {
  const PartCall call = MakePartCall(connection, caption, pairs, count);
  BoardObject object = NewObject(Kind::ParamPart, protocolId, call);
  object.local = local != 0;
  object.modelPath = TextOf(modelPath);
  ApplyParameters(object, parameters);
  ApplyLibraryModel(object);
  TheBoard().Insert(std::move(object), TextOf(filePath));
  return 1;
}

int ChangeParamPart(const char* protocolId, const char* modelPath, const char* parameters,
                    const char* connection, int local, const char* filePath, const char* caption,
                    const ExtDataPair* pairs, int count, int modelChanged) {
  const PartCall call = MakePartCall(connection, caption, pairs, count);
  TheBoard().ChangeObjects(BearerOf(protocolId, connection), TextOf(filePath),
                           [&](BoardObject& object, Document&, FileChanges&) {
                             Apply(object, call);
                             object.local = local != 0;
                             object.modelPath = TextOf(modelPath);
                             if (modelChanged != 0) ForgetLibraryModel(object);
                             ApplyParameters(object, parameters);
                             ApplyLibraryModel(object);
                           });
  return 1;
}

int InsertShaft(const char* protocolId, const char* modelPath, const char* parameters,
                const char* connection, const char* filePath, const char* caption,
                const ExtDataPair* pairs, int count) {
  const PartCall call = MakePartCall(connection, caption, pairs, count);
  BoardObject object = NewObject(Kind::Shaft, protocolId, call);
  object.modelPath = TextOf(modelPath);
  ApplyParameters(object, parameters);
  ApplyLibraryModel(object);
  TheBoard().Insert(std::move(object), TextOf(filePath));
  return 1;
}

int ChangeShaft(const char* protocolId, const char* modelPath, const char* parameters,
                const char* connection, const char* caption, const ExtDataPair* pairs, int count) {
  const PartCall call = MakePartCall(connection, caption, pairs, count);
  TheBoard().ChangeObjects(BearerOf(protocolId, connection), {},
                           [&](BoardObject& object, Document&, FileChanges&) {
                             Apply(object, call);
                             object.modelPath = TextOf(modelPath);
                             ApplyParameters(object, parameters);
                             ApplyLibraryModel(object);
                           });
  return 1;
}

int InsertFeature(const char* modelPath, const char* protocolId, const char* connection,
                  const char* filePath, const char* caption, const char* parameters) {
  const PartCall call = MakePartCall(connection, caption, nullptr, 0);
  BoardObject object = NewObject(Kind::Feature, protocolId, call);
  object.modelPath = TextOf(modelPath);
  if (const BoardObject* part = TheBoard().Selected()) object.featureOf = part->name;
  ApplyParameters(object, parameters);
  ApplyLibraryModel(object);
  TheBoard().Insert(std::move(object), TextOf(filePath));
  return 1;
}

int ChangeFeature(const char* modelPath, const char* protocolId, const char* connection,
                  const char* caption, const char* parameters) {
  TheBoard().ChangeObjects(BearerOf(protocolId, connection), {},
                           [&](BoardObject& object, Document&, FileChanges&) {
                             Connect(object, TextOf(connection));
                             object.caption = TextOf(caption);
                             object.modelPath = TextOf(modelPath);
                             ApplyParameters(object, parameters);
                             ApplyLibraryModel(object);
                           });
  return 1;
}

int InsertCamPart(const char* protocolId, int pointCount, const double* first, const double* second,
                  double baseValue, const char* baseUnit, const char* connection,
                  const char* filePath, const char* caption, const ExtDataPair* pairs, int count) {
  const PartCall call = MakePartCall(connection, caption, pairs, count);
  BoardObject object = NewObject(Kind::Cam, protocolId, call);
  object.profile = MakeProfile(pointCount, first, second, baseValue, baseUnit);
  TheBoard().Insert(std::move(object), TextOf(filePath));
  return 1;
}

int ChangeCamPart(const char* protocolId, int pointCount, const double* first, const double* second,
                  double baseValue, const char* baseUnit, const char* connection,
                  const char* caption, const ExtDataPair* pairs, int count) {
  const PartCall call = MakePartCall(connection, caption, pairs, count);
  const Profile profile = MakeProfile(pointCount, first, second, baseValue, baseUnit);
  TheBoard().ChangeObjects(BearerOf(protocolId, connection), {},
                           [&](BoardObject& object, Document&, FileChanges&) {
                             Apply(object, call);
                             object.profile = profile;
                           });
  return 1;
}

int InsertCamPartEx(const char* protocolId, const char* parameters, const char* connection,
                    const char* filePath, const char* modelPath, const char* caption,
                    const ExtDataPair* pairs, int count) {
  const PartCall call = MakePartCall(connection, caption, pairs, count);
  BoardObject object = NewObject(Kind::Cam, protocolId, call);
  object.modelPath = TextOf(modelPath);
  ApplyParameters(object, parameters);
  ApplyLibraryModel(object);
  TheBoard().Insert(std::move(object), TextOf(filePath));
  return 1;
}

int ChangeCamPartEx(const char* protocolId, const char* parameters, const char* connection,
                    const char* caption, const ExtDataPair* pairs, int count) {
  const PartCall call = MakePartCall(connection, caption, pairs, count);
  TheBoard().ChangeObjects(BearerOf(protocolId, connection), {},
                           [&](BoardObject& object, Document&, FileChanges&) {
                             Apply(object, call);
                             ApplyParameters(object, parameters);
                           });
  return 1;
}

int ConnectProtocol(const char* protocolId, const char* connection) {
  TheBoard().Change([&](Document& next, FileChanges&) {
    const auto objects = next.FindAll(TextOf(protocolId));
    if (objects.empty()) {
      throw BoardError("No object has the protocol \"" + TextOf(protocolId) + "\"");
    }
    for (BoardObject* object : objects) Connect(*object, TextOf(connection));
  });
  return 1;
}

int RenamePart(const char* protocolId, const char* oldName, const char* newName) {
  const std::string name = TextOf(newName);
  if (name.empty()) throw BoardError("A part needs a name");
  Board& board = TheBoard();
  board.Change([&](Document& next, FileChanges& files) {
    BoardObject* object = next.FindName(TextOf(oldName));
    if (object == nullptr) object = next.Find(TextOf(protocolId));
    if (object == nullptr) {
      throw BoardError("There is no part \"" + TextOf(oldName) + "\" to rename");
    }
    Rename(next, *object, name, files, board.Geometry());
  });
  return 1;
}

int SetFeaturesState(const char* protocolId, const char* states) {
  TheBoard().ChangeObjects(
      TextOf(protocolId), {}, [&](BoardObject& object, Document&, FileChanges&) {
        for (const NamedText& state : ParseParameters(TextOf(states)).parameters) {
          PutText(object.featureStates, state.name, state.value);
        }
      });
  return 1;
}

int SetActiveConfiguration(const char* protocolId, const char* configuration,
                           const char* connection) {
  const std::string wanted = TextOf(configuration);
  TheBoard().ChangeObjects(
      TextOf(protocolId), {}, [&](BoardObject& object, Document&, FileChanges&) {
        Configurations& known = object.configurations;
        if (std::find(known.names.begin(), known.names.end(), wanted) == known.names.end()) {
          throw BoardError("\"" + object.name + "\" has no configuration \"" + wanted + "\"");
        }
        known.active = wanted;
        if (!TextOf(connection).empty()) Connect(object, TextOf(connection));
      });
  return 1;
}

int SetPartsVisibility(const char* protocolId, const char* states) {
  Board& board = TheBoard();
  board.Require(TextOf(protocolId));
  board.Change([&](Document& next, FileChanges&) {
    for (const NamedText& state : ParseParameters(TextOf(states)).parameters) {
      if (BoardObject* part = next.FindName(state.name)) {
        part->visible = state.value != "0";
      } else {
        board.messages.push_back("There is no part \"" + state.name + "\" to show or hide");
      }
    }
  });
  return 1;
}

}  // namespace driver
}  // namespace drawboard
