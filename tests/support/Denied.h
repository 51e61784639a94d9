#pragma once

#include <csignal>
#include <cstdlib>

#include <sys/resource.h>
#include <unistd.h>

/// While it lives no file gets longer than so many bytes, as on a disk that is full. What is reported
/// meanwhile may be lost with it.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &_before);
        const rlimit limit = {bytes, _before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &_before);
        std::signal(SIGXFSZ, _action);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit _before;
    void (*const _action)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

/// While it lives the process has the rights of a user without any, whoever runs the tests.
class Unprivileged {
public:
    Unprivileged() {
        if (_user == 0 && seteuid(65534) != 0)
            std::abort();
    }
    ~Unprivileged() {
        if (_user == 0 && seteuid(0) != 0)
            std::abort();
    }
    Unprivileged(const Unprivileged&) = delete;
    Unprivileged& operator=(const Unprivileged&) = delete;

private:
    const uid_t _user = geteuid();
};
