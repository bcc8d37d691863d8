// The check for updates: what is asked, and what is written into the updates log on the way.

#include <cstddef>

#include "forms/frmWizard.h"
#include "persistence/INIUtilities.h"
#include "persistence/Logs.h"
#include "platform/Computer.h"
#include "platform/Failure.h"
#include "platform/ProgramFiles.h"
#include "platform/Updater.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"
#include "update/Replacement.h"
#include "update/Update.h"

namespace {

constexpr const char* Title = "QEL Burnline Assistant - Check for Updates";
constexpr int FAIL_TIMED_OUT = 10060;

/// Words of a server or of a file name, which must not become part of the page that the updates log is.
std::string Escaped(const std::string& words)
{
    return text::Replace(text::Replace(text::Replace(words, "&", "&amp;"), "<", "&lt;"), ">", "&gt;");
}

void Log(const std::string& words) { WriteUpdatesLog("<br>..." + words + "</br>"); }

void Tell(const std::string& words) { computer->MsgBox(words, Buttons::OK, Icon::None, Title, Answer::OK); }

bool Ask(const std::string& words, const std::string& title)
{
    return computer->MsgBox(words, Buttons::YesNo, Icon::Question, title, Answer::Yes) == Answer::Yes;
}

/// What the check and its events share: a failure is told under their name, but for those that are none.
template <class Body>
void Step(const std::string& origin, Body body)
{
    try {
        body();
    } catch (...) {
        std::string detail;
        const int number = FailureNumber(detail);
        if (number != 0 && number != UPDATE_RESTARTING && number != FAIL_TIMED_OUT) ReportFailure(origin);
    }
}

/// The same with the updates log open, for events.
template <class Body>
void Event(const std::string& origin, Body body)
{
    Step(origin, [&body] {
        OpenUpdatesLog();
        body();
    });
    if (IsUpdatesLogOpen()) CloseUpdatesLog();
}

/// A new program that isn't ours to replace.
void TellAndLog(const std::string& words)
{
    Tell(words);
    Log(Escaped(words));
}

void LogMessage(const UpdateMessage& message)
{
    WriteUpdatesLog("<p>");
    WriteUpdatesLog("<br>Update Message " + text::Num(message.Number) + ":</br>");
    WriteUpdatesLog(message.Text);
    WriteUpdatesLog("</p>");
}

/// The messages from the one on that the setting names; the setting's accessor never tells a number, so it is all.
void LogMessages()
{
    const std::vector<UpdateMessage> messages = updater->Messages();
    if (messages.empty()) return;
    const std::string shown = GetSetting(SETTING_LAST_MESSAGE);
    const double first = shown.empty() ? 0 : text::Val(shown);
    for (std::size_t at = first < 0 ? 0 : static_cast<std::size_t>(first); at < messages.size(); ++at)
        LogMessage(messages[at]);
    SetSetting(SETTING_LAST_MESSAGE, text::Num(static_cast<long long>(messages.size())));
    WriteUpdatesLog("<font face=Verdana size=1");  // a message may have changed it; without its bracket, on purpose
}

void OfferDownload(int newFiles)
{
    Log(text::Num(newFiles) + " New file(s) found.");
    for (const UpdateItem& file : updater->Files())
        if (file.IsNew) Log("File : <b> " + Escaped(file.Name) + "</b>");
    WriteUpdatesLog("<br></br>");
    LogMessages();
    if (Ask("New files found. Download?", "New files found!")) {
        Log("Download requested for the new files.");
        updater->Download();
    } else {
        Log("Download refused for the new files.");
    }
}

void OnCheckDone(int newFiles, int errorCode, const std::string& errorText)
{
    const bool unattended = Session.program.bUpdateCheckRunning;
    Event("WOD_CheckDone", [&] {
        if (errorCode == UPDATE_UNREACHABLE) {
            unattended ? LogMsg(UPDATE_UNREACHABLE, "CheckDone") : void(ShowMsgBox(UPDATE_UNREACHABLE, "CheckDone"));
        } else if (errorCode == UPDATE_RESTARTING) {
            WriteLog("We encountered ErrorCode 30012 in the WOD_CheckDone event.");
        } else if (errorCode != 0) {
            Tell("There was an error checking for updates: " + errorText);
            Log("There was an error checking for updates: " + Escaped(errorText));
        } else if (newFiles > 0 || !errorText.empty()) {
            if (!errorText.empty() && !unattended) TellAndLog(errorText);
            if (newFiles > 0) OfferDownload(newFiles);
        } else if (!unattended) {
            Tell("No new versions found. Burnline is up-to-date.");
            Log("No new versions found. Burnline is up-to-date.");
        }
    });
    Session.program.bUpdateCheckRunning = false;
}

void OnDownloadDone(int errorCode, const std::string& errorText)
{
    Event("WOD_DownloadDone", [&] {
        if (errorCode != 0) {
            Tell("There was an error downloading: " + errorText);
            Log("There was an error downloading: " + Escaped(errorText));
        } else if (Ask("Download successful. Replace now?", "Replace files..")) {
            Log("File replace requested.");
            updater->Replace();
        } else {
            Log("File replace refused.");
        }
    });
}

void OnReplaceDone(int errorCode, const std::string& errorText)
{
    Event("WOD_UpdateDone", [&] {
        if (errorCode == 0) {
            SetSetting(SETTING_REVISION, text::Num(updater->Revision()));
            computer->MsgBox("Replace successful", Buttons::OK, Icon::None, "Replace files..", Answer::OK);
            Log("File replace successful.");
        } else if (errorCode == UPDATE_RESTARTING) {
            Tell("Update Done.  Restart Burnline.");
        } else {
            // The box and the log have their own words for it, on purpose.
            Tell("There was an error updating: " + errorText);
            Log("There was an error replacing: " + Escaped(errorText));
        }
    });
}

void OnPrevDownload()
{
    Event("WOD_PrevDetected", [] {
        if (Ask("Previous download detected. Update now?", "Update files..")) {
            Log("Previous download detected. Update requested.");
            updater->Replace();
        } else {
            Log("Previous download detected. Update refused.");
            updater->DiscardDownload();
        }
    });
}

void OnClosing()
{
    Event("WOD_CloseApp", [] {
        Log("Update closing application to replace file.");
        // The files take their places when the program has gone; should they fail to, this revision is offered again.
        SetSetting(SETTING_REVISION, text::Num(updater->Revision()));
        CleanUpForShutdown(3);
    });
}

/// A server on this very computer is in reach without any link.
bool IsOnThisComputer(const std::string& url)
{
    const std::size_t scheme = url.find("://");
    if (scheme == std::string::npos) return false;
    const std::size_t from = scheme + 3;
    const std::string host = url.substr(from, url.find_first_of(":/?#", from) - from);
    return host == "127.0.0.1" || text::Equal(host, "localhost");
}

bool IsServerInReach() { return IsOnThisComputer(GetSetting(SETTING_UPDATE_URL)) || computer->InternetConnected(); }

void LogHeading()
{
    WriteUpdatesLog("<font face=Verdana size=1>");
    WriteUpdatesLog("<br>+++++++++++++++++++++++++++++++++++++++++++++++++++++++++++++++++++++</br>");
    WriteUpdatesLog("<br>Starting Burnline Assistant Check for Updates " + computer->DateAndTime() + "</br>");
    Log("Version: 11-7702 Rev. T, Build Number: " + computer->Revision() +
        ", Installed in: " + Escaped(computer->ProgramDirectory()));
}

}  // namespace

void ConnectUpdater()
{
    if (!updater) return;
    updater->CheckDone = OnCheckDone;
    updater->DownloadDone = OnDownloadDone;
    updater->ReplaceDone = OnReplaceDone;
    updater->PrevDownload = OnPrevDownload;
    updater->Closing = OnClosing;
}

void CheckForUpdates()
{
    if (!IsServerInReach()) {
        Tell("You are not properly connected to the internet.  Check for Updates requires an internet connection. ");
        return;
    }
    Step("WOD_CheckForUpdates", [] {
        OpenUpdatesLog();
        LogHeading();
        const std::string url = GetSetting(SETTING_UPDATE_URL);
        SetSetting(SETTING_LAST_UPDATE, computer->Date());
        frmWizard.lblUpdateCheck.Caption = "Last Check for Updates: " + computer->Date();
        Log("Looking for updates at URL: " + Escaped(url));
        if (updater) updater->Check(url, text::ToLong(GetSetting(SETTING_REVISION)));
    });
}

void EndLeftReplacement()
{
    try {
        FinishReplacement(PathOf(computer->ProgramDirectory()));
    } catch (...) {
        std::string detail;
        FailureNumber(detail);
        computer->MsgBox("The update of the last run could not be ended: " + detail +
                             "\n\nPlease close all other programs that use files in " + computer->ProgramDirectory() +
                             ", check its permissions and the room on the disk, then start the Burnline again.",
                         Buttons::OK, Icon::Exclamation, Title, Answer::OK);
    }
}

void CheckForUpdatesAtStart()
{
    if (updater) updater->LookForPrevious(text::ToLong(GetSetting(SETTING_REVISION)));
    if (IsExitRequested()) return;
    if (!IsSettingTrue(SETTING_AUTO_CHECK) || !IsServerInReach()) return;
    // Until its answer is there: a check that nobody asked for is silent when there is nothing to say.
    Session.program.bUpdateCheckRunning = updater != nullptr;
    CheckForUpdates();
}

void StopUpdates()
{
    Session.program.bUpdateCheckRunning = false;
    if (updater) updater->Stop();
}

void mnuUpdate_ItemCheckForUpdates_Click()
{
    Session.program.bUpdateCheckRunning = false;
    Guarded("mnuUpdate_ItemCheckForUpdates_Click()", CheckForUpdates);
}
