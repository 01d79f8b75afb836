// Drawings, formats and pictures on request of the add-in.
#pragma once

#include <string>

#include "bom/ExtDataPairs.h"
#include "parts/PartServices.h"

namespace quillmar {

struct Drawing {
  std::string protocolId;  // of the copy that was drawn; it stays in the store
  std::string connection;  // its reference text
  std::string file;        // empty in a session without 2D output
  int metric = 0;
  double x = 0.0;
  double y = 0.0;
  double level = 0.0;
  ExtDataPairs pairs;
};

// Draws a copy of the protocol that is linked to nothing. With `removeInfo` the copy notes that the
// CAD object is to lose its information. False, and nothing left behind, when there is no such
// protocol or its file cannot be drawn.
bool Create2dPart(const PartServices& services, const std::string& protocolId, bool removeInfo,
                  Drawing& drawing);
// Takes a drawing back that its caller cannot use: the copy and the file go.
void DiscardDrawing(const PartServices& services, const Drawing& drawing);

// Lets the host show a new sheet format; the host's answer.
int ShowFormat(const PartServices& services, const std::string& standard, double scale);

// Lets the host draw a picture of the protocol; its path, empty on failure.
std::string MakePicture(const PartServices& services, const std::string& protocolId);

// True for a protocol of the store whose unit is the millimetre.
bool IsPartMetric(const PartServices& services, const std::string& protocolId);

}  // namespace quillmar
