#pragma once
// What the wizard offers to the floors below it; the definitions stand in wizard/ and frame/StartUp.

#include <string>

/// Enters a step, 0 to 8, and does what that step does.
void SetStep(int step);

/// Sets the navigation buttons: 0 to 8 for a step, 10 to 15 in the middle of one.
void SetNavCmds(int code);

/// The one route by which failures and results reach the user. `origin` names the caller; it may be empty.
void ShowMsgBox(int code, const std::string& origin);

/// What is known of the versions: 6 they arrived, 7 asking, 8 antenna picked by hand, 9 no answer.
void UpdateVersionsDisplay(int what);

/// The ordered way out: 1 cancelled by the user, 2 finished, 3 update scheduled.
void CleanUpForShutdown(int reason);

/// The reset before the versions are read; the first query goes out a second later.
void InitAntennaInfoVars();

/// The lists of antenna models that decide which software an RF board needs.
enum class ModelList { RF, RF6, RF6A };

/// Asks for the antenna model. True when it is in the list: sCompatFlashFile is then the file that it needs.
bool AskForModel(ModelList list);

/// Offers the satellite library to a JARL system. The answer is in bUpgradeToGLTV, and sFlashFile goes with it.
void AskForLibraryUpgrade();

void SetExitRequested(bool value);
bool IsExitRequested();

/// The failure in flight, told under the name of the procedure that it ended. Call it in a catch block only.
void ReportFailure(const std::string& name);

/// Runs a procedure's body; a failure in it is reported under the procedure's name and goes no further.
template <class Body>
void Guarded(const std::string& name, Body body)
{
    try {
        body();
    } catch (...) {
        ReportFailure(name);
    }
}
