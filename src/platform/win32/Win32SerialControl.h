#pragma once
// The serial port of Windows. A read is always under way, so that what arrives is noticed at once; a write is under way
// as long as there is something to write. Neither ever blocks.

#include <windows.h>

#include <array>
#include <functional>
#include <string>

#include "platform/SerialControl.h"

/// What a port is to this user at this moment: PORT_USABLE (1), PORT_MISSING (2), PORT_IN_USE (5), PORT_FORBIDDEN (13)
/// of platform/Computer.h, or another error of the system. A port that this program has open itself reads as in use.
int TestDevice(const std::string& path);

/// Whoever waits for the port waits on ReadEvent() and, while WantsToWrite(), on WriteEvent().
class Win32SerialControl : public SerialControl {
public:
    /// `devicePath` gives the device of a COM number ("\\.\COM10"), empty when there is none.
    explicit Win32SerialControl(std::function<std::string(int)> devicePath);
    ~Win32SerialControl() override;
    Win32SerialControl(const Win32SerialControl&) = delete;
    Win32SerialControl& operator=(const Win32SerialControl&) = delete;

    void SetCommPort(int port) override { commPort_ = port; }
    /// Raises std::invalid_argument for a speed that antennas don't know; the present one stays.
    void SetSettings(const std::string& settings) override;
    std::string Settings() const override { return settings_; }
    void SetPortOpen(bool open) override;
    int CommID() const override { return open_ ? 1 : 0; }
    int InBufferCount() override;
    void ClearInput() override;
    std::string Input() override;
    void Output(const std::string& bytes) override;
    int CommEvent() override;

    /// As TestDevice, for a COM number; a port that this control holds itself is usable.
    int TestPort(int port) const;

    /// True from opening on until the port is closed or its device is gone.
    bool HasDevice() const { return device_ != INVALID_HANDLE_VALUE; }
    HANDLE ReadEvent() const { return reading_.hEvent; }
    HANDLE WriteEvent() const { return writing_.hEvent; }
    bool WantsToWrite() const { return writes_ || !unsent_.empty(); }
    /// Takes in what has arrived, and hands over more of what is to be sent.
    void Serve();

private:
    void Open();
    void Close();
    bool Prepare();
    void LoseDevice();
    void CloseDevice();
    void RequireDevice() const;
    void StartRead();
    void FinishRead();
    void StartWrite();
    void FinishWrite();
    void WaitUntilSent();
    bool SetLine();
    /// What waits in the driver's queues; events of the line are noted on the way.
    COMSTAT LookAtLine();

    std::function<std::string(int)> devicePath_;
    int commPort_ = 0;
    int openPort_ = 0;
    std::string settings_ = "9600,N,8,1";
    bool open_ = false;  // what the program wants; stays true when the device is lost
    HANDLE device_ = INVALID_HANDLE_VALUE;
    int event_ = 0;

    OVERLAPPED reading_{}, writing_{};
    bool reads_ = false, writes_ = false;  // under way
    unsigned long long readSince_ = 0;     // ms
    std::array<char, 4096> readPiece_{};
    std::string received_, unsent_, writePiece_;
};
