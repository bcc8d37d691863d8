// The dialogs in which the user names the antenna: what they offer, and what becomes of the flash.

#include <algorithm>

#include "forms/frmCheckAntennas.h"
#include "forms/frmCheckJarlForGLTV.h"
#include "forms/frmPickAntennaDialog.h"
#include "forms/frmSelectFlashFileDialog.h"
#include "forms/frmShowPostFlashCmds.h"
#include "knowledge/Utilities.h"
#include "session/Wizard.h"
#include "tests/flash/FlashFiles.h"
#include "tests/flash/FlashFixture.h"
#include "text/Text.h"
#include "wizard/ModelChooser.h"
#include "wizard/frmWizard_Events.h"

namespace {

PickAntennaForm& pick = frmPickAntennaDialog;

class Choosers : public FlashFixture {
protected:
    /// On STEP_3 with an antenna that doesn't tell its versions, and the list of antennas open.
    void StartUnanswered(int boardType, const std::string& unit = {})
    {
        Start(boardType, unit);
        for (const char* query : {"mute VERSION always", "mute @VER always"}) SetFault(query);
        ASSERT_TRUE(Next() && Next());
        PressOption(frmWizard.Self, frmWizard.optBoardToFlash[boardType >= 20 ? 1 : 0]);
        ASSERT_TRUE(Next());
        ASSERT_TRUE(Press(frmWizard.cmdRetryGetVersions));
        ASSERT_TRUE(pc.RunUntil([] { return frmWizard.cmdPickAntenna.Visible(); }, 60));
        ASSERT_TRUE(Press(frmWizard.cmdPickAntenna));
    }

    static void ClickAntenna(const std::string& name)
    {
        const std::vector<std::string>& names = pick.lstAntennas.List;
        const auto found = std::find(names.begin(), names.end(), name);
        ASSERT_NE(found, names.end()) << name;
        Choose(pick.lstAntennas, static_cast<int>(found - names.begin()));
    }

    void PickAntenna(const std::string& name)
    {
        EXPECT_FALSE(pick.cmdOK.Enabled);
        ClickAntenna(name);
        ASSERT_TRUE(Press(pick.cmdOK));
        EXPECT_TRUE(text::Holds(frmWizard.lblBoardVersion.Caption(), "You selected: " + name));
        EXPECT_FALSE(frmWizard.cmdRetryGetVersions.Enabled);
        EXPECT_TRUE(text::Holds(pc.Log(), "++>Antenna selected by user: " + name));
    }

    /// From STEP_3 over the flash to the last step.
    void FlashToEnd()
    {
        ASSERT_TRUE(Next());
        ASSERT_TRUE(Next()) << "STEP_4";
        ASSERT_TRUE(FlashRuns(2000)) << frmWizard.txtStatus.Text() << pc.Log();
        ASSERT_TRUE(Next());
        ASSERT_EQ(STEP_FINISHED, frmWizard.iCurrentStep) << "there is nothing to upload";
        EXPECT_TRUE(frmWizard.cmdNav[3].Enabled);
        EXPECT_FALSE(text::Holds(pc.Log(), "==>BIASAZ"));
    }

    static const std::string& PlannedFile() { return Session.plan->stages.front().sFlashFile; }
};

TEST_F(Choosers, AMainBoardPickedByHandIsFlashedAndItsCommandsAreShown)
{
    pc.onModal = [](Form& form) {
        PressOption(form, ControlOf(form, "optLM_0"));
        Press(ControlOf(form, "cmdOK"));
    };
    StartUnanswered(0);
    PickAntenna("QEL NEVA Main Board");
    FlashToEnd();
    ExpectMemoryEqualsFile();
    EXPECT_TRUE(frmShowPostFlashCmds.Self.Visible);
    EXPECT_EQ(frmShowPostFlashCmds.txtShowPostFlashCmds.Text(),
              "HALT\r\nDEBUGON\r\nCLEAREE\r\nWait upto 2 seconds for command to finish\r\nBIASAZ,<value>\r\n"
              "BIASEL,<value>\r\nGYROSFAZ,<value>\r\nGYROSFEL,<value>\r\n=CALUP,<value>\r\n"
              "SATINSTALL,<SATA>,<SATB>\r\nGPS,<XXX>,<N or S>,<YYY>,<E or W>\r\n=SERNUM,<XXXXXXXX>\r\n"
              "INSTANT<ON or OFF>\r\nSLEEP<ON or OFF>\r\nSKEWMTR<ON or OFF>\r\nDEW\r\n");
    EXPECT_TRUE(Press(frmShowPostFlashCmds.cmdDismiss));
    EXPECT_FALSE(frmShowPostFlashCmds.Self.Visible);
}

TEST_F(Choosers, ABoardThatResetsOnCommandIsSentThereAndTheUserKnowsWhatElseHelps)
{
    StartUnanswered(0);
    pc.Connect(5);  // a DUNE, taken for a board that tells its versions
    PickAntenna("QEL DUNE ST/DUNE DX Main Board");
    ASSERT_TRUE(Next() && Next());
    EXPECT_TRUE(text::Holds(frmWizard.lblFlashStatus[0].Caption(), "If nothing happens, cycle its power."));
    EXPECT_TRUE(pc.highPriority);
    ASSERT_TRUE(pc.RunUntil([] { return !frmWizard.cmdNav[0].Enabled(); }, 60)) << "a transfer is not cancelled";
    ASSERT_TRUE(FlashRuns()) << frmWizard.txtStatus.Text();
    EXPECT_TRUE(frmWizard.cmdNav[0].Enabled && !pc.highPriority);
    ExpectMemoryEqualsFile();
    EXPECT_TRUE(text::Holds(pc.sent, "flasha\r"));
}

TEST_F(Choosers, AnRFBoardPickedByHandGetsItsBlocksAndTheBootLoaderOfItsKind)
{
    StartUnanswered(20, "RF6 LM");
    MakeFlashFile(pc.directory / "F61207A.S19", 58816, 6208, "-Motorola");
    MakeFlashFile(pc.directory / "F61140A.S19", 4096, 128, "-Motorola");
    PickAntenna("QEL Land Mobile RF6 Unit");
    FlashToEnd();
    const std::string boot = Judged(pc.directory / "F61140A.S19", "-Motorola", 131072);
    const std::string main = Judged(pc.directory / "F61207A.S19", "-Motorola", 131072);
    const auto held = pc.antenna().Flash().Image();
    const std::string image(held.begin(), held.end());
    EXPECT_TRUE(image.substr(512, 1536) == boot.substr(512, 1536));
    EXPECT_TRUE(image.substr(6208, 65024 - 6208) == main.substr(6208, 65024 - 6208));
    EXPECT_TRUE(frmShowPostFlashCmds.Self.Visible);
}

TEST_F(Choosers, TheListLeavesOutWhatCanNotBeTakenByItsNameAlone)
{
    StartUnanswered(20, "RF6");
    const std::vector<std::string>& names = pick.lstAntennas.List;
    for (const char* never : {"QEL RIGA/SOLA RF6 Board", "QEL JARL GLTV RF6A Board"})
        EXPECT_EQ(std::count(names.begin(), names.end(), never), 0) << never;
    for (const auto& [name, type] : {std::pair{"QEL RF5 Board", 1},
                                     {"QEL RF7 GL Board", 21},
                                     {"QEL Dockside Link Box", 16},
                                     {"QEL BRIX Motor Controller", 13}}) {
        PickAntenna(name);
        EXPECT_EQ(BoardInHand(), type) << name;
        ASSERT_TRUE(Press(frmWizard.cmdPickAntenna));
    }
}

TEST_F(Choosers, CancelChangesNothingAndGoingBackForgetsWhatWasPicked)
{
    StartUnanswered(0);
    ClickAntenna("QEL CORA Main Board");
    ASSERT_TRUE(Press(pick.cmdCancel));
    EXPECT_FALSE(frmWizard.cmdNav[2].Enabled);
    ASSERT_TRUE(Press(frmWizard.cmdPickAntenna));
    PickAntenna("QEL NEVA Main Board");

    ASSERT_TRUE(Press(frmWizard.cmdPickAntenna));
    EXPECT_FALSE(frmWizard.cmdNav[2].Enabled) << "nothing goes on with an antenna that is only looked at";
    ClickAntenna("QEL BRIX Main Board");
    ASSERT_TRUE(Press(pick.cmdCancel));
    EXPECT_TRUE(text::Holds(frmWizard.lblBoardVersion.Caption(), "You selected: QEL NEVA Main Board"));
    EXPECT_EQ(BoardInHand(), 0) << "not that of the antenna that was cancelled";
    SetFault("clear");
    ASSERT_TRUE(Press(frmWizard.cmdNav[1]));
    ASSERT_TRUE(Next());
    EXPECT_TRUE(text::Holds(frmWizard.lblBoardVersion.Caption(), "Orbimaster NEVA"));
    ASSERT_TRUE(Next());
    EXPECT_FALSE(Session.plan->bSkipParams);
}

TEST_F(Choosers, ARowWithANumberThatIsNoneIsToldAndChangesNothing)
{
    StartUnanswered(0);
    Press(pick.cmdCancel);
    FlashConfig config = *Session.config;
    config.Main.AntennaTable[1].AddressOffset = "zero";
    config.Main.AntennaTable[2].Extra1 = "DELAYXMIT soon";
    Session.config = config;
    ASSERT_TRUE(Press(frmWizard.cmdPickAntenna));
    ClickAntenna("QEL NEVA Main Board");
    for (const char* name : {"QEL MAKO Main Board", "QEL OPAL Main Board"}) {
        ClickAntenna(name);
        EXPECT_TRUE(pc.BoxWasShown(std::string("The entry of ") + name + " in the configuration file cannot be used"));
        EXPECT_FALSE(Session.choice.pickedRow);
        EXPECT_FALSE(pick.cmdOK.Enabled);
        EXPECT_EQ(pick.lstAntennas.ListIndex(), -1);
    }
    EXPECT_FALSE(Session.program.bExitRequested);
    frmWizard.Self.Visible = true;
    ASSERT_TRUE(Press(frmWizard.cmdNav[1]));
    EXPECT_FALSE(pick.Self.Visible) << "the dialog goes with its step";
}

/// What the user does in a modal dialog, step by step on the clock.
class ModelChoosers : public Choosers {
protected:
    /// A main board that is told nothing by its RF board, picked by hand; or an RF board that needs the model.
    void AskWith(std::function<void(CheckAntennasForm&)> user)
    {
        pc.onModal = [this, user](Form& shown) {
            for (CheckAntennasForm* form : {&frmCheckAntennasForRF, &frmCheckAntennasForRF6, &frmCheckAntennasForRF6A})
                if (&form->Self == &shown) {
                    ++asked;
                    EXPECT_FALSE(form->cmdOK.Enabled);
                    pc.At(1, [user, form] { user(*form); });
                }
        };
    }

    static int Shown(ControlArray& options)
    {
        return static_cast<int>(std::count_if(options.begin(), options.end(), [](Control& o) { return o.Visible(); }));
    }

    void GoToStep4(int type, const std::string& unit)
    {
        Start(type, unit);
        ASSERT_TRUE(Next() && Next());
        PressOption(frmWizard.Self, frmWizard.optBoardToFlash[1]);
        ASSERT_TRUE(Next() && Next());
        ASSERT_EQ(asked, 1);
    }

    int asked = 0;
};

TEST_F(ModelChoosers, TheModelDecidesWhichSoftwareTheRFBoardGets)
{
    AskWith([](CheckAntennasForm& form) {
        EXPECT_EQ(Shown(form.optLM), 1);
        EXPECT_EQ(Shown(form.optMarine), 2);
        PressOption(form.Self, form.optLM[0]);
        PressOption(form.Self, form.optMarine[1]);
        EXPECT_EQ(form.optLM[0].Value(), 0) << "one model in both lists together";
        Press(form.cmdOK);
    });
    GoToStep4(20, "RF6A");
    EXPECT_EQ(frmWizard.lblFlashFile.Caption(),
              "The Burnline will update the board with file: F61274A.S19, F61275A.HEX");
}

TEST_F(ModelChoosers, AModelThatIsNotListedGetsTheSoftwareForAny)
{
    AskWith([](CheckAntennasForm& form) {
        PressOption(form.Self, form.optLM[0]);
        form.chkNoneOfThese.Value = 1;
        Press(form.chkNoneOfThese);
        EXPECT_EQ(form.optLM[0].Value(), 0);
        form.chkNoneOfThese.Value = 0;
        Press(form.chkNoneOfThese);
        EXPECT_FALSE(form.cmdOK.Enabled) << "nothing is chosen";
        ChooseNoModel(form.Self);
    });
    GoToStep4(20, "RF6");
    EXPECT_EQ(PlannedFile(), "F61205M.S19");
}

TEST_F(ModelChoosers, AListEndsAtItsFirstEmptyPairAndMayBeLongOrEmpty)
{
    pc.onModal = [](Form& form) { form.Visible = false; };
    FlashConfig config;
    std::vector<CompatEntry>& models = config.CompatLandMobileRF6;
    for (int i = 0; i < 60; ++i)
        models.push_back({"Model " + std::to_string(i), " F" + std::to_string(61000 + i) + "A.S19 "});
    ConnectForms();
    for (const std::size_t shown : {60u, 30u, 0u}) {
        if (shown < 60) models[shown] = {};
        Session.config = config;
        EXPECT_EQ(AskForModel(ModelList::RF6), "");
        EXPECT_EQ(Shown(frmCheckAntennasForRF6.optLM), static_cast<int>(shown));
        EXPECT_EQ(frmCheckAntennasForRF6.frameLM.Visible(), shown > 0);
        EXPECT_EQ(Shown(frmCheckAntennasForRF6.optMarine), 0);
    }
    models[0] = {"Model 0", ""};
    models[30] = {"Model 30", " F61030A.S19 "};
    Session.config = config;
    AskWith([](CheckAntennasForm& form) {
        PressOption(form.Self, form.optLM[30]);
        Press(form.cmdOK);
    });
    EXPECT_EQ(AskForModel(ModelList::RF6), "F61030A.S19");
}

TEST_F(ModelChoosers, APickedMainBoardIsAskedForItsModelToo)
{
    AskWith([](CheckAntennasForm& form) {
        EXPECT_EQ(form.frameLM.Caption(), "Antenna RF Board ");
        PressOption(form.Self, form.optLM[1]);
        Press(form.cmdOK);
    });
    StartUnanswered(0);
    PickAntenna("QEL MAKO Main Board");
    ASSERT_TRUE(Next());
    EXPECT_EQ(PlannedFile(), "F61118AB.HEX") << "the file of its row";
    AskWith([](CheckAntennasForm& form) { ChooseNoModel(form.Self); });
    ASSERT_TRUE(Press(frmWizard.cmdNav[1]));
    ASSERT_TRUE(pc.RunUntil([] { return frmWizard.cmdPickAntenna.Visible(); }, 60));
    ASSERT_TRUE(Press(frmWizard.cmdPickAntenna));
    PickAntenna("QEL MAKO Main Board");
    ASSERT_TRUE(Next());
    EXPECT_EQ(PlannedFile(), "F61118T1.HEX");
    EXPECT_EQ(asked, 2);
}

TEST_F(ModelChoosers, ClosingTheProgramInsteadOfAnAnswerEndsItInOrder)
{
    AskWith([](CheckAntennasForm&) { CleanUpForShutdown(1); });
    GoToStep4(20, "RF6");
    EXPECT_TRUE(Session.program.bExitRequested);
    EXPECT_FALSE(frmCheckAntennasForRF6.Self.Visible);
    EXPECT_EQ(pc.boxes.size(), 0u);
    const std::string log = pc.Log();
    EXPECT_TRUE(text::Holds(text::Right(log, 90), "Shutting down Burnline Assistant - Cancelled by User")) << log;
}

}  // namespace
