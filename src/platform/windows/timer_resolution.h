#pragma once

/// While it exists, this process's sleeps end within about a millisecond of their time, not
/// within the system's usual tick of 16 ms, so that notes sound when they should.
class TimerResolution {
public:
    TimerResolution();
    ~TimerResolution();
    TimerResolution(const TimerResolution&) = delete;
    TimerResolution& operator=(const TimerResolution&) = delete;
};
