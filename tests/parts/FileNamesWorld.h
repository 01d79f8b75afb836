// A part that needs a name, and the user's settings that it is made by.
#pragma once

#include "PartsWorld.h"
#include "naming/FileNames.h"

namespace quillmar::test {

struct Setting {
  const char* name;
  std::string text;          // written as a text when it is not empty
  std::uint32_t number = 0;  // else as a number
};

class FileNamesWorld : public PartsWorld {
 protected:
  // The path by these settings; "(cancelled)" or "(unchanged)" when there is none.
  std::string Name(bool local, const std::vector<Setting>& settings,
                   const std::vector<Entry>& entries = {}) {
    for (const char* name : {"LocalFileName", "SharedFileName", "LocalFolder", "SharedFolder"}) {
      SetOption("OptGeneral2", name, std::string());
    }
    for (const Setting& setting : settings) {
      if (setting.text.empty()) {
        SetOption("OptGeneral2", setting.name, setting.number);
      } else {
        SetOption("OptGeneral2", setting.name, setting.text);
      }
    }
    VXProtocol protocol(protocols, MakeProtocol("p", entries));
    const FileNameRequest request{.protocol = protocol,
                                  .local = local,
                                  .change = change,
                                  .modelChanged = modelChanged,
                                  .sessionWithoutNames = sessionWithoutNames,
                                  .caption = "Cap",
                                  .extension = "prt",
                                  .typeName = "Parts",
                                  .modelFilePath =
                                      [](std::string& path) {
                                        path = "lib";
                                        return true;
                                      },
                                  .wantsFolder = [this] { return wantsFolder; }};
    Journal::Get().Reset();
    std::string path = "(unchanged)";
    const FileNameContext context{driver, options, fileNames, texts, ids};
    return MakeFileName(context, request, path) ? path : "(cancelled)";
  }

  bool change = false;
  bool modelChanged = true;
  bool sessionWithoutNames = false;
  bool wantsFolder = true;
};

}  // namespace quillmar::test
