#include "platform/PortTable.h"

#include "tests/persistence/ProgramDirectory.h"

namespace {

class PortTableTest : public ProgramDirectoryTest {
protected:
    PortTable Loaded(bool readable = true)
    {
        PortTable table(Path("Burnline.ports"));
        EXPECT_EQ(table.Load(), readable);
        return table;
    }
};

TEST_F(PortTableTest, AnAdapterKeepsItsNumberWhateverElseIsPlugged)
{
    PortTable table = Loaded();
    EXPECT_TRUE(table.Assign({"/dev/a", "/dev/b", "/dev/a"}));
    EXPECT_EQ(Bytes("Burnline.ports"), "COM1=/dev/a\nCOM2=/dev/b\n");

    PortTable later = Loaded();
    EXPECT_TRUE(later.Assign({"/dev/c", "/dev/b"}));
    EXPECT_EQ(later.DeviceOf(2), "/dev/b");
    EXPECT_EQ(later.PortOf("/dev/c"), 3);
    EXPECT_EQ(later.DeviceOf(4), "");
    EXPECT_EQ(later.PortOf("/dev/d"), 0);
}

TEST_F(PortTableTest, LinesByHandSurviveAndBadOnesDoNotCount)
{
    const std::string byHand =
        "; my ports\r\ncom7 = /dev/pts/3 \r\nCOM7=/dev/second\r\nCOM0=/dev/x\r\nCOM65=/dev/x\r\nCOM007=/dev/x\r\n"
        "COM-1=/dev/x\r\nCOM4294967297=/dev/x\r\nCOM=/dev/x\r\nLPT1=/dev/x\r\nCOM2=\r\nnonsense\r\nCOM1=/dev/a=b";
    Put("Burnline.ports", byHand);
    PortTable table = Loaded();
    EXPECT_EQ(table.DeviceOf(7), "/dev/pts/3");
    EXPECT_EQ(table.DeviceOf(1), "/dev/a=b");
    EXPECT_EQ(table.PortOf("/dev/x"), 0);

    EXPECT_TRUE(table.Assign({"/dev/pts/3", "", "/dev/line\nCOM9=/dev/y"}));
    EXPECT_EQ(Bytes("Burnline.ports"), byHand);  // nothing new, nothing written
    EXPECT_TRUE(table.Assign({"/dev/new"}));
    EXPECT_EQ(Bytes("Burnline.ports"), byHand + "\nCOM2=/dev/new\n");
    EXPECT_FALSE(There("Burnline.ports.new"));
}

TEST_F(PortTableTest, BeyondTheLastNumberADeviceStaysWithout)
{
    std::vector<std::string> devices;
    for (int i = 0; i < 70; ++i) devices.push_back("/dev/" + std::to_string(i));
    EXPECT_TRUE(Loaded().Assign(devices));
    EXPECT_EQ(Loaded().DeviceOf(64), "/dev/63");
    EXPECT_EQ(Loaded().PortOf("/dev/64"), 0);
}

TEST_F(PortTableTest, AFileThatCannotBeReadIsNeverWrittenOver)
{
    const std::string large(100000, ';');
    Put("Burnline.ports", large);
    PortTable table = Loaded(false);
    EXPECT_NE(table.Problem().find("Burnline.ports is longer than"), std::string::npos);
    EXPECT_FALSE(table.Assign({"/dev/a"}));
    EXPECT_EQ(table.DeviceOf(1), "/dev/a");  // for this run
    EXPECT_EQ(Bytes("Burnline.ports"), large);
}

}  // namespace
