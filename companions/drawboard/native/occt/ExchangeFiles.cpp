// STEP and GLB through documents with names and colours.
#include <APIHeaderSection_MakeHeader.hxx>
#include <BRepBndLib.hxx>
#include <BRepBuilderAPI_Copy.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <Bnd_Box.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_ProgressRange.hxx>
#include <Quantity_Color.hxx>
#include <RWGltf_CafWriter.hxx>
#include <RWMesh_CoordinateSystemConverter.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <StepData_StepModel.hxx>
#include <TColStd_IndexedDataMapOfStringString.hxx>
#include <TCollection_AsciiString.hxx>
#include <TCollection_ExtendedString.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Document.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "drawboard/BoardError.h"
#include "drawboard/native/occt/Solid.h"

namespace drawboard {
namespace fs = std::filesystem;
namespace {

// A file says what it shows, not when: the same part gives the same bytes.
constexpr const char* kTimeStamp = "2000-01-01T00:00:00";
constexpr const char* kSystem = "Drawboard";
constexpr double kMetresPerMillimetre = 0.001;
constexpr double kMeshDeflection = 5e-4;  // of the body's size
constexpr double kMeshAngle = 0.3;        // radians
// Space between two bodies of an assembly, as a part of the first one's width.
constexpr double kGap = 0.15;

// By the place of the design's kind in its variant.
constexpr double kColours[][3] = {{0.7, 0.7, 0.7},
                                  {0.36, 0.49, 0.62},
                                  {0.72, 0.74, 0.76},
                                  {0.33, 0.35, 0.38},
                                  {0.76, 0.58, 0.30}};
static_assert(std::size(kColours) == std::variant_size_v<Design>);

Quantity_Color ColourOf(const Design& design) {
  const auto& rgb = kColours[design.index()];
  return {rgb[0], rgb[1], rgb[2], Quantity_TOC_sRGB};
}

// The writers know files alone. A folder that goes with this object.
class ScratchFolder {
 public:
  ScratchFolder() {
    std::string pattern = (fs::temp_directory_path() / "drawboard-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw BoardError("There is no room for files");
    path = pattern;
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder() {
    std::error_code ignored;
    fs::remove_all(path, ignored);
  }
  std::string File(const char* name) const { return (path / name).string(); }

 private:
  fs::path path;
};

std::string Contents(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  if (!file || text.empty()) throw BoardError("A file of the part cannot be made");
  return text;
}

TCollection_ExtendedString Extended(const std::string& utf8) {
  return TCollection_ExtendedString(utf8.c_str(), true);
}

// A document of the modeller with shapes, names and colours.
class ModelDocument {
 public:
  ModelDocument() {
    // The writers would put their remarks on the standard output.
    Message::DefaultMessenger()->ChangePrinters().Clear();
    XCAFApp_Application::GetApplication()->NewDocument("MDTV-XCAF", document);
    shapes = XCAFDoc_DocumentTool::ShapeTool(document->Main());
    colours = XCAFDoc_DocumentTool::ColorTool(document->Main());
  }
  ModelDocument(const ModelDocument&) = delete;
  ModelDocument& operator=(const ModelDocument&) = delete;
  ~ModelDocument() { XCAFApp_Application::GetApplication()->Close(document); }

  TDF_Label AddPart(const TopoDS_Solid& solid, const Design& design, const std::string& name) {
    const TDF_Label label = shapes->AddShape(solid, false);
    TDataStd_Name::Set(label, Extended(name));
    colours->SetColor(label, ColourOf(design), XCAFDoc_ColorSurf);
    return label;
  }
  TDF_Label AddAssembly(const std::string& name) {
    const TDF_Label label = shapes->NewShape();
    TDataStd_Name::Set(label, Extended(name));
    return label;
  }
  void Place(const TDF_Label& assembly, const TDF_Label& part, const gp_Vec& place,
             const std::string& name) {
    gp_Trsf move;
    move.SetTranslation(place);
    const TDF_Label label = shapes->AddComponent(assembly, part, TopLoc_Location(move));
    TDataStd_Name::Set(label, Extended(name));
  }
  void Update() { shapes->UpdateAssemblies(); }

  std::string Step(const std::string& name) const;
  std::string Glb() const;

 private:
  Handle(TDocStd_Document) document;
  Handle(XCAFDoc_ShapeTool) shapes;
  Handle(XCAFDoc_ColorTool) colours;
};

// Exchange files are plain ASCII: the writer puts UTF-8 as it is, strict readers want escapes.
std::string EscapeUtf8(const std::string& text) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string escaped;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto lead = static_cast<unsigned char>(text[i]);
    const int more = lead >= 0xE0 ? 2 : 1;
    if (lead < 0xC0 || lead >= 0xF0 || i + static_cast<std::size_t>(more) >= text.size()) {
      escaped += text[i];
      continue;
    }
    unsigned code = lead & (more == 2 ? 0x0Fu : 0x1Fu);
    for (int k = 0; k < more; ++k) {
      code = (code << 6) | (static_cast<unsigned char>(text[++i]) & 0x3Fu);
    }
    escaped += "\\X2\\";
    for (int shift = 12; shift >= 0; shift -= 4) escaped += kDigits[(code >> shift) & 0xF];
    escaped += "\\X0\\";
  }
  return escaped;
}

Handle(TCollection_HAsciiString) Ascii(const std::string& text) {
  return new TCollection_HAsciiString(text.c_str());
}

std::string ModelDocument::Step(const std::string& name) const {
  STEPCAFControl_Writer writer;
  writer.SetColorMode(true);
  writer.SetNameMode(true);
  if (!writer.Transfer(document, STEPControl_AsIs)) FailStep("a STEP file");
  APIHeaderSection_MakeHeader header(writer.ChangeWriter().Model());
  header.SetName(Ascii(name));
  header.SetTimeStamp(Ascii(kTimeStamp));
  header.SetOriginatingSystem(Ascii(kSystem));
  const ScratchFolder folder;
  const std::string path = folder.File("part.step");
  if (writer.Write(path.c_str()) != IFSelect_RetDone) FailStep("a STEP file");
  return EscapeUtf8(Contents(path));
}

std::string ModelDocument::Glb() const {
  const ScratchFolder folder;
  const std::string path = folder.File("part.glb");
  RWGltf_CafWriter writer(path.c_str(), true);
  RWMesh_CoordinateSystemConverter& axes = writer.ChangeCoordinateSystemConverter();
  axes.SetInputLengthUnit(kMetresPerMillimetre);
  axes.SetInputCoordinateSystem(RWMesh_CoordinateSystem_Zup);
  if (!writer.Perform(document, TColStd_IndexedDataMapOfStringString(), Message_ProgressRange())) {
    FailStep("a GLB file");
  }
  return Contents(path);
}

Bnd_Box BoxOf(const TopoDS_Solid& solid) {
  Bnd_Box box;
  BRepBndLib::Add(solid, box, false);
  return box;
}

void Mesh(const TopoDS_Solid& solid) {
  const double size = std::sqrt(BoxOf(solid).SquareExtent());
  const BRepMesh_IncrementalMesh mesh(solid, kMeshDeflection * size, false, kMeshAngle);
  if (!mesh.IsDone()) FailStep("triangles of the part");
}

// Products of an assembly: what has one name and one design is one. The modeller takes one solid
// for one product, so parts of equal shape and different names get copies of it.
class Products {
 public:
  explicit Products(ModelDocument& document) : document(document) {}
  TDF_Label Of(const PlacedSolid& part) {
    TopoDS_Solid solid = part.solid;
    Mesh(solid);
    for (const auto& [known, label] : products) {
      if (known->body.design != part.body.design) continue;
      if (known->body.part == part.body.part) return label;
      solid = TopoDS::Solid(BRepBuilderAPI_Copy(part.solid, false, true).Shape());
    }
    const TDF_Label label = document.AddPart(solid, part.body.design, part.body.part);
    products.emplace_back(&part, label);
    return label;
  }

 private:
  ModelDocument& document;
  std::vector<std::pair<const PlacedSolid*, TDF_Label>> products;
};

}  // namespace

std::string StepOf(const TopoDS_Solid& solid, const Design& design, const std::string& name) {
  ModelDocument document;
  document.AddPart(solid, design, name);
  return document.Step(name);
}

std::string GlbOf(const TopoDS_Solid& solid, const Design& design, const std::string& name) {
  Mesh(solid);
  ModelDocument document;
  document.AddPart(solid, design, name);
  return document.Glb();
}

// One row along y, each body beside the one before it: the CAD knows no mates.
ExchangeFiles AssemblyOf(const std::vector<PlacedSolid>& parts, const std::string& name) {
  ModelDocument document;
  const TDF_Label assembly = document.AddAssembly(name);
  Products products(document);
  double place = 0;
  for (const PlacedSolid& part : parts) {
    double left, low, front, right, high, back;
    BoxOf(part.solid).Get(left, low, front, right, high, back);
    const TDF_Label label = products.Of(part);
    document.Place(assembly, label, gp_Vec(0, place - low, 0), part.body.name);
    place += (high - low) * (1 + kGap);
  }
  document.Update();
  return {document.Step(name), document.Glb(), {}};
}

}  // namespace drawboard
