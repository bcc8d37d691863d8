#pragma once
// Whoever works the forms where there is no window: presses Next, chooses, waits, switches the antenna's power. What
// follows from it is the core's.

#include <cstdint>
#include <functional>
#include <string>
#include <tuple>

#include "console/Boards.h"
#include "console/ConsoleComputer.h"
#include "console/PowerSupply.h"
#include "flash/PowerSwitch.h"

class Operator {
public:
    Operator(const Options& options, ConsoleComputer& console, Ports& ports, Voice& voice);

    /// Ahead of the forms: the port of the command line, or the one that the user chooses, goes into the settings.
    void Prepare();

    /// The whole session, from the main loop's first wait on. It returns when the program is to end.
    void Work();

    /// After each wait of the main loop, whoever waits: what becomes of the link is noted, and the antenna's power is
    /// switched where that is asked for.
    void Watch();

    /// The exit code for a session that ended here.
    int CodeOfStage() const;
    /// From here on the antenna depends on the flash being brought to its end.
    bool HasErased() const { return erased_; }

private:
    // The road, one procedure a step.
    void AwaitPort();
    void GoToVersions();
    void AwaitVersions();
    void ChooseFile();
    void Flash();
    void Restore();
    void Finish();

    void ChoosePort();
    void AwaitFirstWord();
    void ChooseConnection();
    void PickAntenna();
    void TakeFile(const std::string& path);
    void ConfirmFlash();
    void CheckAntenna();

    static bool IsOn(const Control& button) { return button.Visible && button.Enabled; }
    void Press(Control& button);
    void Next();
    /// Rounds of the main loop until it holds.
    void Await(const std::function<bool()>& holds);
    void ServePowerSwitch();
    void EndIdleWait();
    void SwitchPower();
    void TellSupply();
    /// The session is over; nothing more is to be pressed.
    struct Over {};
    [[noreturn]] void Leave(int exitCode, const std::string& why);

    enum class Stage { Port, Versions, File, Flash, Restored };

    const Options& options_;
    ConsoleComputer& console_;
    Ports& ports_;
    Voice& voice_;
    PowerSupply supply_;
    bool supplyRan_ = false;
    Stage stage_ = Stage::Port;
    int lastMode_ = 0;  // of the link, idle aside
    bool erased_ = false;
    PowerSwitch switch_ = PowerSwitch::LeaveAlone;
    double switchSince_ = 0;  // seconds: since when it is wanted, or was last switched
    int cycles_ = 0;
    std::tuple<std::int16_t, std::int32_t, std::int16_t, std::int16_t, bool> moved_;  // how far it has come
    double movedAt_ = 0;  // seconds: since when it stands still
};
