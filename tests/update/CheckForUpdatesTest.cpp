// The check for updates from the user's side and in the updates log; and the import of files.

#include <gtest/gtest.h>

#include "forms/frmShowRelNotes.h"
#include "forms/frmWizard.h"
#include "persistence/INIUtilities.h"
#include "platform/Updater.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "tests/VirtualComputer.h"
#include "text/Text.h"
#include "update/Update.h"
#include "wizard/frmWizard_Events.h"

namespace fs = std::filesystem;

namespace {

/// Remembers what it was asked for; the test fires the events.
class FakeUpdater : public Updater {
public:
    std::string asked;
    std::vector<UpdateItem> files{{"F61118AC.HEX", true}, {"FLASHCFG.TXT", false}, {"a&b.HEX", true}};
    std::vector<UpdateMessage> messages;

    void Check(const std::string& url, std::int32_t revision) override
    {
        asked += "check " + url + " from " + std::to_string(revision) + "\n";
    }
    void Download() override { asked += "download\n"; }
    void Replace() override { asked += "replace\n"; }
    void DiscardDownload() override { asked += "discard\n"; }
    void Stop() override { asked += "stop\n"; }
    void LookForPrevious(std::int32_t) override {}
    std::vector<UpdateItem> Files() const override { return files; }
    std::vector<UpdateMessage> Messages() const override { return messages; }
    std::int32_t Revision() const override { return 7; }
};

class Updates : public testing::Test {
protected:
    Updates() { updater = &fake; }
    ~Updates() override { updater = nullptr; }

    void Start(const std::string& automatic)
    {
        WriteFile(world.directory / "Burnline.ini",
                  "[BurnlineParameters]\r\nCOMMPort=7\r\nRevision=3\r\nAutoCheckForUpdates=" + automatic +
                      "\r\nUpdateURL=https://server.example/list.txt\r\n");
        world.internet = true;
        world.StartProgram();
        written = ReadFile(world.directory / "BNLUPDATES.HTM").size();
    }

    /// What was added to the updates log since the last call, lines without their ends and "<br>...".
    std::string Logged()
    {
        const std::string all = ReadFile(world.directory / "BNLUPDATES.HTM");
        std::string added = text::Replace(all.substr(written), "\r\n", "\n");
        written = all.size();
        return text::Replace(text::Replace(added, "<br>...", ""), "</br>", "");
    }

    std::string LastBox() const { return world.boxes.empty() ? "" : world.boxes.back().words; }

    VirtualComputer world;
    FakeUpdater fake;
    std::size_t written = 0;
};

const std::string heading =
    "<font face=Verdana size=1>\n"
    "<br>+++++++++++++++++++++++++++++++++++++++++++++++++++++++++++++++++++++\n"
    "<br>Starting Burnline Assistant Check for Updates 2026-11-21 10:15:02\n"
    "Version: 11-7702 Rev. T, Build Number: 1.2.3, Installed in: ";

TEST_F(Updates, FoundFilesAreListedAndGoTheirWholeWayIntoTheirPlaces)
{
    Start("False");
    mnuUpdate_ItemCheckForUpdates_Click();
    EXPECT_EQ(fake.asked, "check https://server.example/list.txt from 3\n");
    EXPECT_EQ(frmWizard.lblUpdateCheck.Caption(), "Last Check for Updates: 2026-11-21");
    EXPECT_EQ(GetSetting(SETTING_LAST_UPDATE), "2026-11-21");
    EXPECT_EQ(Logged(),
              heading + world.directory.string() + "\nLooking for updates at URL: https://server.example/list.txt\n");

    fake.messages = {{4, "<b>Four</b>"}, {5, "Five"}};
    fake.CheckDone(2, 0, "");
    EXPECT_EQ(Logged(),
              "2 New file(s) found.\nFile : <b> F61118AC.HEX</b>\nFile : <b> a&amp;b.HEX</b>\n<br>\n"
              "<p>\n<br>Update Message 4:\n<b>Four</b>\n</p>\n<p>\n<br>Update Message 5:\nFive\n</p>\n"
              "<font face=Verdana size=1\nDownload requested for the new files.\n");
    EXPECT_EQ(LastBox(), "New files found. Download?");
    EXPECT_NE(ReadFile(world.directory / "Burnline.ini").find("LastMessage=2"), std::string::npos);
    fake.DownloadDone(0, "");
    EXPECT_EQ(LastBox(), "Download successful. Replace now?");
    fake.ReplaceDone(0, "");
    EXPECT_EQ(LastBox(), "Replace successful");
    EXPECT_EQ(Logged(), "File replace requested.\nFile replace successful.\n");
    EXPECT_EQ(GetSetting(SETTING_REVISION), "7");
    EXPECT_TRUE(text::Holds(fake.asked, "\ndownload\nreplace\n"));
}

TEST_F(Updates, RefusalsAndErrorsLeaveEverythingAsItIs)
{
    Start("False");
    world.answers = {Answer::No, Answer::No, Answer::No};
    fake.CheckDone(1, 0, "");
    fake.DownloadDone(0, "");
    fake.PrevDownload();
    EXPECT_TRUE(text::Holds(Logged(),
                            "Download refused for the new files.\nFile replace refused.\nPrevious download "
                            "detected. Update refused.\n"));
    EXPECT_EQ(fake.asked, "discard\n");
    fake.CheckDone(0, 1, "no <signature>");
    EXPECT_EQ(LastBox(), "There was an error checking for updates: no <signature>");
    fake.DownloadDone(1, "cut off");
    fake.ReplaceDone(1, "disk full");
    EXPECT_EQ(LastBox(), "There was an error updating: disk full");
    EXPECT_EQ(Logged(),
              "There was an error checking for updates: no &lt;signature&gt;\n"
              "There was an error downloading: cut off\nThere was an error replacing: disk full\n");
    fake.ReplaceDone(UPDATE_RESTARTING, "");
    EXPECT_EQ(LastBox(), "Update Done.  Restart Burnline.");
    fake.CheckDone(0, UPDATE_RESTARTING, "");
    EXPECT_TRUE(text::Holds(world.Log(), "We encountered ErrorCode 30012 in the WOD_CheckDone event."));
    EXPECT_EQ(GetSetting(SETTING_REVISION), "3");
    world.internet = false;
    for (const char* url : {"https://server.example/list.txt", "http://127.0.0.1.example/", "localhost"}) {
        world.boxes.clear();
        SetSetting(SETTING_UPDATE_URL, url);
        mnuUpdate_ItemCheckForUpdates_Click();
        EXPECT_TRUE(text::StartsWith(LastBox(), "You are not properly connected to the internet.")) << url;
    }
    EXPECT_EQ(Logged(), "");
    fake.asked.clear();
    SetSetting(SETTING_UPDATE_URL, "http://LocalHost:8080/list.txt");
    mnuUpdate_ItemCheckForUpdates_Click();
    EXPECT_EQ(fake.asked, "check http://LocalHost:8080/list.txt from 3\n") << "that server needs no internet";
}

TEST_F(Updates, AnAutomaticCheckIsSilentWhenThereIsNothingToSay)
{
    Start("True");
    CheckForUpdatesAtStart();
    EXPECT_EQ(fake.asked, "check https://server.example/list.txt from 3\n");
    Logged();
    fake.CheckDone(0, 0, "");
    CheckForUpdatesAtStart();
    fake.CheckDone(0, UPDATE_UNREACHABLE, "");
    EXPECT_TRUE(world.boxes.empty()) << LastBox();
    fake.CheckDone(0, UPDATE_UNREACHABLE, "");
    EXPECT_TRUE(text::StartsWith(LastBox(), "Unable to reach QEL website.")) << "that one was asked for";
    fake.CheckDone(0, 0, "");
    EXPECT_EQ(LastBox(), "No new versions found. Burnline is up-to-date.");
    SetSetting(SETTING_AUTO_CHECK, "False");
    fake.asked.clear();
    CheckForUpdatesAtStart();
    EXPECT_EQ(fake.asked, "");
}

TEST_F(Updates, AProgramThatIsToBeReplacedEndsInOrder)
{
    Start("False");
    fake.Closing();
    EXPECT_TRUE(IsExitRequested());
    EXPECT_TRUE(text::Holds(world.Log(), "++>Shutting down Burnline Assistant - Update scheduled 2026-11-21"));
    EXPECT_EQ(Logged(), "Update closing application to replace file.\n");
}

TEST_F(Updates, ImportedFilesStandBesideTheProgramAndFailuresAreNamed)
{
    Start("False");
    const TempDirectory stick;
    for (const char* name : {"F61118AC.HEX", "F61119A.S19"}) WriteFile(stick.path / name, name);
    WriteFile(world.directory / "F61119A.S19", "older");
    WriteFile(stick.path / "Burnline.ini", "not the user's");
    const std::string own = (world.directory / "F61119A.S19").string(), ini = (stick.path / "Burnline.ini").string();
    world.openDialogAnswer = {(stick.path / "F61118AC.HEX").string(), (stick.path / "F61119A.S19").string()};
    mnuUpdate_ItemImportFile_Click();
    EXPECT_EQ(ReadFile(world.directory / "F61118AC.HEX"), "F61118AC.HEX");
    EXPECT_EQ(ReadFile(world.directory / "F61119A.S19"), "F61119A.S19");
    EXPECT_EQ(world.boxes.size(), 1u);
    EXPECT_TRUE(text::Holds(world.Log(), "++>Updated (copied) Flash File: " + world.openDialogAnswer[1] + "\r\n"));

    ImportFiles({own, ini, (stick.path / "gone.HEX").string(), stick.path.string()});
    for (const std::string& path : {own, ini, (stick.path / "gone.HEX").string(), stick.path.string()})
        EXPECT_TRUE(text::Holds(LastBox(), path)) << LastBox();
    EXPECT_EQ(ReadFile(own), "F61119A.S19");
    EXPECT_FALSE(text::Holds(ReadFile(world.directory / "Burnline.ini"), "not the user's"));
}

TEST_F(Updates, HelpOpensAtTheStepAndTheViewerShowsWhatWasAsked)
{
    Start("False");
    for (int step = STEP_DIAGNOSTICS; step <= STEP_FINISHED; ++step) {
        frmWizard.iCurrentStep = step;
        EXPECT_TRUE(Form_KeyDown(F1Key, false, false, false));
        EXPECT_EQ(world.helpTopics.back(), 1010 + 10 * step);
    }
    Press(frmWizard.cmdViewRelNotes);
    EXPECT_TRUE(frmShowRelNotes.Self.Visible);
    EXPECT_EQ(frmShowRelNotes.WebBrowser1.Text(), (world.directory / "BurnlineRelNotes.htm").string());
    Press(frmWizard.mnuUpdate_ItemViewUpdatesLog);
    EXPECT_EQ(frmShowRelNotes.Self.Caption(), "Burnline - Update log");
    EXPECT_EQ(frmShowRelNotes.WebBrowser1.Text(), (world.directory / "BNLUPDATES.HTM").string());
    Press(frmShowRelNotes.cmdClose);
    EXPECT_FALSE(frmShowRelNotes.Self.Visible);
}

}  // namespace
