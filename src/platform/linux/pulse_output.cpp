#include "platform/linux/pulse_output.h"

#include "audio/dropouts.h"
#include "audio/steady_time.h"
#include "platform/linux/thread_priority.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <pulse/pulseaudio.h>
#include <thread>
#include <utility>

namespace {

constexpr int kSides = 2;
constexpr std::size_t kFrameBytes = kSides * sizeof(float);
constexpr int kLargestBlock = 1024;
/// A device that sleeps may take a while; what is played meanwhile waits in the buffers.
constexpr auto kStartTimeout = std::chrono::seconds(2);
/// The size of buffers that have grown, in their first size: as much as what is planned is heard
/// later than its instant, less what the answer to a request takes.
constexpr std::uint32_t kGrowth = 8;

struct FreeLoop {
    void operator()(pa_mainloop* loop) const { pa_mainloop_free(loop); }
};
struct EndContext {
    void operator()(pa_context* context) const {
        pa_context_disconnect(context);
        pa_context_unref(context);
    }
};
struct EndStream {
    void operator()(pa_stream* stream) const {
        pa_stream_disconnect(stream);
        pa_stream_unref(stream);
    }
};

}  // namespace

struct PulseOutput::Stream {
    Stream(Source what, const Setup& how) : source(std::move(what)), setup(how) {}

    void run();
    bool connect();
    bool startStream();
    bool iterateUntil(const std::function<bool()>& reached);
    pa_buffer_attr buffers() const;
    void resize();
    void growFor(bool planned);
    void started();
    void askForLatency();
    void tellLatency();
    void fill(std::size_t bytes);
    void dropout();
    void tell(bool playing);

    const Source source;
    const Setup setup;
    std::unique_ptr<pa_mainloop, FreeLoop> loop;
    std::unique_ptr<pa_context, EndContext> context;
    std::unique_ptr<pa_stream, EndStream> stream;
    std::array<float, kLargestBlock> left{};
    std::array<float, kLargestBlock> right{};
    bool playing = false;
    bool latencyKnown = false;
    bool rested = false;  // the buffers ran empty because there was nothing to play
    DropoutCount dropouts;
    bool grown = false;       // for good
    bool forPlanned = false;  // until the output rests

    std::thread thread;
    std::atomic<long> number = 0;
    std::atomic<bool> quit = false;
    std::atomic<bool> ended = false;
    std::mutex mutex;
    std::condition_variable changed;
    bool known = false;  // whether it plays
    bool plays = false;
};

void PulseOutput::Stream::tell(bool itPlays) {
    const std::lock_guard lock(mutex);
    known = true;
    plays = itPlays;
    changed.notify_all();
}

void PulseOutput::Stream::run() {
    number = thread_priority::currentThread();
    const bool realTime = thread_priority::raise() == thread_priority::Grant::RealTimeByLimits;
    const bool connected = connect() && startStream();
    tell(connected);
    // Asked where nobody waits for the answer.
    if (connected && !realTime)
        std::thread([id = number.load()] { thread_priority::raiseByRtkit(id); }).detach();
    while (connected && !quit && pa_mainloop_iterate(loop.get(), 1, nullptr) >= 0 &&
           PA_STREAM_IS_GOOD(pa_stream_get_state(stream.get()))) {
    }
    ended = true;
    stream.reset();
    context.reset();
}

bool PulseOutput::Stream::iterateUntil(const std::function<bool()>& reached) {
    while (!quit && !reached())
        if (pa_mainloop_iterate(loop.get(), 1, nullptr) < 0)
            return false;
    return !quit;
}

bool PulseOutput::Stream::connect() {
    context.reset(pa_context_new(pa_mainloop_get_api(loop.get()), "Cantavista"));
    if (!context || pa_context_connect(context.get(), nullptr, PA_CONTEXT_NOFLAGS, nullptr) < 0)
        return false;
    const auto settled = [this] {
        const pa_context_state_t state = pa_context_get_state(context.get());
        return state == PA_CONTEXT_READY || !PA_CONTEXT_IS_GOOD(state);
    };
    return iterateUntil(settled) && pa_context_get_state(context.get()) == PA_CONTEXT_READY;
}

pa_buffer_attr PulseOutput::Stream::buffers() const {
    const std::uint32_t growth = grown || forPlanned ? kGrowth : 1;
    constexpr auto kServersChoice = static_cast<std::uint32_t>(-1);
    pa_buffer_attr attributes{};
    attributes.maxlength = kServersChoice;
    attributes.tlength =
        static_cast<std::uint32_t>(setup.bufferFrames) * growth * std::uint32_t{kFrameBytes};
    attributes.prebuf = kServersChoice;
    // The server splits what is over two requests between itself and the device. It is to keep its
    // share when the buffers grow, for its statements about latency are as coarse as that.
    const std::uint32_t share = attributes.tlength / growth / 3;
    attributes.minreq = growth == 1 ? kServersChoice : (attributes.tlength - share) / 2;
    attributes.fragsize = kServersChoice;
    return attributes;
}

bool PulseOutput::Stream::startStream() {
    const pa_sample_spec format{PA_SAMPLE_FLOAT32NE, static_cast<std::uint32_t>(setup.rate),
                                kSides};
    stream.reset(pa_stream_new(context.get(), "Cantavista", &format, nullptr));
    if (!stream)
        return false;
    const auto on = [this](void (*set)(pa_stream*, pa_stream_notify_cb_t, void*),
                           pa_stream_notify_cb_t handler) { set(stream.get(), handler, this); };
    on(pa_stream_set_started_callback,
       [](pa_stream*, void* self) { static_cast<Stream*>(self)->started(); });
    on(pa_stream_set_underflow_callback,
       [](pa_stream*, void* self) { static_cast<Stream*>(self)->dropout(); });
    on(pa_stream_set_latency_update_callback,
       [](pa_stream*, void* self) { static_cast<Stream*>(self)->latencyKnown = true; });
    on(pa_stream_set_moved_callback,
       [](pa_stream*, void* self) { static_cast<Stream*>(self)->source.interrupted(); });
    pa_stream_set_write_callback(
        stream.get(),
        [](pa_stream*, std::size_t bytes, void* self) { static_cast<Stream*>(self)->fill(bytes); },
        this);
    const pa_buffer_attr attributes = buffers();
    const auto flags = static_cast<pa_stream_flags_t>(
        PA_STREAM_ADJUST_LATENCY | PA_STREAM_INTERPOLATE_TIMING | PA_STREAM_AUTO_TIMING_UPDATE);
    if (pa_stream_connect_playback(stream.get(), nullptr, &attributes, flags, nullptr, nullptr) < 0)
        return false;
    const auto limit = std::chrono::steady_clock::now() + kStartTimeout;
    const auto isStarted = [&] {
        return playing || !PA_STREAM_IS_GOOD(pa_stream_get_state(stream.get())) ||
               std::chrono::steady_clock::now() >= limit;
    };
    // Without the timer a server that sends nothing would hold the loop.
    pa_mainloop_api* api = pa_mainloop_get_api(loop.get());
    const timeval wake = [] {
        timeval now{};
        pa_gettimeofday(&now);
        pa_timeval_add(&now, std::chrono::microseconds(kStartTimeout).count());
        return now;
    }();
    pa_time_event* timer = api->time_new(
        api, &wake, [](pa_mainloop_api*, pa_time_event*, const timeval*, void*) {}, nullptr);
    const bool reached = iterateUntil(isStarted);
    api->time_free(timer);
    return reached && PA_STREAM_IS_GOOD(pa_stream_get_state(stream.get()));
}

void PulseOutput::Stream::started() {
    playing = true;
    source.began();
    dropouts.streamBegan(steadyNow());
    askForLatency();
}

/// What was known of it holds no longer.
void PulseOutput::Stream::askForLatency() {
    latencyKnown = false;
    if (pa_operation* update = pa_stream_update_timing_info(stream.get(), nullptr, nullptr))
        pa_operation_unref(update);
}

void PulseOutput::Stream::tellLatency() {
    constexpr std::int64_t kNanosecondsPerMicrosecond = 1000;
    pa_usec_t latency = 0;
    int negative = 0;
    if (latencyKnown && pa_stream_get_latency(stream.get(), &latency, &negative) == 0 &&
        negative == 0)
        source.latency(static_cast<std::int64_t>(latency) * kNanosecondsPerMicrosecond);
}

void PulseOutput::Stream::fill(std::size_t bytes) {
    const bool hasRested = playing && source.waitForWork();
    if (hasRested) {
        rested = true;
        askForLatency();
    }
    if (hasRested || !forPlanned)
        growFor(source.hasPlanned());
    tellLatency();
    auto frames =
        static_cast<int>(std::max(bytes, pa_stream_writable_size(stream.get())) / kFrameBytes);
    while (frames > 0 && !quit) {
        void* space = nullptr;
        const int wanted = std::min({frames, setup.blockFrames, kLargestBlock});
        std::size_t room = static_cast<std::size_t>(wanted) * kFrameBytes;
        if (pa_stream_begin_write(stream.get(), &space, &room) < 0 || !space)
            return;
        const int count = std::min(wanted, static_cast<int>(room / kFrameBytes));
        if (count == 0) {
            pa_stream_cancel_write(stream.get());
            return;
        }
        source.render(left.data(), right.data(), count);
        auto* out = static_cast<float*>(space);
        for (int i = 0; i < count; ++i) {
            *out++ = left[static_cast<std::size_t>(i)];
            *out++ = right[static_cast<std::size_t>(i)];
        }
        if (pa_stream_write(stream.get(), space, static_cast<std::size_t>(count) * kFrameBytes,
                            nullptr, 0, PA_SEEK_RELATIVE) < 0)
            return;
        frames -= count;
    }
}

/// The server has nothing to play. It is told of when frames are written again.
void PulseOutput::Stream::dropout() {
    latencyKnown = false;
    if (std::exchange(rested, false))
        return;
    source.interrupted();
    if (!dropouts.callsForMore(steadyNow()))
        return;
    grown = true;
    if (!forPlanned)
        resize();
}

void PulseOutput::Stream::growFor(bool planned) {
    if (std::exchange(forPlanned, planned) != planned && !grown)
        resize();
}

void PulseOutput::Stream::resize() {
    const pa_buffer_attr attributes = buffers();
    if (pa_operation* change =
            pa_stream_set_buffer_attr(stream.get(), &attributes, nullptr, nullptr))
        pa_operation_unref(change);
    askForLatency();
    source.resized();
}

PulseOutput::PulseOutput(std::unique_ptr<Stream> stream) : stream_(std::move(stream)) {}

std::unique_ptr<PulseOutput> PulseOutput::open(Source source, const Setup& setup) {
    auto stream = std::make_unique<Stream>(std::move(source), setup);
    stream->loop.reset(pa_mainloop_new());
    if (!stream->loop)
        return nullptr;
    stream->thread = std::thread([self = stream.get()] { self->run(); });
    std::unique_ptr<PulseOutput> output(new PulseOutput(std::move(stream)));
    Stream& opened = *output->stream_;
    std::unique_lock lock(opened.mutex);
    opened.changed.wait(lock, [&opened] { return opened.known; });
    const bool plays = opened.plays;
    lock.unlock();
    return plays ? std::move(output) : nullptr;
}

PulseOutput::~PulseOutput() {
    stream_->quit = true;
    pa_mainloop_wakeup(stream_->loop.get());
    stream_->thread.join();
}

bool PulseOutput::ended() const {
    return stream_->ended;
}
