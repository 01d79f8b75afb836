// The built add-in, loaded as a CAD host loads it, with an empty document in a folder of its own.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <nlohmann/json.hpp>
#include <string>

#include "drawboard/Drawboard.h"
#include "platform/Modules.h"
#include "quillmar/CadDriver.h"

// Full Windows path of the add-in that was built.
std::string AddinPath();

// The add-in's functions by name.
struct AddinFunctions {
#define FIELD(need, name, result, parameters, arguments) \
  result(QM_CDECL* name) parameters = nullptr;
  QM_CAD_FUNCTIONS(FIELD)
  QM_CAD_2D_FUNCTIONS(FIELD)
#undef FIELD
#define FIELD(name, result, parameters, arguments) result(QM_CDECL* name) parameters = nullptr;
  DRAWBOARD_FUNCTIONS(FIELD)
#undef FIELD
};

using ListReader = std::function<int(char*, int*)>;

class CadAddin : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  // The text of a list reader, asked with a buffer that is large enough.
  static std::string Read(const ListReader& reader);
  nlohmann::json Document();
  // The document's object of that name; an error of the test when there is none.
  nlohmann::json Object(const std::string& name);
  std::string Messages();

  // A parametric part with this protocol, path and parameters. Its caption is "Wheel".
  int InsertWheel(const std::string& id, const std::string& filePath,
                  const std::string& parameters = "*view*,MODEL,d,100,b,20", int local = 1);

  AddinFunctions cad;
  std::string folder;    // of this test
  std::string document;  // path of the open document in it

 private:
  quillmar::platform::Library library;
};

// Reference text of a protocol with one item.
inline std::string Reference(const std::string& id, const std::string& item = "item") {
  return id + "<@PID>" + item + "<@EL>";
}
