#pragma once
// What is measured. Each of these prints its lines into the report.

#include <QString>

#include "bench/Report.h"

/// The transfer of a file at a speed: share of the wire's time, and how fast the program turns round.
void MeasureTransfer(Report& report, int baud, int kilobytes);

/// The same share for blocks of 64 bytes at 9600, and for the S-records of an RF7 board.
void MeasureBlocks(Report& report);
void MeasureRecords(Report& report, int baud, int kilobytes);

/// The program waits for its user.
void MeasureIdle(Report& report);

/// The antenna prints for 20 s at 115200 baud, and 4 MB as fast as it is read.
void MeasureTerminalAtLineSpeed(Report& report);
void MeasureTerminalAtFullSpeed(Report& report);

/// From the start of the process to a window that is painted.
void MeasureStart(Report& report);

/// The test of a flash file beside srec_info.
void MeasureFileTest(Report& report);

/// The most memory that any of the wizards above has taken.
void MeasureMemory(Report& report);
