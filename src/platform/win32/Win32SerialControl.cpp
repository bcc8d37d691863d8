#include "platform/win32/Win32SerialControl.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "platform/Computer.h"
#include "platform/Failure.h"
#include "text/Text.h"

namespace {

constexpr DWORD speeds[] = {9600, 19200, 38400, 57600, 115200};

/// How long a read waits for a first byte; then it is started again.
constexpr DWORD readWaitMs = 60000;

DWORD SpeedOf(const std::string& settings)
{
    for (const DWORD speed : speeds)
        if (text::Num(speed) == settings.substr(0, settings.find(','))) return speed;
    throw std::invalid_argument("the port can't be set to \"" + settings + "\"");
}

HANDLE OpenDevice(const std::string& path)
{
    return CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, FILE_FLAG_OVERLAPPED,
                       nullptr);
}

int ResultFor(DWORD error)
{
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_DEV_NOT_EXIST: return PORT_MISSING;
    case ERROR_ACCESS_DENIED:  // the system's word for a port that another program holds
    case ERROR_SHARING_VIOLATION: return PORT_IN_USE;
    default: return static_cast<int>(error);
    }
}

}  // namespace

int TestDevice(const std::string& path)
{
    if (path.empty()) return PORT_MISSING;
    const HANDLE device = OpenDevice(path);
    if (device == INVALID_HANDLE_VALUE) return ResultFor(GetLastError());
    DCB line{};
    line.DCBlength = sizeof line;
    const bool isPort = GetCommState(device, &line) != 0;
    CloseHandle(device);
    return isPort ? PORT_USABLE : PORT_MISSING;
}

Win32SerialControl::Win32SerialControl(std::function<std::string(int)> devicePath) : devicePath_(std::move(devicePath))
{
    for (OVERLAPPED* operation : {&reading_, &writing_})
        operation->hEvent = CreateEventA(nullptr, TRUE, FALSE, nullptr);
}

Win32SerialControl::~Win32SerialControl()
{
    Close();
    CloseHandle(reading_.hEvent);
    CloseHandle(writing_.hEvent);
}

// --- opening and closing ---------------------------------------------------------------------------------------------

void Win32SerialControl::SetSettings(const std::string& settings)
{
    SpeedOf(settings);
    if (HasDevice()) WaitUntilSent();
    settings_ = settings;
    if (HasDevice() && !SetLine()) LoseDevice();
}

void Win32SerialControl::SetPortOpen(bool open)
{
    if (open == open_) return;
    if (open)
        Open();
    else
        Close();
}

void Win32SerialControl::Open()
{
    const std::string path = devicePath_(commPort_);
    device_ = path.empty() ? INVALID_HANDLE_VALUE : OpenDevice(path);
    if (!HasDevice() || !Prepare()) {
        CloseDevice();
        throw Failure{FAIL_PORT_LOST, "COM" + text::Num(commPort_) + " can't be opened"};
    }
    open_ = true;
    openPort_ = commPort_;
    event_ = 0;  // kept through a close: the rounds go on asking for a port that went away
    received_.clear();
    StartRead();
}

/// Eight bits, no parity, one stop bit; no handshake of any kind; DTR raised; zero bytes passed on, none replaced.
bool Win32SerialControl::SetLine()
{
    DCB line{};
    line.DCBlength = sizeof line;
    if (!GetCommState(device_, &line)) return false;
    line.BaudRate = SpeedOf(settings_);
    line.ByteSize = 8;
    line.Parity = NOPARITY;
    line.StopBits = ONESTOPBIT;
    line.fBinary = TRUE;
    line.fParity = FALSE;
    line.fOutxCtsFlow = FALSE;
    line.fOutxDsrFlow = FALSE;
    line.fDtrControl = DTR_CONTROL_ENABLE;
    line.fDsrSensitivity = FALSE;
    line.fTXContinueOnXoff = TRUE;
    line.fOutX = FALSE;
    line.fInX = FALSE;
    line.fErrorChar = FALSE;
    line.fNull = FALSE;
    line.fRtsControl = RTS_CONTROL_ENABLE;
    line.fAbortOnError = FALSE;
    return SetCommState(device_, &line) != 0;
}

bool Win32SerialControl::Prepare()
{
    if (!SetLine()) return false;
    // A read gives at once what is there; with nothing there it waits for the first bytes.
    COMMTIMEOUTS timeouts{};
    timeouts.ReadIntervalTimeout = MAXDWORD;
    timeouts.ReadTotalTimeoutMultiplier = MAXDWORD;
    timeouts.ReadTotalTimeoutConstant = readWaitMs;
    if (!SetCommTimeouts(device_, &timeouts)) return false;
    SetupComm(device_, 4096, 4096);
    EscapeCommFunction(device_, SETDTR);
    PurgeComm(device_, PURGE_RXCLEAR);
    return true;
}

void Win32SerialControl::CloseDevice()
{
    if (!HasDevice()) return;
    CancelIo(device_);
    DWORD count = 0;
    // The system writes into our memory until it has said that it is through.
    if (reads_) GetOverlappedResult(device_, &reading_, &count, TRUE);
    if (writes_) GetOverlappedResult(device_, &writing_, &count, TRUE);
    reads_ = writes_ = false;
    CloseHandle(device_);
    device_ = INVALID_HANDLE_VALUE;
}

void Win32SerialControl::Close()
{
    if (HasDevice()) WaitUntilSent();
    CloseDevice();
    open_ = false;
    unsent_.clear();
    received_.clear();
}

/// The handle is given back at once: as long as it is held, an adapter that is plugged in again can't have its number
/// back. The event makes the next round read, and so report it.
void Win32SerialControl::LoseDevice()
{
    CloseDevice();
    unsent_.clear();
    event_ = comEvReceive;
    SetEvent(reading_.hEvent);
}

void Win32SerialControl::RequireDevice() const
{
    if (!open_) throw Failure{FAIL_PORT_CLOSED, "the port is closed"};
    if (!HasDevice()) throw Failure{FAIL_PORT_LOST, "COM" + text::Num(openPort_) + " is gone"};
}

// --- what arrives ----------------------------------------------------------------------------------------------------

void Win32SerialControl::StartRead()
{
    constexpr int mostInOneGo = 16;
    for (int reads = 0; HasDevice() && !reads_; ++reads) {
        if (reads == mostInOneGo) {
            SetEvent(reading_.hEvent);  // more is there, and the next call takes it
            return;
        }
        ResetEvent(reading_.hEvent);
        readSince_ = GetTickCount64();
        // What is there, or the first byte that will be: not every driver ends a read before it has all it was asked
        // for.
        const DWORD wanted = std::clamp(LookAtLine().cbInQue, DWORD{1}, static_cast<DWORD>(readPiece_.size()));
        DWORD count = 0;
        if (!HasDevice()) return;
        if (ReadFile(device_, readPiece_.data(), wanted, &count, &reading_)) {
            received_.append(readPiece_.data(), count);
            if (count == 0 && GetTickCount64() - readSince_ < readWaitMs / 2) return LoseDevice();
        } else if (GetLastError() == ERROR_IO_PENDING) {
            reads_ = true;
        } else {
            return LoseDevice();
        }
    }
}

/// A read that ends early and gives nothing tells of a line that was hung up.
void Win32SerialControl::FinishRead()
{
    DWORD count = 0;
    if (!reads_) return;
    if (!GetOverlappedResult(device_, &reading_, &count, FALSE)) {
        if (GetLastError() == ERROR_IO_INCOMPLETE) return;
        reads_ = false;
        return LoseDevice();
    }
    reads_ = false;
    received_.append(readPiece_.data(), count);
    if (count == 0 && GetTickCount64() - readSince_ < readWaitMs / 2) LoseDevice();
}

void Win32SerialControl::Serve()
{
    FinishRead();
    StartRead();
    FinishWrite();
    StartWrite();
}

int Win32SerialControl::InBufferCount()
{
    Serve();
    if (received_.empty()) RequireDevice();
    return static_cast<int>(received_.size());
}

void Win32SerialControl::ClearInput()
{
    Serve();
    received_.clear();
}

std::string Win32SerialControl::Input()
{
    Serve();
    if (received_.empty() || !open_) RequireDevice();
    return std::exchange(received_, {});  // what came before a loss is still worth having
}

COMSTAT Win32SerialControl::LookAtLine()
{
    DWORD errors = 0;
    COMSTAT state{};
    if (!HasDevice()) return {};
    if (!ClearCommError(device_, &errors, &state)) {
        LoseDevice();
        return {};
    }
    if ((errors & CE_FRAME) != 0) event_ = comEventFrame;
    if ((errors & CE_BREAK) != 0) event_ = comEventBreak;
    return state;
}

int Win32SerialControl::CommEvent()
{
    Serve();
    if (!received_.empty()) event_ = comEvReceive;
    LookAtLine();
    return event_;
}

// --- what leaves -----------------------------------------------------------------------------------------------------

void Win32SerialControl::Output(const std::string& bytes)
{
    if (!open_) throw Failure{FAIL_PORT_CLOSED, "the port is closed"};
    if (!HasDevice()) return;
    unsent_ += bytes;
    StartWrite();
}

void Win32SerialControl::StartWrite()
{
    while (HasDevice() && !writes_ && !unsent_.empty()) {
        ResetEvent(writing_.hEvent);
        writePiece_ = std::exchange(unsent_, {});
        DWORD count = 0;
        const auto length = static_cast<DWORD>(writePiece_.size());
        if (WriteFile(device_, writePiece_.data(), length, &count, &writing_)) {
            unsent_ = writePiece_.substr(count);
        } else if (GetLastError() == ERROR_IO_PENDING) {
            writes_ = true;
        } else {
            LoseDevice();
        }
    }
}

void Win32SerialControl::FinishWrite()
{
    DWORD count = 0;
    if (!writes_) return;
    if (!GetOverlappedResult(device_, &writing_, &count, FALSE)) {
        if (GetLastError() == ERROR_IO_INCOMPLETE) return;
        writes_ = false;
        return LoseDevice();
    }
    writes_ = false;
    unsent_ = writePiece_.substr(std::min<std::size_t>(count, writePiece_.size())) + unsent_;
}

/// Waits until everything has left: as long as the line needs for it, and a second more. What a dead device hasn't
/// taken by then is dropped.
void Win32SerialControl::WaitUntilSent()
{
    const unsigned long long bytes = unsent_.size() + writePiece_.size() + LookAtLine().cbOutQue;
    const unsigned long long end = GetTickCount64() + 1000 + bytes * 10000 / SpeedOf(settings_);
    for (;;) {
        Serve();
        if (!HasDevice()) return;
        if (!WantsToWrite() && LookAtLine().cbOutQue == 0) break;
        if (GetTickCount64() >= end) {
            unsent_.clear();
            PurgeComm(device_, PURGE_TXABORT | PURGE_TXCLEAR);
            return;
        }
        ::Sleep(1);
    }
    FlushFileBuffers(device_);  // the queue is empty; the chip may still hold a few bytes
}

int Win32SerialControl::TestPort(int port) const
{
    if (HasDevice() && port == openPort_) return PORT_USABLE;
    return TestDevice(devicePath_(port));
}
