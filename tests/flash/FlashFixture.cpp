#include "tests/flash/FlashFixture.h"

#include "knowledge/BoardTable.h"
#include "knowledge/Utilities.h"
#include "tests/flash/FlashFiles.h"
#include "text/Text.h"
#include "wizard/frmWizard_Events.h"

namespace {

/// How the lists of STEP_2 name a board type: the list (0 none, 2 cboBoardToFlash, 3 cboOtherBoard) and the entry.
struct Choice {
    int type, option, entry;
};
constexpr Choice choices[] = {{0, 0, 0},   {1, 1, 0},   {2, 2, 1},  {3, 2, 2},  {4, 2, 3},   {5, 2, 4},
                              {6, 2, 5},   {7, 2, 19},  {8, 2, 10}, {9, 2, 11}, {10, 2, 13}, {11, 2, 6},
                              {12, 2, 25}, {13, 2, 26}, {14, 3, 1}, {15, 3, 7}, {16, 3, 6},  {17, 3, 5},
                              {18, 3, 2},  {19, 3, 4},  {20, 1, 1}, {21, 1, 1}};

}  // namespace

void PressBoard(int board)
{
    for (const Choice& choice : choices) {
        if (choice.type != board) continue;
        if (choice.option < 2) PressOption(frmWizard.Self, frmWizard.optBoardToFlash[choice.option]);
        if (choice.option == 2) Choose(frmWizard.cboBoardToFlash, choice.entry);
        if (choice.option == 3) Choose(frmWizard.cboOtherBoard, choice.entry);
    }
}

void FlashFixture::Start(int boardType, const std::string& unit)
{
    board = boardType;
    WriteProgramFiles(pc.directory, false);
    if (!pc.onModal) pc.onModal = ChooseNoModel;
    pc.timeLimit = pc.now + 20000;
    pc.Connect(boardType, unit);
    pc.StartProgram();
    pc.RunFor(15);  // the antenna's own start
}

bool FlashFixture::Next(double seconds)
{
    if (!pc.RunUntil([] { return frmWizard.cmdNav[2].Enabled(); }, seconds)) return false;
    return Press(frmWizard.cmdNav[2]);
}

void FlashFixture::GoToFlash()
{
    ASSERT_TRUE(Next()) << "STEP_INTRO";
    ASSERT_TRUE(Next()) << "STEP_1";
    PressBoard(board);
    ASSERT_EQ(board >= 20 ? 1 : board, Session.choice.iBoardType);
    ASSERT_TRUE(Next()) << "STEP_2";
    if (BoardOf(board).choosesPort) {
        ASSERT_TRUE(Press(frmWizard.optSerial));
    }
    ASSERT_TRUE(Next()) << "STEP_3: " << frmWizard.lblBoardVersion.Caption();
    ASSERT_FALSE(Session.plan->stages.front().sFlashFile.empty());
    parametersBefore = Preserved();
    ASSERT_TRUE(Next()) << "STEP_4";
}

std::vector<std::pair<std::string, std::string>> Preserved(const sim::Antenna& antenna)
{
    const AntennaRecord& row = Session.plan->row;
    std::vector<std::pair<std::string, std::string>> kept;
    for (const auto& held : antenna.Held().All()) {
        const std::string word = text::Split(held.first, ",").front();
        for (const std::string& command : CommandsOf(row.PostflashLine))
            if (text::Equal(text::Split(text::Replace(command, "=", ""), ",").front(), word)) {
                kept.push_back(held);
                break;
            }
    }
    return kept;
}

bool FlashFixture::FlashRuns(double seconds)
{
    const double end = pc.now + seconds;
    while (pc.now < end && !Session.program.bExitRequested) {
        if (Session.flash.iFlashPhase == FLASH_FINISHED) return true;
        const std::string& banner = frmWizard.lblFlashStatus[0].Caption;
        const bool asked = frmWizard.lblFlashStatus[0].Visible && text::Holds(banner, "cycle power");
        if (asked && Session.link.iCommMode == STATE_WAIT_RESET && pc.now > poweredAt_ + 20) {
            pc.RunFor(1);  // nobody is quicker than that
            pc.SetPower(false);
            pc.RunFor(2);
            pc.SetPower(true);
            poweredAt_ = pc.now;
        }
        pc.RunFor(0.5);
    }
    return Session.flash.iFlashPhase == FLASH_FINISHED;
}

void FlashFixture::Finish()
{
    ASSERT_TRUE(Next()) << "STEP_5";
    pc.RunFor(1);
    pc.SetPower(false);
    pc.RunFor(10);
    pc.SetPower(true);
    ASSERT_TRUE(Next(600)) << frmWizard.txtParamsSent.Text();
    ASSERT_EQ(STEP_FINISHED, frmWizard.iCurrentStep);
}

void FlashFixture::SetFault(const std::string& words)
{
    std::string why;
    ASSERT_TRUE(pc.antenna().SetFault(words, why)) << words << ": " << why;
}

bool FlashFixture::StatusSays(const std::string& words) const { return text::Holds(frmWizard.txtStatus.Text(), words); }

void FlashFixture::ExpectMemoryEqualsFile()
{
    const std::string expected = Judged(pc.directory / Session.plan->stages.front().sFlashFile, "-Intel");
    const auto image = pc.antenna().Flash().Image();
    ASSERT_FALSE(expected.empty());
    EXPECT_TRUE(expected == std::string(image.begin(), image.end()));
}
