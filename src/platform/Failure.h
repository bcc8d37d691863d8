#pragma once
// A numbered failure. The numbers are those that the message catalogue knows.

#include <string>
#include <system_error>

/// A failure of the platform or of the port, thrown. `what` may add a detail for the log ("checksum off by 0x1F").
struct Failure {
    int number = 0;
    std::string what;
};

// The numbers that the core raises or tells apart.
inline constexpr int FAIL_OVERFLOW = 6;        // a number doesn't fit
inline constexpr int FAIL_MEMORY = 7;          // out of memory
inline constexpr int FAIL_SUBSCRIPT = 9;       // an index beyond its array
inline constexpr int FAIL_DIVISION = 11;       // division by zero
inline constexpr int FAIL_TYPE_MISMATCH = 13;  // a text that should be a number isn't one
inline constexpr int FAIL_BAD_FILE = 52;       // bad file name or number
inline constexpr int FAIL_NOT_FOUND = 53;      // file not found
inline constexpr int FAIL_ALREADY_OPEN = 55;   // the file is in use
inline constexpr int FAIL_DISK_FULL = 61;      // disk full
inline constexpr int FAIL_PAST_END = 62;       // read past the end of a file
inline constexpr int FAIL_FILE_ACCESS = 75;    // path or file access error
inline constexpr int FAIL_PATH = 76;           // path not found
inline constexpr int FAIL_PORT_CLOSED = 8018;  // valid only while the port is open
inline constexpr int FAIL_PORT_READ = 8020;    // error reading the device
inline constexpr int FAIL_PORT_LOST = 8021;    // the device is gone

/// The number for the exception in flight: a Failure's own, a standard exception's by its kind. Call it in a
/// catch block only. `detail` takes the exception's words.
int FailureNumber(std::string& detail);

/// The number for a system error code (errno).
int FailureFromErrno(int error);

/// The number for an error of the file system, in whichever numbers the system counts them.
int FailureFromError(const std::error_code& error);
