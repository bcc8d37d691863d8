#include "messages/MessageTable.h"

namespace {

using enum Buttons;
using enum Icon;

constexpr Message messages[] = {
    {1, OK, Answer::OK, Exclamation, "QEL Burnline Assistant - File Error",
     "Configuration File Not Found\n\n"
     "If you have any other programs running, please close them and try again.",
     "++>CONFIG_FILE_OPEN_ERROR: Config file not found", false},
    {2, OK, Answer::OK, None, "About QEL Burnline Assistant",
     "QEL Burnline Assistant - Version: 11-7702 Rev. T\n\n"
     "Version Number: {revision}\n\n"
     "Installed in: {directory}\n\n"
     "Copyright (c) 2026 the Burnline Assistant developers. Free software under the MIT License.",
     nullptr, false},
    {3, OKCancel, Answer::OK, Critical, "QEL Burnline Assistant - COM Error",
     "Invalid COM Port Selected.\n\n"
     "Please click OK button to select another COM port.\n\n"
     "You can cancel the QEL Burnline Assistant by clicking the Cancel button",
     "++>COMM_PORT_INVALID: Invalid COM Port selected", false},
    {4, OKCancel, Answer::OK, Critical, "QEL Burnline Assistant - COM Error",
     "COM Port Already in Use. (COM{port}).\n\n"
     "Please click OK button to select another COM port or close any applications that may be using the serial port "
     "then reselect your COM port.\n\n"
     "You can close out of the QEL Burnline Assistant by clicking the Cancel button",
     "++>COMM_PORT_ALREADY_OPEN: COM Port already in use", false},
    {5, OK, Answer::OK, Exclamation, "QEL Burnline Assistant - File Error",
     "Flash File Not Found.\n\n"
     "Please Check for Updates and try again.\n\n"
     "If you manually selected the file to flash, please make sure you selected a valid file.",
     "++>FLASH_FILE_OPEN_ERROR: Flash file not found", false},
    {6, OKCancel, Answer::OK, Critical, "QEL Burnline Assistant - File Error",
     "Selected board configuration not found, or board not supported.\n\n"
     "Please contact QEL Technical Support for assistance.\n\n"
     "You can cancel the QEL Burnline Assistant by clicking the Cancel button",
     "++>ANTENNA_NOT_IN_CONFIG_FILE: Board configuration not found or not supported", false},
    {11, OK, Answer::OK, None, "QEL Burnline Assistant",
     "Non-data fields length error.  Please contact QEL Technical Support for assistance.\n\n",
     "Non-data fields length error.", false},
    {12, OK, Answer::OK, Information, "QEL Burnline Assistant - Success", "Flash Programming Successful\n", nullptr,
     false},
    {13, OK, Answer::OK, Exclamation, "QEL Burnline Assistant - File Selection",
     "No other Flash files correct for the board and antenna found!\n\n"
     "If you believe this is a mistake, run a Check for Updates and try again.",
     nullptr, false},
    {14, OK, Answer::OK, Information, "QEL Burnline Assistant - Success",
     "Parameter Upload Successful and antenna restarted\n", "++>Post-Flash Successful, Parameters uploaded", false},
    {15, RetryCancel, Answer::Retry, Critical, "QEL Burnline Assistant - Flashing Error",
     "An error occurred during flashing of the Orbimaster antenna!\n\n"
     "You can retry flashing or cancel out of the QEL Burnline Assistant.\n\n"
     "Before retrying, check serial communications cable and antenna power.\n"
     "Click Retry and then powercycle the antenna.\n\n"
     "Click Cancel to exit the Burnline Assistant.\n\n"
     "WARNING: If you Cancel, the Orbimaster antenna will be\n"
     "inoperative until flashed again",
     "++>FLASHING_ERROR_CAN_RETRY", false},
    {16, OK, Answer::OK, Critical, "QEL Burnline Assistant - Flashing Error",
     "An error occurred during flashing of the Orbimaster antenna!\n\n"
     "Click OK to exit the Burnline.\n\n"
     "Before retrying, check serial communications cable and antenna power, close other applications, then powercycle "
     "the antenna.\n\n"
     "Exit the program, launch Burnline and try again.\n\n"
     "WARNING: The antenna may be inoperative until flashed successfully.",
     "++>FLASHING_ERROR_NO_RETRY", false},
    {17, OK, Answer::OK, Critical, "QEL Burnline Assistant - Error", "GYRO Calibration failed!\n",
     "++>CALGYRO_FAIL: GYRO calibration failed", false},
    {18, OK, Answer::OK, Critical, "QEL Burnline Assistant - Control Panel Error",
     "Please ensure that the Control Panel is in update mode before attempting to flash.\n",
     "++>KELP_CONTROL_PANEL: Error: Please ensure that the Control Panel is in update mode before attempting to flash.",
     false},
    {19, OK, Answer::OK, Information, "QEL Burnline Assistant - Update Flash Files",
     "QEL Burnline Assistant has updated its flash file library.\n", "++>Burnline updated its flash file library.",
     false},
    {20, OK, Answer::OK, Critical, "QEL Burnline Assistant - Error",
     "Bad bootloader file!\n\n"
     "Please Check for Updates and try again.\n\n"
     "If you are still unsuccessful, please contact QEL Technical Support.",
     "++>BAD_BOOTLOADER_FILE: ERROR: Bad bootloader file!", false},
    {21, OKCancel, Answer::OK, Critical, "QEL Burnline Assistant - COM Error",
     "Last serial port used not found or already in use! (COM{port}).\n\n"
     "Please close any other applications that may be using the serial port, then restart the QEL Burnline "
     "Assistant.\n\n"
     "If you do not have a serial port on your computer, please install a USB-to-serial adapter before starting the "
     "Burnline.\n\n"
     "You can exit the Burnline by clicking the cancel button.",
     "++>NO_COM_PORTS_AT_STARTUP_ERROR: No serial ports found or all are already open!", false},
    {22, OKCancel, Answer::OK, Critical, "QEL Burnline Assistant - COM Error",
     "COM Port not found (COM{port}).\n\n"
     "The last COM port used was not found.  Please click OK button to select another COM port.\n\n"
     "You can exit the QEL Burnline Assistant by clicking the Cancel button",
     "++>COMM_PORT_IN_INI_FILE_NOT_FOUND: The previously used COM port was not found.", false},
    {23, OKCancel, Answer::Cancel, Critical, "QEL Burnline Assistant - Confirm Cancel",
     "Parameters have not been uploaded yet!\n\n"
     "The Orbimaster antenna may not be fully functional if you cancel now!\n\n"
     "Click OK button if you really want to exit the application, or Cancel to continue.",
     "++>CONFIRM_CANCEL: Premature exit requested.", false},
    {24, OK, Answer::OK, Exclamation, "QEL Burnline Assistant - Check for Updates",
     "Sorry, only Windows 2000 and later supported for automatic update check!\n\n"
     "Please contact QEL Technical Support for assistance updating.",
     nullptr, false},
    {25, OK, Answer::OK, Critical, "QEL Burnline Assistant - Installation Directory Read Only Error",
     "Installation Directory is Read Only\n\n"
     "Please check the permissions of the installation directory. This program requires read/write permissions.\n\n"
     "The program will be terminated.",
     nullptr, true},
    {26, OKCancel, Answer::OK, Critical, "QEL Burnline Assistant",
     "Older Revision\n\n"
     "You are attempting to flash an older revision to the device. Are you sure you want to continue?\n\n"
     "Select OK to continue or Cancel to reselect the file to flash.\n\n"
     "If you continue to get this message, please Check for Updates.",
     "{words}", false},
    {27, OKCancel, Answer::OK, Critical, "QEL Burnline Assistant - COM Error",
     "General error with COM Port. (COM{port}).\n\n"
     "If you are using a USB-serial adapter, please make sure that it is plugged in properly.\n\n"
     "Please click OK button to select another COM port.\n\n"
     "You can cancel the QEL Burnline Assistant by clicking the Cancel button.",
     "++>COMM_PORT_UNKNOWN_ERROR{detail}", false},
    {28, OK, Answer::OK, None, "QEL Burnline Assistant Already Running",
     "The QEL Burnline Assistant is already running.\n\n"
     "If you believe you are getting this message in error, please restart your computer.\n\n"
     "If this does not solve your problem, please contact QEL Technical Support.",
     nullptr, false},
    {29, OK, Answer::OK, None, "", nullptr, "++>FLASHING_ERROR_AUTO_RETRY", false},
    {30, OK, Answer::OK, Critical, "QEL Burnline Assistant",
     "The bootloader has been upgraded, but the antenna has not.  \n\n"
     "Please switch the antenna off, wait ten seconds, and switch it on again: the flash then goes on by itself.  "
     "Leave "
     "the Burnline Assistant running.\n\n"
     "If it is closed all the same: the board is a {detail}.  Please remember this board; it can then be selected by "
     "hand.",
     "{words}", false},
    {41, YesNo, Answer::No, Critical, "QEL Burnline Assistant - Antenna Parameters",
     "The antenna has not told {detail}.\n\n"
     "Nothing is erased yet. If the flash goes on, this parameter is lost; all others are kept.\n\n"
     "Click Yes to go on without {detail}, or No to stop.",
     "++>PARAMETER_NOT_READ: {detail}", false},
    {42, YesNo, Answer::No, Critical, "QEL Burnline Assistant - Antenna Parameters",
     "The antenna does not answer {detail}.\n\n"
     "Nothing is erased yet, and no parameter is lost without this answer.\n\n"
     "Click Yes to go on, or No to stop.",
     "++>COMMAND_NOT_ANSWERED: {detail}", false},
    {43, OK, Answer::OK, Critical, "QEL Burnline Assistant - Antenna Parameters",
     "The software is written and the antenna has restarted, but it is not known to hold all that it held before.\n\n"
     "{detail}",
     "++>PARAMETERS_NOT_BACK", false},
    {44, YesNo, Answer::No, Critical, "QEL Burnline Assistant - Antenna Parameters",
     "The antenna does not answer.\n\n"
     "Nothing is erased yet. If the flash goes on, all its parameters are lost: {detail}.\n\n"
     "Click Yes to go on without them, as for an antenna whose last flash failed, or No to stop.",
     "++>ANTENNA_SILENT: parameters not read: {detail}", false},
    {52, OK, Answer::OK, None, "QEL Burnline Assistant - Runtime 52 Error",
     "Please make sure that you have write access to {directory}.  If you need help, contact QEL Technical Support.\n",
     "Runtime error #52.", true},
    {53, OK, Answer::OK, Exclamation, "QEL Burnline Assistant - File Error",
     "Flash File Not Found.\n\n"
     "Please Check for Updates and try again.\n\n"
     "If you manually selected the file to flash, please make sure you selected a valid file.",
     "++>FLASH_FILE_OPEN_ERROR: Flash file not found", false},
    {75, OK, Answer::OK, None, "QEL Burnline Assistant",
     "There was an error accessing {directory}.  Please check the permissions to ensure that you have read/write "
     "access.\n\n"
     "The program will now exit.\n",
     "We encountered a runtime error #75.", true},
    {512, OK, Answer::OK, None, "QEL Burnline Assistant - COM Port Out of Range", "Please select among COM Ports 1-16",
     "++>COM_PORT_OUT_OF_RANGE", false},
    {8018, OK, Answer::OK, Critical, "QEL Burnline Assistant",
     "The port you're trying to access is closed.\n\n"
     "This usually means that either you have an invalid COM port selected, the USB cable has come unplugged, or you "
     "have turned off the antenna.\n\n"
     "Please check all connections, turn the antenna on, and try again.",
     "{words}", false},
    {8020, YesNo, Answer::Yes, None, "QEL Burnline Assistant - Serial Communications Error",
     "Communications between the PC and USB adapter is faulty.  Please retry this procedure using a different USB "
     "adapter.\n"
     "Would you like to see a list of QEL-tested USB adapters?",
     "++>DRIVER_PROBLEM", false},
    {8021, OK, Answer::OK, Critical, "QEL Burnline Assistant",
     "There is a problem with the USB adapter that you're using.\n\n"
     "Please remove the adapter, plug it back in, and then re-select the COM port on the menu.\n\n"
     "If you need assistance, please contact QEL Technical Support.",
     "{words}", false},
    {30006, OK, Answer::OK, None, "QEL Burnline Assistant",
     "Unable to reach QEL website.  Please try to check for updates again later.", "{words}", false},
    {30012, OK, Answer::OK, None, "QEL Burnline Assistant",
     "We encountered an error during the update.\n\n"
     "Please check the permissions of {directory}\\ to ensure that you have read/write access.\n\n"
     "The program will now exit.  Please restart the Burnline.",
     "{words}\nWOD Updates error - 30012", true},
};

constexpr Message NoPortAtAll = {
    21,
    OKCancel,
    Answer::OK,
    Critical,
    "QEL Burnline Assistant - COM Error",
    "No serial port found!\n\n"
    "Please close any other applications that may be using the serial port, then restart the QEL Burnline "
    "Assistant.\n\n"
    "If you do not have a serial port on your computer, please install a USB-to-serial adapter before restarting the "
    "Burnline.\n\n"
    "You can exit the Burnline by clicking the cancel button.",
    "++>NO_COM_PORTS_AT_STARTUP_ERROR: No serial ports found or all are already open!",
    false};

constexpr Message Unknown = {0,
                             OK,
                             Answer::OK,
                             None,
                             "QEL Burnline Assistant",
                             "An unknown error was encountered, #{code}.  Please contact QEL Technical Support for "
                             "help.\n\n"
                             "The program will now exit.\n",
                             "{words}",
                             true};

}  // namespace

const Message& MessageOf(int code, int port)
{
    if (code == NoPortAtAll.code && port == 0) return NoPortAtAll;
    for (const Message& message : messages)
        if (message.code == code) return message;
    return Unknown;
}
