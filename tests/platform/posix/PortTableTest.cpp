#include "platform/PortTable.h"

#include "tests/persistence/ProgramDirectory.h"
#include "tests/platform/posix/Restrictions.h"

namespace {

using PortTableDiskTest = ProgramDirectoryTest;

TEST_F(PortTableDiskTest, AFullDiskLeavesTheFileAsItWas)
{
    Put("Burnline.ports", "COM3=/dev/a\n");
    PortTable table(Path("Burnline.ports"));
    ASSERT_TRUE(table.Load());
    {
        const FullDisk full(12);
        EXPECT_FALSE(table.Assign({"/dev/b"}));
    }
    EXPECT_EQ(table.PortOf("/dev/b"), 1);
    EXPECT_EQ(Bytes("Burnline.ports"), "COM3=/dev/a\n");
    EXPECT_FALSE(table.Problem().empty());
}

}  // namespace
