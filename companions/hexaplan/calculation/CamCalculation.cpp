// The disc cam as users meet it: fields, part and parameters around DiscCam.h.
#include "hexaplan/calculation/CamCalculation.h"

#include "hexaplan/calculation/DiscCam.h"
#include "hexaplan/calculation/Materials.h"

namespace hexaplan {

namespace {

// A protocol holds 32767 parameters, two of them for each point.
constexpr double kMostPoints = 15000;

constexpr Field kBase{"rb", "mm", 40, 1, 2000, "radius of the base circle", false, 1.5};
constexpr Field kRoller{"rr",  "mm", 10, 0, 500, "radius of the roller, 0 for a knife edge",
                        false, 0.375};
constexpr Field kOffset{"e", "mm", 0, -1000, 1000, "offset of the follower's axis"};
constexpr Field kLift{"h", "mm", 20, 0.01, 1000, "lift of the follower", false, 0.75};
constexpr Field kRise{"beta1", "deg", 120, 1, 359, "cam angle of the rise"};
constexpr Field kUpperDwell{"delta1", "deg", 60, 0, 358, "cam angle of the upper dwell"};
constexpr Field kReturn{"beta2", "deg", 120, 1, 359, "cam angle of the return"};
constexpr const char* kLawMeaning =
    "1 cycloidal, 2 harmonic, 3 polynomial 3-4-5, 4 polynomial 4-5-6-7";
constexpr Field kRiseLaw{"law1", "ND", 1, 1, kLastMotionLaw, kLawMeaning, true};
constexpr Field kReturnLaw{"law2", "ND", 1, 1, kLastMotionLaw, kLawMeaning, true};
constexpr Field kSpeed{"n", "1/min", 300, 0.1, 20000, "speed of the cam"};
constexpr Field kForce{"F", "N", 500, 0, 1e6, "force on the follower along its axis", false, 100};
constexpr Field kLimit{"phiMax", "deg", 30, 5, 60, "largest pressure angle allowed"};
constexpr Field kWidth{"b", "mm", 20, 0.5, 500, "width of the cam", false, 0.75};
constexpr Field kBore{"dh", "mm", 25, 0, 1000, "bore, 0 for none", false, 1};
constexpr Field kMaterial{"mat", "ND", 5, 1, kLastMaterial, "material", true};
constexpr Field kPoints{"cPoint", "ND", 360, 12, kMostPoints, "points of the profile", true};

CamInput ReadInput(Inputs& inputs, const Material*& material) {
  CamInput cam;
  cam.baseRadius = inputs.Read(kBase);
  cam.rollerRadius = inputs.Read(kRoller);
  cam.offset = inputs.Read(kOffset);
  cam.lift = inputs.Read(kLift);
  cam.riseAngle = inputs.Read(kRise);
  cam.upperDwell = inputs.Read(kUpperDwell);
  cam.returnAngle = inputs.Read(kReturn);
  cam.riseLaw = static_cast<MotionLaw>(inputs.ReadWhole(kRiseLaw));
  cam.returnLaw = static_cast<MotionLaw>(inputs.ReadWhole(kReturnLaw));
  cam.speed = inputs.Read(kSpeed);
  cam.force = inputs.Read(kForce);
  cam.pressureAngleLimit = inputs.Read(kLimit);
  cam.width = inputs.Read(kWidth);
  cam.bore = inputs.Read(kBore);
  material = &MaterialOf(inputs.ReadWhole(kMaterial));
  cam.density = material->density;
  cam.points = inputs.ReadWhole(kPoints);
  return cam;
}

std::vector<DataParameter> AllParameters(const Inputs& inputs, const CamInput& cam,
                                         const CamResult& result) {
  std::vector<DataParameter> list = inputs.Parameters();
  const auto add = [&](const std::string& name, double value, const char* unit) {
    list.push_back({name, NumberText(value), unit});
  };
  const CamStroke* strokes[] = {&result.rise, &result.fall};
  for (int i = 0; i < 2; ++i) {
    const std::string number = std::to_string(i + 1);
    add("vMax" + number, strokes[i]->maxVelocity, "m/s");
    add("aMax" + number, strokes[i]->maxAcceleration, "m/s2");
    add("jMax" + number, strokes[i]->maxJerk, "m/s3");
    add("phi" + number, strokes[i]->maxPressureAngle, "deg");
    add("phiAt" + number, strokes[i]->maxPressureAngleAt, "deg");
  }
  add("roPitch", result.minPitchRadius, "mm");
  add("roMin", result.minProfileRadius, "mm");
  add("FnMax", result.maxNormalForce, "N");
  add("TMax", result.maxTorque, "Nm");
  add("S", result.area, "mm2");
  add("mass", result.mass, "kg");
  add("ro", cam.density, "kg/m3");
  add("bv", cam.baseRadius, "mm");
  for (std::size_t i = 0; i < result.profile.size(); ++i) {
    const std::string number = "_" + std::to_string(i + 1);
    add("l" + number, result.profile[i].distance, "mm");
    add("a" + number, result.profile[i].direction, "deg");
  }
  return list;
}

const ValueNote kResults[] = {
    {"vMax1", "largest velocity of the rise",
     "Norton, Design of Machinery: law of motion, first derivative"},
    {"aMax1", "largest acceleration of the rise",
     "Norton, Design of Machinery: law of motion, second derivative"},
    {"jMax1", "largest jerk of the rise",
     "Norton, Design of Machinery: law of motion, third derivative"},
    {"phi1", "largest pressure angle of the rise",
     "Norton, Design of Machinery: tan phi = (s' - e) / ((Rp^2 - e^2)^0.5 + s)"},
    {"phiAt1", "where the cam then stands", "place of the maximum"},
    {"vMax2", "largest velocity of the return",
     "Norton, Design of Machinery: law of motion, first derivative"},
    {"aMax2", "largest acceleration of the return",
     "Norton, Design of Machinery: law of motion, second derivative"},
    {"jMax2", "largest jerk of the return",
     "Norton, Design of Machinery: law of motion, third derivative"},
    {"phi2", "largest pressure angle of the return",
     "Norton, Design of Machinery: tan phi = (s' - e) / ((Rp^2 - e^2)^0.5 + s)"},
    {"phiAt2", "where the cam then stands", "place of the maximum"},
    {"roPitch", "smallest radius of the pitch curve",
     "Rothbart, Cam Design Handbook, ch. 6: curvature of the pitch curve"},
    {"roMin", "smallest radius of the profile",
     "Rothbart, Cam Design Handbook, ch. 6: roPitch - rr"},
    {"FnMax", "largest normal force", "F / cos phi"},
    {"TMax", "largest torque of the cam shaft", "F ds/dphi"},
    {"S", "area of the profile", "sum of the triangles to the centre"},
    {"mass", "mass", "(S - bore) b ro"},
    {"ro", "density", "of the material"},
    {"bv", "radius of the base circle", "rb"},
    {"l_i", "distance of the profile from the centre",
     "Rothbart, Cam Design Handbook, ch. 6: pitch curve less rr along its normal"},
    {"a_i", "direction of that point",
     "Rothbart, Cam Design Handbook, ch. 6: pitch curve less rr along its normal"},
};

class CamCalculation final : public Calculation {
 public:
  const char* DataFile() const override { return "CAM"; }
  const char* Name() const override { return "Disc cam"; }

  std::vector<CalculatedPart> Run(Inputs& inputs) const override {
    const Material* material = nullptr;
    const CamInput cam = ReadInput(inputs, material);
    inputs.RefuseUnknown(Name());
    const CamResult result = CalculateCam(cam);

    CalculatedPart part;
    part.kind = PartKind::Cam;
    part.modelId = "DiscCam";
    part.viewKey = "MODELA";
    part.description = "Disc cam";
    part.size = "R" + inputs.Shown(cam.baseRadius, "mm") + " h" + inputs.Shown(cam.lift, "mm") +
                " b" + inputs.Shown(cam.width, "mm");
    part.caption = part.description + " " + part.size;
    part.subtype = NameOf(cam.riseLaw);
    part.material = material->name;
    part.mass = result.mass;
    part.parameters = AllParameters(inputs, cam, result);
    return {part};
  }

  std::vector<std::string> NumberedNames() const override { return {"l", "a"}; }

  std::vector<ValueNote> Notes() const override {
    std::vector<ValueNote> notes;
    for (const Field* field :
         {&kBase, &kRoller, &kOffset, &kLift, &kRise, &kUpperDwell, &kReturn, &kRiseLaw,
          &kReturnLaw, &kSpeed, &kForce, &kLimit, &kWidth, &kBore, &kMaterial, &kPoints}) {
      notes.push_back({field->name, field->meaning});
    }
    notes.insert(notes.end(), std::begin(kResults), std::end(kResults));
    return notes;
  }
};

}  // namespace

const Calculation& DiscCams() {
  static const CamCalculation calculation;
  return calculation;
}

}  // namespace hexaplan
