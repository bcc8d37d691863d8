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
};

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
