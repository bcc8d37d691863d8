#include <cmath>
#include <random>

#include "diagnostics/CalcAzElSkew.h"
#include "platform/Failure.h"
#include "tests/diagnostics/DiagnosticsFixture.h"

namespace {

constexpr double degree = 3.14159265358979323846 / 180;

struct Look {
    double azimuth, elevation;
};

/// The same question asked of vectors in one frame: the way to the satellite along the local east, north and up.
Look LookAlongVectors(double lat, double lon, double sat)
{
    const double phi = lat * degree, lambda = lon * degree, sigma = sat * degree;
    const double up[] = {std::cos(phi) * std::cos(lambda), std::cos(phi) * std::sin(lambda), std::sin(phi)};
    const double east[] = {-std::sin(lambda), std::cos(lambda), 0};
    const double north[] = {-std::sin(phi) * std::cos(lambda), -std::sin(phi) * std::sin(lambda), std::cos(phi)};
    const double orbit[] = {42175 * std::cos(sigma), 42175 * std::sin(sigma), 0};
    double e = 0, n = 0, u = 0;
    for (int axis = 0; axis < 3; ++axis) {
        const double way = orbit[axis] - 6375 * up[axis];
        e += way * east[axis];
        n += way * north[axis];
        u += way * up[axis];
    }
    return {std::atan2(e, n) / degree, std::atan2(u, std::hypot(e, n)) / degree};
}

TEST(CalcAzElSkew, gives_the_worked_figures)
{
    const struct {
        double lat, lon, sat, azimuth, elevation, skew;
    } figures[] = {
        {42, -71, -101, 220.7888, 32.7563, -29.2422}, {25, -80, -119, 242.4404, 37.9281, -53.6587},
        {-33, 151, 160, 16.2148, 50.4001, -13.6048},  {51, 0, 19.2, 155.8630, 28.8563, 15.0388},
        {42, -101, -101, 180.0, 41.4996, 0.0},        {42, -101, -71, 139.2112, 32.7563, 29.2422},
        {0, -71, -101, 270.0, 55.0300, -90.0},        {-33, 160, 151, 343.7852, 50.4001, 13.6048},
    };
    for (const auto& one : figures) {
        EXPECT_NEAR(CalcAzimuth(one.lat, one.lon, one.sat), one.azimuth, 6e-5) << one.lat << " " << one.lon;
        EXPECT_NEAR(CalcElevation(one.lat, one.lon, one.sat), one.elevation, 6e-5) << one.lat << " " << one.lon;
        EXPECT_NEAR(CalcSkew(one.lat, one.lon, one.sat), one.skew, 6e-5) << one.lat << " " << one.lon;
    }
}

TEST(CalcAzElSkew, agrees_with_vectors_at_ten_thousand_places_on_both_sides_of_the_earth)
{
    std::mt19937 random(20261121);
    std::uniform_real_distribution<double> latitude(-89.9, 89.9), longitude(-180, 180);
    int below = 0;
    for (int turn = 0; turn < 10000; ++turn) {
        const double lat = latitude(random), lon = longitude(random), sat = longitude(random);
        const Look expected = LookAlongVectors(lat, lon, sat);
        ASSERT_NEAR(CalcElevation(lat, lon, sat), expected.elevation, 0.001) << lat << " " << lon << " " << sat;
        const double skew = CalcSkew(lat, lon, sat);
        ASSERT_TRUE(skew >= -90 && skew <= 90) << lat << " " << lon << " " << sat;
        if (expected.elevation < 0) ++below;
        if (std::abs(expected.elevation) > 89.5) continue;  // near the zenith every azimuth is close to right
        const double off = CalcAzimuth(lat, lon, sat) - expected.azimuth;
        ASSERT_NEAR(std::remainder(off, 360), 0, 0.001) << lat << " " << lon << " " << sat;
    }
    EXPECT_TRUE(below > 4000 && below < 8000) << below;
}

TEST(CalcAzElSkew, prints_a_point_always_and_a_zero_never_and_rounds_halves_away_from_zero)
{
    const struct {
        double angle;
        const char* printed;
    } angles[] = {
        {0, "."},         {180, "180."},  {0.5, ".5"},         {-0.5, "-.5"},    {-0.04, "."},        {-0.0, "."},
        {0.05, ".1"},     {-0.05, "-.1"}, {0.15, ".2"},        {0.25, ".3"},     {1.05, "1.1"},       {2.675, "2.7"},
        {45.35, "45.4"},  {9.95, "10."},  {99.949, "99.9"},    {359.96, "360."}, {-29.2422, "-29.2"}, {0.049999, "."},
        {100.04, "100."}, {-90, "-90."},  {220.7888, "220.8"}, {1e-20, "."},
    };
    for (const auto& one : angles) EXPECT_EQ(AngleText(one.angle), one.printed) << one.angle;
}

class Pointing : public Diagnostics {
protected:
    /// "Azimuth: 220.8|Elev: 32.8|Skew: -29.2"
    static std::string Angles(const std::string& latitude, const std::string& longitude, const std::string& satellite)
    {
        frmWizard.txtLat.Text = latitude;
        frmWizard.txtLongitude[0].Text = longitude;
        frmWizard.txtSatLongitude.Text = satellite;
        Press(frmWizard.cmdCalcAzElSkew);
        auto& labels = frmWizard.lblCalculatedAngle;
        return labels[0].Caption() + "|" + labels[1].Caption() + "|" + labels[2].Caption();
    }
};

TEST_F(Pointing, takes_the_hemispheres_from_the_options_and_a_typed_longitude_ahead_of_the_list)
{
    EXPECT_EQ(Angles("42", "", "101"), "Azimuth:|Elev:|Skew:") << "without a position nothing is calculated";
    EXPECT_FALSE(frmWizard.bAnglesKnown);
    EXPECT_EQ(Angles(" 42 ", "71", "101"), "Azimuth: 220.8|Elev: 32.8|Skew: -29.2");
    EXPECT_NEAR(frmWizard.dElevation, 32.7563, 6e-5);
    EXPECT_EQ(Angles("42", "101", "101"), "Azimuth: 180.|Elev: 41.5|Skew: .");

    PressOption(frmWizard.Self, frmWizard.optEast[0]);
    EXPECT_EQ(Angles("51", "0", ""), "Azimuth: 155.9|Elev: 28.9|Skew: 15.") << "ASTRA1 is chosen at the start";
    PressOption(frmWizard.Self, frmWizard.optSouth);
    PressOption(frmWizard.Self, frmWizard.optEast[1]);
    EXPECT_EQ(Angles("33", "151", "160"), "Azimuth: 16.2|Elev: 50.4|Skew: -13.6");
    Choose(frmWizard.cboSatListWithLongitude, 14);
    EXPECT_EQ(frmWizard.cboSatListWithLongitude.List()[14], "ECHO_61");
    EXPECT_DOUBLE_EQ(frmWizard.dSatLongitude, -61.5);
    EXPECT_EQ(frmWizard.cboSatListWithLongitude.List().size(), 26u);
    EXPECT_TRUE(world.sent.empty()) << "nothing of it is the antenna's business";
}

TEST_F(Pointing, a_numeric_fault_is_told_and_ends_the_program_in_order)
{
    const struct {
        const char *lat, *lon, *sat, *words;
    } faults[] = {
        {"42x", "71", "101", "Type mismatch: the latitude \"42x\" is no number"},
        {"42", "7,1", "101", "Type mismatch: the longitude \"7,1\" is no number"},
        {"x", "71", "-", "Type mismatch: the satellite's longitude \"-\" is no number"},
        {"0", "101", "101", "Division by zero: at the latitude \"0\" and the longitude \"101\""},
        {"0", "101.000000001", "101", "Division by zero"},
        {"9", "1", nullptr, "Overflow: the satellite's longitude"},
    };
    for (const auto& fault : faults) {
        if (Session.program.bExitRequested) SetUp();
        Session.program.bExitRequested = false;
        world.boxes.clear();
        Angles(fault.lat, fault.lon, fault.sat ? fault.sat : std::string(400, '9'));
        ASSERT_EQ(world.boxes.size(), 1u) << fault.words;
        EXPECT_TRUE(world.BoxWasShown(fault.words)) << world.boxes[0].words;
        EXPECT_TRUE(world.BoxWasShown("Please start the program again."));
        EXPECT_EQ(Session.link.iCommID, 0);
        EXPECT_TRUE(Session.program.bExitRequested);
        EXPECT_TRUE(Logged(fault.words));
        EXPECT_TRUE(Logged("++>Shutting down Burnline Assistant - Unknown reason 2026-11-21 10:15:02 ====\r\n"));
        EXPECT_FALSE(frmWizard.bAnglesKnown);
    }
}

TEST_F(Pointing, a_box_says_at_once_that_it_holds_no_number_and_the_satellites_one_takes_no_other_keys)
{
    for (Control* box : {&frmWizard.txtLat, &frmWizard.txtLongitude[0], &frmWizard.txtLongitude[1],
                         &frmWizard.txtSatLongitude, &frmWizard.txtAZ, &frmWizard.txtEl}) {
        for (const std::string words : {"4..2", "", "north", "-12.5"}) {
            box->Text = words;
            box->Change();
            const bool wrong = words == "4..2" || words == "north";
            EXPECT_EQ(box->BackColor() == Standard, !wrong) << box->Name << " " << words;
            EXPECT_EQ(text::Holds(box->ToolTipText(), "such as"), wrong) << box->Name << " " << words;
        }
    }
    const auto& swallows = frmWizard.txtSatLongitude.KeyPress;
    for (const char key : std::string("1234567890.-\b\t")) EXPECT_FALSE(swallows(key)) << int{key};
    for (const int key : {+' ', +'+', +',', +'/', +'e', 13, 127, 0xE9, 256 + '1'}) EXPECT_TRUE(swallows(key)) << key;
}

}  // namespace
