#include "platform/linux/thread_priority.h"

#include "platform/linux/prompt_thread.h"

#include <dbus/dbus.h>
#include <memory>
#include <sched.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

namespace thread_priority {
namespace {

constexpr int kPriority = 10;
/// rtkit grants real time only to programs that have this limit, so that none can block a core.
constexpr rlim_t kLongestBurst = 200'000;  // microseconds
constexpr int kRtkitTimeout = 500;         // milliseconds

bool raiseByLimits() {
    sched_param parameters{};
    parameters.sched_priority = kPriority;
    return sched_setscheduler(0, SCHED_RR | SCHED_RESET_ON_FORK, &parameters) == 0;
}

struct CloseConnection {
    void operator()(DBusConnection* connection) const {
        dbus_connection_close(connection);
        dbus_connection_unref(connection);
    }
};

struct UnrefMessage {
    void operator()(DBusMessage* message) const { dbus_message_unref(message); }
};

using Message = std::unique_ptr<DBusMessage, UnrefMessage>;

}  // namespace

Grant raise() {
    if (raiseByLimits())
        return Grant::RealTimeByLimits;
    return wakePromptly() ? Grant::ShortSlice : Grant::None;
}

bool raiseByRtkit(long thread) {
    const rlimit burst{kLongestBurst, kLongestBurst};
    if (setrlimit(RLIMIT_RTTIME, &burst) != 0)
        return false;
    // A connection of its own: nobody else waits for this one.
    const std::unique_ptr<DBusConnection, CloseConnection> bus(
        dbus_bus_get_private(DBUS_BUS_SYSTEM, nullptr));
    if (!bus)
        return false;
    dbus_connection_set_exit_on_disconnect(bus.get(), FALSE);
    const Message call(dbus_message_new_method_call(
        "org.freedesktop.RealtimeKit1", "/org/freedesktop/RealtimeKit1",
        "org.freedesktop.RealtimeKit1", "MakeThreadRealtime"));
    const auto number = static_cast<dbus_uint64_t>(thread);
    const dbus_uint32_t priority = kPriority;
    if (!call || !dbus_message_append_args(call.get(), DBUS_TYPE_UINT64, &number, DBUS_TYPE_UINT32,
                                           &priority, DBUS_TYPE_INVALID))
        return false;
    const Message answer(
        dbus_connection_send_with_reply_and_block(bus.get(), call.get(), kRtkitTimeout, nullptr));
    return answer != nullptr;
}

long currentThread() {
    return syscall(SYS_gettid);
}

Grant probe() {
    Grant grant = Grant::None;
    std::thread([&grant] {
        grant = raise();
        if (grant != Grant::RealTimeByLimits && raiseByRtkit(currentThread()))
            grant = Grant::RealTimeByRtkit;
    }).join();
    return grant;
}

}  // namespace thread_priority
