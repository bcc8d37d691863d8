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

TEST_F(Diagnostics, a_position_goes_out_as_it_was_written_and_an_empty_field_makes_a_bare_return)
{
    OpenDiagnostics();
    OpenTab("Antenna Control");
    ClickAndHear("cmdGoTo", {""}, "both fields empty");
    Fill("txtAZ", "180");
    ClickAndHear("cmdGoTo", {""}, "no elevation");
    Fill("txtEl", " 45.5 ");
    ClickAndHear("cmdGoTo", {"GOTO,AZ180,EL45.5"}, "trimmed");
    wizard->WaitForText("Text1", "AZ 180.0 EL 45.5");
    Fill("txtAZ", "");
    ClickAndHear("cmdGoTo", {""}, "no azimuth");

    OpenTab("Update GPS");
    ClickAndHear("cmdUpdateGPS", {""}, "both fields empty");
    Fill("txtLat", " 42.5");
    ClickAndHear("cmdUpdateGPS", {""}, "no longitude");
    Fill("txtLongitude_0", "71.2");
    ClickAndHear("cmdUpdateGPS", {"GPS, 42.5,N,71.2,W"}, "not trimmed");
    Check("optSouth");
    Check("optEast_0");
    ClickAndHear("cmdUpdateGPS", {"GPS, 42.5,S,71.2,E"});
    Fill("txtLat", "");
    ClickAndHear("cmdUpdateGPS", {""}, "no latitude");

    OpenTab("Advanced");
    wizard->Click("cmdSetSerNum");
    Fill("txtSerNum", " 4711 ");
    ClickAndHear("cmdSetSerNum", {"=SERNUM,4711"}, "trimmed; with the field empty nothing was sent");
    ExpectSilence();
    const AntennaProcess::Holdings held = antenna->Dump(home.Path("held"));
    EXPECT_EQ(held.parameters.at("GPS"), "42.5,S,71.2,E");
    EXPECT_EQ(held.parameters.at("SERNUM"), "4711");
}

TEST_F(Diagnostics, a_users_satellite_is_told_by_the_fields_that_are_chosen)
{
    OpenDiagnostics();
    OpenTab("Advanced");
    wizard->Click("cmdConfigUSERSat");  // without a longitude nothing is sent
    Fill("txtLongitude_1", " 101.5 ");
    ClickAndHear("cmdConfigUSERSat", {"HALT", "DEBUGON", "SATCONFIG,101.5,"}, "nothing chosen");
    wizard->WaitForText("Text1", "SATCONFIG: ILLEGAL VALUE");
    Check("optUSERSats_0");
    Check("optLNBPolarization_0");
    ClickAndHear("cmdConfigUSERSat", {"HALT", "DEBUGON", "SATCONFIG,USER1,101.5,C"});
    Check("optWest_2");
    Check("optDecodeType_0");
    ClickAndHear("cmdConfigUSERSat", {"HALT", "DEBUGON", "SATCONFIG,USER1,101.5,W,1,C"});
    Check("optDecodeType_1");
    ClickAndHear("cmdConfigUSERSat", {"HALT", "DEBUGON", "SATCONFIG,USER1,101.5,W,2,C"});
    Check("optUSERSats_1");
    Check("optEast_2");
    Check("optDecodeType_2");
    Check("optLNBPolarization_1");
    ClickAndHear("cmdConfigUSERSat", {"HALT", "DEBUGON", "SATCONFIG,USER2,101.5,E,3,L"});
    ExpectSilence();
    const AntennaProcess::Holdings held = antenna->Dump(home.Path("held"));
    EXPECT_EQ(held.parameters.at("USER1"), "101.5,W,2,C");
    EXPECT_EQ(held.parameters.at("USER2"), "101.5,E,3,L");
}

TEST_F(Diagnostics, a_pair_is_installed_once_and_a_pick_from_the_antennas_lists_wins)
{
    OpenDiagnostics();
    OpenTab("Install Sats");
    EXPECT_EQ(wizard->See("cboPredefinedSats").text, "DirecTV 101 only.");
    ClickAndHear("cmdSatInstall", {"HALT", "DEBUGON", "SATINSTALL,DSS_101,NONE"}, "as it stood at the start");
    wizard->Click("cmdSatInstall");  // nothing is picked any more, so nothing is sent
    wizard->Click("cmdGetSatListB");
    for (const auto& [entry, line] :
         std::vector<std::pair<const char*, const char*>>{{"DirecTV 101 and 119.", "SATINSTALL,DSS_101,DSS_119"},
                                                          {"Dish 119 only.", "SATINSTALL,ECHO_119,NONE"},
                                                          {"Dish 119 and 110.", "SATINSTALL,ECHO_119,ECHO_110"},
                                                          {"DirecTV 101 only.", "SATINSTALL,DSS_101,NONE"}}) {
        wizard->Choose("cboPredefinedSats", entry);
        wizard->WaitForText("cboPredefinedSats", entry);
        ClickAndHear("cmdSatInstall", {"HALT", "DEBUGON", line});
    }

    ClickAndHear("cmdGetSatListA", {"SATLISTA"});
    wizard->WaitForText("cboSatA", "DSS_101");
    EXPECT_EQ(wizard->See("cboSatA").entries, "DSS_101\nECHO_119\nHOTBIRD\nASTRA1\nNILESAT\nTRISAT");
    wizard->Choose("cboSatA", "HOTBIRD");
    wizard->WaitForText("cboSatA", "HOTBIRD");
    ClickAndHear("cmdGetSatListB", {"SATLISTB,HOTBIRD"});
    wizard->WaitForText("cboSatB", "ASTRA1");
    EXPECT_EQ(wizard->See("cboSatB").entries, "ASTRA1\nASTRA2S\nSIRIUS\nTHOR\nNONE");
    wizard->Choose("cboSatB", "THOR");
    wizard->WaitForText("cboSatB", "THOR");
    ClickAndHear("cmdSatInstall", {"HALT", "DEBUGON", "SATINSTALL,HOTBIRD,THOR"}, "not the pre-defined pair");
    wizard->Choose("cboSatB", "NONE");
    wizard->WaitForText("cboSatB", "NONE");
    wizard->Click("cmdSatInstall");  // a second satellite alone is nothing to install

    wizard->Choose("cboSatA", "TRISAT");
    wizard->WaitForText("cboSatA", "TRISAT");
    wizard->Click("cmdGetSatListB");
    wizard->WaitUntil("the four", [this] { return wizard->See("cboSatB").entries == "DSS\nEWB\nEUR\nSCN"; });
    wizard->Choose("cboSatB", "EUR");
    wizard->WaitForText("cboSatB", "EUR");
    ClickAndHear("cmdSatInstall", {"HALT", "DEBUGON", "SATINSTALL,TRISAT,EUR"}, "and no question for the four");
    ExpectSilence();
    EXPECT_EQ(antenna->Dump(home.Path("held")).parameters.at("SATINSTALL"), "HOTBIRD,ASTRA1,ASTRA2S");
}

TEST_F(Diagnostics, a_list_in_pieces_a_single_satellite_and_no_answer_leave_the_way_on)
{
    OpenDiagnostics();
    OpenTab("Install Sats");
    antenna->Do("fault split SATLISTA");
    wizard->Click("cmdGetSatListA");
    wizard->WaitForText("cboSatA", "DSS_101");
    EXPECT_EQ(wizard->See("cboSatA").entries, "DSS_101\nECHO_119\nHOTBIRD\nASTRA1\nNILESAT\nTRISAT");

    wizard->Choose("cboSatA", "NILESAT");
    wizard->WaitForText("cboSatA", "NILESAT");
    wizard->Click("cmdGetSatListB");
    wizard->WaitForText("Text1", "SATLISTB,ARABSAT");
    EXPECT_FALSE(wizard->See("cboSatB").visible) << "one satellite is no choice";

    antenna->Do("fault mute SATLISTA");
    wizard->Click("cmdGetSatListA");
    antenna->WaitFor("\"SATLISTA\" is left unanswered");
    wizard->WaitForText("Text1", "*** No list of satellites came from the antenna.", 40);
    wizard->Focus("txtSendCmd");
    wizard->Type("GPS");
    wizard->PressKey("Return");
    wizard->WaitForText("Text1", "GPS = 42.5N 71.2W");
    wizard->Click("cmdGetSatListA");
    wizard->WaitUntil("the list again", [this] { return wizard->See("cboSatA").Says("DSS_101"); });
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
