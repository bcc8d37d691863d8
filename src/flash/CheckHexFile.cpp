// The test of a Line board's .HEX file, record by record, before anything is erased.

#include "flash/FileTest.h"
#include "flash/FlashMainboard.h"

void CheckHexFile(const std::string& fileName)
{
    FileTest test;
    test.fileName = fileName;
    test.kind = RecordKind::Hex;
    test.colonInLog = false;
    test.comparesShare = true;
    RunFileTest(test);
}
