#pragma once

#include <atomic>
#include <memory>

/// Notices the end of the JACK server that runs now. The library itself goes on as if nothing had
/// happened, and crashes when a client of a server that is gone is closed.
class JackWatch {
public:
    /// Nothing if no server runs. Never starts one.
    static std::unique_ptr<JackWatch> start();
    ~JackWatch();
    JackWatch(const JackWatch&) = delete;
    JackWatch& operator=(const JackWatch&) = delete;

    double sampleRate() const;
    bool serverGone() const { return gone_->load(); }

private:
    JackWatch() = default;

    void* client_ = nullptr;
    /// Left to the library if its server is gone, as it may still write there.
    std::unique_ptr<std::atomic<bool>> gone_ = std::make_unique<std::atomic<bool>>(false);
};
