#pragma once
// What the tests take away from themselves for a while: the rights of root, room on the disk.

#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

/// Permissions don't bind root: while this lives, the test runs as an ordinary user.
class OrdinaryUser {
public:
    OrdinaryUser() : isRoot_(geteuid() == 0)
    {
        if (isRoot_) valid_ = seteuid(65534) == 0;
    }
    ~OrdinaryUser()
    {
        if (isRoot_ && valid_) valid_ = seteuid(0) == 0;
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    bool IsValid() const { return valid_; }

private:
    bool isRoot_;
    bool valid_ = true;
};

/// A full disk: while this lives, no file grows beyond `bytes`.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) : formerHandler_(signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &former_);
        const rlimit tight = {bytes, former_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &tight);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &former_);
        signal(SIGXFSZ, formerHandler_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    void (*formerHandler_)(int);
    rlimit former_{};
};
