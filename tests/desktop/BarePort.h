#pragma once
// A serial port with nobody at its far end: a pseudo-terminal behind a link.

#include <fcntl.h>
#include <stdlib.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>

class BarePort {
public:
    explicit BarePort(const std::filesystem::path& link)
        : link_(link), far_(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))
    {
        if (far_ < 0 || grantpt(far_) != 0 || unlockpt(far_) != 0) throw std::runtime_error("no pseudo-terminal");
        std::filesystem::create_symlink(ptsname(far_), link_);
    }
    ~BarePort()
    {
        std::filesystem::remove(link_);
        Release();
        close(far_);
    }
    BarePort(const BarePort&) = delete;
    BarePort& operator=(const BarePort&) = delete;

    /// Holds the port as another terminal program does.
    void Take()
    {
        near_ = open(link_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        if (near_ < 0 || flock(near_, LOCK_EX | LOCK_NB) != 0 || ioctl(near_, TIOCEXCL) != 0)
            throw std::runtime_error("the port can't be taken");
    }
    void Release()
    {
        if (near_ < 0) return;
        ioctl(near_, TIOCNXCL);  // a pseudo-terminal would stay closed to everybody
        close(near_);
        near_ = -1;
    }

private:
    std::filesystem::path link_;
    int far_;
    int near_ = -1;
};
