// quillmar-store on a store that the test made.
#include <fstream>

#include "ToolRun.h"

namespace quillmar::test {
namespace {

using testing::HasSubstr;
using testing::Not;

struct Row {
  std::string arguments;
  int status;
  std::string told;  // part of the output
};

class StoreToolTest : public StoreTool {
 protected:
  void Check(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
      const Ran ran = Store(row.arguments);
      EXPECT_EQ(ran.status, row.status) << row.arguments << "\n" << ran.output;
      EXPECT_THAT(ran.output, HasSubstr(row.told)) << row.arguments;
    }
  }
};

TEST_F(StoreToolTest, ListsShowsAndCompares) {
  const std::string a =
      Make("KEELDATA|GEAR1", 2, "MODELA", {{"d", "20", "mm"}, {"n\xB3", "1", ""}});
  const std::string b = Make("KEELDATA|GEAR1", 2, "MODELB", {{"d", "21", "mm"}, {"L", "9", "mm"}});
  Check({
      {"list", 0, "GEAR1"},
      {"list", 0, "2 protocols"},
      {"list --ids", 0, a + "\n" + b + "\n"},
      {"show " + a, 0, "  d = 20 mm\n  n\xC5\x82 = 1\n"},
      {"show NOSUCH", 2, "There is no protocol \"NOSUCH\""},
      {"diff " + a + " " + a, 0, ""},
      {"diff " + a + " " + b, 1, "~ [Data] d: 20 mm -> 21 mm\n"},
      {"diff " + a + " " + b, 1, "- [Data] n\xC5\x82 = 1\n"},
      {"diff " + a + " " + b, 1, "+ [Data] L = 9 mm\n"},
      {"show", 2, "required"},
      {"", 2, "subcommand"},
  });
  EXPECT_THAT(Store("list").output, Not(HasSubstr("\x1b"))) << "no colours in a pipe";
  // Asking for one that is missing has not made it.
  EXPECT_EQ(Count(), 2u);
  EXPECT_EQ(RunTool("quillmar-store", "--image /nowhere list").status, 2);
}

TEST_F(StoreToolTest, WhatWasExportedComesBack) {
  const std::string id = Make("KEELDATA|SHAFT", 1, "SHAFT", {{"D%|<", "5 <@EL>", "mm"}});
  // The CAD knows the object under another identifier.
  suite.Open(id);
  suite.Put(id, "Object", "ProtID", "OTHER");
  suite.Close(id);
  const std::string file = Folder() + "/out/" + id + ".ref";
  const std::string broken = Folder() + "/broken.ref";
  Check({
      {"export --all --out " + Folder() + "/out", 0, "1 protocol written"},
      {"export " + id, 0, id + "<@PID>KC1|V|1|0<@EL>"},
      {"export NOSUCH", 2, "There is no protocol"},
      {"diff " + id + " " + file, 0, ""},
      {"import " + file, 1, "has " + id + " already"},
      {"import --dry-run --as COPY " + file, 0, "COPY would be made"},
      {"show COPY", 2, "There is no protocol"},
      {"import --as COPY " + file, 0, "COPY made"},
      {"diff " + id + " COPY", 0, ""},
  });
  suite.Open(id);
  suite.storage.Com_PutDataParam(id.c_str(), "D%|<", "6", "in");
  suite.Put(id, "Late", "Key", "1");
  suite.Close(id);
  std::ofstream(broken) << "NEW<@PID>KC1|?|<@EL>";
  std::ofstream(Folder() + "/none.ref") << "no reference";
  Check({
      {"diff " + file + " " + id, 1, "+ [Late] Key = 1"},
      {"import --replace " + file, 0, id + " replaced"},
      {"diff " + file + " " + id, 0, ""},
      {"import " + broken + " " + Folder() + "/none.ref", 1, "0 done, 2 refused"},
      {"import --replace --as " + id + " " + broken, 1, "refuses"},
      {"diff " + file + " " + id, 0, ""},
      {"show NEW", 2, "There is no protocol"},
  });
}

TEST_F(StoreToolTest, FindsDamageAndDeadReferences) {
  const std::string good = Make("KEELDATA|GEAR1", 2, "MODELA", {{"d", "20", "mm"}});
  Check({{"check", 0, "1 protocol, 0 findings"}});
  Make("", 2, "", {});
  Make("KEELDATA|GEAR1", 7, "", {});
  suite.Open(good);
  suite.storage.Com_PutProtocol(good.c_str(), "GONE", "GONE");
  suite.links.Link_SetLinkTo(good.c_str(), "d", "AWAY");
  suite.Close(good);
  Check({{"check", 1, "does not say what calculation"},
         {"check", 1, "unknown layout 7.0"},
         {"check", 1, good + ": has the member GONE, which is missing"},
         {"check", 1, "leads to AWAY, which is missing"}});
  std::ofstream(machine.HostPath(suite.Folder() + "\\Broken.db")) << std::string(5000, 'x');
  machine.WriteFile(suite.Folder() + "\\Keelcomm.ini", "[Store]\nDatabase=Broken.db\n");
  EXPECT_NE(Store("check").status, 0);
}

}  // namespace
}  // namespace quillmar::test
