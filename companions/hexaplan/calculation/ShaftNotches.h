// Notches of round steel shafts: how much they raise the stress, what of it counts in fatigue, and
// the safety against fatigue that is left.
//
// Sources:
//  shoulder      Peterson's charts in the form A (r/d)^b: R. L. Norton, Machine Design, appendix
//                "Stress-concentration factors", shaft with a shoulder fillet in bending, in
//                torsion
//  groove        U-shaped, in bending and in torsion: W. C. Young, R. G. Budynas, Roark's Formulas
//                for Stress and Strain, table 17.1; after Peterson too
//  keyway, ring  R. G. Budynas, J. K. Nisbett, Shigley's Mechanical Engineering Design, table 7-1
//  groove        (end-milled keyseat; retaining-ring groove)
//  cross hole    Kirsch's small hole: 3 in tension, 2 in shear; weakened section after Norton
//  press fit     DIN 743-2: fatigue notch factors of a hub that is pressed on
//  sensitivity   Neuber's constant of steel by Kuhn and Hardrath, as Shigley's equation 6-35 fits
//  it endurance     Marin's factors for surface, size and reliability: Shigley, section 6-9 safety
//  DE-Goodman: Shigley, equation 7-7, with the steady axial stress added to the mean
#pragma once

namespace hexaplan {

// How much a notch raises the stress of the section that it leaves.
struct NotchFactors {
  double bending = 1, torsion = 1;
};

// Diameters in mm on both sides, `large` above `small`; the stress is that of the small one.
NotchFactors ShoulderNotch(double large, double small, double radius);
// All around, `depth` below the surface; the stress is that of its bottom.
NotchFactors GrooveNotch(double diameter, double depth, double radius);
// The stress is that of the whole section.
NotchFactors CrossHoleNotch(double diameter, double hole);
inline constexpr NotchFactors kKeywayNotch{2.14, 3.0};
inline constexpr NotchFactors kRingGrooveNotch{5.0, 3.0};
// Fatigue factors at once: a fit has no radius.
NotchFactors PressFitNotch(double tensileStrength);

// Fatigue factors of theoretical ones; `radius` in mm at the notch's root.
NotchFactors FatigueNotch(const NotchFactors& theoretical, double radius, double tensileStrength);

enum class Surface { Ground = 1, Machined = 2, HotRolled = 3, Forged = 4 };
inline constexpr int kLastSurface = 4;

// Factors of the endurance limit. The reliability is a part of 1, at least a half.
double SurfaceFactor(Surface surface, double tensileStrength);
double SizeFactor(double diameter);
double ReliabilityFactor(double reliability);
// MPa, of a polished test bar in rotating bending.
double TestBarEndurance(double tensileStrength);

// What stresses a section; moments and torques in Nm, forces in N.
struct FatigueLoad {
  double bendingAmplitude = 0, bendingMean = 0;
  double torqueAmplitude = 0, torqueMean = 0;
  double axialMean = 0;
};

// One over the safety, so that a section without load has 0. The diameter in mm, strengths in MPa.
double FatigueUse(const FatigueLoad& load, double diameter, const NotchFactors& fatigue,
                  double endurance, double tensileStrength);

}  // namespace hexaplan
