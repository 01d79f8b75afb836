#include "ToolRun.h"

#include <sys/wait.h>

#include <algorithm>
#include <cstdio>

namespace quillmar::test {

Ran RunLine(const std::string& line) {
  Ran ran;
  FILE* output = popen((line + " 2>&1").c_str(), "r");
  char bytes[4096];
  while (const std::size_t count = fread(bytes, 1, sizeof bytes, output)) {
    ran.output.append(bytes, count);
  }
  const int status = pclose(output);
  ran.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return ran;
}

Ran RunTool(const std::string& tool, const std::string& arguments) {
  return RunLine(TOOLS_FOLDER "/" + tool + " " + arguments);
}

std::string StoreTool::Place() const {
  return "--image '" + machine.HostPath("C:\\windows").parent_path().parent_path().string() +
         "' --suite '" + suite.Folder() + "' ";
}

std::string StoreTool::Make(const std::string& dataFile, int major, const std::string& viewKey,
                            const std::vector<Datum>& data) const {
  const std::string id = suite.OpenNew();
  if (!dataFile.empty()) suite.Put(id, "Main", "DataFile", dataFile.c_str());
  suite.storage.Com_SetVersion(id.c_str(), major, 0);
  suite.storage.Com_PutViewKey(id.c_str(), viewKey.c_str());
  for (const Datum& datum : data) {
    suite.storage.Com_PutDataParam(id.c_str(), datum.name, datum.value, datum.unit);
  }
  EXPECT_TRUE(suite.Close(id));
  return id;
}

std::size_t StoreTool::Count() {
  const std::string ids = Store("list --ids").output;
  return static_cast<std::size_t>(std::count(ids.begin(), ids.end(), '\n'));
}

std::string StoreTool::Contents(const std::string& id,
                                const std::vector<const char*>& names) const {
  EXPECT_TRUE(suite.Open(id));
  int major = 0;
  int minor = 0;
  Growing view;
  suite.storage.Com_GetVersion(id.c_str(), &major, &minor);
  suite.storage.Com_GetViewKey(id.c_str(), view);
  std::string text = std::to_string(major) + "." + std::to_string(minor) + " " + view.Text();
  for (const char* name : names) {
    Growing value;
    Growing unit;
    text += std::string(" ") + name + "=";
    if (suite.storage.Com_GetDataParam(id.c_str(), name, value, unit) != 0) {
      text += value.Text() + unit.Text();
    }
  }
  suite.Close(id);
  return text;
}

}  // namespace quillmar::test
