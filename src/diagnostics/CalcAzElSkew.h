#pragma once
// Where an antenna looks to see a geostationary satellite: azimuth, elevation and skew from two positions on a
// spherical earth. All angles that go in and come out are degrees unless told otherwise, north and east positive.
// The constants and the order of the operations show in the printed figures; leave them as they are.

#include <array>
#include <string>

using Vector = std::array<double, 3>;

/// 1 for x >= 0, else -1.
int SignOf(double x);

/// The angle, in radians from 0 up to 2 pi, of the point with the cosine part `a` and the sine part `b`.
double ArcTan2(double a, double b);

/// Radians. The arc sine of a negative number is near 2 pi, and so its arc cosine is the true one less 2 pi: CalcSkew
/// folds it back. An `x` beyond 1 or -1 is set to that.
double ArcSin(double& x);
double ArcCos(double& x);

/// Unit vector from the antenna to the satellite in the antenna's local frame: north, east, down.
Vector PointingVector(double lat, double lon, double sat);

/// From north over east, 0 up to 360.
double CalcAzimuth(double lat, double lon, double sat);

/// Above the horizon; negative when the earth is in between. Raises Failure 11 right under the satellite, where it
/// divides by zero.
double CalcElevation(double lat, double lon, double sat);

/// From -90 to 90. Raises Failure 11 where it divides by zero.
double CalcSkew(double lat, double lon, double sat);

/// An angle as it is printed: one decimal, halves away from zero, no 0 that could be left out, always a point: "180.",
/// ".5", "-.5", and "." for 0.
std::string AngleText(double degrees);
