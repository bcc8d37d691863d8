#pragma once
// A wizard that has just been started and shows the Diagnostics.

#include <string>

#include "tests/wizard/WizardFixture.h"

class Diagnostics : public Wizard {
protected:
    void SetUp() override
    {
        Start();
        SetStep(STEP_DIAGNOSTICS);
    }

    /// What went out since the start, the CRs as "|"; and what a click sends.
    std::string Sent() const { return text::Replace(world.sent, "\r", "|"); }
    std::string SentBy(Control& button)
    {
        world.sent.clear();
        Press(button);
        return Sent();
    }
};
