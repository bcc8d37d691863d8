// Boards that take blocks, and the one of three stages, from "Welcome!" to "Finished!" in the real window.

#include <QThread>
#include <sstream>

#include "tests/desktop/RealWindow.h"

namespace {

/// Where the blocks of a board come from: bytes of the boot file, then of the flash file.
struct Window {
    std::size_t bootFrom, bootEnd, mainFrom, mainEnd;
};
constexpr Window oldRF{144, 528, 1024, 32256};
constexpr Window small{512, 2048, 6208, 65024};

class BlockBoards : public RealWindow {
protected:
    BlockBoards()
    {
        // Ten seconds of quiet behind every restart prove nothing here.
        std::string config = home.Bytes("FLASHCFG.TXT");
        const std::string wait = "COMMON POSTFLASH RFBOARD$WAIT 10";
        config.replace(config.find(wait), wait.size(), "COMMON POSTFLASH RFBOARD$WAIT 1");
        WriteAll(home.Path("FLASHCFG.TXT"), config);
    }

    /// What a board holds that got its blocks out of these images; 0xFF where none was sent.
    static std::string Sent(const Window& window, const std::string& boot, const std::string& main)
    {
        std::string held(window.mainEnd, '\xFF');
        held.replace(window.bootFrom, window.bootEnd - window.bootFrom, boot, window.bootFrom,
                     window.bootEnd - window.bootFrom);
        held.replace(window.mainFrom, window.mainEnd - window.mainFrom, main, window.mainFrom,
                     window.mainEnd - window.mainFrom);
        return held;
    }

    void Start(int board, const std::string& unit, Speed speed = Speed::Fast, bool usb = false)
    {
        antenna = std::make_unique<AntennaProcess>(board, home.AntennaLink(), speed == Speed::Fast, unit, usb);
        StartWizard();
        AwaitPortReady();
        wizard->Click("cmdNav_2");
        wizard->Click("cmdNav_2");
    }

    void ChooseInList(const std::string& list, const std::vector<std::string>& keys, const std::string& entry)
    {
        wizard->Focus(list);
        for (const std::string& key : keys) wizard->PressKey(key);
        wizard->WaitForText(list, entry);
        wizard->Click("cmdNav_2");
    }

    /// An RF board, which tells its version, and which parameters it holds ahead of its flash.
    std::map<std::string, std::string> ChooseRFBoard(const std::string& version)
    {
        wizard->Click("optBoardToFlash_1");
        wizard->Click("cmdNav_2");
        wizard->WaitForText("lblBoardVersion", version, 20);
        return antenna->Dump(home.Path("before")).parameters;
    }

    /// From the versions to the transfer.
    void StartFlash(const std::string& file)
    {
        wizard->Click("cmdNav_2", 30);
        if (file == "F61205M.S19") {  // which dish it is behind isn't in the list
            wizard->Click("frmCheckAntennasForRF6/chkNoneOfThese");
            wizard->Click("frmCheckAntennasForRF6/cmdOK");
        }
        wizard->WaitForText("lblFlashFile", file);
        wizard->Click("cmdNav_2");
    }

    /// Nobody is at the switch sooner, and no antenna notices a shorter gap.
    void CyclePower()
    {
        QThread::msleep(500);
        antenna->Do("power off");
        QThread::msleep(500);
        antenna->Do("power on");
    }

    void CyclePowerWhenAsked(double seconds = 20)
    {
        wizard->WaitForText("lblFlashStatus_0", "Please cycle power to the antenna to reset", seconds);
        CyclePower();
    }

    AntennaProcess::Holdings AwaitFlashed(double seconds = 60)
    {
        wizard->WaitForText("lblFlashStatus_0", "Please click Next.", seconds);
        return antenna->Dump(home.Path("flashed"));
    }

    void Finish()
    {
        wizard->Click("cmdNav_2");
        wizard->WaitForText("lblFlashStatus_1", "Please power off the antenna");
        CyclePower();
        FinishWhenRestarted();
    }

    void FinishWhenRestarted()
    {
        wizard->AnswerBox("Parameter Upload Successful and antenna restarted", "OK", 60);
        wizard->Click("cmdNav_2");
        wizard->WaitForText("lblPickAntennaInfo", "Software updated successfully.");
        wizard->Click("cmdNav_3");
        EXPECT_TRUE(wizard->EndsWithin(10));
        EXPECT_EQ(wizard->ExitCode(), 0);
    }

    /// What an RF board's row preserves, against that from before; the flash itself has lost it.
    void ExpectRestored(std::map<std::string, std::string> before, const AntennaProcess::Holdings& flashed)
    {
        const auto after = antenna->Dump(home.Path("after")).parameters;
        for (const char* name : {"FECHITS1", "FECHITS2", "SATINSTALL"}) {
            EXPECT_FALSE(before[name].empty()) << name;
            EXPECT_EQ(after.at(name), before[name]) << name;
            const auto lost = flashed.parameters.find(name);
            EXPECT_TRUE(lost == flashed.parameters.end() || lost->second != before[name])
                << name << " survived the flash by itself";
        }
    }
};

TEST_F(BlockBoards, takes_a_board_with_a_boot_area_to_its_end)
{
    home.MakeRecords("F61197A.S19", 70000, 1000, "-exclude 35000 35200");
    home.MakeRecords("F61130A.S19", 4096, 128);
    Start(13, "BRIX MOTOR");
    ChooseInList("cboBoardToFlash", {"B", "Down"}, "BRIX Motor Controller board");
    wizard->Click("optSerial");
    StartFlash("F61197A.S19");
    CyclePowerWhenAsked();
    EXPECT_TRUE(AwaitFlashed().memory ==
                Sent(small, home.JudgedRecords("F61130A.S19"), home.JudgedRecords("F61197A.S19")));
    Finish();
}

TEST_F(BlockBoards, gives_a_board_without_a_boot_area_one_and_takes_it_to_its_end)
{
    home.MakeRecords("F61172A.S19", 50000, 9000);
    home.MakeRecords("F61130A.S19", 4096, 128);
    Start(3, "CORA MOTOR OLD");
    ChooseInList("cboBoardToFlash", {"C", "Down"}, "CORA Motor Controller board");
    wizard->Click("optSerial");
    StartFlash("F61172A.S19");
    CyclePowerWhenAsked();
    antenna->WaitFor("there was no room for a boot area");
    EXPECT_TRUE(AwaitFlashed().memory ==
                Sent(small, home.JudgedRecords("F61130A.S19"), home.JudgedRecords("F61172A.S19")));
    Finish();
}

TEST_F(BlockBoards, lays_the_second_file_of_an_RF6_over_the_first_and_keeps_its_parameters)
{
    home.MakeRecords("F61205M.S19", 34000, 6208);
    home.MakeRecords("F61210A.HEX", 16000, 40960);
    home.MakeRecords("F61140A.S19", 4096, 128);
    Start(20, "RF6");
    const auto before = ChooseRFBoard("DVB/DSS 6");
    StartFlash("F61205M.S19");
    const auto flashed = AwaitFlashed(90);
    std::string image = home.JudgedRecords("F61205M.S19");
    image.replace(40960, 16000, home.JudgedRecords("F61210A.HEX"), 40960, 16000);
    EXPECT_TRUE(flashed.memory == Sent(small, home.JudgedRecords("F61140A.S19"), image));
    Finish();
    ExpectRestored(before, flashed);
}

TEST_F(BlockBoards, replaces_an_old_boot_loader_first_and_flashes_with_the_new_one)
{
    // One copy of the boot loader lies in the upper 32 KB and is folded down, and so is all of the flash file.
    home.MakeRecords("F61110A.S19", 4096, 33792);
    home.MakeRecords("F61120A.S19", 4096, 128);
    home.MakeRecords("F61201B.S19", 30000, 34268);
    Start(1, "RF2 OLD");
    const auto before = ChooseRFBoard("DVB/DSS 2");
    StartFlash("F61201B.S19");
    wizard->AnswerBox("The bootloader has been upgraded", "OK", 90);
    antenna->Dump(home.Path("upgraded"));
    const std::string loader = home.JudgedRecords("F61110A.S19", "-offset - 32768").substr(1024, 31232);
    EXPECT_TRUE(ReadAll(home.Path("upgraded") / "boot.bin").substr(1024) == loader);
    wizard->WaitForText("lblFlashStatus_0", "upgraded");
    CyclePower();

    const auto flashed = AwaitFlashed();
    std::string image = home.JudgedRecords("F61201B.S19", "-offset - 32768");
    const std::string boot = home.JudgedRecords("F61120A.S19");
    image.replace(128, 4096, boot, 128, 4096);  // the boot file is laid over the image and sent in both legs
    EXPECT_TRUE(flashed.memory == Sent(oldRF, boot, image));
    Finish();
    ExpectRestored(before, flashed);
}

TEST_F(BlockBoards, waits_for_a_USB_port_that_goes_and_comes_with_the_antennas_power)
{
    home.MakeRecords("F61360A.S19", 60000,
                     6016);  // a record that begins ahead of index 6208 isn't sent, not even in part
    home.MakeRecords("F61145A.S19", 4096, 128);
    Start(15, "TOSA", Speed::Fast, true);
    ChooseInList("cboOtherBoard", {"R"}, "Roaming Tuner");
    wizard->Click("optUSB");
    StartFlash("F61360A.S19");
    CyclePowerWhenAsked();
    EXPECT_TRUE(AwaitFlashed().memory ==
                Sent(small, home.JudgedRecords("F61145A.S19"), home.JudgedRecords("F61360A.S19")));
    EXPECT_FALSE(wizard->HasBox()) << "the port was expected to go";
    wizard->Click("cmdNav_2");
    wizard->WaitForText("lblFlashStatus_1", "Please power off the antenna");
    antenna->Do("power off");
    wizard->WaitForText("txtParamsSent", "COM7 has gone with the antenna's power.");
    antenna->Do("power on");
    FinishWhenRestarted();
    EXPECT_EQ(FirstOutOfOrder(home.Bytes("BNL.LOG"), {"==>PGM_TOSA", "++>.....Flashing RF Board successful"}), "");
}

TEST_F(BlockBoards, takes_all_three_stages_at_the_fast_speed_of_the_line)
{
    home.MakeRecords("F61350A.S19", 2000, 8320);
    home.MakeRecords("F61340B.S19", 1500, 9000, "-header F61340B");
    home.MakeRecords("F61357B.S19", 1200, 500, "-header F61357B");
    WriteAll(home.Path("Burnline.ini"), home.Bytes("Burnline.ini") + "UseFastBaud=True\r\n");
    Start(21, "RF7", Speed::OfTheLine);
    const auto before = ChooseRFBoard("DVB/DSS 7");
    StartFlash("F61350A.S19");
    CyclePowerWhenAsked(60);
    wizard->WaitForText("lblFlashStatus_0", "*** FLASHING FPGA.");
    CyclePowerWhenAsked(60);
    const auto flashed = AwaitFlashed();
    const std::pair<const char*, const char*> stages[] = {
        {"memory.bin", "F61350A.S19"}, {"fpga.bin", "F61340B.S19"}, {"bapi.bin", "F61357B.S19"}};
    for (const auto& [dumped, file] : stages) {
        const std::string held = ReadAll(home.Path("flashed") / dumped);
        EXPECT_TRUE(held.size() > 1000 && held == home.JudgedRecords(file).substr(0, held.size())) << dumped;
    }
    Finish();
    ExpectRestored(before, flashed);
    EXPECT_EQ(
        FirstOutOfOrder(home.Bytes("BNL.LOG"),
                        {"==>BAUDRATE=C", "*** FLASHING RF BOARD.", "Power cycle to start FPGA flash!", "==>BAUDRATE=C",
                         "*** FLASHING FPGA.", "Power cycle to start Acquisition Processor flash!", "==>BAUDRATE=C",
                         "*** FLASHING ACQUISITION PROCESSOR.", "Burnline Assistant - Finished"}),
        "");
}

}  // namespace
