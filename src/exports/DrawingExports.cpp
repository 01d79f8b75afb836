// The exports of drawings, formats and pictures.
#include <cstring>

#include "Forward.h"
#include "commands/DrawingCommands.h"
#include "quillmar/Exports.h"

using quillmar::Forward;
using quillmar::QuillmarApp;
using quillmar::Text;

namespace {

constexpr std::size_t kIdentifierSize = 260;
constexpr std::size_t kPathSize = 260;

template <class Value>
void Give(Value* output, Value value) {
  if (output != nullptr) *output = value;
}

// False, and an empty text, when the buffer of `size` bytes cannot hold it. A null buffer wants
// nothing.
bool GiveText(char* buffer, std::size_t size, const std::string& text) {
  if (buffer == nullptr) return true;
  const bool fits = text.size() < size;
  std::strcpy(buffer, fits ? text.c_str() : "");
  return fits;
}

// The capacity becomes the length, or what a second call has to offer.
bool GiveConnection(char* buffer, int* capacity, const std::string& text) {
  if (buffer == nullptr) return true;
  if (capacity == nullptr || *capacity < 1) {
    Give(capacity, static_cast<int>(text.size()) + 1);
    return false;
  }
  const bool fits = GiveText(buffer, static_cast<std::size_t>(*capacity), text);
  *capacity = static_cast<int>(text.size()) + (fits ? 0 : 1);
  return fits;
}

}  // namespace

int QM_CDECL Create2dPart(const char* protocolId, char* newId, char* connection,
                          int* connectionCapacity, char* drawingFile, int* metric, double* x,
                          double* y, double* level, ExtDataPair** pairs, int* count,
                          int removeInfo) {
  Give(pairs, static_cast<ExtDataPair*>(nullptr));
  Give(count, 0);
  return Forward("Create2dPart", 0, [&](QuillmarApp& app) {
    // One buffer may be given for the old and the new identifier.
    const std::string source = Text(protocolId);
    GiveText(newId, kIdentifierSize, "");
    GiveText(drawingFile, kPathSize, "");
    quillmar::Drawing drawing;
    if (!quillmar::Create2dPart(app.Services(), source, removeInfo != 0, drawing)) {
      return 0;
    }
    if (!GiveConnection(connection, connectionCapacity, drawing.connection) ||
        !GiveText(newId, kIdentifierSize, drawing.protocolId) ||
        !GiveText(drawingFile, kPathSize, drawing.file)) {
      quillmar::DiscardDrawing(app.Services(), drawing);
      return 0;
    }
    Give(metric, drawing.metric);
    Give(x, drawing.x);
    Give(y, drawing.y);
    Give(level, drawing.level);
    if (pairs != nullptr && count != nullptr) {
      *count = drawing.pairs.Count();
      *pairs = drawing.pairs.Release();
    }
    return 1;
  });
}

int QM_CDECL IsPartMetrics(const char* protocolId, int* metric) {
  const int answer = Forward("IsPartMetrics", 0, [&](QuillmarApp& app) {
    return quillmar::IsPartMetric(app.Services(), Text(protocolId)) ? 1 : 0;
  });
  Give(metric, answer);
  return answer;
}

int QM_CDECL MakePicture(const char* protocolId, char* picturePath) {
  return Forward("MakePicture", 0, [&](QuillmarApp& app) {
    const std::string pictured = Text(protocolId);
    GiveText(picturePath, kPathSize, "");
    const std::string path = quillmar::MakePicture(app.Services(), pictured);
    return !path.empty() && GiveText(picturePath, kPathSize, path) ? 1 : 0;
  });
}

int QM_CDECL Set2dAxisOverlap(double overlap) {
  return Forward("Set2dAxisOverlap", 0, [&](QuillmarApp& app) {
    app.Services().axisOverlap = overlap;
    return 1;
  });
}

int QM_CDECL ShowFormat(const char* standard, double scale) {
  return Forward("ShowFormat", 0, [&](QuillmarApp& app) {
    return quillmar::ShowFormat(app.Services(), Text(standard), scale);
  });
}
