// Ports that aren't there, that others hold, that go and come back: what the user is told, and the way on.

#include <QElapsedTimer>
#include <QThread>

#include "tests/desktop/BarePort.h"
#include "tests/desktop/RealWindow.h"

namespace {

TEST_F(RealWindow, says_that_there_is_no_port_and_stays_at_the_first_step)
{
    StartWizard();
    wizard->AnswerBox("Last serial port used not found or already in use! (COM7).", "OK");
    wizard->WaitForText("lblCommPortStatus", "COM port: None found or all used");
    EXPECT_TRUE(wizard->See("fraStep_1").visible);
    wizard->WaitUntil("Next is on", [this] { return wizard->See("cmdNav_2").enabled; });
    wizard->Click("mnuCommPort");
    wizard->WaitForText("mnuCommPort_Item_0", "(none)");
    wizard->PressKey("Escape");
    wizard->Click("cmdNav_0");
    EXPECT_TRUE(wizard->EndsWithin(10));
}

TEST_F(RealWindow, leaves_a_port_to_the_program_that_holds_it_and_takes_it_when_it_is_free)
{
    BarePort port(home.AntennaLink());
    port.Take();
    StartWizard();
    wizard->AnswerBox("COM Port Already in Use. (COM7).", "OK");
    wizard->WaitForText("lblCommPortStatus", "COM port: COM Port Already in Use. (COM7).");
    // The box is answered before the program has gone on behind it.
    wizard->WaitUntil("Next is off", [this] { return !wizard->See("cmdNav_2").enabled; });
    wizard->Click("mnuCommPort");
    wizard->WaitForText("mnuCommPort_Item_1", "COM7");
    EXPECT_FALSE(wizard->See("mnuCommPort_Item_1").checked);
    port.Release();
    wizard->Click("mnuCommPort_Item_1");
    wizard->WaitForText("lblCommPortStatus", "Waiting on COM7");
    EXPECT_FALSE(wizard->HasBox());
}

TEST_F(RealWindow, finds_a_port_that_is_plugged_in_later_when_its_menu_is_opened)
{
    BarePort other(home.OtherLink());
    StartWizard();
    wizard->WaitForText("lblCommPortStatus", "COM port: COM Port not found (COM7).");
    wizard->WaitUntil("Next is off", [this] { return !wizard->See("cmdNav_2").enabled; });
    wizard->Click("mnuCommPort");
    wizard->WaitForText("mnuCommPort_Item_1", "COM9");
    EXPECT_FALSE(wizard->See("mnuCommPort_Item_2").visible);
    wizard->PressKey("Escape");

    BarePort plugged(home.AntennaLink());
    wizard->Click("mnuCommPort");
    wizard->WaitForText("mnuCommPort_Item_1", "COM7");
    wizard->WaitForText("mnuCommPort_Item_2", "COM9");
    EXPECT_NE(wizard->See("mnuCommPort_Item_2").tip.find(home.OtherLink().string()), std::string::npos);
    wizard->Click("mnuCommPort_Item_2");
    wizard->WaitForText("lblCommPortStatus", "Waiting on COM9");
    EXPECT_NE(home.Bytes("Burnline.ini").find("COMMPort=9"), std::string::npos);
}

TEST_F(RealWindow, rests_while_its_port_is_gone_and_goes_on_when_it_is_back)
{
    StartAntenna(0);
    StartWizard();
    AwaitPortReady();
    antenna->Do("fault port-gone 600");
    wizard->WaitForText("lblCommPortStatus", "COM7 has gone at ");
    wizard->WaitUntil("the way on is closed",
                      [this] { return wizard->See("lblRedoCOMMPort").visible && !wizard->See("cmdNav_2").enabled; });

    const double before = wizard->ProcessorSeconds();
    QElapsedTimer measured;
    measured.start();
    QThread::sleep(4);
    const double used = wizard->ProcessorSeconds() - before;
    EXPECT_LT(used / (static_cast<double>(measured.elapsed()) / 1000), 0.05) << "share of the processor";
    EXPECT_FALSE(wizard->HasBox());

    antenna->Do("fault port-gone 0");
    antenna->WaitFor("the port is back");
    wizard->WaitForText("lblCommPortStatus", "COM7 is back");
    wizard->WaitUntil("the way on is free",
                      [this] { return wizard->See("cmdNav_2").enabled && !wizard->See("lblRedoCOMMPort").visible; });
}

}  // namespace
