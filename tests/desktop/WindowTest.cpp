// Between forms and window: keys, menus, and how much painting a busy flash costs.

#include <QApplication>
#include <QElapsedTimer>
#include <QPlainTextEdit>

#include "desktop/Binder.h"
#include "display/Display.h"
#include "forms/frmWizard.h"
#include "tests/desktop/RealWindow.h"

namespace {

TEST_F(RealWindow, takes_a_command_and_the_next_step_from_the_keyboard)
{
    StartAntenna(0);
    StartWizard();
    AwaitPortReady();
    wizard->Focus("txtSendCmd");
    wizard->Type("STATE");
    wizard->WaitForText("txtSendCmd", "STATE");
    wizard->PressKey("Return");
    wizard->WaitForText("Text1", "STATE = TRACKING");
    EXPECT_EQ(wizard->See("txtSendCmd").text, "");

    wizard->PressKey("Alt+N");
    wizard->WaitUntil("STEP_1", [&] { return wizard->See("fraStep_2").visible; });
    wizard->PressKey("Alt+B");
    wizard->WaitUntil("STEP_INTRO", [&] { return wizard->See("fraStep_1").visible; });
    wizard->Click("cmdPauseOrResume");
    wizard->WaitForText("cmdPauseOrResume", "Resume Output");
    wizard->Close();
    EXPECT_TRUE(wizard->EndsWithin(10)) << "nothing is under way: nothing is asked";
}

TEST(Binder, paints_a_burst_of_a_thousand_lines_a_few_times_and_whole)
{
    QWidget window;
    QPlainTextEdit status(&window);
    status.setObjectName("txtStatus");
    CaughtFailure caught;
    Binder binder(caught);
    binder.Attach(frmWizard.Self, window);
    int paintings = 0;
    binder.Painted = [&paintings] { ++paintings; };

    frmWizard.txtStatus.Text = "";
    QElapsedTimer burst;
    burst.start();
    for (int line = 1; line <= 1000; ++line) {
        StatusTextUpdate("Line " + std::to_string(line));
        binder.PaintInTurn();
        QApplication::processEvents();
    }
    EXPECT_LE(paintings, 6 + burst.elapsed() * 15 / 1000) << "in " << burst.elapsed() << " ms";
    while (!status.toPlainText().endsWith("Line 1000") && burst.elapsed() < 10000)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_EQ(status.blockCount(), 1001);
    EXPECT_TRUE(status.toPlainText().endsWith("Line 1000"));
}

}  // namespace
