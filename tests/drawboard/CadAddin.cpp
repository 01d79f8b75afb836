#include "CadAddin.h"

#include <vector>

#include "drawboard/DriveFiles.h"
#include "platform/System.h"

namespace platform = quillmar::platform;

void CadAddin::SetUp() {
  auto loaded = platform::LoadLibraryAt(AddinPath());
  ASSERT_TRUE(loaded.library) << "error " << loaded.error;
  library = std::move(loaded.library);
  const auto bind = [&](auto& function, const char* name) {
    function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(
        platform::FindFunction(library.Get(), name));
    ASSERT_NE(function, nullptr) << name;
  };
#define BIND(need, name, result, parameters, arguments) bind(cad.name, #name);
  QM_CAD_FUNCTIONS(BIND)
  QM_CAD_2D_FUNCTIONS(BIND)
#undef BIND
#define BIND(name, result, parameters, arguments) bind(cad.name, #name);
  DRAWBOARD_FUNCTIONS(BIND)
#undef BIND
  folder = platform::TempFolder() + "\\drawboard-tests";
  ASSERT_TRUE(drawboard::EraseFolder(folder));
  document = folder + "\\Gearbox.json";
  ASSERT_EQ(cad.Drawboard_NewDocument(document.c_str(), "mm"), 1);
  ASSERT_EQ(cad.Drawboard_SetFolder("WORKSPACE", (folder + "\\work").c_str()), 1);
  ASSERT_EQ(cad.Drawboard_SetFolder("LIB", (folder + "\\lib").c_str()), 1);
  ASSERT_EQ(cad.Drawboard_SetFolder("CONTENTLIB", (folder + "\\content").c_str()), 1);
}

void CadAddin::TearDown() {
  library.Free();
  drawboard::EraseFolder(folder);
}

std::string CadAddin::Read(const ListReader& reader) {
  std::vector<char> buffer(1 << 20);
  int size = static_cast<int>(buffer.size()) - 1;
  EXPECT_EQ(reader(buffer.data(), &size), 1);
  EXPECT_EQ(buffer[static_cast<std::size_t>(size)], '\0');
  return std::string(buffer.data(), static_cast<std::size_t>(size));
}

nlohmann::json CadAddin::Document() {
  return nlohmann::json::parse(Read(cad.Drawboard_GetDocument));
}

nlohmann::json CadAddin::Object(const std::string& name) {
  const auto document = Document();
  for (const auto& object : document["objects"]) {
    if (object["name"] == name) return object;
  }
  ADD_FAILURE() << "no object " << name << " in " << document.dump(1);
  return {};
}

std::string CadAddin::Messages() { return Read(cad.Drawboard_GetMessages); }

int CadAddin::InsertWheel(const std::string& id, const std::string& filePath,
                          const std::string& parameters, int local) {
  char name[] = "BOM1", value[] = "Wheel";
  const ExtDataPair pair{name, value};
  return cad.InsertParamPart(id.c_str(), "", parameters.c_str(), Reference(id).c_str(), local,
                             filePath.c_str(), "Wheel", &pair, 1);
}
