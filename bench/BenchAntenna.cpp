#include "bench/BenchAntenna.h"

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <stdexcept>

#include "simulator/Flood.h"

namespace {

constexpr int bitsPerByte = 10;
constexpr std::chrono::milliseconds gatherTime(1);

double Now() { return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count(); }

sim::Unit UnitAt(int board, const char* name, int baud)
{
    sim::Unit unit = *sim::FindUnit(board, name);
    unit.baud = baud;
    unit.eraseSeconds = 1;
    return unit;
}

}  // namespace

BenchAntenna::BenchAntenna(int board, const char* name, int baud)
    : unit_(UnitAt(board, name, baud)), antenna_(unit_), wire_(antenna_, false)
{
    OpenPort(baud);
    thread_ = std::thread([this] { Run(); });
}

BenchAntenna::~BenchAntenna()
{
    Finish();
    close(held_);
    close(master_);
}

void BenchAntenna::OpenPort(int baud)
{
    master_ = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0) throw std::runtime_error("no pseudo-terminal");
    path_ = ptsname(master_);
    held_ = open(path_.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    termios line{};
    if (held_ < 0 || tcgetattr(held_, &line) != 0) throw std::runtime_error(path_ + " can't be opened");
    cfmakeraw(&line);
    cfsetspeed(&line, baud == 115200 ? B115200 : baud == 38400 ? B38400 : B9600);
    tcsetattr(held_, TCSANOW, &line);
}

bool BenchAntenna::AwaitSoftware() const
{
    for (int tenths = 0; tenths < 300 && !running_; ++tenths)
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    return running_;
}

int BenchAntenna::BaudOfProgram() const
{
    termios line{};
    if (tcgetattr(held_, &line) != 0) return 9600;
    const speed_t speed = cfgetospeed(&line);
    return speed == B115200 ? 115200 : speed == B38400 ? 38400 : 9600;
}

/// What the program wrote has arrived at the antenna's end.
void BenchAntenna::Take(double now)
{
    std::array<char, 4096> bytes{};
    const ssize_t count = read(master_, bytes.data(), bytes.size());
    if (count <= 0) return;
    wire_.Write({bytes.data(), static_cast<std::size_t>(count)}, now);
    if (dollarSaid_ < 0 && firstByte_ < 0) return;
    // Behind the "$" of the erase comes the first line; what the program does ahead of that one counts for nothing.
    if (firstByte_ < 0)
        firstByte_ = now;
    else if (dollarSaid_ >= 0)
        seen_.turnArounds.push_back((now - dollarSaid_) * 1000);
    dollarSaid_ = -1;
    bytes_ += static_cast<std::size_t>(count);
}

bool BenchAntenna::IsTaking() const
{
    const sim::State state = antenna_.Doing();
    return state == sim::State::TakingLines || state == sim::State::TakingBlocks || state == sim::State::TakingRecords;
}

void BenchAntenna::Give()
{
    const std::string said = wire_.Read(Now());
    if (said.empty()) return;
    const bool lines = antenna_.Doing() == sim::State::TakingLines;
    const bool acknowledges = IsTaking() && (!lines || said.find('$') != std::string::npos);
    const double now = Now();
    [[maybe_unused]] const ssize_t count = write(master_, said.data(), said.size());
    if (!acknowledges) return;
    dollarSaid_ = now;
    if (firstByte_ < 0) return;
    bytes_ += said.size();
    seen_.seconds = now - firstByte_;
    seen_.idealSeconds = static_cast<double>(bytes_) * bitsPerByte / antenna_.Baud();
}

void BenchAntenna::Run()
{
    // This end keeps the time, so it must not be late itself. Where this isn't permitted, it goes without.
    prctl(PR_SET_TIMERSLACK, 1, 0, 0, 0);
    setpriority(PRIO_PROCESS, 0, -15);
    antenna_.SetPower(true, Now());
    while (!ends_) {
        const double wait = std::clamp(wire_.NextEvent() - Now(), 0.0, 0.1);
        const timespec timeout{0, static_cast<long>(std::floor(wait * 1e9))};
        pollfd watched{master_, static_cast<short>(unread_.empty() ? POLLIN : POLLIN | POLLOUT), 0};
        if (floods_) std::this_thread::sleep_for(gatherTime);
        ppoll(&watched, 1, &timeout, nullptr);
        // What is there when a change of speed shows was sent ahead of it.
        if ((watched.revents & POLLIN) != 0) Take(Now());
        wire_.SetBaud(BaudOfProgram());
        Give();
        running_ = antenna_.Doing() == sim::State::Running;
        SignOnIfWanted();
        FloodIfWanted();
    }
}

void BenchAntenna::SignOnIfWanted()
{
    const bool waits = running_ || antenna_.Doing() == sim::State::AwaitingCommand;
    if (!signsOn_ || !waits || seen_.seconds > 0 || Now() < nextSignOn_) return;
    nextSignOn_ = Now() + 2;
    wire_.Advance(Now());
    antenna_.Reset(Now());
}

void BenchAntenna::FloodOnLineFeed(std::size_t bytes, Pace pace)
{
    pace_ = pace;
    floodBytes_ = bytes;
}

void BenchAntenna::FloodIfWanted()
{
    GiveFlood();
    if (floodBytes_ == 0) return;
    if (antenna_.TakeHeard().find('\n') == std::string::npos) return;
    const std::size_t bytes = floodBytes_.exchange(0);
    if (pace_ == Pace::OfTheReader) {
        unread_ = sim::FloodText(bytes);
        return;
    }
    floods_ = true;
    antenna_.Flood(bytes, Now());
}

void BenchAntenna::GiveFlood()
{
    if (unread_.empty()) return;
    const ssize_t count = write(master_, unread_.data(), unread_.size());
    if (count > 0) unread_.erase(0, static_cast<std::size_t>(count));
}

BenchAntenna::Transfer BenchAntenna::Finish()
{
    ends_ = true;
    if (thread_.joinable()) thread_.join();
    seen_.lines = antenna_.GoodLines();
    seen_.refused = antenna_.RefusedLines();
    return seen_;
}
