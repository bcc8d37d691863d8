#pragma once
// The tasks that need no antenna: lists, and the test of a file.

#include <string>

#include "console/ConsoleComputer.h"
#include "console/Options.h"
#include "console/Voice.h"

/// Each gives the exit code.
int ListPorts(ConsoleComputer& console, Voice& voice);
int ListBoards(Voice& voice);
int ListAntennas(const Options& options, Voice& voice);
int CheckFile(const Options& options, ConsoleComputer& console, Voice& voice);
