#pragma once
// The serial port, as the link uses it: polled, never blocking, one port at a time.

#include <string>

// What CommEvent tells.
inline constexpr int comEvReceive = 2;
inline constexpr int comEventBreak = 1001;
inline constexpr int comEventFrame = 1004;

/// A serial port: 8 raw data bits, no handshake, DTR raised while open, zero bytes passed on.
/// Reading and writing work where no events are pumped.
class SerialControl {
public:
    virtual ~SerialControl() = default;

    /// The COM number that the next open takes.
    virtual void SetCommPort(int port) = 0;

    /// "9600,N,8,1". While the port is open what was written leaves at the old rate first.
    virtual void SetSettings(const std::string& settings) = 0;
    virtual std::string Settings() const = 0;

    /// Opening takes the port for this program alone and clears old input; it raises 8021 when the device can't be
    /// opened. Closing waits until what was written has left. Setting the present state again does nothing.
    virtual void SetPortOpen(bool open) = 0;

    /// Above 0 while the port is open, 0 otherwise.
    virtual int CommID() const = 0;

    /// Bytes that wait to be read. Raises 8018 while the port is closed, 8021 when the device is gone.
    virtual int InBufferCount() = 0;

    /// Drops what waits to be read. Raises nothing.
    virtual void ClearInput() = 0;

    /// Takes all waiting bytes. Raises 8018 while the port is closed, 8021 when the device is gone.
    virtual std::string Input() = 0;

    /// Hands bytes to the port, unchanged and in order, without blocking; what the driver's queue doesn't take now
    /// leaves as it empties. Raises 8018 while the port is closed. A device that is gone drops the bytes, and the
    /// next read reports it.
    virtual void Output(const std::string& bytes) = 0;

    /// The most recent event, one of the codes above; 0 before the first one. It stays until another replaces it.
    virtual int CommEvent() = 0;
};

/// The one port of the program; set before `Main` runs.
inline SerialControl* MSComm1 = nullptr;
