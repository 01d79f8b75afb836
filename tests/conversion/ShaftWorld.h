// Shaft protocols on the real store, given and compared as lists of their values.
#pragma once

#include <map>

#include "PartsWorld.h"
#include "conversion/ProtocolConverter.h"
#include "platform/System.h"

namespace quillmar::test {

// Name and "value unit" of data parameters.
using Values = std::map<std::string, std::string>;

// A store may take names for the same whose letters differ in case only.
inline std::string Key(const std::string& name) { return platform::LowerCase(name); }
inline Values ByKey(const Values& values) {
  Values keyed;
  for (const auto& [name, text] : values) keyed[Key(name)] = text;
  return keyed;
}

class ShaftWorld : public PartsWorld {
 protected:
  // "value unit", where the unit is what follows the last blank.
  static void Put(VXProtocol& protocol, const std::string& name, const std::string& text) {
    const auto blank = text.rfind(' ');
    protocol.PutDataParam(name, text.substr(0, blank), text.substr(blank + 1));
  }

  std::string Make(const std::string& dataFile, int major, const Values& values) {
    const std::string id = MakeProtocol("p", {{"Main", "DataFile", dataFile.c_str()}});
    VXProtocol protocol(protocols, id);
    protocol.SetVersion(major, 0);
    protocol.PutViewKey("MODELA");
    for (const auto& [name, text] : values) Put(protocol, name, text);
    return id;
  }

  // Those that are there and not empty, by their keys.
  Values Read(const std::string& id) {
    VXProtocol protocol(protocols, id);
    Values values;
    short count = 0;
    protocol.GetDataCount(count);
    for (short i = 1; i <= count; ++i) {
      std::string name;
      std::string value;
      std::string unit;
      protocol.GetDataItem(i, name, value, unit);
      if (!value.empty() || !unit.empty()) values[Key(name)] = value + " " + unit;
    }
    return values;
  }

  int MajorOf(const std::string& id) {
    VXProtocol protocol(protocols, id);
    int major = 0;
    int minor = 0;
    protocol.GetVersion(major, minor);
    return major;
  }

  void Convert(const ProtocolContext& context, const std::string& id, int targetMajor) {
    VXProtocol protocol(context, id);
    ConvertProtocol(session, converter.get(), protocol, targetMajor);
  }

  ViewKeyMapping mapping;
  std::unique_ptr<ProtocolConverter> converter =
      std::make_unique<ProtocolConverter>("Cad", SuiteFolder() + "\\none.ini", mapping);
};

}  // namespace quillmar::test
