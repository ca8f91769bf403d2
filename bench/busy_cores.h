#pragma once

#include <csignal>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

/// Busy loops at ordinary priority, each a process of its own, for as long as this object lives.
class BusyCores {
public:
    explicit BusyCores(int loops) {
        for (int i = 0; i < loops; ++i) {
            const pid_t child = fork();
            if (child == 0)
                spin();
            if (child > 0)
                children_.push_back(child);
        }
    }
    ~BusyCores() {
        for (const pid_t child : children_) {
            kill(child, SIGKILL);
            waitpid(child, nullptr, 0);
        }
    }
    BusyCores(const BusyCores&) = delete;
    BusyCores& operator=(const BusyCores&) = delete;

private:
    [[noreturn]] static void spin() {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        volatile unsigned turns = 0;
        while (true)
            turns = turns + 1;
    }

    std::vector<pid_t> children_;
};
