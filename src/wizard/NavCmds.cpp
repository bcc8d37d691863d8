// The navigation buttons: which of the four may be pressed now.

#include <iterator>

#include "forms/frmWizard.h"
#include "frame/SessionState.h"
#include "frame/Wizard.h"
#include "knowledge/Utilities.h"
#include "link/SerialPortIO.h"
#include "persistence/INIUtilities.h"
#include "persistence/Logs.h"

namespace {

enum class Nav { Keep, Off, On };
using enum Nav;

struct Keys {
    Nav cancel, back, next, finish;
};

struct NavRow {
    int code;
    Keys keys;                           // as they are to be with an antenna
    Keys dry;                            // in DryRunMode, where one walks the steps with no antenna
    void (*work)();                      // done ahead of the buttons; null: nothing
    void (*rule)(Keys& keys, bool dry);  // what the row leaves to the moment; null: nothing
};

void HideVersionButtons()
{
    for (Control* button : {&frmWizard.cmdRetryGetVersions, &frmWizard.cmdPickAntenna}) {
        button->Enabled = false;
        button->Visible = false;
    }
}

/// The antenna was picked by hand: its row is in use and its restore list replaces the one of the version reply.
void UsePickedAntenna()
{
    if (!Session.bSkipParams) return;
    const AntennaRecord& row = Session.AntennaTable.at(static_cast<std::size_t>(Session.iAntennaIdx));
    WriteLogLine("++>Antenna selected by user: " + row.AntennaName);
    UpdateVersionsDisplay(8);
    Session.sPostflashCmds = CommandsOf(row.PostflashLine);
    Session.iPostflashCmdIdx = 0;
}

/// With no board chosen there is nothing to go on to. The form's load comes by here ahead of its first step.
void NeedBoard(Keys& keys, bool dry)
{
    if (dry || Session.iBoardType != 22 || frmWizard.iCurrentStep == STEP_INTRO) return;
    keys = {On, On, Off, Off};
}

/// From the reset to the end of the transfer the antenna depends on being left alone.
void HoldDuringFlash(Keys& keys, bool dry)
{
    if (dry) return;
    switch (Session.iCommMode) {
    case STATE_WAIT_RESET:
    case STATE_WAIT_ERASE:
    case STATE_SEND_BLOCKS:
    case STATE_SEND_LINES:
    case STATE_RF_BOOT_BLOCKS:
    case STATE_BOOT_UPGRADE: keys.cancel = Off; break;
    default: keys.cancel = On;
    }
}

/// A board whose version the antenna tells needs that version, unless the antenna was picked by hand.
void NeedVersion(Keys& keys, bool dry)
{
    if (dry || Session.bSkipParams) return;
    const int type = Session.iBoardType;
    const bool isRF = type == 1 || type == 20 || type == 21;
    if ((type == 0 && Session.sMainVersion.empty()) || (isRF && Session.sRFVersion.empty())) keys.next = Off;
}

void FinishNeedsParams(Keys& keys, bool dry)
{
    if (!dry && Session.bSkipParams) keys.finish = Off;
}

void NoWayBackFromIntro(Keys& keys, bool dry)
{
    if (dry && frmWizard.iCurrentStep == STEP_INTRO) keys.back = Keep;
}

// clang-format off
constexpr NavRow rows[] = {
//   code              cancel back  next  finish   dry: cancel back next finish
    {STEP_DIAGNOSTICS, {Keep, Off,  On,   Off}, {On, Off,  On,  Off}, [] { frmWizard.cmdNav[2].Caption = "&Flash Mode >"; }, nullptr},
    {STEP_INTRO,       {Keep, Off,  On,   Off}, {On, Off,  On,  Off}, [] { frmWizard.cmdNav[2].Caption = "&Next >"; },       nullptr},
    {STEP_1,           {Keep, On,   On,   Off}, {On, On,   On,  Off}, HideVersionButtons, nullptr},
    {STEP_2,           {Keep, On,   On,   Off}, {On, On,   On,  Off}, HideVersionButtons, NeedBoard},
    {STEP_3,           {On,   On,   Off,  Off}, {On, On,   On,  Off}, nullptr,            nullptr},
    {STEP_4,           {Keep, On,   On,   Off}, {On, On,   On,  Off}, HideVersionButtons, nullptr},
    {STEP_5,           {Keep, Off,  Off,  Off}, {On, On,   On,  Off}, RaisePriority,      HoldDuringFlash},
    {STEP_6,           {On,   Off,  Off,  Off}, {On, On,   On,  Off}, nullptr,            nullptr},
    {STEP_FINISHED,    {Off,  Off,  Off,  On},  {On, On,   Off, On},  nullptr,            FinishNeedsParams},
    {10,               {On,   Keep, Keep, Off}, {On, On,   On,  Off}, nullptr,            nullptr},
    {11,               {Keep, On,   On,   Off}, {On, On,   On,  Off}, UsePickedAntenna,   NeedVersion},
    {12,               {On,   Off,  On,   Off}, {On, On,   On,  Off}, RestoreAfterFlash,  nullptr},
    {13,               {Keep, Off,  On,   Off}, {On, On,   On,  Off}, nullptr,            nullptr},
    {14,               {On,   Off,  Off,  Off}, {On, On,   On,  Off}, nullptr,            NoWayBackFromIntro},
    {15,               {On,   On,   Off,  Off}, {On, On,   On,  Off}, nullptr,            nullptr},
};
// clang-format on

void Apply(int index, Nav state)
{
    if (state != Keep) frmWizard.cmdNav[index].Enabled = state == On;
}

}  // namespace

void SetNavCmds(int code)
{
    frmWizard.cmdNav[3].Enabled = false;
    for (const NavRow& row : rows) {
        if (row.code != code) continue;
        if (row.work) row.work();
        const bool dry = IsSettingTrue(SETTING_DRY_RUN);
        Keys keys = dry ? row.dry : row.keys;
        if (row.rule) row.rule(keys, dry);
        const Nav states[] = {keys.cancel, keys.back, keys.next, keys.finish};
        for (int index = 0; index < static_cast<int>(std::size(states)); ++index) Apply(index, states[index]);
        if (code <= STEP_FINISHED) frmWizard.iCurrentStep = code;
        return;
    }
}
