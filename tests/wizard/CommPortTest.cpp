#include "link/SerialPortIO.h"
#include "tests/wizard/WizardFixture.h"

namespace {

class CommPort : public Wizard {
protected:
    void StartOn(int port, std::map<int, int> ports)
    {
        WriteFile(world.directory / "Burnline.ini",
                  "[BurnlineParameters]\r\nCOMMPort=" + std::to_string(port) + "\r\n");
        world.ports = std::move(ports);
        GetDefaultValues();
        if (port == 0) SetSetting(SETTING_COMM_PORT, "0");
        ConnectForms();
        FormLoad();
    }

    static std::string Menu()
    {
        std::string menu;
        for (Control& item : frmWizard.mnuCommPort_Item)
            if (item.Visible) menu += item.Caption() + (item.Value == 1 ? "* " : " ");
        return menu;
    }
};

TEST_F(CommPort, without_one_in_the_settings_the_first_is_taken_and_kept)
{
    StartOn(0, {{3, PORT_USABLE}, {7, PORT_USABLE}});
    EXPECT_EQ(Menu(), "COM3* COM7 ");
    EXPECT_EQ(GetSetting(SETTING_COMM_PORT), "3");
    EXPECT_GT(Session.link.iCommID, 0);
}

TEST_F(CommPort, the_only_one_is_taken_at_the_first_start_unless_another_was_asked_for)
{
    for (const char* asked : {"", "9"}) {
        std::filesystem::remove(world.directory / "Burnline.ini");
        world.ports = {{12, PORT_USABLE}};
        GetDefaultValues();
        if (*asked != 0) SetSetting(SETTING_COMM_PORT, asked);
        ConnectForms();
        FormLoad();
        EXPECT_EQ(GetSetting(SETTING_COMM_PORT), *asked == 0 ? "12" : "9");
        EXPECT_EQ(Session.link.iCommID > 0, *asked == 0);
        CloseComm();
    }
}

TEST_F(CommPort, one_that_can_not_be_used_is_told_once_and_stays_closed)
{
    const struct {
        std::map<int, int> ports;
        const char *box, *label, *keys;
    } cases[] = {
        {{}, "No serial port found!", "COM port: None found or all used", "1010"},
        {{{7, PORT_IN_USE}}, "COM Port Already in Use. (COM7).", "COM port: COM Port Already in Use. (COM7).", "1000"},
        {{{7, PORT_FORBIDDEN}}, "General error with COM Port. (COM7).", "COM port: Error with COM Port", "1000"},
    };
    for (const auto& one : cases) {
        StartOn(one.ports.empty() ? 0 : 7, one.ports);
        ASSERT_EQ(world.boxes.size(), 1u) << one.box;
        EXPECT_TRUE(world.BoxWasShown(one.box)) << world.boxes[0].words;
        EXPECT_TRUE(text::Holds(frmWizard.lblCommPortStatus.Caption(), one.label))
            << frmWizard.lblCommPortStatus.Caption();
        EXPECT_EQ(Keys(), one.keys);
        EXPECT_EQ(Session.link.iCommID, 0);
        world.boxes.clear();
    }
    EXPECT_TRUE(Logged("++>COMM_PORT_UNKNOWN_ERROR: join the group dialout, then log in again\r\n"));
    EXPECT_TRUE(text::Holds(frmWizard.lblCommPortStatus.ToolTipText(), "dialout"));
    EXPECT_TRUE(text::Holds(frmWizard.mnuCommPort_Item[1].ToolTipText(), "dialout"));
}

TEST_F(CommPort, one_that_has_disappeared_blocks_next_until_another_is_chosen)
{
    StartOn(5, {{7, PORT_USABLE}});
    EXPECT_EQ(frmWizard.lblCommPortStatus.Caption(), "COM port: COM Port not found (COM5).");
    EXPECT_EQ(Keys(), "1000");
    EXPECT_FALSE(Session.link.bPortOpened);
    mnuCommPort_Item_Click(1);
    EXPECT_GT(Session.link.iCommID, 0);
    EXPECT_TRUE(text::Holds(ReadFile(world.directory / "Burnline.ini"), "COMMPort=7"));
    world.Say("\r\n>");
    world.RunFor(0.5);
    EXPECT_TRUE(frmWizard.cmdNav[2].Enabled);
}

}  // namespace
