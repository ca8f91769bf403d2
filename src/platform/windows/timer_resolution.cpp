#include "platform/windows/timer_resolution.h"

#include <windows.h>

namespace {

constexpr UINT kMilliseconds = 1;

}  // namespace

TimerResolution::TimerResolution() {
    timeBeginPeriod(kMilliseconds);
}

TimerResolution::~TimerResolution() {
    timeEndPeriod(kMilliseconds);
}
