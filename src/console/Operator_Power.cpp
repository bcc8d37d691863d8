// The antenna's power, switched for whoever waits for it.

#include "console/Operator.h"

void Operator::SwitchPower()
{
    ++cycles_;
    switchSince_ = console_.Seconds();
    supplyRan_ = true;
    voice_.Tell("power", "Switching the antenna's power: " + supply_.Command());
    supply_.Cycle();
}

/// What has become of the command is told once it has ended.
void Operator::TellSupply()
{
    if (!supplyRan_ || supply_.IsSwitching()) return;
    supplyRan_ = false;
    switchSince_ = console_.Seconds();
    const std::string problem = supply_.Problem();
    if (problem.empty()) return;
    voice_.Complain("power", "The command that switches the antenna's power has failed: " + problem + ".");
    if (console_.IsUnattended()) return console_.Leave(CodeOfStage());
    voice_.Tell("power", "Please switch the antenna off, wait ten seconds, and switch it on again by hand.");
}

/// By hand it is the banner that asks. The antenna gets its time to store what came last; one that resets by itself is
/// left alone as long as it may still do so.
void Operator::ServePowerSwitch()
{
    constexpr double settleSeconds = 2, resetSeconds = 15, patienceSeconds = 90;
    constexpr int mostCycles = 3;
    const double now = console_.Seconds();
    TellSupply();
    const PowerSwitch wanted = WantedOfPowerSwitch();
    if (wanted != switch_) {
        switch_ = wanted;
        switchSince_ = now;
        cycles_ = 0;
    }
    if (wanted == PowerSwitch::LeaveAlone || !supply_.IsThere() || supply_.IsSwitching()) return;
    const double due = cycles_ > 0 ? patienceSeconds : wanted == PowerSwitch::Cycle ? settleSeconds : resetSeconds;
    if (now - switchSince_ < due) return;
    if (cycles_ == mostCycles) {
        voice_.Complain("refused", "The antenna has not started after its power was switched three times.");
        return console_.Leave(CodeOfStage());
    }
    SwitchPower();
}
