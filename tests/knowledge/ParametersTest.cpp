// Parameters: from the antenna's reply to the command that restores them.

#include <gtest/gtest.h>

#include <random>

#include "forms/frmWizard.h"
#include "knowledge/ParameterCapture.h"
#include "knowledge/UploadCommand.h"
#include "knowledge/Utilities.h"
#include "session/Session.h"
#include "tests/VirtualComputer.h"

namespace {

struct Example {
    int boardType;
    const char* readCommand;
    const char* said;  // by the antenna, all of it
    const char* listed;
    const char* uploaded;
};

const Example examples[] = {
    {0, "BIASAZ", "BIASAZ\r\n>Azimuth Bias =  -1.25 \r\n>", "BIASAZ", "BIASAZ,-1.25"},
    {2, "BIASEL", "\r\n>ELEVATION BIAS = 3\r\n", "biasel", "BIASEL,3"},
    {0, "GYROSFAZ", "\r\n>Azimuth Gyro Scale Factor: CW = -0.001000  CCW = -0.002000\r\n", "GYROSFAZ",
     "GYROSFAZ,CW,-0.001000,CCW,-0.002000"},
    {0, "GYROSFAZ", "\r\n>Azimuth Gyro Scale Factor: CW = -0.001  CCW = -0.002\r\n", "GYROSFAZ,CW",
     "GYROSFAZ,CW,-0.001"},
    {0, "GYROSFEL", "\r\n>Elevation Gyro Scale Factor: CW = 1  CCW = 2\r\n", "GYROSFEL,CCW", "GYROSFEL,CCW,2"},
    {0, "GYROSFEL", "\r\n>Elevation Gyro Scale Factor: CCW = 2  CW = 1\r\n", "GYROSFEL", "GYROSFEL,CW,1,CCW,2"},
    {0, "GYROSFEL", "\r\n>Elevation Gyro Scale Factor = 0.5\r\n", "GYROSFEL", "GYROSFEL,0.5"},
    {0, "=CALUP", "\r\n>CALUP = 12.5\r\n", "=CALUP", "=CALUP,42.5"},
    {0, "=CALUP", "\r\n>CALUP = -30\r\n", "=CALUP", "=CALUP,0.0"},
    {0, "=CALUP", "\r\n>CALUP = x\r\n", "=CALUP", "=CALUP,0.0"},
    {0, "=SERNUM", "=SERNUM\r\n>SN = 123456789\r\n>", "=SERNUM", "=SERNUM,123456789"},
    {5, "INSTANT", "\r\n>INSTANT= ON\r\n", "INSTANT", "INSTANT,ON"},
    {5, "SLEEP", "\r\n>SLEEP=\r\n", "SLEEP", "SLEEP,"},
    {5, "SKEWMTR", "\r\n>SKEWMTR without a value\r\n", "SKEWMTR", "SKEWMTR"},
    {5, "DEW", "\r\n>DEW=off\r\n", "DEW", "DEW,off"},
    {11, "RFGAIN", "RFGAIN = 12\r\nmore\r\n", "RFGAIN", "RFGAIN,12"},
    {0, "GPS", "\r\n>GPS = 42.5N 71.25W (ACTIVE)\r\n", "GPS", "GPS,42.5,N,71.25,W"},
    {0, "GPS", "\r\n>GPS = none\r\n", "GPS", "GPS"},
    {0, "SATINSTALL", "\r\n>SATINSTALL,DSS_101,DSS_119\r\n", "SATINSTALL", "SATINSTALL,DSS_101,DSS_119"},
    {0, "SATINSTALL", "\r\n>SATINSTALL,HOTBIRDWB,ASTRA1,ASTRA2S\r\n", "SATINSTALL", "SATINSTALL,TRISAT,EWB"},
    {0, "SATINSTALL", "\r\n>SATINSTALL,101W,119W,110W,72W\r\n", "SATINSTALL", "SATINSTALL,101W,119W,110W,72W"},
    {20, "SATINSTALL", "x\r\nSATINSTALL,01   02 \r\nmore", "SATINSTALL", "SATINSTALL,01,02"},
    {20, "SATINSTALL", "SATINSTALL,01,A,02,B,\r\n", "SATINSTALL", "SATINSTALL,01,02"},
    {20, "SATINSTALL", "SATINSTALL,01,A, 2,B,3 ,C\r\n", "SATINSTALL", "SATINSTALL,01,2,3"},
    {4, "SATINSTALL", "SATINSTALL,01   02   03\r\n", "SATINSTALL", "SATINSTALL,01,02"},
    {21, "FECHITS1,0000", "\r\nFEC Hits 1: 0A3F\r\n", "FECHITS1", "FECHITS1,0A3F"},
    {21, "FECHITS1,0000", "\r\nFEC Hits 1: A3\r\n", "FECHITS1", "FECHITS1,A3"},
    {21, "FECHITS2,0000", "\r\nFEC Hits 2: 00FF\r\n", "fechits2", "FECHITS2,00FF"},
};

class Parameters : public testing::Test {
protected:
    VirtualComputer machine;
    FlashPlan plan;
    Captured& captured = Session.captured;
    void SetUp() override
    {
        plan.iBoardType = 0;
        plan.row.PostflashLine = "POSTFLASH$BIASAZ";
    }
    bool Hear(const std::string& command, const std::string& said)
    {
        plan.sPreflashCmds = {command, ""};
        Session.plan = plan;
        captured.iPreflashCmdIdx = 1;
        captured.command = {ExpectedReplyFor(command)};
        Session.link.sCommBuffer = said;
        return CapturePreflashReply();
    }
    std::string Upload(const std::string& listed)
    {
        plan.sPostflashCmds = {listed, ""};
        Session.plan = plan;
        return BuildUploadList()[0];
    }
};

TEST_F(Parameters, WhatTheAntennaSaidIsWhatItIsTold)
{
    for (const Example& example : examples) {
        captured = {};
        plan.iBoardType = example.boardType;
        EXPECT_TRUE(Hear(example.readCommand, example.said)) << example.said;
        EXPECT_TRUE(captured.command.bReplySeen && Session.link.sCommBuffer.empty());
        EXPECT_EQ(Upload(example.listed), example.uploaded) << example.said;
    }
}

TEST_F(Parameters, AJarlAntennaCountsItsPositionInWholeDegrees)
{
    plan.tellsWholeDegrees = true;
    Hear("GPS", "GPS\r\n>GPS, 39.12,N,105.02,W,(ACTIVE)\r\n");
    EXPECT_EQ(Upload("GPS"), "GPS,39,N,105,W");
}

TEST_F(Parameters, AReplyThatIsNotWholeIsWaitedFor)
{
    for (const auto& [command, said] : std::vector<std::pair<std::string, std::string>>{
             {"BIASAZ", ""},
             {"BIASAZ", "BIA\r\n"},
             {"BIASAZ", ">Azimuth Bias = 1.25\r\n"},
             {"BIASAZ", "\r\n>Azimuth Bias = 1.2"},
             {"BIASAZ", "BIASAZ\r\n>Elevation Bias = 1\r\n"},
             {"=SERNUM", "\r\n>SN = 123456\r\n"},
         }) {
        EXPECT_FALSE(Hear(command, said)) << said;
        EXPECT_FALSE(captured.command.bReplySeen);
        EXPECT_EQ(Session.link.sCommBuffer, said) << "nothing may be lost while more is awaited";
        EXPECT_EQ(captured.iCapturedParamCount, 0);
    }
    plan.iBoardType = 20;
    EXPECT_FALSE(Hear("FECHITS1,0000", "FEC Hits 1: 0A3"));
    EXPECT_FALSE(Hear("SATINSTALL", "SATINSTALL,01   0"));
    plan.iBoardType = 17;
    EXPECT_FALSE(Hear("BIASAZ", "\r\n>Azimuth Bias = 1.25\r\n"));
}

TEST_F(Parameters, AnAnswerWithoutAParameterTakesASlotAndHidesNoOther)
{
    Hear("BIASAZ", "\r\n>Azimuth Bias = 1\r\n");
    Hear("STATUS", "STATUS\r\n>OK\r\n");  // nobody told how its reply looks, and it is no parameter
    EXPECT_EQ(captured.sCapturedParams.size(), 2u);
    Hear("BIASEL", "\r\n>Elevation Bias = 2\r\n");
    EXPECT_EQ(captured.sCapturedParams, (std::vector<std::string>{"", ">Azimuth Bias = 1", "", ">Elevation Bias = 2"}));
    EXPECT_EQ(Upload("BIASAZ"), "BIASAZ,1");
    EXPECT_EQ(Upload("BIASEL"), "BIASEL,2") << "the last reply counts as well";
    EXPECT_EQ(Upload("RFGAIN"), "RFGAIN") << "a parameter that was never told is only read again";
    Hear("RFGAIN", "RFGAIN\r\n>RFGAIN = 3\r\n");
    EXPECT_EQ(Upload("RFGAIN"), "RFGAIN,3") << "a parameter is kept though no reply is expected";
    EXPECT_EQ(Upload("WAIT5"), "WAIT5");
    EXPECT_EQ(Upload("BIASAZ,1"), "BIASAZ,1") << "a second pass changes nothing";
}

TEST_F(Parameters, SatellitesGetTheirNewNamesOnceAndOnlyForTheLibrary)
{
    Hear("SATINSTALL", "\r\n>SATINSTALL,A1,B2,C3\r\n");
    EXPECT_NE(frmWizard.txtStatus.Text().find("SATINSTALL,A1,B2,C3. Note them"), std::string::npos);
    Hear("SATINSTALL", "\r\n>SATINSTALL,hotbird,DSS_101\r\n");
    EXPECT_EQ(captured.sCapturedParams.back(), "SATINSTALL,hotbird,DSS_101");
    plan.answers.upgradeToGLTV = true;
    Hear("SATINSTALL", "\r\n>SATINSTALL,hotbird,HOTBIRD2\r\n");
    EXPECT_EQ(captured.sCapturedParams.back(), "SATINSTALL,HBD13E,HOTBIRD2");
    Hear("SATINSTALL", "\r\n>SATINSTALL,hotbird,DSS_101\r\n");
    EXPECT_EQ(captured.sCapturedParams.back(), "SATINSTALL,hotbird,DSS_101");
}

TEST_F(Parameters, ABoardThatAsksForACleanStartKeepsItsList)
{
    Hear("BIASAZ", "\r\n>Azimuth Bias = 1\r\n");
    plan.row.PreflashLine = " PREFLASH$ ZAP ";
    EXPECT_EQ(Upload("BIASAZ"), "BIASAZ");
    plan.row.PreflashLine.clear();
    plan.row.PostflashLine = "POSTFLASH$";
    EXPECT_EQ(Upload("BIASAZ"), "BIASAZ");
    EXPECT_EQ(PostFlashCmdsForUser(), "");
}

TEST_F(Parameters, APersonReadsWhatToEnter)
{
    plan.sPostflashCmds = {"clearee", "WAIT12", "SatInstall", "SLEEP", "=CALUP", "DEW", "", "GPS"};
    Session.plan = plan;
    EXPECT_EQ(
        PostFlashCmdsForUser(),
        "CLEAREE\r\nWait upto 12 seconds for command to finish\r\nSATINSTALL,<SATA>,<SATB>\r\nSLEEP<ON or OFF>\r\n"
        "=CALUP,<value>\r\nDEW\r\n");
}

TEST_F(Parameters, OddRepliesNeitherCrashNorHang)
{
    std::mt19937 random(4711);
    const std::string alphabet = "=:,. \r\n>-+9AWCGPS\0\xFF";
    for (int round = 0; round < 4000; ++round) {
        const Example& example = examples[random() % std::size(examples)];
        std::string said = example.said;
        for (std::size_t hits = random() % 8; hits > 0; --hits) {
            const std::size_t at = random() % (said.size() + 1);
            if (random() % 2 == 0)
                said.insert(at, 1, alphabet[random() % alphabet.size()]);
            else if (at < said.size())
                said.erase(at, random() % 8);
        }
        if (round % 200 == 0) said.insert(random() % (said.size() + 1), 20000, alphabet[random() % alphabet.size()]);
        captured = {};
        plan.iBoardType = static_cast<int>(random() % 23);
        const bool taken = Hear(example.readCommand, said);
        ASSERT_EQ(taken, captured.command.bReplySeen);
        const UploadFacts facts{plan.iBoardType, round % 2 == 0, round % 3 == 0, ""};
        const auto command = UploadCommandFrom(example.listed, example.listed, said, facts);
        ASSERT_TRUE(!command || command->find_first_of("\r\n") == std::string::npos) << "one command, one line";
        const std::string uploaded = Upload(example.listed);
        ASSERT_EQ(uploaded.find_first_of("\r\n"), std::string::npos);
    }
}

}  // namespace
