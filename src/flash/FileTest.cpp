#include "flash/FileTest.h"

#include <stdexcept>

#include "display/Display.h"
#include "flash/FileIO.h"
#include "forms/frmWizard.h"
#include "persistence/Logs.h"
#include "platform/Computer.h"
#include "session/Session.h"
#include "text/Text.h"

namespace {

void TellCorruption(const FileTest& test, long record, const std::string& fault)
{
    const std::string number = text::Num(record);
    if (test.colonInLog)
        WriteLog("Possible file corruption at record: " + number);
    else
        WriteLogLine("Possible file corruption at record " + number);
    WriteLogLine("\r\n" + test.fileName + ": " + fault);
    StatusTextUpdate("Possible file corruption at record: " + number);
    StatusTextUpdate(test.fileName + ": " + fault + ".");
    StatusTextUpdate("Nothing was sent to the antenna. Click Back to choose another file, or get this one again.");
    Session.flash.bFlashFileBad = true;
}

/// Reads the records up to the first bad one.
void TestRecords(const FileTest& test)
{
    long record = 0;
    while (!FlashFileAtEnd()) {
        ShowProgress(FlashFilePercent());
        const std::string line = GetLine();
        if (!test.isRecord(line)) continue;
        ++record;
        frmWizard.lblBytesSent[1].Caption = text::Num(record);
        computer->DoEvents();
        try {
            test.test(line);
        } catch (const std::logic_error& fault) {  // a field that is no number, an address beyond the image
            TellCorruption(test, record, fault.what());
            return;
        }
    }
    const std::string fault = test.wholeFault();
    if (!fault.empty()) TellCorruption(test, record, fault);
}

}  // namespace

void RunFileTest(const FileTest& test)
{
    if (ReadFlashFile(test.fileName) != FILE_OPENED || OpenFlashFile(test.fileName) != FILE_OPENED) {
        StatusTextUpdate(test.fileName + " can't be read. Nothing was sent to the antenna.");
        Session.flash.bFlashFileBad = true;
        return;
    }
    const std::string caption = frmWizard.lblProgressBar.Caption;
    frmWizard.lblProgressBar.Caption = "Progress (File Check):";
    TestRecords(test);
    if (!Session.flash.bFlashFileBad) WriteLogLine("++>.....File " + test.fileName + " passed integrity test. ");
    frmWizard.lblProgressBar.Caption = caption;
    ShowProgress(0);
    CloseFlashFile();
}
