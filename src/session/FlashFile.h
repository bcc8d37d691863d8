#pragma once
// A flash file as it was when it was tested. The test, the progress and the transfer all work on this copy: what lies
// on the disk may have changed since.

#include <string>

struct FlashFile {
    std::string name;
    std::string bytes;
    std::string sha256;  // of the bytes, 64 lower-case hexadecimal digits
};
