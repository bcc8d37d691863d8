#pragma once
// The serial port of a POSIX system: a terminal device, raw and never blocking.

#include <functional>
#include <string>

#include "platform/SerialControl.h"

/// What a port is to this user at this moment: PORT_USABLE (1), PORT_MISSING (2), PORT_IN_USE (5), PORT_FORBIDDEN (13)
/// of platform/Computer.h, or another error of the system. Nothing is sent and no setting of the device is changed.
/// A port that this program has open itself reads as in use; PosixSerialControl::TestPort knows better.
int TestDevice(const std::string& path);

/// Whoever waits for the port waits on Descriptor(): to read always, to write while WantsToWrite().
class PosixSerialControl : public SerialControl {
public:
    /// `devicePath` gives the device of a COM number, empty when there is none.
    explicit PosixSerialControl(std::function<std::string(int)> devicePath);
    ~PosixSerialControl() override;
    PosixSerialControl(const PosixSerialControl&) = delete;
    PosixSerialControl& operator=(const PosixSerialControl&) = delete;

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

    /// -1 while the port is closed and from the moment on that its device is gone.
    int Descriptor() const { return descriptor_; }
    /// True while bytes wait for room in the driver's queue.
    bool WantsToWrite() const { return !unsent_.empty(); }
    /// Hands over as much as the driver takes now.
    void FlushOutput();

private:
    /// The driver's counts of breaks and framing errors.
    struct Counters {
        int breaks = 0;
        int framing = 0;
    };

    void Open();
    void Close();
    bool Prepare();
    void LoseDevice();
    int Waiting();
    void RequireDevice() const;
    bool ReadCounters(Counters& counters) const;
    void WaitUntilSent();

    std::function<std::string(int)> devicePath_;
    int commPort_ = 0;
    std::string settings_ = "9600,N,8,1";
    bool open_ = false;    // what the program wants; stays true when the device is lost
    int descriptor_ = -1;  // -1 while closed or lost
    std::string openPath_;
    std::string unsent_;
    int event_ = 0;
    bool hasCounters_ = false;
    Counters counters_;
};
