#include "session/Report.h"

#include <fmt/format.h>

#include "common/Place.h"
#include "session/BillOfMaterials.h"
#include "session/Page.h"

namespace session {
namespace {

// Lines of the written timeline are not cut: they go to a file.
constexpr std::size_t kFileWidth = 10000;
constexpr std::size_t kFileModelWidth = 120;

std::string Heading(const std::string& text, bool colours) {
  return colours ? fmt::format("\n\x1b[1;36m{}\x1b[0m\n", text)
                 : fmt::format("\n{}\n{}\n", text, std::string(text.size(), '='));
}

// How each object came about: the steps that made and changed it.
Origins OriginsOf(const SessionData& data) {
  Origins origins;
  for (std::size_t i = 0; i < data.steps.size(); ++i) {
    const StepRecord& step = data.steps[i];
    for (const std::string& object : step.objects) {
      origins[object].push_back(fmt::format("step {}, {}", i + 1, step.title));
    }
  }
  return origins;
}

std::string StepsText(const SessionData& data) {
  std::string text;
  for (std::size_t i = 0; i < data.steps.size(); ++i) {
    const StepRecord& step = data.steps[i];
    text += fmt::format("{:>3}. {}  ({:.3f} s)\n", i + 1, step.title,
                        static_cast<double>(step.end - step.begin) / 1e6);
    for (const std::string& line : step.results) text += "     " + line + "\n";
    if (!step.failure.empty()) text += "     failed: " + step.failure + "\n";
  }
  return text;
}

std::string Sections(const Session& session, const ReportStyle& style, std::size_t modelWidth) {
  const SessionData data = session.Data();
  std::string text = Heading("Timeline", style.colours);
  text += session.Calls().Text(style.allCalls, style.width);
  text += Heading("Steps", style.colours);
  text += StepsText(data);
  if (data.document.empty()) return text;
  const auto document = DocumentJson::parse(data.document);
  text += Heading("Model in the CAD", style.colours);
  text += ModelText(document, OriginsOf(data), modelWidth);
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

void WriteReport(const Session& session, const std::string& drive, const std::string& folder) {
  const ReportStyle style{false, true, kFileWidth};
  Write(folder, "session.txt", Sections(session, style, kFileModelWidth));
  const SessionData data = session.Data();
  const std::string cad = drive + "\\Drawboard\\";
  Write(folder, "session.html", PageText(data, {cad + "Page", cad + "Document"}));
  const std::string& text = data.document;
  if (text.empty()) return;
  Write(folder, "document.json", text);
  const auto document = DocumentJson::parse(text);
  Write(folder, "bom.csv", BillCsv(MakeBillOfMaterials(document)));
}

}  // namespace session
