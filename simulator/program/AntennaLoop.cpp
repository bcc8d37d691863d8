#include "simulator/program/AntennaLoop.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <ctime>
#include <limits>
#include <sstream>
#include <stdexcept>

namespace {

constexpr double never = std::numeric_limits<double>::infinity();
// Seconds.
constexpr double showInterval = 0.1;
constexpr double speedInterval = 0.05;  // between two looks at the speed that the program has set
constexpr double usbStart = 0.8;        // from the power to the port of an antenna on USB

constexpr double quickPace = 0.2;

double Clock()
{
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

bool IsPipe(int descriptor)
{
    struct stat status {};
    return fstat(descriptor, &status) == 0 && (S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode));
}

}  // namespace

AntennaLoop::AntennaLoop(const sim::Unit& unit, const std::string& link, const AntennaWays& ways)
    : antenna_(unit, ways.quick ? quickPace : 1),
      wire_(antenna_, ways.fast),
      console_(antenna_),
      port_(link, unit.baud),
      start_(Clock()),
      ways_(ways),
      portBack_(never)
{
    port_.Make();
    if (pipe2(commands_, O_CLOEXEC | O_NONBLOCK) != 0) throw std::runtime_error("no pipe");
    antenna_.report = [this](const std::string& words) { Say(words); };
    console_.portGone = [this](double seconds) {
        portLost_ = std::isinf(seconds);
        RemovePort(seconds);
    };
}

AntennaLoop::~AntennaLoop()
{
    for (const int end : commands_) {
        if (end >= 0) close(end);
    }
}

double AntennaLoop::Now() const { return Clock() - start_; }

void AntennaLoop::Say(const std::string& words) const { happened(Now(), words); }

void AntennaLoop::Command(const char* line) const
{
    [[maybe_unused]] ssize_t count = write(commands_[1], line, std::strlen(line));
    count = write(commands_[1], "\n", 1);
}

void AntennaLoop::RemovePort(double seconds)
{
    port_.Remove();
    said_.clear();
    portBack_ = Now() + seconds;
    Say("the port is gone");
}

void AntennaLoop::ReturnPort()
{
    portBack_ = never;
    if (ways_.usb && !antenna_.IsPowered()) return;
    port_.Make();
    awaitsUser_ = ways_.usb;
    Say("the port is back: " + port_.Path());
}

/// The port of an antenna on USB goes and comes with its power. Nobody could hear a sign-on before the port is back and
/// open, so the program that opens it first starts the antenna again.
void AntennaLoop::FollowPower()
{
    if (!ways_.usb || portLost_) return;
    const bool powered = antenna_.IsPowered();
    if (port_.IsThere() && !powered) RemovePort(never);
    if (!port_.IsThere() && powered && portBack_ == never) portBack_ = Now() + usbStart;
    if (!awaitsUser_ || !port_.IsThere() || !port_.HasUsers()) return;
    awaitsUser_ = false;
    antenna_.Reset(Now());
}

bool AntennaLoop::Obey(const std::string& line)
{
    std::string answer;
    const double now = Now();
    wire_.Advance(now);
    if (!console_.Run(line, now, answer)) return false;
    std::istringstream lines(answer);
    for (std::string one; std::getline(lines, one);) Say(one);
    return true;
}

/// Carries out the whole lines that have come in.
AntennaLoop::Input AntennaLoop::ReadCommands(int descriptor, std::string& partial)
{
    char bytes[4096];
    const ssize_t count = read(descriptor, bytes, sizeof bytes);
    if (count <= 0) return Input::Ended;
    partial.append(bytes, static_cast<std::size_t>(count));
    for (std::size_t end; (end = partial.find('\n')) != std::string::npos;) {
        const std::string line = partial.substr(0, end);
        partial.erase(0, end + 1);
        if (!Obey(line)) return Input::Quit;
    }
    return Input::More;
}

void AntennaLoop::Exchange(bool input)
{
    // A program that changes its speed behind its last byte may have done so before that byte is read here, for both
    // ends share the settings. So what is there when a new speed shows was sent at the old one.
    const int baud = port_.IsThere() ? port_.Baud() : 0;
    if (input) wire_.Write(port_.Read(), Now());
    wire_.SetBaud(baud);
    said_ += wire_.Read(Now());
    if (said_.empty()) return;
    const std::size_t taken = port_.Write(said_);
    // A queue that is full is a program that doesn't read. A line that takes no time waits for it; a real one loses the
    // bytes.
    said_.erase(0, ways_.fast ? taken : said_.size());
}

AntennaView AntennaLoop::View() const
{
    return {antenna_.IsPowered(),
            port_.IsThere(),
            antenna_.HasSoftware(),
            antenna_.StateWords(),
            antenna_.Stage(1).BytesWritten() + antenna_.Stage(2).BytesWritten() + antenna_.Stage(3).BytesWritten(),
            antenna_.Held().All(),
            antenna_.SetFaults().InForce()};
}

void AntennaLoop::Show()
{
    changed_ = true;
    const double now = Now();
    if (!shown || now < nextShow_) return;
    changed_ = false;
    nextShow_ = now + showInterval;
    AntennaView view = View();
    if (view == last_) return;
    last_ = std::move(view);
    shown(last_);
}

double AntennaLoop::NextTime() const
{
    const double show = shown && changed_ ? nextShow_ : never;
    const double speed = port_.IsThere() && port_.HasUsers() ? Now() + speedInterval : never;
    return std::min({wire_.NextEvent(), portBack_, show, speed});
}

void AntennaLoop::Run(bool endsWithInput)
{
    // The kernel may otherwise wake us 50 us late, to save power.
    prctl(PR_SET_TIMERSLACK, 1, 0, 0, 0);
    antenna_.SetPower(true, Now());
    bool input = true;  // standard input is worth listening to
    while (true) {
        FollowPower();
        Show();
        pollfd watched[] = {{port_.Descriptor(), static_cast<short>(said_.empty() ? POLLIN : POLLIN | POLLOUT), 0},
                            {port_.UsersDescriptor(), POLLIN, 0},
                            {commands_[0], POLLIN, 0},
                            {input ? STDIN_FILENO : -1, POLLIN, 0}};
        const double wait = std::clamp(NextTime() - Now(), 0.0, 3600.0);
        const double whole = std::floor(wait);
        const timespec timeout{static_cast<time_t>(whole), static_cast<long>((wait - whole) * 1e9)};
        if (ppoll(watched, std::size(watched), &timeout, nullptr) < 0) continue;  // a signal

        if (watched[1].revents != 0) port_.NoteUsers();
        Exchange((watched[0].revents & POLLIN) != 0);
        if (portBack_ <= Now()) ReturnPort();
        if (watched[2].revents != 0 && ReadCommands(commands_[0], fromPipe_) == Input::Quit) return;
        if (watched[3].revents == 0) continue;
        const Input came = ReadCommands(STDIN_FILENO, fromInput_);
        if (came == Input::Quit || (came == Input::Ended && endsWithInput && IsPipe(STDIN_FILENO))) return;
        input = came == Input::More;
    }
}
