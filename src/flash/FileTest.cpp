#include "flash/FileTest.h"

#include <stdexcept>

#include "display/Display.h"
#include "flash/FileIO.h"
#include "flash/FileReport.h"
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
    Session.flash.refusal = test.fileName + ": " + fault;
    Session.flash.bFlashFileBad = true;
}

/// More than a quarter of the memory stays empty, and it doesn't with the revision before.
std::string Sparseness(const FileTest& test, const FileMap& map)
{
    if (!test.comparesShare) return {};
    const std::string before = RevisionBefore(test.fileName);
    if (before.empty()) return {};
    const FileReport older = ReportOn(FlashFileBytes(before), test.kind);
    if (!older.fault.empty()) return {};
    const std::vector<DataRange> ranges = older.map.Ranges();
    const auto first = static_cast<std::int64_t>(ranges.front().first);
    const auto end = static_cast<std::int64_t>(ranges.back().end);
    const auto window = test.window > 0 ? test.window : end - first;
    const auto filled = [&](const FileMap& of) { return test.window > 0 ? test.filled(of) : of.BytesIn(first, end); };
    const auto isSparse = [&](const FileMap& of) { return filled(of) * 4 < window * 3; };
    if (!isSparse(map) || isSparse(older.map)) return {};
    const auto percent = [&](const FileMap& of) { return text::Num(filled(of) * 100 / window) + " %"; };
    return "it fills " + percent(map) + " of its memory, and " + before + " fills " + percent(older.map);
}

void NoteOddities(const FileTest& test, const RecordFile& records, const FileMap& map)
{
    std::vector<std::string> odd = Oddities(records, map);
    if (const std::string sparse = Sparseness(test, map); !sparse.empty()) odd.push_back(sparse);
    for (const std::string& words : odd) {
        Session.flash.warnings.push_back(test.fileName + ": " + words);
        WriteLogLine("++>Warning: " + test.fileName + ": " + words);
    }
}

/// Reads the records up to the first bad one.
void TestRecords(const FileTest& test)
{
    long record = 0;
    RecordFile records(test.kind);
    FileMap map;
    std::string fault;
    while (!FlashFileAtEnd() && fault.empty()) {
        ShowProgress(FlashFilePercent());
        const std::string line = GetLine();
        frmWizard.lblBytesSent[1].Caption = text::Num(++record);
        computer->DoEvents();
        try {
            const std::optional<DataRecord> data = records.Take(line);
            if (!data) continue;
            test.take(*data);
            map.Add(*data);
        } catch (const std::logic_error& why) {  // no sound record, an address that the board doesn't have
            fault = "line " + text::Num(FlashFileLine()) + ": " + why.what();
        }
    }
    if (fault.empty()) fault = records.Fault();
    if (fault.empty()) fault = test.wholeFault();
    if (!fault.empty()) return TellCorruption(test, record, fault);
    NoteOddities(test, records, map);
}

}  // namespace

void RunFileTest(const FileTest& test)
{
    if (ReadFlashFile(test.fileName) != FILE_OPENED || OpenFlashFile(test.fileName) != FILE_OPENED) {
        Session.flash.refusal = test.fileName + " can't be read";
        StatusTextUpdate(Session.flash.refusal + ". Nothing was sent to the antenna.");
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
