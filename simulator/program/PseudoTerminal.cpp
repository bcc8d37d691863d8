#include "simulator/program/PseudoTerminal.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>

namespace {

struct Speed {
    speed_t code;
    int baud;
};

constexpr std::array<Speed, 9> speeds{{{B1200, 1200},
                                       {B2400, 2400},
                                       {B4800, 4800},
                                       {B9600, 9600},
                                       {B19200, 19200},
                                       {B38400, 38400},
                                       {B57600, 57600},
                                       {B115200, 115200},
                                       {B230400, 230400}}};

[[noreturn]] void Fail(const std::string& what) { throw std::runtime_error(what + ": " + std::strerror(errno)); }

void Close(int& descriptor)
{
    if (descriptor >= 0) close(descriptor);
    descriptor = -1;
}

/// Bytes pass as they are, from the first one on.
void SetRaw(int terminal, int baud)
{
    termios settings{};
    if (tcgetattr(terminal, &settings) != 0) Fail("the pseudo-terminal's settings");
    cfmakeraw(&settings);
    for (const Speed& speed : speeds) {
        if (speed.baud == baud) cfsetspeed(&settings, speed.code);
    }
    if (tcsetattr(terminal, TCSANOW, &settings) != 0) Fail("the pseudo-terminal's settings");
}

}  // namespace

void PseudoTerminal::Make()
{
    master_ = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0) Fail("no pseudo-terminal");
    path_ = ptsname(master_);
    held_ = open(path_.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (held_ < 0) Fail(path_);
    SetRaw(held_, baud_);
    WatchUsers();
    MakeLink();
}

void PseudoTerminal::MakeLink() const
{
    if (link_.empty()) return;
    std::error_code error;
    if (std::filesystem::is_symlink(link_, error)) std::filesystem::remove(link_, error);
    if (symlink(path_.c_str(), link_.c_str()) != 0) Fail(link_);
}

void PseudoTerminal::WatchUsers()
{
    users_ = 0;
    watch_ = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (watch_ >= 0 && inotify_add_watch(watch_, path_.c_str(), IN_OPEN | IN_CLOSE) < 0) Close(watch_);
}

void PseudoTerminal::NoteUsers()
{
    alignas(inotify_event) std::array<char, 4096> events{};
    for (ssize_t count; (count = read(watch_, events.data(), events.size())) > 0;) {
        for (ssize_t at = 0; at < count;) {
            inotify_event event{};
            std::memcpy(&event, events.data() + at, sizeof event);
            if ((event.mask & IN_OPEN) != 0) ++users_;
            if ((event.mask & IN_CLOSE) != 0) users_ = std::max(0, users_ - 1);
            at += static_cast<ssize_t>(sizeof event + event.len);
        }
    }
    if (users_ > 0) return;
    // A program that was killed leaves its claim on the port behind, and what it didn't read; a real port would be free
    // again, and empty.
    ioctl(held_, TIOCNXCL);
    tcflush(held_, TCIFLUSH);
}

void PseudoTerminal::Remove()
{
    std::error_code error;
    if (!link_.empty() && master_ >= 0 && std::filesystem::read_symlink(link_, error) == path_) {
        std::filesystem::remove(link_, error);
    }
    Close(watch_);
    Close(held_);
    Close(master_);
}

std::string PseudoTerminal::Read()
{
    std::array<char, 4096> bytes{};
    const ssize_t count = read(master_, bytes.data(), bytes.size());
    return count > 0 ? std::string(bytes.data(), static_cast<std::size_t>(count)) : std::string();
}

std::size_t PseudoTerminal::Write(const std::string& bytes)
{
    if (master_ < 0 || (watch_ >= 0 && users_ == 0)) return bytes.size();
    const ssize_t count = write(master_, bytes.data(), bytes.size());
    return count > 0 ? static_cast<std::size_t>(count) : 0;
}

int PseudoTerminal::Baud() const
{
    termios settings{};
    if (tcgetattr(held_, &settings) != 0) return baud_;
    const speed_t code = cfgetospeed(&settings);
    const auto* known = std::find_if(speeds.begin(), speeds.end(), [code](const Speed& s) { return s.code == code; });
    return known == speeds.end() ? baud_ : known->baud;
}
