#include "diagnostics/CalcAzElSkew.h"

#include <charconv>
#include <cmath>

#include "platform/Failure.h"

namespace {

using Matrix = std::array<Vector, 3>;

constexpr double EarthRadiusKm = 6375.0;
constexpr double OrbitRadiusKm = 42175.0;  // of the geostationary orbit, from the earth's centre
constexpr double DegToRad = 0.017453292519943278;
constexpr double RadToDeg = 57.29577951308238;
constexpr double Pi = 3.14159265358979;  // 15 digits, not the whole double
constexpr double ThreePi = 9.42477796076937;
constexpr double TwoPi = 6.28318530717958;
constexpr double SkewFloor = 1e-08;  // the least that the sine of the longitude difference counts as

double VectorLength(const Vector& v) { return std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]); }

Vector NormalizeVector(const Vector& v)
{
    const double length = VectorLength(v);
    return {v[0] / length, v[1] / length, v[2] / length};
}

Vector MatrixTimesVector(const Matrix& m, const Vector& v)
{
    Vector product{};
    for (std::size_t row = 0; row < product.size(); ++row)
        product[row] = m[row][0] * v[0] + m[row][1] * v[1] + m[row][2] * v[2];
    return product;
}

/// A point on the earth, in km: the first axis runs through the longitude `lonB`, the third one through the north pole.
Vector GeoToCartesian(double lat, double lonA, double lonB)
{
    const double p = lat * DegToRad;
    const double l = (lonA - lonB) * DegToRad;
    return {EarthRadiusKm * std::cos(p) * std::cos(l), EarthRadiusKm * std::cos(p) * std::sin(l),
            EarthRadiusKm * std::sin(p)};
}

Vector VectorToSatellite(double lat, double lon, double sat)
{
    const Vector p = GeoToCartesian(lat, lon, sat);
    return NormalizeVector({OrbitRadiusKm - p[0], -p[1], -p[2]});
}

Matrix RotationAboutY(double deg)
{
    const double c = std::cos(deg * DegToRad), s = std::sin(deg * DegToRad);
    return {{{c, 0, s}, {0, 1, 0}, {-s, 0, c}}};
}

Matrix RotationAboutX(double deg)
{
    const double c = std::cos(deg * DegToRad), s = std::sin(deg * DegToRad);
    return {{{1, 0, 0}, {0, c, s}, {0, -s, c}}};
}

double Quotient(double dividend, double divisor)
{
    if (divisor == 0) throw Failure{FAIL_DIVISION, "Division by zero"};
    return dividend / divisor;
}

}  // namespace

int SignOf(double x) { return x >= 0 ? 1 : -1; }

double ArcTan2(double a, double b)
{
    if (a == 0) return b < 0 ? ThreePi / 2 : Pi / 2;
    double t = std::atan(std::abs(b / a));
    if (a < 0) t = Pi - t;
    if (b < 0) t = TwoPi - t;
    return t;
}

double ArcSin(double& x)
{
    if (std::abs(x) > 1) x = SignOf(x);
    return ArcTan2(std::sqrt(1 - x * x), x);
}

double ArcCos(double& x) { return Pi / 2 - ArcSin(x); }

Vector PointingVector(double lat, double lon, double sat)
{
    constexpr Matrix upToNorth{{{0, 0, 1}, {0, 1, 0}, {-1, 0, 0}}};
    const Vector t1 = MatrixTimesVector(upToNorth, VectorToSatellite(lat, lon, sat));
    const Vector t2 = MatrixTimesVector(RotationAboutX(lon - sat), t1);
    return MatrixTimesVector(RotationAboutY(lat), t2);
}

double CalcAzimuth(double lat, double lon, double sat)
{
    const Vector w = PointingVector(lat, lon, sat);
    return ArcTan2(w[0], w[1]) * RadToDeg;
}

double CalcElevation(double lat, double lon, double sat)
{
    const Vector w = PointingVector(lat, lon, sat);
    return std::atan(Quotient(-w[2], std::sqrt(w[0] * w[0] + w[1] * w[1]))) * RadToDeg;
}

double CalcSkew(double lat, double lon, double sat)
{
    const double r = EarthRadiusKm / OrbitRadiusKm;
    // The difference runs the other way round than in PointingVector.
    const double c = std::cos((sat - lon) * DegToRad);
    double s = std::sin((sat - lon) * DegToRad);
    if (std::abs(s) < SkewFloor) s = SignOf(s) * SkewFloor;
    const double cp = std::cos(lat * DegToRad), sp = std::sin(lat * DegToRad);

    const double d = 2 * cp * r * c - r * r - 1;  // squared distance to the satellite in orbit radii, negative
    const double n = r * sp - r * r * sp * cp * c;
    const double e = s * s * r * r * cp * cp + c * c * r * r * cp * cp + r * r * sp * sp - 2 * cp * r * c + 1;
    const double f = n / e;
    const double g = std::sqrt(1 - cp * cp * c * c) * r * std::sqrt(-1 / d);
    const double h = std::sqrt((2 * cp * r * c - r * r * cp * cp - 1) / d);
    double q = Quotient(f, h * g);
    double t = SignOf(cp * r * s) * ArcCos(q);
    if (t < -Pi / 2) t = t + Pi;
    if (t > Pi / 2) t = t - Pi;
    return t * RadToDeg;
}

std::string AngleText(double degrees)
{
    // The decimal number in 15 significant digits is what is rounded: 0.15 is a half, although its bits lie below it.
    constexpr int figures = 15;
    char text[32];
    const auto end = std::to_chars(text, std::end(text), std::abs(degrees), std::chars_format::scientific, figures - 1);
    const std::string written(text, end.ptr);  // "1.80000000000000e+02"
    const std::string digits = written[0] + written.substr(2, figures - 1);
    const int wanted = std::stoi(written.substr(figures + 2)) + 2;  // digits up to the first decimal
    int tenths = 0;
    for (int at = 0; at < wanted && at < figures; ++at) tenths = tenths * 10 + (digits[at] - '0');
    if (wanted >= 0 && wanted < figures && digits[wanted] >= '5') ++tenths;

    std::string printed = degrees < 0 && tenths != 0 ? "-" : "";
    if (tenths >= 10) printed += std::to_string(tenths / 10);
    printed += '.';
    if (tenths % 10 != 0) printed += std::to_string(tenths % 10);
    return printed;
}
