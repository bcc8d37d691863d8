// The simulated antennas and the configuration that is delivered with them have to tell the same story.

#include <gtest/gtest.h>

#include "frame/SessionState.h"
#include "knowledge/BoardTable.h"
#include "knowledge/Utilities.h"
#include "tests/VirtualComputer.h"

TEST(Demo, EveryUnitFindsTheRowThatSpeaksItsLanguage)
{
    for (const sim::Unit& unit : sim::Units()) {
        VirtualComputer machine;
        machine.onModal = [](Form& form) { form.Visible = false; };
        WriteFile(machine.directory / "FLASHCFG.TXT", ReadFile(SOURCE_DIR "/demo/FLASHCFG.TXT"));
        Session.iBoardType = unit.board >= 20 ? 1 : unit.board;  // until the reply says more
        Session.sMainVersion = Session.sRFVersion = unit.version;
        ASSERT_EQ(ReadFlashConfig(), 0);
        Session.iBoardType = unit.board;
        ResolveBoard();
        const std::string& words = Session.AntennaTable.at(static_cast<std::size_t>(Session.iAntennaIdx)).BoardIdWords;
        const bool special = BoardOf(unit.board).plainLines || words == "HOLM" || words == "HOLMSS" ||
                             words == "JARL" || words == "JARL GL";
        EXPECT_EQ(special, unit.lines != sim::Lines::Ordinary) << unit.name;
        // Board 1 with its new boot loader has words of its own.
        const bool renewed = unit.board == 1 && unit.loader == sim::Loader::Blocks;
        EXPECT_EQ(renewed ? Session.sNewRFSignOn : Session.sBoardSignOn, unit.signOn) << unit.name;
        EXPECT_EQ(renewed ? Session.sNewRFFlashOK : Session.sFlashCmd, unit.command) << unit.name;
    }
}
