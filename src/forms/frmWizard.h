#pragma once
// The main window: nine stacked steps, the navigation, the terminal at the right, the menus.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "forms/Control.h"

struct WizardForm {
    WizardForm()
    {
        SSTab1.List = {"Antenna Info", "Antenna Control", "Update GPS", "Calibration", "Install Sats", "Advanced"};
        SSTab1.ListIndex = 0;
        cmdAnotherBoard.Visible = false;
        tblParameters.Visible = false;
        optNorth.Group = optSouth.Group = "Latitude";
        for (int of = 0; of < optEast.size(); ++of) optEast[of].Group = optWest[of].Group = optEast[of].Name;
    }

    Form Self{"frmWizard", "QEL Burnline Assistant"};

    // --- menus ---------------------------------------------------------------------------------------------------
    Control mnuFile{Self, "mnuFile", "&File"};
    Control mnuFile_ItemSaveLogFile{Self, "mnuFile_ItemSaveLogFile", "&Save Log File As..."};
    Control mnuFile_ItemExit{Self, "mnuFile_ItemExit", "E&xit"};
    Control mnuCommPort{Self, "mnuCommPort", "&COM Port"};
    ControlArray mnuCommPort_Item{Self, "mnuCommPort_Item", {"(none)"}};
    Control mnuUpdate{Self, "mnuUpdate", "&Update"};
    Control mnuUpdate_ItemCheckForUpdates{Self, "mnuUpdate_ItemCheckForUpdates", "&Check for Updates..."};
    Control mnuUpdate_ItemImportFile{Self, "mnuUpdate_ItemImportFile", "&Import File"};
    Control mnuUpdate_ItemViewUpdatesLog{Self, "mnuUpdate_ItemViewUpdatesLog", "&View Updates Log"};
    Control mnuHelp{Self, "mnuHelp", "&Help"};
    Control mnuHelp_ItemHelp{Self, "mnuHelp_ItemHelp", "&Help"};
    Control mnuHelp_ItemAbout{Self, "mnuHelp_ItemAbout", "&About"};

    // --- navigation and step frames ------------------------------------------------------------------------------
    ControlArray cmdNav{Self, "cmdNav", {"Cancel", "< &Back", "&Next >", "&Finish"}};
    ControlArray fraStep{
        Self,
        "fraStep",
        {"Diagnostics", "Step Intro", "Step 1", "Step 2", "Step 3", "Step 4", "Step 5", "Step 6", "Finished!"}};
    Control cmdAnotherBoard{Self, "cmdAnotherBoard", "Update &another board"};  // beside Finish, on the last step
    /// Headings; element n stands on the frame n + 1, element 8 on the frame 0.
    ControlArray lblStep{Self,
                         "lblStep",
                         {"", "Before you begin...", "Select Software To Update", "Orbimaster Software Found", "",
                          "Updating Software", "Please Restart the Antenna", "Finished!", ""}};

    // --- STEP_DIAGNOSTICS ----------------------------------------------------------------------------------------
    Control lblDiagsFrame{Self, "lblDiagsFrame",
                          "Diagnostics and antenna setup can be performed here. Click Flash Mode button if you want to "
                          "flash update antenna software."};
    Control SSTab1{Self, "SSTab1"};  // List holds the tabs' captions, ListIndex is the one in front

    // Antenna Info
    Control frameAntennaInfo{Self, "frameAntennaInfo", "Get Antenna Information"};
    Control cmdGetVersion{Self, "cmdGetVersion", "Get Software Version"};
    Control cmdGetState{Self, "cmdGetState", "Get Antenna State"};
    Control cmdGetSigStrength{Self, "cmdGetSigStrength", "Get Signal Strength"};
    Control cmdGetSatsInstalled{Self, "cmdGetSatsInstalled", "Get Installed Satellites"};
    Control cmdGetSerNum{Self, "cmdGetSerNum", "Get Serial Number"};
    Control cmdGetGPS{Self, "cmdGetGPS", "Get GPS Setting"};

    // Antenna Control
    Control frameAntennaControl{Self, "frameAntennaControl", "Antenna Control Commands"};
    Control cmdHalt{Self, "cmdHalt", "Halt Antenna"};
    Control cmdZAP{Self, "cmdZAP", "Restart Antenna"};
    Control cmdDebugOn{Self, "cmdDebugOn", "Turn Debug ON"};
    Control frameAntennaPositioning{Self, "frameAntennaPositioning", "Position antenna"};
    Control cmdUp{Self, "cmdUp", "Up"};
    Control cmdDown{Self, "cmdDown", "Down"};
    Control cmdLeft{Self, "cmdLeft", "Left"};
    Control cmdRight{Self, "cmdRight", "Right"};
    Control frameTenthDegree{Self, "frameTenthDegree", "Go to a position"};
    Control lblAZ{Self, "lblAZ", "AZ:"};
    Control txtAZ{Self, "txtAZ"};
    Control lblEl{Self, "lblEl", "EL:"};
    Control txtEl{Self, "txtEl"};
    Control cmdGoTo{Self, "cmdGoTo", "Go to entered AZ,EL"};

    // Update GPS: the position of the antenna is also the one that the pointing angles are calculated for
    Control frameUpdateGPS{Self, "frameUpdateGPS", "Enter Latitude and Longitude, then click the button"};
    Control lblLat{Self, "lblLat", "Latitude:"};
    Control txtLat{Self, "txtLat"};
    Control optNorth{Self, "optNorth", "North"};
    Control optSouth{Self, "optSouth", "South"};
    /// Longitudes, with their labels: element 0 is the antenna's, element 1 the one of a USER satellite.
    ControlArray lblLongitude{Self, "lblLongitude", {"Longitude:", "Longitude:"}};
    ControlArray txtLongitude{Self, "txtLongitude", {"", ""}};
    /// East or west, of element 0: the antenna; 1: the satellite to calculate with; 2: the USER satellite.
    ControlArray optEast{Self, "optEast", {"East", "East", "East"}};
    ControlArray optWest{Self, "optWest", {"West", "West", "West"}};
    Control cmdUpdateGPS{Self, "cmdUpdateGPS", "Update GPS Setting"};
    Control frameCalcAzElSkew{Self, "frameCalcAzElSkew", "Calculate antenna pointing angles"};
    Control lblSatListWithLongitude{Self, "lblSatListWithLongitude", "Satellite:"};
    Control cboSatListWithLongitude{Self, "cboSatListWithLongitude"};
    Control lblSatLongitude{Self, "lblSatLongitude", "or its longitude:"};
    Control txtSatLongitude{Self, "txtSatLongitude"};
    Control cmdCalcAzElSkew{Self, "cmdCalcAzElSkew", "Calculate"};
    ControlArray lblCalculatedAngle{Self, "lblCalculatedAngle", {"Azimuth:", "Elev:", "Skew:"}};

    // Calibration
    Control frameCalibrate{Self, "frameCalibrate", "Calibrate Antenna Gyros"};
    Control cmdCalGyro{Self, "cmdCalGyro", "Calibrate AZ and EL Gyros"};
    Control cmdCalAZ{Self, "cmdCalAZ", "Calibrate AZ gyro only."};
    Control cmdCalEL{Self, "cmdCalEL", "Calibrate EL gyro only."};

    // Install Sats
    Control frameSatInstall1{Self, "frameSatInstall1",
                             "Install Sats - Pick pre-defined or retrieve allowed sats from antenna, then Install"};
    Control lblPreDefinedSats{Self, "lblPreDefinedSats", "Pre-defined Satellites:"};
    Control cboPredefinedSats{Self, "cboPredefinedSats"};
    Control cmdGetSatListA{Self, "cmdGetSatListA", "Get List for 'A'"};
    Control cboSatA{Self, "cboSatA"};
    Control cmdGetSatListB{Self, "cmdGetSatListB", "Get List for 'B'"};
    Control cboSatB{Self, "cboSatB"};
    Control cmdSatInstall{Self, "cmdSatInstall", "Install the Satellite(s)"};

    // Advanced
    Control frameRunScript{Self, "frameRunScript", "Scripted Commands"};
    Control cmdOpenScriptFile{Self, "cmdOpenScriptFile", "Open Command Script File"};
    Control lblScriptFile{Self, "lblScriptFile"};  // which file was opened
    Control cmdRunScript{Self, "cmdRunScript", "Run Command Script"};
    Control cmdDoNext{Self, "cmdDoNext", "Next Command"};
    Control chkPauseBetweenCmds{Self, "chkPauseBetweenCmds", "Pause after each command"};
    Control lblScriptLine{Self, "lblScriptLine"};    // the line that is next, and how far the script is
    Control ScriptProgress{Self, "ScriptProgress"};  // a progress bar, while a script runs
    Control frameSerNum{Self, "frameSerNum", "Set Serial Number"};
    Control txtSerNum{Self, "txtSerNum"};
    Control cmdSetSerNum{Self, "cmdSetSerNum", "Set Serial Number"};
    Control frameClearEE{Self, "frameClearEE", "Clear EE"};
    Control lblCaution{Self, "lblCaution", "Use with Caution!"};
    Control cmdClrEE{Self, "cmdClrEE", "Clear EE"};
    Control frameConfigUserSats{Self, "frameConfigUserSats", "Configure USER Sats"};
    Control frameUSERSat{Self, "frameUSERSat", "USER satellite"};
    ControlArray optUSERSats{Self, "optUSERSats", {"USER1", "USER2"}};
    Control frameUSERLong{Self, "frameUSERLong", "Longitude"};
    Control frameUSERDecodeType{Self, "frameUSERDecodeType", "Decode type"};
    ControlArray optDecodeType{Self, "optDecodeType", {"DSS-A", "DSS-B", "DVB"}};
    Control frameUSERLNBPolarization{Self, "frameUSERLNBPolarization", "LNB polarization"};
    ControlArray optLNBPolarization{Self, "optLNBPolarization", {"Circular", "Linear"}};
    Control cmdConfigUSERSat{Self, "cmdConfigUSERSat", "Configure USER Satellite"};

    // --- STEP_INTRO ----------------------------------------------------------------------------------------------
    Control lblInstructionsSTEP_INTRO_A{Self, "lblInstructionsSTEP_INTRO_A", "Welcome!"};
    Control lblInstructionsSTEP_INTRO_B{
        Self, "lblInstructionsSTEP_INTRO_B",
        "You can use the Wizard to update Orbimaster software or input commands to the Orbimaster system. Ensure the "
        "Orbimaster system is connected and powered on before continuing."};
    Control lblInstructionsSTEP_INTRO_C{Self, "lblInstructionsSTEP_INTRO_C",
                                        "Press Next to begin updating, or use the Command Line at right to enter "
                                        "commands into the antenna."};
    Control lblInstructionsSTEP_INTRO_D{Self, "lblInstructionsSTEP_INTRO_D",
                                        "Use the Update menu above if you wish to check for new software now."};
    Control lblInstructionsSTEP_INTRO_E{
        Self, "lblInstructionsSTEP_INTRO_E",
        "Ensure you have connected your computer's COM (serial) port to the Orbimaster antenna component you wish to "
        "flash. Refer to the specific connection instructions for each Orbimaster antenna in the on-line help. The "
        "antenna communications window may be used for general communications, if desired."};
    Control cmdViewRelNotes{Self, "cmdViewRelNotes", "View Release Notes"};
    Control lblUpdateCheck{Self, "lblUpdateCheck"};
    Control lblCommPortStatus{Self, "lblCommPortStatus", "COM port:"};

    // --- STEP_1 --------------------------------------------------------------------------------------------------
    Control lblInstructionsSTEP_1_A{Self, "lblInstructionsSTEP_1_A",
                                    "If you need to update software on more than one antenna board, be sure to update "
                                    "the main board software first."};
    Control lblInstructionsSTEP_1_B{
        Self, "lblInstructionsSTEP_1_B",
        "Laptop users - Make sure the battery is fully charged.  Then disconnect from AC power."};
    Control lblInstructionsSTEP_1_C{
        Self, "lblInstructionsSTEP_1_C",
        "Use the File menu item Save Log File As... to have Burnline create a log file of all actions and antenna "
        "communications. A default log file will be created if this is not selected."};

    // --- STEP_2 --------------------------------------------------------------------------------------------------
    Control frmSubSTEP_2{Self, "frmSubSTEP_2"};
    ControlArray optBoardToFlash{Self, "optBoardToFlash", {"Main board", "RF board", "", ""}};
    Control cboBoardToFlash{Self, "cboBoardToFlash"};
    Control cboOtherBoard{Self, "cboOtherBoard"};
    Control lblOtherComponents{Self, "lblOtherComponents", "Other Components:"};
    Control lblAntennaSoftware{Self, "lblAntennaSoftware", "Cable Wrap Antennas:"};
    Control Label1{Self, "Label1", "Single Cable Antennas:"};
    Control lblWarning{Self, "lblWarning", "IMPORTANT: DO NOT resize or minimize the Burnline Assistant window."};

    // --- STEP_3 --------------------------------------------------------------------------------------------------
    Control lblBoardVersion{Self, "lblBoardVersion"};
    Control lblPortSelect{
        Self, "lblPortSelect",
        "Please choose the port you are connecting to on the back of your roaming (TOSA) tuner or interface box."};
    Control optSerial{Self, "optSerial", "RS232 Port"};
    Control optUSB{Self, "optUSB", "USB Port"};
    Control cmdRetryGetVersions{Self, "cmdRetryGetVersions", "Retry"};
    Control cmdPickAntenna{Self, "cmdPickAntenna", "Select Antenna Model (Advanced)"};

    // --- STEP_4 --------------------------------------------------------------------------------------------------
    Control lblFlashFile{Self, "lblFlashFile"};
    Control lblOverrideFile{
        Self, "lblOverrideFile",
        "If you want to use a different file to flash the selected board, please press the button below."};
    Control cmdOverrideFile{Self, "cmdOverrideFile", "Select different flash file"};
    Control lblOverrideFileWarning{Self, "lblOverrideFileWarning",
                                   "Warning: Be sure to select a flash file that is compatible with your Orbimaster "
                                   "antenna board. Incompatible software may disable your antenna!"};

    // --- STEP_5: element 0 of a pair is the caption, element 1 the figure ------------------------------------------
    Control lblStatus{Self, "lblStatus", "Current action:"};
    Control txtStatus{Self, "txtStatus"};
    Control lblProgressBar{Self, "lblProgressBar", "Progress:"};
    Control ProgressBar1{Self, "ProgressBar1"};
    ControlArray lblTimeLeft{Self, "lblTimeLeft", {"Time:", ""}};
    ControlArray lblBytesSent{Self, "lblBytesSent", {"Bytes Sent:", ""}};
    ControlArray lblRetries{Self, "lblRetries", {"Line Retries:", ""}};
    ControlArray lblTotalRetries{Self, "lblTotalRetries", {"Total Retries:", ""}};
    /// The banners: element 0 on STEP_5, element 1 on STEP_6.
    ControlArray lblFlashStatus{Self, "lblFlashStatus", {"", ""}};

    // --- STEP_6 --------------------------------------------------------------------------------------------------
    Control lblParamsSent{Self, "lblParamsSent", "Parameter upload:"};
    Control txtParamsSent{Self, "txtParamsSent"};
    Control lblWaiting1{Self, "lblWaiting1", "Waiting for antenna to complete command."};
    Control lblWaiting_SecondsLeft{Self, "lblWaiting_SecondsLeft"};
    Control lblWaiting2{Self, "lblWaiting2", "seconds remaining."};
    Control tblParameters{Self, "tblParameters"};  // on STEP_FINISHED too

    // --- STEP_FINISHED -------------------------------------------------------------------------------------------
    Control lblPickAntennaInfo{Self, "lblPickAntennaInfo"};
    Control lblPickAntennaFileInfo{Self, "lblPickAntennaFileInfo"};
    Control lblLogFileInfo{Self, "lblLogFileInfo"};
    Control chkShowFinishCmd{Self, "chkShowFinishCmd",
                             "Enable Finish button. I am done entering commands in Orbimaster antenna comms window"};

    // --- the terminal --------------------------------------------------------------------------------------------
    Control lblOMAntComms{Self, "lblOMAntComms", "Orbimaster Antenna Comms"};
    Control lblInstructions{Self, "lblInstructions",
                            "Antenna communications are displayed below. If you wish to enter an antenna command, type "
                            "the command into the "
                            "Command Line text field. Then press Enter."};
    Control Text1{Self, "Text1"};
    Control cmdPauseOrResume{Self, "cmdPauseOrResume", "Pause Output"};
    Control lblSendCmd{Self, "lblSendCmd", "Command Line:"};
    Control txtSendCmd{Self, "txtSendCmd"};
    Control imgEnabled{Self, "imgEnabled"};    // the green lamp of the command line
    Control imgDisabled{Self, "imgDisabled"};  // the grey lamp, on the same spot
    Control lblRedoCOMMPort{Self, "lblRedoCOMMPort"};

    // --- timers: the desktop calls Timer1_Timer and Timer2_Timer --------------------------------------------------
    Control Timer1{Self, "Timer1"};  // Value is the interval in ms
    Control Timer2{Self, "Timer2"};

    // --- what the form remembers ---------------------------------------------------------------------------------
    int iCurrentStep = 1;  // the step shown, 0 to 8; written by SetNavCmds alone
    bool bHelpOpened = false;
    bool bOutputPaused = false;
    std::string sPausedOutput;      // what arrived while the output was paused
    bool bBoardChoiceBusy = false;  // a handler changes the board lists itself
    float fFlashSeconds = 0;        // seconds since the start of the transfer

    std::vector<std::string> sSentCommands;  // typed in this run, the newest one last
    std::size_t iShownCommand = 0;           // the one that stands in txtSendCmd; behind the last: none
    std::string sTypedCommand;               // what was being typed when the first one was fetched

    // --- what the Diagnostics remember ---------------------------------------------------------------------------
    std::string sSatInstallLine;                     // the line that cmdSatInstall will send
    std::string sInstallSatA, sInstallSatB;          // the picks from the antenna's lists
    double dSatLongitude = 0;                        // of the satellite picked in the list, degrees, east positive
    std::vector<std::string> sScriptLines;           // the commands and two empty elements behind them
    std::int16_t iScriptLine = 0;                    // the line that is next
    bool bAnglesKnown = false;                       // the three angles were calculated
    double dAzimuth = 0, dElevation = 0, dSkew = 0;  // degrees, as printed
};

inline WizardForm frmWizard;
