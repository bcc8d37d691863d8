#pragma once
// The simulated antenna on a pseudo-terminal, with a stop-watch at its end of the line.

#include <atomic>
#include <cstddef>
#include <string>
#include <thread>
#include <vector>

#include "simulator/Antenna.h"
#include "simulator/Wire.h"

class BenchAntenna {
public:
    /// A unit of the simulated antenna, here at `baud` (9600, 38400 or 115200) from its start. It is switched on at
    /// once. Raises std::runtime_error when there is no pseudo-terminal.
    BenchAntenna(int board, const char* name, int baud);
    ~BenchAntenna();
    BenchAntenna(const BenchAntenna&) = delete;
    BenchAntenna& operator=(const BenchAntenna&) = delete;

    /// The program's end, "/dev/pts/3".
    const std::string& Path() const { return path_; }

    /// Waits until its software has started; false when it doesn't within half a minute.
    bool AwaitSoftware() const;

    /// From here on it signs on every two seconds until a program command comes: nobody is at its power switch.
    void SignOnAgainAndAgain() { signsOn_ = true; }

    enum class Pace { OfTheLine, OfTheReader };
    /// From here on it answers the first LF, which no command holds, with a flood of so many bytes, see sim::FloodText:
    /// in the pieces that an adapter on USB gathers in a millisecond, or as fast as the program reads.
    void FloodOnLineFeed(std::size_t bytes, Pace pace);

    struct Transfer {
        int lines = 0;  // taken and acknowledged; blocks and records likewise
        int refused = 0;
        double seconds = 0;       // from the first byte of the first line to the last "$"
        double idealSeconds = 0;  // the same bytes and replies without a gap
        /// Of lines: from the "$" to the first byte of the next line, in ms, each of them.
        std::vector<double> turnArounds;
    };
    /// Ends the antenna and tells what it saw.
    Transfer Finish();

private:
    void OpenPort(int baud);
    void Run();
    void Take(double now);
    void Give();
    bool IsTaking() const;
    void SignOnIfWanted();
    void FloodIfWanted();
    void GiveFlood();
    int BaudOfProgram() const;

    sim::Unit unit_;
    sim::Antenna antenna_;
    sim::Wire wire_;
    std::string path_;
    int master_ = -1;
    int held_ = -1;  // the program's end, kept open so that its settings outlast the program
    Transfer seen_;
    double firstByte_ = -1;   // of the first line, -1 until it has come
    double dollarSaid_ = -1;  // -1 while no "$" waits for a line behind it
    std::size_t bytes_ = 0;
    double nextSignOn_ = 0;
    std::atomic<std::size_t> floodBytes_ = 0;  // 0: none is wanted
    Pace pace_ = Pace::OfTheLine;
    bool floods_ = false;
    std::string unread_;  // of a flood that goes as fast as it is read
    std::atomic<bool> running_ = false, ends_ = false, signsOn_ = false;
    std::thread thread_;
};
