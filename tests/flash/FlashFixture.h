#pragma once
// A wizard with a simulated antenna at its port, and small flash files under the names of the demonstration's rows.

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "forms/frmWizard.h"
#include "session/Session.h"
#include "tests/VirtualComputer.h"

/// On STEP_2: the option or the entry that stands for a type of board.
void PressBoard(int board);

/// What an antenna holds now of the parameters that the row in use preserves.
std::vector<std::pair<std::string, std::string>> Preserved(const sim::Antenna& antenna);

class FlashFixture : public testing::Test {
protected:
    /// The program is started, with all flash files and the unit at its port.
    void Start(int boardType, const std::string& unit = {});

    /// Presses Next as soon as it may be pressed.
    [[nodiscard]] bool Next(double seconds = 60);

    /// From "Welcome!" to the step that flashes.
    void GoToFlash();

    /// From the start of the flash until Next is offered, with the antenna's switch used when it is asked for.
    [[nodiscard]] bool FlashRuns(double seconds = 600);

    /// The rest of the road: restart by the switch, parameters, the last step.
    void Finish();

    std::vector<std::pair<std::string, std::string>> Preserved() { return ::Preserved(pc.antenna()); }

    void SetFault(const std::string& words);
    bool StatusSays(const std::string& words) const;

    /// The antenna's memory against what srec_cat makes of the file that was flashed.
    void ExpectMemoryEqualsFile();

    VirtualComputer pc;
    int board = 0;
    std::vector<std::pair<std::string, std::string>> parametersBefore;

private:
    double poweredAt_ = -1e9;
};
