// Files of commands, played into the antenna while it is looked at.

#include <QElapsedTimer>

#include "tests/desktop/Technician.h"

namespace {

class Scripts : public Technician {
protected:
    void OpenScript(const std::string& name, const std::string& lines)
    {
        WriteAll(home.Path(name), lines);
        OpenTab("Advanced");
        wizard->Click("cmdOpenScriptFile");
        wizard->AnswerFileDialog(home.Path(name));
        wizard->WaitForText("lblScriptFile", name);
    }

    /// Three commands, the second of them a wait.
    void OpenShortScript() { OpenScript("short.txt", "; looks around\r\nSTATE\r\n8\r\nWAIT 2\r\nSIGLEVEL\r\n"); }
};

TEST_F(Scripts, a_script_waits_where_it_says_so_and_a_second_click_begins_it_again)
{
    OpenDiagnostics();
    OpenTab("Advanced");
    EXPECT_FALSE(wizard->See("cmdRunScript").enabled);
    wizard->Click("cmdOpenScriptFile");
    wizard->AnswerFileDialog({});
    OpenShortScript();
    EXPECT_EQ(wizard->See("lblScriptFile").text, "short.txt: 3 commands");

    ClickAndHear("cmdRunScript", {"STATE"});
    wizard->WaitForText("Text1", "==>Waiting 2 seconds");
    QElapsedTimer waits;
    waits.start();
    ExpectHeard({"SIGLEVEL"}, "behind the wait; the line of one letter is dropped");
    EXPECT_GE(waits.elapsed(), 1800);
    wizard->WaitForText("lblScriptLine", "Next is command 1 of 3: STATE");

    ClickAndHear("cmdRunScript", {"STATE"}, "once more");
    wizard->WaitForText("lblScriptLine", "Command 2 of 3: WAIT 2");
    EXPECT_TRUE(wizard->See("ScriptProgress").visible);
    ClickAndHear("cmdRunScript", {"STATE"}, "in the middle of it");
    ExpectHeard({"SIGLEVEL"}, "once, for the script that was begun again");
    wizard->WaitForText("lblScriptLine", "Next is command 1 of 3: STATE");
    EXPECT_FALSE(wizard->See("ScriptProgress").visible);
    ExpectSilence();
}

TEST_F(Scripts, a_script_goes_on_by_the_click_and_one_of_comments_sends_nothing)
{
    OpenDiagnostics();
    OpenShortScript();
    Check("chkPauseBetweenCmds");
    wizard->WaitUntil("Next Command", [this] { return wizard->See("cmdDoNext").visible; });
    EXPECT_FALSE(wizard->See("cmdRunScript").visible);
    ClickAndHear("cmdDoNext", {"STATE"});
    wizard->WaitForText("lblScriptLine", "Next is command 2 of 3: WAIT 2");
    wizard->Click("cmdDoNext");
    wizard->WaitForText("lblScriptLine", "Next is command 3 of 3: SIGLEVEL");
    ClickAndHear("cmdDoNext", {"SIGLEVEL"});
    wizard->WaitForText("lblScriptLine", "The script is at its end.");
    wizard->Click("cmdDoNext");
    wizard->WaitUntil("no Next Command", [this] { return !wizard->See("cmdDoNext").visible; });
    ExpectSilence();

    OpenScript("comments.txt", "; nothing\r\n;\r\nab\r\n\r\n");
    wizard->WaitForText("lblScriptLine", "The file holds no command.");
    wizard->Click("chkPauseBetweenCmds");
    wizard->Click("cmdRunScript");
    ExpectSilence();
}

TEST_F(Scripts, ten_thousand_lines_cost_no_more_than_ten_and_end_with_the_window)
{
    std::string lines;
    for (int line = 1; line <= 10000; ++line) lines += "GOTO,AZ" + std::to_string(line % 360) + ",EL45\r\n";
    OpenDiagnostics();
    OpenScript("long.cmd", lines);
    wizard->Click("cmdRunScript");
    wizard->WaitForText("lblScriptLine", "Command 4 of 10000: GOTO,AZ4,EL45", 20);
    QElapsedTimer watched;
    watched.start();
    const double processor = wizard->ProcessorSeconds();
    const long memory = wizard->MemoryKB();
    wizard->WaitForText("lblScriptLine", "Command 14 of 10000: GOTO,AZ14,EL45", 40);
    const double share = (wizard->ProcessorSeconds() - processor) / static_cast<double>(watched.elapsed()) * 1000;
    EXPECT_LE(share, 0.1) << "of a processor";
    EXPECT_LE(wizard->MemoryKB() - memory, 1024);

    wizard->Close();
    EXPECT_TRUE(wizard->EndsWithin(10)) << "in the middle of the script";
    EXPECT_FALSE(wizard->Crashed());
    EXPECT_EQ(FirstOutOfOrder(home.Bytes("BNL.LOG"), {"==>GOTO,AZ13,EL45\r\n", "++>Shutting down Burnline Assistant"}),
              "");
}

}  // namespace
