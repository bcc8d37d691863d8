#pragma once
// The program under test, in a process of its own.

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

/// The program's directory, made for one measurement.
class Home {
public:
    /// With settings for the port at `device`, a TransmitDelay of 1 ms and, if `fast`, UseFastBaud; no port when
    /// `device` is empty.
    explicit Home(const std::string& device = {}, int baud = 9600, bool fast = false);

    QString Path(const QString& name = {}) const { return directory_.filePath(name); }

    /// Makes a .HEX file with `kilobytes` of data that look like a program's, 32 bytes to the record. Returns the
    /// number of its lines, the end record among them.
    int MakeHexFile(const QString& name, int kilobytes) const;

    /// The same as an .S19 file with addresses from `address` on, S0 and S8 records around it.
    int MakeS19File(const QString& name, int kilobytes, std::uint32_t address) const;

private:
    QTemporaryDir directory_;
};

class Desktop;

/// What the wizard in this process is to do, and its end.
int RunWizard(const QString& task, int argc, char** argv);

/// Its part in a flood of so many bytes on the terminal.
void WatchTerminal(Desktop& desktop, std::size_t bytes);

/// Prepares a program of the build directory to run offscreen on that home.
void Prepare(QProcess& process, const Home& home, const QString& program, const QStringList& arguments);

/// Runs this program as a wizard with a task and returns the figures that it printed; empty when it failed or took
/// longer than `seconds`. The tasks:
///     start   ends when the window is painted; "painted" is that moment in ns of the system's steady clock
///     flash   sends BENCH.HEX to a main board
///     blocks  sends BENCH.S19, with BOOT.S19 ahead of it, to an RF6 board
///     records sends BENCH.S19 to an RF7 board
///     check   tests BENCH.HEX ten times over; "check0" to "check9" are the times in us
///     check19 tests BENCH.S19 for an RF7 board likewise
///     images  fills both images of an RF board from BENCH.S19 likewise
///     terminal:N shows N bytes of a flood, see FloodText, in the Diagnostics; "wall" and "cpu" are its times in us,
///             "longest" and "longestcpu" those of the longest time that a click would have had to wait, "paints" the
///             paintings of the terminal, "text" the most characters that the terminal held, "log" the bytes of the
///             flood that stand in the log
/// All but the last give "memory", the peak in KB.
std::map<std::string, double> RunTask(const Home& home, const QString& task, int seconds);

/// The most that "memory" has been, in KB.
double PeakMemory();
