#pragma once
// The parameters that antennas hold: which command reads each of them, how the antenna tells it, what its value can be,
// and the command that restores it. Nothing here knows the session.

#include <optional>
#include <string>

/// What decides about the form of a value beside the antenna's words.
struct ParameterFacts {
    int boardType = 0;
    bool wholeDegrees = false;    // the antenna counts its position in whole degrees
    bool translateNames = false;  // the new software has other names for the two satellites
};

/// What a line of the antenna tells of a parameter.
struct ToldParameter {
    std::string words;    // the value, as the antenna writes it
    std::string command;  // that restores it; empty: the new software has no name for it
};

/// True for a command of the lists that reads or restores a parameter of such a board.
bool IsParameter(const std::string& command, int boardType);

/// True when both commands, with values behind them or without, are about the same parameter: "GYROSFAZ" and
/// "GYROSFAZ,CW,0.001".
bool AreOfOneParameter(const std::string& command, const std::string& other);

/// What `line`, without its line end, tells of the parameter of `command`. None when it is about something else, or is
/// damaged: its value is none that the parameter can have.
std::optional<ToldParameter> ToldBy(const std::string& line, const std::string& command, const ParameterFacts& facts);

/// The parameter as a user knows it: "FECHITS1" of "fechits1,0000", else the command in capitals.
std::string NameOf(const std::string& command);

/// True when two commands restore the same value: numbers are compared as numbers.
bool RestoreTheSame(const std::string& command, const std::string& other);

/// True when the antenna's reply to a command that restores a parameter is about that parameter: it tells the value or
/// repeats the command.
bool IsEchoOf(const std::string& line, const std::string& command);
