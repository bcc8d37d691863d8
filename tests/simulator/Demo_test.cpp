// The simulated antennas and the configuration that is delivered with them have to tell the same story.

#include <gtest/gtest.h>

#include "knowledge/Utilities.h"
#include "session/Session.h"
#include "tests/VirtualComputer.h"

TEST(Demo, EveryUnitFindsTheRowThatSpeaksItsLanguage)
{
    VirtualComputer machine;
    WriteFile(machine.directory / "FLASHCFG.TXT", ReadFile(SOURCE_DIR "/demo/FLASHCFG.TXT"));
    const FlashConfig config = ReadFlashConfig().value();
    for (const sim::Unit& unit : sim::Units()) {
        Reading reading;
        (unit.board == 0 ? reading.sMainVersion : reading.sRFVersion) = unit.version;
        if (unit.board >= 20) reading.told = unit.board;
        const FlashPlan plan = ResolveBoard(config, {reading.told ? 1 : unit.board}, reading, {});
        EXPECT_EQ(plan.facts.bareLines, unit.lines == sim::Lines::Strict) << unit.name;
        EXPECT_EQ(plan.facts.returnBehindCommand, unit.lines != sim::Lines::Ordinary) << unit.name;
        EXPECT_EQ(plan.facts.announcesFirstLine, unit.saysReady) << unit.name;
        EXPECT_EQ(plan.facts.startsWithFogError, unit.startUp == sim::StartUp::FogError) << unit.name;
        EXPECT_EQ(plan.tellsWholeDegrees, unit.position == sim::Position::Commas) << unit.name;
        // Board 1 with its new boot loader has words of its own.
        const bool renewed = unit.board == 1 && unit.loader == sim::Loader::Blocks;
        EXPECT_EQ(renewed ? config.sNewRFSignOn : plan.sBoardSignOn, unit.signOn) << unit.name;
        EXPECT_EQ(renewed ? config.sNewRFFlashOK : plan.stages.front().sFlashCmd, unit.command) << unit.name;
    }
}
