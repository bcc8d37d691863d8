// The navigation buttons: which of the four may be pressed now.

#include <iterator>

#include "forms/frmWizard.h"
#include "knowledge/BoardTable.h"
#include "link/Mode.h"
#include "link/PortAway.h"
#include "persistence/INIUtilities.h"
#include "session/Session.h"
#include "session/Wizard.h"

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
    void (*others)();                    // the step's other buttons; null: none
    void (*rule)(Keys& keys, bool dry);  // what the row leaves to the moment; null: nothing
};

void HideVersionButtons()
{
    for (Control* button : {&frmWizard.cmdRetryGetVersions, &frmWizard.cmdPickAntenna}) {
        button->Enabled = false;
        button->Visible = false;
    }
}

/// With no board chosen there is nothing to go on to. The form's load comes by here ahead of its first step.
void NeedBoard(Keys& keys, bool dry)
{
    if (dry || Session.choice.iBoardType != NoBoard || frmWizard.iCurrentStep == STEP_INTRO) return;
    keys = {On, On, Off, Off};
}

/// From the erase to the end of the transfer the antenna depends on being left alone; ahead of it another file, or
/// another board, can still be chosen.
void HoldDuringFlash(Keys& keys, bool dry)
{
    if (dry) return;
    keys.cancel = PhaseNow() == Phase::Erasing || PhaseNow() == Phase::Writing ? Off : On;
    if (!Session.flash.bErased) keys.back = On;
}

/// A board whose version the antenna tells needs that version, unless the antenna was picked by hand.
void NeedVersion(Keys& keys, bool dry)
{
    if (dry || Session.choice.pickedRow) return;
    const int type = Session.choice.iBoardType;
    if (TellsMainVersion(type) && Session.reading.sMainVersion.empty()) keys.next = Off;
    if (TellsRFVersion(type) && Session.reading.sRFVersion.empty()) keys.next = Off;
}

void FinishNeedsParams(Keys& keys, bool dry)
{
    if (!dry && Session.flash.bSkipParams) keys.finish = Off;
}

void NoWayBackFromIntro(Keys& keys, bool dry)
{
    if (dry && frmWizard.iCurrentStep == STEP_INTRO) keys.back = Keep;
}

// clang-format off
constexpr NavRow rows[] = {
//   code              cancel back  next  finish   dry: cancel back next finish
    {STEP_DIAGNOSTICS, {On,   Off,  On,   Off}, {On, Off,  On,  Off}, [] { frmWizard.cmdNav[2].Caption = "&Flash Mode >"; }, nullptr},
    {STEP_INTRO,       {On,   Off,  On,   Off}, {On, Off,  On,  Off}, [] { frmWizard.cmdNav[2].Caption = "&Next >"; },       nullptr},
    {STEP_1,           {On,   On,   On,   Off}, {On, On,   On,  Off}, HideVersionButtons, nullptr},
    {STEP_2,           {On,   On,   On,   Off}, {On, On,   On,  Off}, HideVersionButtons, NeedBoard},
    {STEP_3,           {On,   On,   Off,  Off}, {On, On,   On,  Off}, nullptr,            nullptr},
    {STEP_4,           {On,   On,   On,   Off}, {On, On,   On,  Off}, HideVersionButtons, nullptr},
    {STEP_5,           {Keep, Off,  Off,  Off}, {On, On,   On,  Off}, nullptr,            HoldDuringFlash},
    {STEP_6,           {On,   Off,  Off,  Off}, {On, On,   On,  Off}, nullptr,            nullptr},
    {STEP_FINISHED,    {Off,  Off,  Off,  On},  {On, On,   Off, On},  nullptr,            FinishNeedsParams},
    {NAV_CHOSEN,       {Keep, On,   On,   Off}, {On, On,   On,  Off}, nullptr,            NeedVersion},
    {NAV_WRITTEN,      {On,   Off,  On,   Off}, {On, On,   On,  Off}, nullptr,            nullptr},
    {NAV_RESTORED,     {Keep, Off,  On,   Off}, {On, On,   On,  Off}, nullptr,            nullptr},
    {NAV_BLOCKED,      {On,   Off,  Off,  Off}, {On, On,   On,  Off}, nullptr,            NoWayBackFromIntro},
    {NAV_CHOICE,       {On,   On,   Off,  Off}, {On, On,   On,  Off}, nullptr,            nullptr},
};
// clang-format on

void Apply(int index, Nav state)
{
    if (state != Keep) frmWizard.cmdNav[index].Enabled = state == On;
}

void ApplyRow(int code)
{
    frmWizard.cmdNav[3].Enabled = false;
    for (const NavRow& row : rows) {
        if (row.code != code) continue;
        if (row.others) row.others();
        const bool dry = IsSettingTrue(SETTING_DRY_RUN);
        Keys keys = dry ? row.dry : row.keys;
        if (row.rule) row.rule(keys, dry);
        const Nav states[] = {keys.cancel, keys.back, keys.next, keys.finish};
        for (int index = 0; index < static_cast<int>(std::size(states)); ++index) Apply(index, states[index]);
        if (code <= STEP_FINISHED) {
            frmWizard.iCurrentStep = code;
            frmWizard.cmdAnotherBoard.Visible = code == STEP_FINISHED;
        }
        return;
    }
}

}  // namespace

void SetNavCmds(int code)
{
    ReleaseNavigation();
    ApplyRow(code);
    HoldNavigation();
}
