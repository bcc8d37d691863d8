#pragma once
// A wizard that has just been started, on COM7 with nobody at its far end.

#include <gtest/gtest.h>

#include "forms/frmSelectFlashFileDialog.h"
#include "forms/frmWizard.h"
#include "persistence/INIUtilities.h"
#include "persistence/Logs.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "tests/VirtualComputer.h"
#include "text/Text.h"
#include "wizard/frmWizard_Events.h"

class Wizard : public testing::Test {
protected:
    void Start() { world.StartProgram(); }

    bool Logged(const std::string& words) const { return text::Holds(world.Log(), words); }

    /// The navigation buttons from Cancel to Finish, "1" for enabled.
    static std::string Keys()
    {
        std::string keys;
        for (Control& key : frmWizard.cmdNav) keys += key.Enabled ? '1' : '0';
        return keys;
    }

    /// The one step that is shown; -1 when there isn't exactly one.
    static int ShownStep()
    {
        int shown = -1;
        for (int step = 0; step < frmWizard.fraStep.size(); ++step) {
            if (!frmWizard.fraStep[step].Visible) continue;
            if (shown != -1) return -1;
            shown = step;
        }
        return shown;
    }

    VirtualComputer world;
};
