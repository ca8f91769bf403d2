#include "platform/linux/prompt_thread.h"

#include <cstdint>
#include <pthread.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

/// The argument of the system call `sched_setattr`, in its first version.
struct SchedulingAttributes {
    std::uint32_t size = sizeof(SchedulingAttributes);
    std::uint32_t policy = SCHED_OTHER;
    std::uint64_t flags = 0;
    std::int32_t nice = 0;
    std::uint32_t priority = 0;
    std::uint64_t runtime = 0;  ///< nanoseconds; for ordinary threads the length of a time slice
    std::uint64_t deadline = 0;
    std::uint64_t period = 0;
};

/// The shortest slice there is. A thread that asks for less at a time is let in sooner.
constexpr std::uint64_t kSlice = 100'000;
/// Below what audio servers use for their own threads.
constexpr int kRealTimePriority = 5;

}  // namespace

bool wakePromptly() {
    prctl(PR_SET_TIMERSLACK, 1);
    SchedulingAttributes attributes;
    if (syscall(SYS_sched_getattr, 0, &attributes, sizeof attributes, 0) != 0 ||
        attributes.policy != SCHED_OTHER)
        return false;
    attributes.flags = 0;
    attributes.runtime = kSlice;
    if (syscall(SYS_sched_setattr, 0, &attributes, 0) != 0)
        return false;
    // Older kernels accept the call all the same.
    SchedulingAttributes granted;
    return syscall(SYS_sched_getattr, 0, &granted, sizeof granted, 0) == 0 &&
           granted.runtime == kSlice;
}

void wakeInRealTime() {
    const sched_param parameters{kRealTimePriority};
    if (pthread_setschedparam(pthread_self(), SCHED_FIFO, &parameters) != 0)
        wakePromptly();
}
