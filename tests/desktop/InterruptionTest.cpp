// What a flash survives: a plug that is pulled, a program that is killed, a user who closes the window.

#include "tests/desktop/RealWindow.h"

namespace {

constexpr const char* file = "F61195A.HEX";

/// What the antenna tells to have heard as commands, each between quotation marks.
std::vector<std::string> CommandsTaken(const AntennaProcess& antenna)
{
    std::vector<std::string> commands;
    for (const std::string& line : antenna.Said()) {
        const std::size_t first = line.find('"'), last = line.rfind('"');
        if (last > first + 1 && last != std::string::npos) commands.push_back(line.substr(first + 1, last - first - 1));
    }
    return commands;
}

TEST_F(RealWindow, takes_a_flash_to_its_end_whose_port_was_pulled_and_plugged_in_again)
{
    home.MakeFlashFile(file, 80);
    StartAntenna(12, Speed::OfTheLine);
    StartWizard();
    AwaitPortReady();
    FlashBrixUntilFirstLine();
    antenna->Do("fault port-gone 1");
    wizard->WaitForText("lblRedoCOMMPort", "Plug it in again");
    antenna->WaitFor("the port is back");
    wizard->WaitForText("lblFlashStatus_0", "PLEASE PRESS NEXT", 60);
    EXPECT_TRUE(antenna->Dump(home.Path("flashed")).memory == JudgedImage(home.Path(file)));
    EXPECT_FALSE(wizard->HasBox());
}

TEST_F(RealWindow, asks_before_it_closes_in_the_middle_of_a_transfer)
{
    home.MakeFlashFile(file, 150);
    StartAntenna(12, Speed::OfTheLine);
    StartWizard();
    AwaitPortReady();
    FlashBrixUntilFirstLine();
    wizard->Close();
    wizard->AnswerBox("The Orbimaster antenna may not be fully functional if you cancel now!", "Cancel");
    EXPECT_TRUE(wizard->See("frmWizard").visible);
    wizard->Close();
    wizard->AnswerBox("The Orbimaster antenna may not be fully functional if you cancel now!", "OK");
    EXPECT_TRUE(wizard->EndsWithin(10));
    EXPECT_EQ(FirstOutOfOrder(home.Bytes("BNL.LOG"), {"++>CONFIRM_CANCEL", "++>CONFIRM_CANCEL", "Cancelled by User"}),
              "");
}

TEST_F(RealWindow, leaves_a_whole_log_when_it_is_killed_and_flashes_the_dead_antenna_at_the_next_start)
{
    home.MakeFlashFile(file, 300);
    StartAntenna(12, Speed::OfTheLine);
    StartWizard();
    AwaitPortReady();
    FlashBrixUntilFirstLine();
    wizard->Kill();
    const std::string log = home.Bytes("BNL.LOG");
    EXPECT_EQ(FirstOutOfOrder(log, {"++>Board picked to flash is", "==>HALT", ">HALT", "==>flasha", "BRIX BOOT READY",
                                    "==>PGM_BRIX", "ERASING", "++>.....Erase done", "*** FLASHING BRIX MAIN BOARD."}),
              "")
        << log;

    EXPECT_GE(CommandsTaken(*antenna).size(), 2u);
    for (const std::string& command : CommandsTaken(*antenna))
        EXPECT_NE(log.find("==>" + command), std::string::npos) << command << " reached the antenna and not the log";

    antenna->Do("power off");
    antenna->WaitFor("no software any more");
    home.MakeFlashFile(file, 20);
    StartWizard();
    wizard->WaitForText("lblCommPortStatus", "Waiting on COM7");
    antenna->Do("power on");
    wizard->WaitForText("lblCommPortStatus", "COM port: COM7 ready");
    FlashBrixUntilFirstLine();
    EXPECT_EQ(home.Bytes("BNLBAK.LOG"), log);
    wizard->WaitForText("lblFlashStatus_0", "PLEASE PRESS NEXT", 30);
    EXPECT_TRUE(antenna->Dump(home.Path("flashed")).memory == JudgedImage(home.Path(file)));
}

}  // namespace
