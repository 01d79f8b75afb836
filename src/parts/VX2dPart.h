// A drawing of a calculated part: the calculation host draws it into a file, the CAD inserts that.
#pragma once

#include "parts/VXPart.h"

namespace quillmar {

class VX2dPart : public VXPart {
 public:
  using VXPart::VXPart;

  // Draws the file. A session without 2D output has none and leaves everything as it is.
  bool CreatePartFile() override;
  bool InsertIntoCad(const std::string& connection, const ExtDataPairs& pairs) override;
  bool ChangeInCad(const std::string& connection, const ExtDataPairs& pairs) override;
  bool WantsDescription() override;
  // The host draws protocols of the layout before the current one.
  bool BeforeConnect() override;

  const std::string& DrawingFile() const { return drawingFile; }
  int Metric() const { return metric; }
  double InsertX() const { return insertX; }
  double InsertY() const { return insertY; }
  double Level() const { return level; }

 protected:
  int metric = 0;  // 1: millimetres
  // Where the drawing is put, in its own unit.
  double insertX = 0.0;
  double insertY = 0.0;
  double level = 0.0;

 private:
  void ReadPlace();
};

}  // namespace quillmar
