#pragma once

/// How a thread that renders sound comes to its processor time while others keep all cores busy.
namespace thread_priority {

/// What the system grants, the best first.
enum class Grant {
    RealTimeByLimits,  ///< this user may have real-time threads
    RealTimeByRtkit,   ///< the system's service for such threads agreed
    ShortSlice,        ///< no real time, but a short wait for the processor (Linux 6.12 and later)
    None,
};

/// Asks for the calling thread, without waiting for anybody; so rtkit is not asked.
Grant raise();

/// Asks rtkit for another thread of this program, by its number; at most half a second. Nothing
/// changes if it is refused.
bool raiseByRtkit(long thread);

/// The number of the calling thread.
long currentThread();

/// What a thread of this program would be granted; tried with one that ends again.
Grant probe();

}  // namespace thread_priority
