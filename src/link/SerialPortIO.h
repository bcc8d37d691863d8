#pragma once
// The antenna link: the port, what is sent, and the input stage of everything that the antenna says.

#include <string>

// --- the port ----------------------------------------------------------------------------------------------------

/// Closes the port and opens it at the present settings. A port that can't be opened is told to the user and stays
/// closed; one that isn't there is passed over in silence.
void InitAndOpenComm();

void CloseComm();

/// Opens the port once more, at the line's speed; what the driver still held is discarded. False when it can't be had.
bool OpenCommAgain();

/// Shows that the port is open and that no data has come yet.
void ShowWaitingOnPort();

/// Called in the main round while no data has come: the first data makes the port ready.
void CheckPortReady();

/// Changes the link's speed: "9600,N,8,1". What was sent leaves at the old one; the port stays open, so that nothing of
/// what comes is lost. Remembered for the next open when the port is closed.
void SetLinkSettings(const std::string& settings);

/// A short wait for the processor while a flash runs, and back.
void RaisePriority();
void RestoreAfterFlash();

/// Tells why the port of the settings can't be used: message 4 in use, 21 none there, 27 another reason. Cancel ends
/// the program, OK leaves the port closed for now.
void TellPortProblem(int code, const std::string& origin);

// --- what is sent ------------------------------------------------------------------------------------------------

/// Sends a flash line or block as it stands, in pieces of 8 bytes with TransmitDelay ms ahead of each; what the antenna
/// says meanwhile is dropped.
void SendLine(const std::string& text);

/// Sends a command with CR behind it and shows it on the terminal behind "==>".
void SendCommandLine(const std::string& command);
/// Likewise, for a command that has another line end.
void SendCommand(const std::string& command, const std::string& lineEnd);

// --- what is received --------------------------------------------------------------------------------------------

/// Takes what has arrived and hands it to the mode of the link. Never raises.
void CommHandler();
