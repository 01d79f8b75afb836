// The disc cam against figures that others published and against closed forms, and its refusals.
#include <gmock/gmock.h>

#include <cmath>

#include "hexaplan/calculation/CamCalculation.h"
#include "hexaplan/calculation/DiscCam.h"

namespace hexaplan {
namespace {

constexpr double kPi = 3.14159265358979;

CamInput Cam(double lift, double rise, double dwell, double fall, MotionLaw law) {
  CamInput cam;
  cam.baseRadius = 25;
  cam.rollerRadius = 10;
  cam.lift = lift;
  cam.riseAngle = rise;
  cam.upperDwell = dwell;
  cam.returnAngle = fall;
  cam.riseLaw = cam.returnLaw = law;
  cam.speed = 100;
  cam.force = 100;
  cam.width = 10;
  cam.pressureAngleLimit = 60;
  cam.density = 7850;
  cam.points = 720;
  return cam;
}

// R. S. Khurmi, J. K. Gupta, Theory of Machines, chapter 20, exercises: a valve is raised by 50 mm
// with harmonic motion in a third of a revolution and lowered in a sixth, at 100 rpm. Answer:
// 0.39 m/s, 0.78 m/s; 6.17 m/s2, 24.67 m/s2.
TEST(DiscCam, MovesTheValveOfAPublishedExercise) {
  CamInput valve = Cam(50, 120, 30, 60, MotionLaw::Harmonic);
  valve.baseRadius = 100;
  const CamResult cam = CalculateCam(valve);
  EXPECT_NEAR(cam.rise.maxVelocity, 0.39, 0.005);
  EXPECT_NEAR(cam.fall.maxVelocity, 0.78, 0.01);
  EXPECT_NEAR(cam.rise.maxAcceleration, 6.17, 0.005);
  EXPECT_NEAR(cam.fall.maxAcceleration, 24.67, 0.005);
}

// A table of cam follower motion that accompanies a course (HW4, fall 2008): cycloidal rise by
// 20 mm in 60 degrees; displacement in mm, velocity in mm/deg, acceleration in mm/deg2.
TEST(DiscCam, RisesAsAPublishedTableOfCycloidalMotion) {
  const CamInput cam = Cam(20, 60, 0, 60, MotionLaw::Cycloidal);
  const struct {
    double angle, displacement, velocity, acceleration;
  } table[] = {{5, 0.075117, 0.044658, 0.017453},
               {15, 1.816901, 0.333333, 0.034907},
               {30, 10, 0.666667, 0},
               {40, 16.08998, 0.5, -0.03023},
               {65, 19.92488, -0.044658, -0.017453}};
  for (const auto& row : table) {
    const CamState state = CamStateAt(cam, row.angle);
    EXPECT_NEAR(state.displacement, row.displacement, 1e-5) << row.angle;
    EXPECT_NEAR(state.slope * kPi / 180, row.velocity, 1e-6) << row.angle;
    EXPECT_NEAR(state.second * kPi * kPi / 32400, row.acceleration, 1e-6) << row.angle;
  }
}

// R. L. Norton, Design of Machinery, "Cam design": factors of peak velocity, acceleration and jerk
// (harmonic motion's jerk by its formula). Each law's motion reaches its peaks and its lift.
TEST(DiscCam, LawsHaveThePublishedPeaks) {
  const struct {
    MotionLaw law;
    double velocity, acceleration, jerk;
  } published[] = {{MotionLaw::Cycloidal, 2.000, 6.283, 39.5},
                   {MotionLaw::Harmonic, 1.571, 4.935, 15.5},
                   {MotionLaw::Polynomial345, 1.875, 5.774, 60.0},
                   {MotionLaw::Polynomial4567, 2.188, 7.513, 52.5}};
  for (const auto& row : published) {
    Motion reached;
    double integral = 0;
    for (int i = 0; i <= 10000; ++i) {
      const Motion motion = MotionAt(row.law, i / 10000.0);
      reached.velocity = std::max(reached.velocity, std::abs(motion.velocity));
      reached.acceleration = std::max(reached.acceleration, std::abs(motion.acceleration));
      reached.jerk = std::max(reached.jerk, std::abs(motion.jerk));
      integral += motion.velocity / 10000;
    }
    const Motion peaks = PeaksOf(row.law);
    EXPECT_NEAR(peaks.velocity, row.velocity, 0.001) << NameOf(row.law);
    EXPECT_NEAR(peaks.acceleration, row.acceleration, 0.001) << NameOf(row.law);
    EXPECT_NEAR(peaks.jerk, row.jerk, 0.05) << NameOf(row.law);
    EXPECT_NEAR(reached.velocity / peaks.velocity, 1, 1e-6) << NameOf(row.law);
    EXPECT_NEAR(reached.acceleration / peaks.acceleration, 1, 1e-6) << NameOf(row.law);
    EXPECT_NEAR(reached.jerk / peaks.jerk, 1, 1e-6) << NameOf(row.law);
    EXPECT_NEAR(MotionAt(row.law, 1).displacement, 1, 1e-12) << NameOf(row.law);
    EXPECT_NEAR(integral, 1, 1e-6) << NameOf(row.law);
  }
}

// J. E. Shigley, J. J. Uicker, Theory of Machines and Mechanisms, on the largest pressure angle: by
// the nomogram of Kloomok and Muffley a cycloidal rise in 45 degrees reaches 30 degrees where the
// lift is 0.26 of the prime circle's radius (0.75 in of 2.88 in). It is read to about a degree.
TEST(DiscCam, PressureAngleOfAPublishedNomogram) {
  CamInput cam = Cam(0.75 * 25.4, 45, 90, 120, MotionLaw::Cycloidal);
  cam.rollerRadius = 12;
  cam.baseRadius = 2.88 * 25.4 - cam.rollerRadius;
  EXPECT_NEAR(CalculateCam(cam).rise.maxPressureAngle, 30, 1);
}

// Without an offset tan(phi) = s' / (Rp + s), and the pitch curve's radius has its polar formula;
// the profile's points lie one roller radius from the pitch curve, and the profile through them
// bends with the pitch curve's radius less the roller's.
TEST(DiscCam, PressureAngleCurvatureAndProfileHaveTheirClosedForms) {
  CamInput input = Cam(12, 110, 40, 90, MotionLaw::Polynomial345);
  for (const double angle : {20.0, 70.0, 130.0, 200.0}) {
    const CamState state = CamStateAt(input, angle);
    const double r = 35 + state.displacement;
    const double v = state.slope;
    EXPECT_NEAR(state.pressureAngle, std::atan(v / r) * 180 / kPi, 1e-9);
    EXPECT_NEAR(state.pitchRadius,
                std::pow(r * r + v * v, 1.5) / (r * r + 2 * v * v - r * state.second), 1e-9);
    EXPECT_NEAR(std::hypot(r - state.along, state.across), 10, 1e-9);
  }
  for (const double offset : {-4.0, 0.0, 6.0}) {
    input.offset = offset;
    const double step = 0.01;
    double x[3], y[3];
    for (int i = 0; i < 3; ++i) {
      const double degrees = 75 + (i - 1) * step;
      const CamState state = CamStateAt(input, degrees);
      const double a = degrees * kPi / 180;
      x[i] = state.along * std::sin(a) + state.across * std::cos(a);
      y[i] = state.along * std::cos(a) - state.across * std::sin(a);
    }
    const double twice = (x[2] - x[0]) * (y[1] - y[0]) - (x[1] - x[0]) * (y[2] - y[0]);
    const double radius = std::hypot(x[1] - x[0], y[1] - y[0]) *
                          std::hypot(x[2] - x[1], y[2] - y[1]) *
                          std::hypot(x[2] - x[0], y[2] - y[0]) / (2 * twice);
    EXPECT_NEAR(radius / (CamStateAt(input, 75).pitchRadius - 10), 1, 1e-3) << offset;
  }
}

// The smallest lift leaves a disc; the largest torque is the force times the largest slope.
TEST(DiscCam, WeighsItsProfileLessTheBore) {
  CamInput input = Cam(0.01, 120, 60, 120, MotionLaw::Cycloidal);
  input.bore = 20;
  input.points = 15000;
  const CamResult disc = CalculateCam(input);
  ASSERT_EQ(disc.profile.size(), 15000u);
  EXPECT_NEAR(disc.mass, kPi * (25 * 25 - 10 * 10) * 10 * 7.85e-6, 1e-4);
  EXPECT_NEAR(disc.minProfileRadius, 25, 0.1);
  EXPECT_NEAR(disc.maxTorque, 100 * 0.01 * 2 / (120 * kPi / 180) / 1000, 1e-9);
}

TEST(DiscCam, RefusesWhatCannotBeMadeOrRun) {
  const struct {
    std::vector<std::pair<const char*, const char*>> inputs;
    const char* message;
  } cases[] = {
      {{{"beta1", "200"}, {"beta2", "150"}}, "Field \"beta2\": rise, upper dwell and return take"},
      {{{"e", "40"}}, "Field \"e\": the follower's axis passes beside the base circle."},
      {{{"dh", "79"}}, "Field \"dh\": the bore leaves less than 1 mm"},
      {{{"beta1", "40"}}, "Field \"phiMax\": the pressure angle reaches "},
      {{{"rr", "60"}, {"rb", "20"}, {"beta1", "60"}, {"dh", "0"}, {"phiMax", "60"}},
       "Field \"rr\": the roller undercuts the profile at "},
      {{{"law1", "5"}}, "Field \"law1\": 5 is outside 1 to 4 (1 cycloidal, 2 harmonic, "},
      {{{"cPoint", "15001"}}, "Field \"cPoint\": 15001 is outside 12 to 15000"},
      {{{"units", "1"}, {"rb", "0.01"}},
       "Field \"rb\": 0.01 is outside 0.039370079 to 78.740157 in"},
  };
  for (const auto& each : cases) {
    Inputs inputs;
    for (const auto& [name, text] : each.inputs) inputs.SetOrdered(name, text);
    try {
      Calculate(DiscCams(), inputs);
      ADD_FAILURE() << "not refused: " << each.message;
    } catch (const InputError& error) {
      EXPECT_THAT(error.what(), testing::StartsWith(each.message));
    }
  }
}

}  // namespace
}  // namespace hexaplan
