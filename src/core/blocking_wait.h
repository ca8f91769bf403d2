#pragma once

/// The end of a blocking wait, on the clock that counts seconds since midnight.
///
/// A wait of s seconds that starts at `start` is over at the first clock reading t for which
/// single(start + s) <= single(t), both sides rounded to single precision. Late in the day a
/// single-precision second has a grain of about 8 ms, and so have the waits: that grain is the
/// program's own, in the metronome, the exercises and every pause.
namespace blocking_wait {

/// Waits of this length or more are no waits at all.
constexpr double kLimit = 10;

/// Whether a wait of `seconds` waits at all: it must be above 0 and below `kLimit`.
constexpr bool isWait(double seconds) {
    return seconds > 0 && seconds < kLimit;
}

/// The first clock reading at which the wait is over. It can lie before `start`.
double endOf(double start, double seconds);

}  // namespace blocking_wait
