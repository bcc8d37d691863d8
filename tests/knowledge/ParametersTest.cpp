// Parameters: from the antenna's reply to the command that restores them.

#include <gtest/gtest.h>

#include <random>

#include "knowledge/ParameterTable.h"
#include "knowledge/Utilities.h"
#include "session/Session.h"
#include "text/Text.h"

namespace {

struct Example {
    int boardType;
    const char* line;  // of the antenna
    const char* listed;
    const char* uploaded;  // empty: the line tells nothing that can be restored
};

const Example examples[] = {
    {0, ">Azimuth Bias =  -1.25 ", "BIASAZ", "BIASAZ,-1.25"},
    {2, ">ELEVATION BIAS = 3", "biasel", "BIASEL,3"},
    {0, ">Azimuth Gyro Scale Factor: CW = -0.001000  CCW = -0.002000", "GYROSFAZ",
     "GYROSFAZ,CW,-0.001000,CCW,-0.002000"},
    {0, ">Azimuth Gyro Scale Factor: CW = -0.001  CCW = -0.002", "GYROSFAZ,CW", "GYROSFAZ,CW,-0.001"},
    {0, ">Elevation Gyro Scale Factor: CW = 1  CCW = 2", "GYROSFEL,CCW", "GYROSFEL,CCW,2"},
    {0, ">Elevation Gyro Scale Factor: CCW = 2  CW = 1", "GYROSFEL", "GYROSFEL,CW,1,CCW,2"},
    {0, ">Elevation Gyro Scale Factor = 0.5", "GYROSFEL", "GYROSFEL,0.5"},
    {0, ">CALUP = 12.5", "=CALUP", "=CALUP,42.5"},
    {0, ">CALUP = -8.970001", "=CALUP", "=CALUP,21.03"},
    {0, ">CALUP = -30", "=CALUP", "=CALUP,0.0"},
    {0, ">CALUP = x", "=CALUP", ""},
    {0, ">SN = 123456789", "=SERNUM", "=SERNUM,123456789"},
    {0, ">SN = 123456", "=SERNUM", ""},
    {5, ">INSTANT= ON", "INSTANT", "INSTANT,ON"},
    {5, ">SLEEP=", "SLEEP", ""},
    {5, ">SKEWMTR without a value", "SKEWMTR", ""},
    {5, ">DEW=off", "DEW", "DEW,off"},
    {11, "RFGAIN = 12", "RFGAIN", "RFGAIN,12"},
    {11, "RFGAIN = 12>", "RFGAIN", ""},
    {0, ">GPS = 42.5N 71.25W (ACTIVE)", "GPS", "GPS,42.5,N,71.25,W"},
    {0, ">GPS = 0S 71.25W", "GPS", "GPS,0,S,71.25,W"},
    {0, ">GPS = none", "GPS", ""},
    {0, ">SATINSTALL,DSS_101,DSS_119", "SATINSTALL", "SATINSTALL,DSS_101,DSS_119"},
    {0, ">SATINSTALL,HOTBIRDWB,ASTRA1,ASTRA2S", "SATINSTALL", "SATINSTALL,TRISAT,EWB"},
    {0, ">SATINSTALL,A1,B2,C3", "SATINSTALL", ""},
    {0, ">SATINSTALL,101W,119W,110W,72W", "SATINSTALL", "SATINSTALL,101W,119W,110W,72W"},
    {20, "SATINSTALL,01   02 ", "SATINSTALL", "SATINSTALL,01,02"},
    {20, "SATINSTALL, 1,A,02,B,", "SATINSTALL", "SATINSTALL,1,02"},
    {20, "SATINSTALL,01,A, 2,B,3 ,C", "SATINSTALL", "SATINSTALL,01,2,3"},
    {20, "SATINSTALL,1,A, 2,B,3 ,C", "SATINSTALL", ""},
    {21, "FEC Hits 1: 0A3F", "FECHITS1", "FECHITS1,0A3F"},
    {21, "FEC Hits 1: A3", "FECHITS1", ""},
    {21, "FEC Hits 2: 00FF", "FECHITS2,0000", "FECHITS2,00FF"},
};

TEST(Parameters, WhatTheAntennaSaidIsWhatItIsToldAndReadsBackAsTheSame)
{
    for (const Example& example : examples) {
        const auto told = ToldBy(example.line, example.listed, {example.boardType});
        EXPECT_EQ(told ? told->command : "", example.uploaded) << example.line;
        EXPECT_EQ(told.has_value(), RestoreTheSame(told ? told->command : "x", example.uploaded));
        EXPECT_FALSE(ToldBy(example.line, text::Equal(example.listed, "DEW") ? "SLEEP" : "DEW", {example.boardType}));
    }
    EXPECT_EQ(ToldBy(">GPS, 39.12,N,105.02,W,(ACTIVE)", "GPS", {0, true})->command, "GPS,39,N,105,W");
    EXPECT_EQ(ToldBy(">SATINSTALL,hotbird,HOTBIRD2", "SATINSTALL", {0, false, true})->command,
              "SATINSTALL,HBD13E,HOTBIRD2");
    EXPECT_TRUE(RestoreTheSame("=CALUP,21.029999", "=CALUP,21.03") && RestoreTheSame("DEW,on", "DEW,ON"));
    EXPECT_FALSE(RestoreTheSame("=SERNUM,123456789", "=SERNUM,123456790"));
    EXPECT_FALSE(RestoreTheSame("GYROSFAZ,-0.001250", "GYROSFAZ,-0.001251"));
}

TEST(Parameters, APersonReadsWhatToEnter)
{
    FlashPlan plan;
    plan.sPostflashCmds = {"clearee", "WAIT12", "SatInstall", "SLEEP", "=CALUP", "DEW", "", "GPS"};
    Session.plan = plan;
    EXPECT_EQ(
        PostFlashCmdsForUser(),
        "CLEAREE\r\nWait upto 12 seconds for command to finish\r\nSATINSTALL,<SATA>,<SATB>\r\nSLEEP<ON or OFF>\r\n"
        "=CALUP,<value>\r\nDEW\r\n");
}

TEST(Parameters, DamagedLinesNeitherCrashNorBecomeTwoCommands)
{
    std::mt19937 random(4711);
    const std::string alphabet = "=:,. >-+9AWCGPS\0\xFF";
    for (int round = 0; round < 4000; ++round) {
        const Example& example = examples[random() % std::size(examples)];
        std::string line = example.line;
        for (std::size_t hits = random() % 8; hits > 0; --hits) {
            const std::size_t at = random() % (line.size() + 1);
            if (random() % 2 == 0)
                line.insert(at, 1, alphabet[random() % alphabet.size()]);
            else if (at < line.size())
                line.erase(at, random() % 8);
        }
        if (round % 200 == 0) line.insert(random() % (line.size() + 1), 20000, alphabet[random() % alphabet.size()]);
        const auto told = ToldBy(line, example.listed, {static_cast<int>(random() % 23), round % 2 == 0});
        ASSERT_TRUE(!told || told->command.find_first_of("\r\n~") == std::string::npos) << line;
    }
}

}  // namespace
