// Updates as the user meets them: the real program, a real web server, lists signed by the real minisign.

#include <QElapsedTimer>
#include <QThread>

#include "tests/desktop/BarePort.h"
#include "tests/desktop/RealWindow.h"
#include "tests/desktop/UpdateSite.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* found = "New files found. Download?";
constexpr const char* downloaded = "Download successful. Replace now?";

class UpdateWindow : public RealWindow, public UpdateSite {
protected:
    UpdateWindow() : port(std::make_unique<BarePort>(home.AntennaLink()))
    {
        fs::copy_file(Key(), home.Path("BNLUpdate.pub"));
    }

    void StartProgram(const std::string& automatic, const std::string& manner = "well",
                      const fs::path& program = BURNLINE_PROGRAM)
    {
        wizard.reset();
        home.SetPort(7);
        std::string settings = home.Bytes("Burnline.ini");
        settings.replace(settings.find("=False"), 6, "=" + automatic);
        WriteAll(home.Path("Burnline.ini"), settings + "UpdateURL=" + Url(manner) + "\r\nRevision=3\r\n");
        wizard = std::make_unique<WizardProcess>(home.Path(""), std::function<void()>(), program);
        wizard->WaitUntil("the window", [this] { return wizard->See("frmWizard").visible; });
    }

    void Choose(const std::string& item)
    {
        wizard->Click("mnuUpdate");
        wizard->Click("mnuUpdate_Item" + item);
    }

    bool WasAsked(const std::string& words) const { return Requests().find(words) != std::string::npos; }

    std::string UpdatesLog() const { return home.Bytes("BNLUPDATES.HTM"); }
    /// The updates log behind the last check's address, without the marks of its lines.
    std::string Findings() const
    {
        const std::string log = UpdatesLog(), mark = Url("well") + "</br>\r\n";
        std::string findings = log.substr(log.rfind(mark) + mark.size());
        for (const char* noise : {"<br>...", "</br>", "\r"})
            for (std::size_t at; (at = findings.find(noise)) != std::string::npos;)
                findings.erase(at, std::string(noise).size());
        return findings;
    }
    std::string Settings() const { return home.Bytes("Burnline.ini"); }

    void ExpectEndInOrder()
    {
        EXPECT_TRUE(wizard->EndsWithin(20));
        EXPECT_FALSE(wizard->Crashed());
        EXPECT_EQ(wizard->ExitCode(), 0);
    }

    std::unique_ptr<BarePort> port;
};

TEST_F(UpdateWindow, brings_new_files_into_their_places_when_the_menu_is_asked)
{
    WriteAll(home.Path("SAME.HEX"), "the same");
    WriteAll(home.Path("OTHER.HEX"), "the former");
    Publish(Offer("SAME.HEX", "the same") + Offer("OTHER.HEX", "the newer") + Offer("NEW.S19", "new") +
            "message 8 <b>News</b>\n");
    StartProgram("False");
    Choose("CheckForUpdates");
    wizard->AnswerBox(found, "No");
    wizard->WaitUntil("the refusal is logged", [this] { return Findings().ends_with("refused for the new files.\n"); });
    EXPECT_FALSE(fs::exists(home.Path("BNLUpdate.staging")));
    EXPECT_EQ(home.Bytes("OTHER.HEX"), "the former");
    EXPECT_NE(Settings().find("Revision=3\r"), std::string::npos);

    Choose("CheckForUpdates");
    wizard->AnswerBox(found, "Yes");
    wizard->WaitForText("msgBox", downloaded);
    EXPECT_FALSE(wizard->See("updateProgress").visible) << "nothing stands behind the question";
    EXPECT_EQ(home.Bytes("OTHER.HEX"), "the former") << "nothing changes before the answer";
    wizard->AnswerBox(downloaded, "Yes");
    wizard->AnswerBox("Replace successful", "OK");
    EXPECT_EQ(home.Bytes("OTHER.HEX"), "the newer");
    EXPECT_EQ(home.Bytes("NEW.S19"), "new");
    EXPECT_NE(Settings().find("Revision=5\r"), std::string::npos);
    wizard->WaitUntil("it is logged", [this] { return Findings().ends_with("replace successful.\n"); });
    EXPECT_EQ(Findings(),
              "2 New file(s) found.\nFile : <b> OTHER.HEX</b>\nFile : <b> NEW.S19</b>\n<br>\n"
              "<p>\n<br>Update Message 8:\n<b>News</b>\n</p>\n<font face=Verdana size=1\n"
              "Download requested for the new files.\nFile replace requested.\nFile replace successful.\n");
    const std::vector<std::string> heading{"<HTML TITLE=Burnline Assistant Update Log File>\r\n",
                                           "<font face=Verdana size=1>\r\n",
                                           "<br>+++++",
                                           "<br>Starting Burnline Assistant Check for Updates 2",
                                           "<br>...Version: 11-7702 Rev. T, Build Number: ",
                                           ", Installed in: " + home.Path("").parent_path().string(),
                                           "<br>...Looking for updates at URL: "};
    EXPECT_EQ(FirstOutOfOrder(UpdatesLog(), heading), "");

    const std::string seen = wizard->See("lblUpdateCheck").text, day = "Last Check for Updates: ";
    EXPECT_NE(Settings().find("LastUpdate=" + seen.substr(day.size()) + "\r"), std::string::npos) << seen;
    Choose("CheckForUpdates");
    wizard->AnswerBox("No new versions found. Burnline is up-to-date.", "OK");
    Choose("ViewUpdatesLog");
    wizard->WaitForText("frmShowRelNotes", "Burnline - Update log");
}

TEST_F(UpdateWindow, is_free_at_once_when_the_server_never_answers_a_check_at_start)
{
    Publish("");
    port.reset();
    StartAntenna(12);
    StartProgram("True", "mute");
    AwaitPortReady();
    wizard->Click("cmdNav_2", 1);
    wizard->WaitUntil(
        "STEP_1", [this] { return wizard->See("fraStep_2").visible; }, 1);
    wizard->WaitUntil("the check is under way", [this] { return WasAsked("/mute/list.txt"); });
    EXPECT_FALSE(wizard->HasBox());
    wizard->Close();
    ExpectEndInOrder();
}

TEST_F(UpdateWindow, drops_a_check_when_a_flash_is_about_to_begin)
{
    home.MakeFlashFile("F61195A.HEX", 5);
    port.reset();
    StartAntenna(12);
    Publish(Offer("NEW.S19", "new"));
    StartProgram("True", "held");
    wizard->WaitUntil("the check is under way", [this] { return WasAsked("/held/list.txt"); });
    AwaitPortReady();
    ChooseBrix();
    EXPECT_FALSE(wizard->See("mnuUpdate").enabled);
    WriteAll(web / "let-go", "");
    wizard->WaitUntil("the answer is sent", [this] { return WasAsked("/held/list.txt \n/held/list.txt "); });
    // Back and again: the program has had its turns.
    wizard->Click("cmdNav_1");
    wizard->Click("optSerial");
    wizard->Click("cmdNav_2");
    wizard->WaitUntil("STEP_4", [this] { return wizard->See("fraStep_5").visible; });
    EXPECT_FALSE(wizard->HasBox());
    EXPECT_FALSE(WasAsked("minisig"));
}

TEST_F(UpdateWindow, ends_in_order_whatever_of_an_update_is_under_way)
{
    Publish(Offer("BIG.S19", std::string(2000000, 'x'), "slow"));
    StartProgram("False");
    Choose("CheckForUpdates");
    wizard->AnswerBox(found, "Yes");
    wizard->WaitUntil("the download is shown", [this] { return wizard->See("updateProgress").visible; });
    wizard->Close();
    ExpectEndInOrder();

    StartProgram("True");
    wizard->WaitForText("msgBox", found);
    wizard->Close();
    wizard->AnswerBox(found, "Yes");
    ExpectEndInOrder();
    EXPECT_FALSE(fs::exists(home.Path("BIG.S19")));
}

TEST_F(UpdateWindow, goes_on_with_a_cancelled_download_and_keeps_a_refused_one_for_the_next_start)
{
    const std::string big(2000000, 'x');
    const fs::path part = home.Path("BNLUpdate.staging") / (Digest(big) + ".part");
    Publish(Offer("BIG.S19", big, "slow"));
    StartProgram("False");
    Choose("CheckForUpdates");
    wizard->AnswerBox(found, "Yes");
    wizard->WaitUntil("bytes arrive", [&] { return fs::exists(part) && fs::file_size(part) > 0; });
    wizard->Click("msgBox/Cancel");
    wizard->AnswerBox("There was an error downloading: the download was cancelled", "OK");
    EXPECT_GT(fs::file_size(part), 0u);

    Publish(Offer("BIG.S19", big));
    Choose("CheckForUpdates");
    wizard->AnswerBox(found, "Yes");
    wizard->AnswerBox(downloaded, "No");
    EXPECT_TRUE(WasAsked("/well/BIG.S19 bytes=")) << Requests();
    wizard->Close();
    ExpectEndInOrder();

    GoAway();
    StartProgram("False");
    wizard->AnswerBox("Previous download detected. Update now?", "Yes");
    wizard->AnswerBox("Replace successful", "OK");
    EXPECT_EQ(home.Bytes("BIG.S19"), big);
    EXPECT_FALSE(fs::exists(home.Path("BNLUpdate.staging")));
    EXPECT_EQ(FirstOutOfOrder(UpdatesLog(), {"error downloading", "replace refused", "Update requested", "successful"}),
              "");
}

TEST_F(UpdateWindow, replaces_the_program_itself_and_starts_it_once)
{
    const fs::path program = Path("program/burnline");
    fs::create_directories(program.parent_path());
    fs::copy_file(BURNLINE_PROGRAM, program);
    const std::string newer = "#!/bin/sh\necho started >> \"$BURNLINE_HOME/started\"\n";
    Publish(Offer("burnline", newer) + Offer("NEW.S19", "new"));
    StartProgram("False", "well", program);
    Choose("CheckForUpdates");
    wizard->AnswerBox(found, "Yes");
    wizard->AnswerBox(downloaded, "Yes");
    ExpectEndInOrder();
    EXPECT_EQ(ReadAll(program), newer);
    EXPECT_NE(fs::status(program).permissions() & fs::perms::owner_exec, fs::perms::none);
    EXPECT_EQ(home.Bytes("NEW.S19"), "new");
    EXPECT_TRUE(Findings().ends_with("requested.\nUpdate closing application to replace file.\n")) << Findings();
    EXPECT_NE(home.Bytes("BNL.LOG").find("++>Shutting down Burnline Assistant - Update scheduled "), std::string::npos);
    QElapsedTimer waited;
    for (waited.start(); home.Bytes("started").empty() && waited.elapsed() < 10000;) QThread::msleep(20);
    EXPECT_EQ(home.Bytes("started"), "started\n");
    EXPECT_EQ(std::distance(fs::directory_iterator(program.parent_path()), fs::directory_iterator()), 1)
        << "no copy is left";
}

}  // namespace
