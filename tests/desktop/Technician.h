#pragma once
// A technician at the Diagnostics, and the antenna that writes down what it hears.

#include <vector>

#include "tests/desktop/RealWindow.h"

class Technician : public RealWindow {
protected:
    /// The program and a main board that runs; the Diagnostics are in view.
    void OpenDiagnostics()
    {
        StartAntenna(0);
        StartWizard();
        AwaitPortReady();
        wizard->PressKey("Ctrl+Alt+D");
        wizard->WaitUntil("STEP_DIAGNOSTICS", [this] { return wizard->See("fraStep_0").visible; });
        antenna->Heard();
        heard_.clear();
    }

    void OpenTab(const std::string& caption)
    {
        wizard->Choose("SSTab1", caption);
        wizard->WaitForText("SSTab1", caption);
    }

    void Fill(const std::string& name, const std::string& words)
    {
        wizard->Focus(name);
        wizard->PressKey("Ctrl+A");
        wizard->PressKey("Delete");
        wizard->Type(words);
        wizard->WaitUntil(name + " holds \"" + words + "\"", [&] { return wizard->See(name).text == words; });
    }

    /// The antenna hears exactly these lines, each with a CR behind it, and what comes later isn't theirs.
    void ExpectHeard(const std::vector<std::string>& lines, const std::string& why)
    {
        std::string expected;
        for (const std::string& line : lines) expected += line + "\\r";
        try {
            wizard->WaitUntil("the antenna hears it", [&] {
                heard_ += antenna->Heard();
                return heard_.size() >= expected.size();
            });
        } catch (const std::runtime_error&) {  // what it heard instead is told below
        }
        EXPECT_EQ(heard_.substr(0, expected.size()), expected) << why;
        heard_.erase(0, expected.size());
    }

    void ClickAndHear(const std::string& button, const std::vector<std::string>& lines, const std::string& why = {})
    {
        wizard->Click(button);
        ExpectHeard(lines, button + " " + why);
    }

    /// Nothing more than was expected has left the program: the next thing heard is a question of the test's own.
    void ExpectSilence()
    {
        OpenTab("Antenna Info");
        ClickAndHear("cmdGetSigStrength", {"SIGLEVEL"}, "and nothing ahead of it");
        EXPECT_EQ(heard_, "");
    }

private:
    std::string heard_;
};
