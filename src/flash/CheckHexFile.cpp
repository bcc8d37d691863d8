// The test of a Line board's .HEX file, record by record, before anything is erased.

#include "flash/FileTest.h"
#include "flash/FlashMainboard.h"
#include "flash/HexRecord.h"

void CheckHexFile(const std::string& fileName)
{
    bool holdsData = false;
    bool endRecordIsLast = false;
    FileTest test;
    test.fileName = fileName;
    test.colonInLog = false;
    test.test = [&](const std::string& line) {
        if (line.empty() && endRecordIsLast) return;
        const HexRecord record = ParseHexRecord(line);
        if (record.type == HexData) holdsData = true;
        endRecordIsLast = record.type == HexEndOfFile;
    };
    test.wholeFault = [&]() -> std::string {
        if (!holdsData) return "the file holds no data";
        // The last line is never sent. If that isn't the end record, the board would lack its last data.
        return endRecordIsLast ? "" : "the file ends before its end record";
    };
    RunFileTest(test);
}
