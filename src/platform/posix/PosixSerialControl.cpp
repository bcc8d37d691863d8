#include "platform/posix/PosixSerialControl.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <stdexcept>
#include <utility>

#include "platform/Computer.h"
#include "platform/Failure.h"
#include "text/Text.h"

#if defined(__linux__)
#include <linux/serial.h>
#endif

namespace {

struct Speed {
    int baud;
    speed_t code;
};

constexpr Speed Speeds[] = {{9600, B9600}, {19200, B19200}, {38400, B38400}, {57600, B57600}, {115200, B115200}};

const Speed& SpeedOf(const std::string& settings)
{
    for (const Speed& speed : Speeds)
        if (text::Num(speed.baud) == settings.substr(0, settings.find(','))) return speed;
    throw std::invalid_argument("the port can't be set to \"" + settings + "\"");
}

int OpenDevice(const std::string& path)
{
    // Without O_NONBLOCK the open would wait for a carrier that an antenna never gives.
    return open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
}

int ResultFor(int error)
{
    switch (error) {
    case ENOENT:
    case ENOTDIR:
    case ENXIO:
    case ENODEV:
    case ENOTTY:
    case EISDIR:
    case EIO: return PORT_MISSING;  // EIO: a name for a chip that isn't fitted
    case EBUSY: return PORT_IN_USE;
    case EACCES:
    case EPERM: return PORT_FORBIDDEN;
    default: return error;
    }
}

/// Raw bytes, eight bits, no handshake. With VMIN at 1 a read says EAGAIN while nothing is there, and gives nothing
/// only when the line was hung up.
bool SetLine(int descriptor, speed_t speed)
{
    termios line{};
    if (tcgetattr(descriptor, &line) != 0) return false;
    // Whatever another program has left on the line is gone; but for what the system makes of a close.
    line.c_iflag = IGNBRK;  // a break is an event, not a zero byte
    line.c_oflag = 0;
    line.c_lflag = 0;
    line.c_cflag = (line.c_cflag & HUPCL) | CS8 | CLOCAL | CREAD;
    line.c_cc[VMIN] = 1;
    line.c_cc[VTIME] = 0;
    cfsetispeed(&line, speed);
    cfsetospeed(&line, speed);
    return tcsetattr(descriptor, TCSANOW, &line) == 0;
}

void RaiseDTR(int descriptor)
{
    const int dtr = TIOCM_DTR;
    ioctl(descriptor, TIOCMBIS, &dtr);  // a pseudo-terminal has none
}

/// Many USB adapters gather what they receive for 16 ms before they pass it on, which would cost that much with every
/// line of a flash. Drivers that know the flag then pass it on at once; the others refuse it.
void AskForLowLatency(int descriptor)
{
#if defined(__linux__)
    serial_struct serial{};
    if (ioctl(descriptor, TIOCGSERIAL, &serial) != 0) return;
    serial.flags |= ASYNC_LOW_LATENCY;
    ioctl(descriptor, TIOCSSERIAL, &serial);
#else
    (void)descriptor;
#endif
}

}  // namespace

int TestDevice(const std::string& path)
{
    if (path.empty()) return PORT_MISSING;
    const int descriptor = OpenDevice(path);
    if (descriptor < 0) return ResultFor(errno);
    int result = PORT_USABLE;
    termios line{};
    if (tcgetattr(descriptor, &line) != 0)
        result = ResultFor(errno);
    else if (flock(descriptor, LOCK_EX | LOCK_NB) != 0)
        result = PORT_IN_USE;
    close(descriptor);
    return result;
}

PosixSerialControl::PosixSerialControl(std::function<std::string(int)> devicePath) : devicePath_(std::move(devicePath))
{
}

PosixSerialControl::~PosixSerialControl() { Close(); }

void PosixSerialControl::SetSettings(const std::string& settings)
{
    const Speed& speed = SpeedOf(settings);
    if (descriptor_ >= 0) WaitUntilSent();
    settings_ = settings;
    if (descriptor_ >= 0 && !SetLine(descriptor_, speed.code)) LoseDevice();
}

void PosixSerialControl::SetPortOpen(bool open)
{
    if (open == open_) return;
    if (open)
        Open();
    else
        Close();
}

void PosixSerialControl::Open()
{
    const std::string path = devicePath_(commPort_);
    descriptor_ = path.empty() ? -1 : OpenDevice(path);
    if (descriptor_ < 0 || !Prepare()) {
        if (descriptor_ >= 0) close(descriptor_);
        descriptor_ = -1;
        throw Failure{FAIL_PORT_LOST, "COM" + text::Num(commPort_) + " (" + path + ") can't be opened"};
    }
    open_ = true;
    openPath_ = path;
    event_ = 0;  // kept through a close: the rounds go on asking for a port that went away
    hasCounters_ = ReadCounters(counters_);
}

bool PosixSerialControl::Prepare()
{
    // The lock keeps out other programs that ask for it, TIOCEXCL those that don't.
    if (flock(descriptor_, LOCK_EX | LOCK_NB) != 0) return false;
    if (!SetLine(descriptor_, SpeedOf(settings_).code)) return false;
    ioctl(descriptor_, TIOCEXCL);
    RaiseDTR(descriptor_);
    AskForLowLatency(descriptor_);
    tcflush(descriptor_, TCIFLUSH);
    return true;
}

void PosixSerialControl::Close()
{
    if (descriptor_ >= 0) WaitUntilSent();
    if (descriptor_ >= 0) {
        ioctl(descriptor_, TIOCNXCL);  // a pseudo-terminal would stay closed to everybody
        close(descriptor_);
    }
    descriptor_ = -1;
    open_ = false;
    unsent_.clear();
}

/// The descriptor is given back at once: as long as it is held, an adapter that is plugged in again gets another name.
/// The event makes the next round read, and so report it.
void PosixSerialControl::LoseDevice()
{
    if (descriptor_ >= 0) close(descriptor_);
    descriptor_ = -1;
    unsent_.clear();
    event_ = comEvReceive;
}

void PosixSerialControl::RequireDevice() const
{
    if (!open_) throw Failure{FAIL_PORT_CLOSED, "the port is closed"};
    if (descriptor_ < 0) throw Failure{FAIL_PORT_LOST, openPath_ + " is gone"};
}

/// Bytes that wait; a device that can't tell any more is gone.
int PosixSerialControl::Waiting()
{
    FlushOutput();
    int count = 0;
    if (descriptor_ >= 0 && ioctl(descriptor_, FIONREAD, &count) != 0) LoseDevice();
    return descriptor_ >= 0 ? count : 0;
}

int PosixSerialControl::InBufferCount()
{
    const int count = Waiting();
    RequireDevice();
    return count;
}

void PosixSerialControl::ClearInput()
{
    FlushOutput();
    if (descriptor_ >= 0) tcflush(descriptor_, TCIFLUSH);
}

std::string PosixSerialControl::Input()
{
    FlushOutput();
    RequireDevice();
    std::string bytes;
    std::array<char, 4096> piece;
    for (;;) {
        const ssize_t count = read(descriptor_, piece.data(), piece.size());
        if (count > 0) {
            bytes.append(piece.data(), static_cast<std::size_t>(count));
            // What a device at full speed goes on sending is left for the next call.
            if (bytes.size() >= 16 * piece.size()) return bytes;
            continue;
        }
        if (count < 0 && errno == EINTR) continue;
        if (count < 0 && errno == EAGAIN) return bytes;
        LoseDevice();  // nothing at all: the line was hung up
        if (bytes.empty()) RequireDevice();
        return bytes;  // what came before is still worth having; the next read reports the loss
    }
}

void PosixSerialControl::Output(const std::string& bytes)
{
    if (!open_) throw Failure{FAIL_PORT_CLOSED, "the port is closed"};
    if (descriptor_ < 0) return;
    unsent_ += bytes;
    FlushOutput();
}

void PosixSerialControl::FlushOutput()
{
    std::size_t sent = 0;
    while (descriptor_ >= 0 && sent < unsent_.size()) {
        const ssize_t count = write(descriptor_, unsent_.data() + sent, unsent_.size() - sent);
        if (count > 0)
            sent += static_cast<std::size_t>(count);
        else if (count < 0 && errno == EINTR)
            continue;
        else if (count == 0 || errno == EAGAIN)
            break;
        else
            LoseDevice();
    }
    unsent_.erase(0, sent);
}

int PosixSerialControl::CommEvent()
{
    if (Waiting() > 0) event_ = comEvReceive;
    Counters now;
    if (hasCounters_ && ReadCounters(now)) {
        if (now.framing != counters_.framing) event_ = comEventFrame;
        if (now.breaks != counters_.breaks) event_ = comEventBreak;
        counters_ = now;
    }
    return event_;
}

int PosixSerialControl::TestPort(int port) const
{
    const std::string path = devicePath_(port);
    // One device may have several names, and so several numbers.
    struct stat held {
    }, asked{};
    if (descriptor_ >= 0 && fstat(descriptor_, &held) == 0 && stat(path.c_str(), &asked) == 0 &&
        held.st_rdev == asked.st_rdev)
        return PORT_USABLE;
    return TestDevice(path);
}

bool PosixSerialControl::ReadCounters(Counters& counters) const
{
#if defined(__linux__)
    serial_icounter_struct counts{};
    if (descriptor_ < 0 || ioctl(descriptor_, TIOCGICOUNT, &counts) != 0) return false;
    counters = {counts.brk, counts.frame};
    return true;
#else
    (void)counters;
    return false;
#endif
}

/// Waits until everything has left: as long as the line needs for it, and a second more. What a dead device hasn't
/// taken by then is dropped.
void PosixSerialControl::WaitUntilSent()
{
    using Clock = std::chrono::steady_clock;
    int queued = 0;
    ioctl(descriptor_, TIOCOUTQ, &queued);
    const double seconds = 1 + 10.0 * (static_cast<double>(unsent_.size()) + queued) / SpeedOf(settings_).baud;
    const auto end = Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
    for (;;) {
        FlushOutput();
        if (descriptor_ < 0) return;
        if (ioctl(descriptor_, TIOCOUTQ, &queued) != 0) queued = 0;
        if (unsent_.empty() && queued == 0) break;
        if (Clock::now() >= end) {
            unsent_.clear();
            tcflush(descriptor_, TCOFLUSH);
            return;
        }
        poll(nullptr, 0, 1);
    }
    tcdrain(descriptor_);  // the queue is empty; the chip may still hold a few bytes
}
