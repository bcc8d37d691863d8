#pragma once
// The antenna's side of the line. It knows no real time: whoever holds it says what time it is, in seconds.

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/Dish.h"
#include "simulator/Faults.h"
#include "simulator/Memory.h"
#include "simulator/Parameters.h"
#include "simulator/Units.h"

namespace sim {

/// How long the loader waits for a program command before it starts the software, behind the power switch and behind a
/// command that asked for the loader. Seconds.
inline constexpr double powerPatience = 3.0;
inline constexpr double resetPatience = 30.0;

/// What the antenna is doing.
enum class State {
    Off,
    Resetting,        // the boot loader comes up
    AwaitingCommand,  // it has signed on and waits for the program command
    AwaitingSpeed,    // it has asked at which speed to go on
    TakingUpgrade,    // blocks of its own successor
    TakingBootArea,   // blocks for the boot area
    Erasing,
    TakingLines,
    TakingBlocks,
    TakingRecords,
    StartingUp,  // the software comes up
    Running,     // the software takes commands
};

/// An antenna, or a companion board: switched off at first, with software and the parameters of an installation.
///
/// It starts through its boot loader, which signs on and, when no program command comes, starts the software after
/// three seconds. A program command erases software and parameters; then every record is tested in full and stored.
/// The end record never comes over the line, so the loader takes the new software for complete when its last record was
/// good and the line was quiet for 0.2 s before the power went; else only the boot loader runs from then on.
///
/// A board that takes blocks expects them right behind its program command: first the boot area, then, when it has told
/// the end of the erase with "$", the rest. A block has neither address nor end, so each is laid behind the one before,
/// and a byte that is lost leaves the board waiting, for good, for the 64th. The software is complete with the last
/// block.
///
/// A board without a boot area has no room for it where the first block wants to go. It answers that block with a wrong
/// echo, makes room and starts afresh with the same sign-on; from then on it takes the boot area as the others do. So
/// such a board costs the program one more sign-on, in which the boot area starts from its beginning, and no second
/// wrong echo: board 6 would not be given a third try.
///
/// The old boot loader of board 1 takes "PGM_908OK" and 488 blocks, with a "$" behind the command and behind each
/// block. They overwrite the software. With the last of them the new boot loader is in place, and runs from the next
/// start on; broken off earlier, the old one starts again. The new one has a sign-on and a command of its own.
///
/// Board 21 has three parts, each with a program command: RF board, FPGA, acquisition processor. It asks for the speed
/// before it erases and goes back to its own at its next start. A part that broke off leaves only the boot loader. The
/// header of a part's file, "F61340B", gives the part its revision.
class Antenna {
public:
    /// `pace` is the part of their usual time that start-up, erase and the wait for a program command take.
    explicit Antenna(const Unit& unit, double pace = 1);
    Antenna(const Antenna&) = delete;
    Antenna& operator=(const Antenna&) = delete;

    /// Told what happens, in words.
    std::function<void(const std::string&)> report = [](const std::string&) {};
    /// Where its bytes go; set by the wire.
    std::function<void(std::string_view, double)> transmit = [](std::string_view, double) {};
    /// Its power is gone: what it had begun to say ends here; set by the wire.
    std::function<void(double)> cut = [](double) {};

    /// The power switch. Time may only grow from call to call; a Wire's Advance has to be called first.
    void SetPower(bool on, double now);

    /// It starts again as by its power switch; nothing when it is off.
    void Reset(double now);

    /// A byte has come in.
    void Receive(char byte, double now);

    /// When its next timer is due; infinity when there is none.
    double NextTimer() const;
    /// Runs what is due up to now.
    void Advance(double now);

    /// See Faults::Help.
    bool SetFault(const std::string& words, std::string& why);
    /// Board 17: with the update mode off it answers "#" to its program command.
    void SetUpdateMode(bool on);
    /// It says a line that nobody asked for.
    void Print(const std::string& line, double now);
    /// It prints so many bytes of numbered lines, see FloodText.
    void Flood(std::size_t bytes, double now);

    /// What has come in since the last call, whatever became of it; without what came behind the first 64 KB.
    std::string TakeHeard();

    const Unit& Kind() const { return unit_; }
    State Doing() const { return state_; }
    bool IsPowered() const { return state_ != State::Off; }
    /// True when nothing that it needs to run is missing.
    bool HasSoftware() const;
    /// At which speed it talks now.
    int Baud() const { return baud_; }
    std::string StateWords() const;
    const Dish& Looks() const { return dish_; }
    const Parameters& Held() const { return parameters_; }
    const Memory& Flash() const { return parts_[0].memory; }
    /// Board 21: 1 the RF board (the same as Flash), 2 its FPGA, 3 its acquisition processor.
    const Memory& Stage(int stage) const { return parts_[static_cast<std::size_t>(stage - 1)].memory; }
    /// Board 1: what came in the upgrade of its boot loader.
    const Memory& BootImage() const { return bootImage_; }
    /// True when the boot loader of board 1 is the new one.
    bool HasNewLoader() const { return !oldLoader_; }
    const Faults& SetFaults() const { return faults_; }
    /// Those that the wire carries out.
    Disturbances& OnTheLine() { return faults_.Any(); }

    // What was seen since the last program command, for tests. Lines are records on board 21, and blocks of the leg
    // under way on those that take them.
    int GoodLines() const { return goodLines_; }
    int RefusedLines() const { return refusedLines_; }
    /// Bytes that no board of this kind should have been sent, since the power came.
    int StrayBytes() const { return strayBytes_; }

private:
    /// What is programmed by itself, and whether it was stored to its end.
    struct Part {
        Memory memory;
        bool inPlace = true;
        std::string revision;  // empty: it tells none
    };

    /// Blocks that follow each other.
    struct Leg {
        Memory* memory = nullptr;
        std::uint32_t position = 0, end = 0;
        const char* prefix = "";  // of the names of its faults
        bool echoes = true;       // else each is answered with "$"
    };

    // Antenna.cpp
    void At(double when, std::function<void(double)> action);
    void Say(std::string_view text, double now);
    void Restart(double now, double patience);
    void StartSoftware(double now);
    void StartedUp(double now);
    bool ResetsOn(const std::string& word) const;

    // Antenna_Commands.cpp
    void TakeCommand(const std::string& command, double now);
    std::string AnswerTo(const std::string& command);
    std::string AnswerOfDish(const std::string& command);
    double Answer(const std::string& text, double when);
    void SayPieces(const std::string& text, std::size_t pieces, double gap, double when);

    // Antenna_Loader.cpp
    void SignOn(double now, double patience);
    bool Renewed() const;
    void LoaderReceives(char byte, double now);
    void AwaitCommand(char byte, double now);
    void TakeProgramCommand(double now);
    void Wipe();
    void Erase(double now);
    void EndErase(double now);
    double Acknowledge(const std::string& reply, double now);
    void Work(double now, std::function<void(double)> work);
    void Stray(char byte, const char* when);
    bool LosesPower(const std::string& fault, int unit, double now);

    // Antenna_Lines.cpp
    void TakeLineByte(char byte, double now);
    void TakeLine(const std::string& line, double now);
    bool Store(const std::string& line, std::string& why);

    // Antenna_Blocks.cpp
    void StartLeg(State state, const Leg& leg);
    void TakeBlockByte(char byte, double now);
    void TakeBlock(const std::vector<std::uint8_t>& block, double now);
    void MakeRoom(double answered);
    void EndLeg(double answered);

    // Antenna_Records.cpp
    bool TakeWholeLine(char byte, std::string& line);
    void AwaitStageCommand(char byte, double now);
    void AwaitSpeed(char byte, double now);
    void TakeRecordByte(char byte, double now);
    void TakeRecord(const std::string& line, double now);
    bool StoreRecord(const std::string& line, std::string& why);

    Unit unit_;
    const double pace_;
    Parameters parameters_;
    Dish dish_;
    std::array<Part, 3> parts_;
    std::size_t part_ = 0;  // the one that is programmed
    Memory bootImage_;
    Leg leg_;
    Faults faults_;
    State state_ = State::Off;
    std::multimap<double, std::function<void(double)>> timers_;
    std::string heard_;
    std::string input_;  // bytes of the command, line or block that is coming in
    int baud_;
    bool hasBootArea_;
    bool oldLoader_;
    bool updateMode_ = true;
    bool awaitsReturn_ = false;  // the program command is in, its CR isn't
    bool ready_ = false;         // lines are taken
    bool lastLineGood_ = false;  // and answered
    double lastByte_ = 0;        // when the last byte came in
    double busyUntil_ = 0;       // with what has come in
    double lastAnswer_ = 0;      // when the last answer goes out: no later one overtakes it
    std::uint32_t upper_ = 0;    // base address of data records
    int goodLines_ = 0, refusedLines_ = 0, strayBytes_ = 0;
};

}  // namespace sim
