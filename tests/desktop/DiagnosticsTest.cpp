// What the antenna hears when a technician presses buttons, byte by byte, and what the window makes of its answers.

#include "tests/desktop/Technician.h"

namespace {

using Diagnostics = Technician;

TEST_F(Diagnostics, every_button_of_the_panel_sends_its_lines_in_order)
{
    struct Button {
        const char* name;
        std::vector<std::string> lines;
    };
    const std::vector<std::pair<const char*, std::vector<Button>>> tabs{
        {"Antenna Info",
         {{"cmdGetVersion", {"VERSION", "@VER"}},
          {"cmdGetState", {"STATE"}},
          {"cmdGetSigStrength", {"SIGLEVEL"}},
          {"cmdGetSatsInstalled", {"SATINSTALL"}},
          {"cmdGetSerNum", {"=SERNUM"}},
          {"cmdGetGPS", {"GPS"}}}},
        {"Calibration",
         {{"cmdCalGyro", {"HALT", "DEBUGON", "=CALGYRO"}},
          {"cmdCalAZ", {"HALT", "DEBUGON", "=CALAZ"}},
          {"cmdCalEL", {"HALT", "DEBUGON", "=CALEL"}}}},
        {"Advanced", {{"cmdClrEE", {"HALT", "DEBUGON", "CLEAREE"}}}},
        {"Antenna Control",
         {{"cmdHalt", {"HALT"}},
          {"cmdDebugOn", {"DEBUGON"}},
          {"cmdUp", {"8"}},
          {"cmdDown", {"2"}},
          {"cmdLeft", {"4"}},
          {"cmdRight", {"6"}},
          {"cmdZAP", {"ZAP"}}}},
    };
    OpenDiagnostics();
    for (const auto& [tab, buttons] : tabs) {
        OpenTab(tab);
        for (const Button& button : buttons) ClickAndHear(button.name, button.lines);
    }
    ExpectSilence();
    // Each line stands in the terminal, and so in the log.
    EXPECT_EQ(FirstOutOfOrder(home.Bytes("BNL.LOG"),
                              {"==>VERSION\r\n", "==>@VER\r\n", "==>STATE\r\n", "==>HALT\r\n", "==>DEBUGON\r\n",
                               "==>=CALGYRO\r\n", ">=CALGYRO OK", "==>CLEAREE\r\n", "==>8\r\n", "==>ZAP\r\n"}),
              "");
}

TEST_F(Diagnostics, arrow_keys_move_the_antenna_and_bring_commands_back)
{
    OpenDiagnostics();
    OpenTab("Antenna Control");
    const std::pair<const char*, const char*> keys[] = {
        {"Ctrl+Up", "8"}, {"Ctrl+Down", "2"}, {"Ctrl+Left", "4"}, {"Ctrl+Right", "6"}};
    for (const char* focus : {"cmdHalt", "txtSendCmd", "txtAZ"}) {
        wizard->Focus(focus);
        for (const auto& [key, line] : keys) {
            wizard->PressKey(key);
            ExpectHeard({line}, std::string(key) + " in " + focus);
        }
    }
    OpenTab("Calibration");
    wizard->PressKey("Ctrl+Up");  // here the arrows move nothing

    wizard->Focus("txtSendCmd");
    for (const char* command : {"STATE", "GPS"}) {
        wizard->Type(command);
        wizard->WaitForText("txtSendCmd", command);
        wizard->PressKey("Return");
        ExpectHeard({std::string(command) + "\\r\\n"}, "a typed line has its line end, and the link's CR");
    }
    wizard->Type("SIG");
    wizard->WaitForText("txtSendCmd", "SIG");
    for (const auto& [key, shown] : std::vector<std::pair<const char*, const char*>>{
             {"Up", "GPS"}, {"Up", "STATE"}, {"Up", "STATE"}, {"Down", "GPS"}, {"Down", "SIG"}, {"Down", "SIG"}}) {
        wizard->PressKey(key);
        wizard->WaitUntil(std::string(key) + " shows " + shown,
                          [&, shown = shown] { return wizard->See("txtSendCmd").text == shown; });
    }
    wizard->PressKey("Up");
    wizard->PressKey("Return");
    ExpectHeard({"GPS\\r\\n"}, "a command of before goes out as it did");
    ExpectSilence();
}

TEST_F(Diagnostics, a_calculation_that_fails_is_told_and_ends_the_program_in_order)
{
    OpenDiagnostics();
    OpenTab("Update GPS");
    Fill("txtLat", "42");
    Fill("txtLongitude_0", "71");
    wizard->Focus("txtSatLongitude");
    wizard->Type("1x0-y1");  // only what can be part of a number is taken
    wizard->WaitUntil("the filter", [this] { return wizard->See("txtSatLongitude").text == "10-1"; });
    EXPECT_NE(wizard->See("txtSatLongitude").tip, "") << "this is no number";
    Fill("txtSatLongitude", "101");
    wizard->Click("cmdCalcAzElSkew");
    wizard->WaitForText("lblCalculatedAngle_0", "Azimuth: 220.8");
    EXPECT_EQ(wizard->See("lblCalculatedAngle_1").text, "Elev: 32.8");
    EXPECT_EQ(wizard->See("lblCalculatedAngle_2").text, "Skew: -29.2");

    Fill("txtLat", "0");
    Fill("txtLongitude_0", "101");
    wizard->Click("cmdCalcAzElSkew");
    wizard->AnswerBox("Division by zero", "OK");
    EXPECT_TRUE(wizard->EndsWithin(10));
    EXPECT_FALSE(wizard->Crashed());
    EXPECT_EQ(wizard->ExitCode(), 0);
    const std::string log = home.Bytes("BNL.LOG");
    EXPECT_EQ(FirstOutOfOrder(log, {"++>CalcAzElSkew: failure #11", "++>Shutting down Burnline Assistant"}), "");
    EXPECT_EQ(log.substr(log.size() - 2), "\r\n") << "the closing line is whole";
}

}  // namespace
