// A main board from "Welcome!" to "Finished!", at the speed of the line, with the mouse.

#include <QThread>
#include <algorithm>
#include <sstream>

#include "tests/desktop/RealWindow.h"

namespace {

/// What the NEVA's row preserves of what the antenna holds: the names in its list behind "POSTFLASH".
std::map<std::string, std::string> Preserved(const std::map<std::string, std::string>& held, const std::string& config)
{
    const std::size_t row = config.find("POSTFLASH$", config.find("ANTENNA$QEL NEVA Main Board"));
    std::istringstream list(config.substr(row, config.find('\n', row) - row));
    std::vector<std::string> commands;
    for (std::string command; std::getline(list, command, '$');) {
        std::erase_if(command, [](char c) { return c == '=' || c == '\r'; });
        commands.push_back(command);
    }
    std::map<std::string, std::string> preserved;
    for (const auto& parameter : held) {
        const std::string word = parameter.first.substr(0, parameter.first.find(','));
        if (std::find(commands.begin(), commands.end(), word) != commands.end()) preserved.insert(parameter);
    }
    return preserved;
}

TEST_F(RealWindow, takes_a_main_board_from_welcome_to_finished)
{
    home.MakeFlashFile("F61118AB.HEX", 60);
    const std::string config = home.Bytes("FLASHCFG.TXT");
    StartAntenna(0, Speed::OfTheLine);
    const auto before = Preserved(antenna->Dump(home.Path("before")).parameters, config);
    ASSERT_GE(before.size(), 10u);
    StartWizard();
    AwaitPortReady();

    wizard->Click("cmdNav_2");  // Welcome
    wizard->Click("cmdNav_2");  // Before you begin
    wizard->WaitUntil("STEP_2", [&] { return wizard->See("fraStep_3").visible; });
    wizard->WaitUntil("Next is off while no board is chosen", [&] { return !wizard->See("cmdNav_2").enabled; });
    wizard->Click("optBoardToFlash_0");
    wizard->Click("cmdNav_2");
    wizard->WaitForText("lblBoardVersion", "Orbimaster NEVA", 20);
    wizard->Click("cmdNav_2");
    wizard->WaitForText("lblFlashFile", "F61118AB.HEX");
    wizard->Click("cmdNav_2");

    wizard->WaitForText("lblFlashStatus_0", "DO NOT POWER OFF ANTENNA", 60);
    wizard->WaitUntil("neither Cancel nor another port in the middle of a transfer",
                      [&] { return !wizard->See("cmdNav_0").enabled && !wizard->See("mnuCommPort").enabled; });
    wizard->WaitForText("lblFlashStatus_0", "PLEASE PRESS NEXT", 30);
    const auto flashed = antenna->Dump(home.Path("flashed"));
    EXPECT_TRUE(flashed.memory == JudgedImage(home.Path("F61118AB.HEX")));
    const auto lost = Preserved(flashed.parameters, config);
    for (const auto& [name, value] : before) {
        const auto now = lost.find(name);
        EXPECT_TRUE(now == lost.end() || now->second != value) << name << " survived the flash by itself";
    }

    wizard->Click("cmdNav_2");
    wizard->WaitForText("lblFlashStatus_1", "Please power off the antenna");
    QThread::msleep(500);  // nobody is at the switch sooner; the antenna still stores the last line
    antenna->Do("power off");
    antenna->Do("power on");
    wizard->AnswerBox("Parameter Upload Successful and antenna restarted", "OK", 90);
    wizard->Click("cmdNav_2");
    wizard->WaitForText("lblPickAntennaInfo", "Software updated successfully.");
    wizard->Click("cmdNav_3");
    ASSERT_TRUE(wizard->EndsWithin(10));
    EXPECT_EQ(wizard->ExitCode(), 0);

    const auto after = antenna->Dump(home.Path("after"));
    EXPECT_EQ(Preserved(after.parameters, config), before);
    EXPECT_TRUE(after.memory == flashed.memory);
    const std::string log = home.Bytes("BNL.LOG");
    EXPECT_EQ(FirstOutOfOrder(log, {"++>Starting Burnline Assistant",
                                    "++>Comm port is: 7",
                                    "==>@VER",
                                    "==>VERSION",
                                    ">QEL Orbimaster NEVA Ver 4.07",
                                    "++>Board picked to flash is QEL NEVA Main Board",
                                    "File to flash is F61118AB.HEX.",
                                    "File F61118AB.HEX passed integrity test.",
                                    "++>Starting Main board flashing",
                                    "==>HALT",
                                    "==>BIASAZ",
                                    ">Azimuth Bias =",
                                    "==>DEW",
                                    "==>flasha",
                                    "MAIN BOOT READY",
                                    "==>PGM_MAIN",
                                    "++>.....Erase done",
                                    "*** FLASHING MAIN BOARD. DO NOT POWER OFF ANTENNA ***",
                                    "++>.....PLEASE PRESS NEXT",
                                    "==> Antenna restarted, waiting for full initialization.",
                                    "Limit Switch PASS",
                                    "==>CLEAREE",
                                    "==>BIASAZ",
                                    "==>DEW",
                                    "++>Post-Flash Successful, Parameters uploaded",
                                    "Burnline Assistant - Finished"}),
              "")
        << log;
}

}  // namespace
