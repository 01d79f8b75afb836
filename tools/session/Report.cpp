#include "session/Report.h"

#include <fmt/format.h>

#include "common/Place.h"
#include "session/BillOfMaterials.h"

namespace session {
namespace {

// Lines of the written timeline are not cut: they go to a file.
constexpr std::size_t kFileWidth = 10000;
constexpr std::size_t kFileModelWidth = 120;

std::string Heading(const std::string& text, bool colours) {
  return colours ? fmt::format("\n\x1b[1;36m{}\x1b[0m\n", text)
                 : fmt::format("\n{}\n{}\n", text, std::string(text.size(), '='));
}

std::string Sections(const Session& session, const ReportStyle& style, std::size_t modelWidth) {
  std::string text = Heading("Timeline", style.colours);
  text += session.Calls().Text(style.allCalls, style.width);
  if (session.DocumentText().empty()) return text;
  const auto document = DocumentJson::parse(session.DocumentText());
  text += Heading("Model in the CAD", style.colours);
  text += ModelText(document, modelWidth);
  text += Heading("Bill of materials", style.colours);
  text += BillText(MakeBillOfMaterials(document));
  return text;
}

void Write(const std::string& folder, const char* name, const std::string& contents) {
  const std::string path = tools::JoinSystemPath(folder, name);
  if (!tools::WriteSystemFile(path, contents)) throw SessionError("Cannot write " + path);
}

}  // namespace

std::string ReportText(const Session& session, const ReportStyle& style) {
  return Sections(session, style, style.width);
}

void WriteReport(const Session& session, const std::string& folder) {
  const ReportStyle style{false, true, kFileWidth};
  Write(folder, "session.txt", Sections(session, style, kFileModelWidth));
  if (session.DocumentText().empty()) return;
  Write(folder, "document.json", session.DocumentText());
  const auto document = DocumentJson::parse(session.DocumentText());
  Write(folder, "bom.csv", BillCsv(MakeBillOfMaterials(document)));
}

}  // namespace session
