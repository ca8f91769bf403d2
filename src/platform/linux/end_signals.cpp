#include "platform/end_signals.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr std::array kSignals{SIGTERM, SIGINT, SIGHUP};

int writeEnd = -1;

/// A signal handler may only call async-signal-safe functions; the byte wakes the event loop.
void noteSignal(int) {
    const int error = errno;
    const char mark = 0;
    static_cast<void>(!write(writeEnd, &mark, 1));
    errno = error;
}

/// SIGHUP stays ignored where it was when the program was started, as by nohup.
bool staysIgnored(int signal) {
    struct sigaction current {};
    return signal == SIGHUP && sigaction(signal, nullptr, &current) == 0 &&
           current.sa_handler == SIG_IGN;
}

class PipedSignals : public EndSignals {
public:
    PipedSignals(std::array<int, 2> ends, std::function<void()> end)
        : ends_(ends), notifier_(ends[0], QSocketNotifier::Read) {
        QObject::connect(&notifier_, &QSocketNotifier::activated, [this, end = std::move(end)] {
            drainPipe();
            end();
        });
        writeEnd = ends_[1];
        struct sigaction action {};
        action.sa_handler = noteSignal;
        action.sa_flags = SA_RESTART;
        for (const int signal : kSignals) {
            if (!staysIgnored(signal))
                sigaction(signal, &action, nullptr);
        }
    }

    ~PipedSignals() override {
        for (const int signal : kSignals) {
            if (!staysIgnored(signal))
                std::signal(signal, SIG_DFL);
        }
        for (const int descriptor : ends_)
            close(descriptor);
    }

    PipedSignals(const PipedSignals&) = delete;
    PipedSignals& operator=(const PipedSignals&) = delete;

private:
    void drainPipe() {
        std::array<char, 16> marks{};
        while (read(ends_[0], marks.data(), marks.size()) > 0) {
        }
    }

    std::array<int, 2> ends_;
    QSocketNotifier notifier_;
};

}  // namespace

std::unique_ptr<EndSignals> watchEndSignals(std::function<void()> end) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return nullptr;
    return std::make_unique<PipedSignals>(ends, std::move(end));
}
