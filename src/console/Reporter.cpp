#include "console/Reporter.h"

#include "forms/frmWizard.h"
#include "knowledge/Utilities.h"
#include "link/Mode.h"
#include "platform/Computer.h"
#include "platform/SerialControl.h"
#include "session/Session.h"
#include "text/Text.h"

namespace {

constexpr const char* stepNames[] = {"STEP_DIAGNOSTICS", "STEP_INTRO", "STEP_1", "STEP_2",       "STEP_3",
                                     "STEP_4",           "STEP_5",     "STEP_6", "STEP_FINISHED"};

std::string OneLine(const std::string& words)
{
    std::string line = text::Replace(text::Replace(words, "\r\n", " "), "\n", " ");
    while (text::Holds(line, "  ")) line = text::Replace(line, "  ", " ");
    return text::Trim(line);
}

/// What a line of the present speed carries: 8N1 takes ten bits a byte.
double BytesPerSecondOfTheLine() { return text::Val(MSComm1->Settings()) / 10; }

}  // namespace

Reporter::Reporter(Voice& voice)
    : voice_(voice),
      growing_{{frmWizard.txtStatus, "status", STEP_INTRO}, {frmWizard.txtParamsSent, "status", STEP_6}},
      replaced_{
          {frmWizard.lblCommPortStatus, "port", -1, true, frmWizard.lblCommPortStatus.Caption},
          {frmWizard.lblBoardVersion, "versions", STEP_3, false, {}},
          {frmWizard.lblFlashFile, "file", STEP_4, false, {}},
          {frmWizard.lblFlashStatus[0], "banner", STEP_5, true, {}},
          {frmWizard.lblFlashStatus[1], "banner", STEP_6, true, {}},
          {frmWizard.lblWaiting1, "status", STEP_6, true, frmWizard.lblWaiting1.Caption},
          {frmWizard.lblPickAntennaInfo, "result", STEP_FINISHED, false, {}},
          {frmWizard.lblLogFileInfo, "log", STEP_FINISHED, false, {}},
      }
{
}

bool Reporter::IsTransfer() { return PhaseNow() == Phase::Writing; }

void Reporter::Look()
{
    if (inTransfer_ && !IsTransfer()) EndTransfer();  // its last line stays, ahead of what follows
    if (seen_ != FormsRevision) {
        seen_ = FormsRevision;
        TellStep();
        for (Growing& text : growing_) TellNewLines(text);
        TellParameters();
        for (Replaced& text : replaced_) TellReplaced(text);
    }
    ShowProgress();
}

void Reporter::TellStep()
{
    if (step_ == frmWizard.iCurrentStep || !frmWizard.Self.Visible) return;
    step_ = frmWizard.iCurrentStep;
    voice_.Tell("step", "", {{"step", stepNames[step_]}});
}

void Reporter::TellNewLines(Growing& text)
{
    if (frmWizard.iCurrentStep < text.firstStep) return;
    const std::string& words = text.box.Text;
    if (words.size() < text.told) text.told = 0;  // it was emptied
    const std::string fresh = words.substr(text.told);
    text.told = words.size();
    for (const std::string& line : text::Split(text::Replace(fresh, "\r", ""), "\n")) {
        if (text::Trim(line).empty()) continue;
        lastLine_ = text::Trim(line);
        voice_.Tell(text.event, line);
    }
}

/// A label's line breaks are the window's, where it is one sentence.
void Reporter::TellReplaced(Replaced& text)
{
    if (text.step >= 0 && text.step != frmWizard.iCurrentStep) return;
    if (!text.label.Visible) return;
    const std::string& caption = text.label.Caption;
    const std::string words = text.oneSentence ? OneLine(caption) : text::TrimLines(caption);
    if (words == text.told) return;
    text.told = words;
    // A banner often says what the list of actions has just said.
    if (!words.empty() && words != text.standing && words != lastLine_) voice_.Tell(text.event, words);
}

/// The table for programs; people have read it already, as the last lines of the upload.
void Reporter::TellParameters()
{
    const bool ended = Session.restore.bEnded && Session.restore.readBack.iRound > 0;
    if (ended == parametersTold_) return;
    parametersTold_ = ended;
    if (!ended) return;
    const auto words = [](const std::string& text) { return QString::fromStdString(text); };
    for (const ComparedParameter& row : CompareParameters())
        voice_.Tell("parameter", "",
                    {{"name", words(row.sName)},
                     {"before", words(row.sBefore)},
                     {"after", words(row.sAfter)},
                     {"equal", row.bEqual}});
    const std::string& version = Session.restore.readBack.sVersion;
    if (!VersionQuery().empty())
        voice_.Tell("version", "",
                    {{"before", words(VersionBefore())}, {"after", words(version.empty() ? notTold : version)}});
}

/// The transfer's time runs from its first unit on; the rate is that of the last seconds.
Progress Reporter::TransferNow()
{
    constexpr double rateOver = 5;
    const double now = computer->Seconds();
    if (!samples_.empty() && Session.attempt.lBytesSent < samples_.back().bytes) samples_.clear();  // it began again
    if (samples_.empty() || now - samples_.back().seconds >= 0.1) samples_.push_back({now, Session.attempt.lBytesSent});
    while (samples_.size() > 2 && now - samples_[1].seconds > rateOver) samples_.pop_front();

    Progress progress;
    progress.what = isUpgrade_ ? "Upgrading the boot loader" : "Flashing";
    progress.percent = frmWizard.ProgressBar1.Value;
    progress.seconds = Session.flash.dFlashStart > 0 ? now - Session.flash.dFlashStart : 0;
    if (isUpgrade_) return progress;
    progress.bytes = Session.attempt.lBytesSent;
    const Sample& oldest = samples_.front();
    if (now - oldest.seconds >= 0.5) {
        progress.rate = static_cast<double>(progress.bytes - oldest.bytes) / (now - oldest.seconds);
        progress.lineShare = progress.rate * 100 / BytesPerSecondOfTheLine();
    }
    if (progress.percent > 0) progress.secondsLeft = progress.seconds * (100 - progress.percent) / progress.percent;
    return progress;
}

void Reporter::EndTransfer()
{
    voice_.Show(TransferNow());
    voice_.EndProgress();
    samples_.clear();
    inTransfer_ = false;
}

void Reporter::ShowProgress()
{
    inTransfer_ = IsTransfer();
    isUpgrade_ = Session.link.iCommMode == STATE_BOOT_UPGRADE;
    if (inTransfer_) voice_.Show(TransferNow());
    // The test of the file.
    if (!inTransfer_ && frmWizard.ProgressBar1.Value > 0 &&
        text::Holds(frmWizard.lblProgressBar.Caption(), "File Check"))
        voice_.Show({"Checking the file", frmWizard.ProgressBar1.Value});
}
