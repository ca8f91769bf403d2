// Whether the rendering of sound allocates, locks or touches files: what it must not do on a thread
// on whose punctuality every sound depends.
//
//   realtime_bench [seconds of sound, 60]
//
// FluidSynth's reverberation is computed with OpenMP, whose library allocates and frees a block for
// each block of sound, even with a single thread; these are counted by themselves. They come from
// the thread's own arena, for which it waits for nobody.
//
// The allocator's functions, those of mutexes and those of files are replaced by ones that count
// the calls of a thread while it renders. It renders the tune, notes on all channels, clicks and
// an answer sound.

#include "audio/audio_engine.h"
#include "audio/synthesizer.h"
#include "audio/tune.h"
#include "audio/wave.h"
#include "platform/linux/soundfont.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QFile>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <pthread.h>
#include <sys/types.h>
#include <utility>

namespace {

struct Counts {
    long allocations = 0;
    long allocationsOfOpenMp = 0;
    long locks = 0;
    long files = 0;
};

thread_local bool rendering = false;
thread_local bool insideOpenMp = false;
thread_local Counts counts;

void count(long Counts::*what) {
    if (rendering)
        ++(counts.*what);
}

template <typename Function>
Function* real(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_memalign(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void __libc_free(void*);

void* malloc(std::size_t bytes) noexcept {
    count(insideOpenMp ? &Counts::allocationsOfOpenMp : &Counts::allocations);
    return __libc_malloc(bytes);
}

void* calloc(std::size_t number, std::size_t bytes) noexcept {
    count(insideOpenMp ? &Counts::allocationsOfOpenMp : &Counts::allocations);
    return __libc_calloc(number, bytes);
}

void* aligned_alloc(std::size_t alignment, std::size_t bytes) noexcept {
    count(insideOpenMp ? &Counts::allocationsOfOpenMp : &Counts::allocations);
    return __libc_memalign(alignment, bytes);
}

void* realloc(void* memory, std::size_t bytes) noexcept {
    count(insideOpenMp ? &Counts::allocationsOfOpenMp : &Counts::allocations);
    return __libc_realloc(memory, bytes);
}

void free(void* memory) noexcept {
    if (memory)
        count(insideOpenMp ? &Counts::allocationsOfOpenMp : &Counts::allocations);
    __libc_free(memory);
}

void GOMP_parallel(void (*work)(void*), void* data, unsigned threads, unsigned flags) {
    static const auto parallel =
        real<void(void (*)(void*), void*, unsigned, unsigned)>("GOMP_parallel");
    const bool outer = std::exchange(insideOpenMp, true);
    parallel(work, data, threads, flags);
    insideOpenMp = outer;
}

int pthread_mutex_lock(pthread_mutex_t* mutex) noexcept {
    static const auto lock = real<int(pthread_mutex_t*)>("pthread_mutex_lock");
    count(&Counts::locks);
    return lock(mutex);
}

ssize_t read(int file, void* bytes, std::size_t size) {
    static const auto function = real<ssize_t(int, void*, std::size_t)>("read");
    count(&Counts::files);
    return function(file, bytes, size);
}

ssize_t write(int file, const void* bytes, std::size_t size) {
    static const auto function = real<ssize_t(int, const void*, std::size_t)>("write");
    count(&Counts::files);
    return function(file, bytes, size);
}

}  // extern "C"

namespace {

constexpr double kRate = 44100;
constexpr int kFrames = 384;
constexpr std::int64_t kSecond = 1'000'000'000;

/// What the user-interface thread posts before a request; every tenth of a second something else.
void post(AudioEngine& engine, int tenth, std::int64_t now) {
    const auto note = static_cast<std::uint32_t>(36 + tenth * 7 % 60);
    const auto channel = static_cast<std::uint32_t>(tenth % 16);
    engine.message(0xC0U | channel | static_cast<std::uint32_t>(tenth % 128) << 8, now);
    engine.message(0x640090U | channel | note << 8, now);
    engine.message(0x7F4C99U, now);
    if (tenth % 5 == 0)
        engine.reset(now);
}

}  // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication app(argc, argv);
    const int seconds = argc > 1 ? std::atoi(argv[1]) : 60;
    AudioEngine engine(kRate);
    engine.setSynthesizer(Synthesizer::load(findSoundfont(), kRate));
    QFile file(QCoreApplication::applicationDirPath() + QStringLiteral("/note/ap.mid"));
    if (!engine.hasSynthesizer() || !file.open(QIODevice::ReadOnly)) {
        std::puts("no soundfont or no tune: nothing can be rendered");
        return EXIT_SUCCESS;
    }
    const QByteArray tune = file.readAll();
    const auto bell = std::make_shared<const Wave>(defaultSound(kRate));

    std::array<float, kFrames> left{};
    std::array<float, kFrames> right{};
    int posted = -1;
    for (std::int64_t frame = 0; frame < static_cast<std::int64_t>(kRate) * seconds;
         frame += kFrames) {
        const auto now = static_cast<std::int64_t>(static_cast<double>(frame) / kRate * kSecond);
        if (const int tenth = static_cast<int>(now * 10 / kSecond); tenth != posted) {
            posted = tenth;
            post(engine, tenth, now);
            if (tenth % 50 == 0)
                engine.startTune(Tune::start(tune), now);
            if (tenth % 20 == 0)
                engine.startWave(bell, now);
        }
        rendering = true;
        engine.render(left.data(), right.data(), kFrames, now);
        rendering = false;
    }
    std::printf(
        "%d s of sound: %ld allocations and releases, %ld locks, %ld reads and writes; %ld "
        "allocations and releases of OpenMP\n",
        seconds, counts.allocations, counts.locks, counts.files, counts.allocationsOfOpenMp);
    return EXIT_SUCCESS;
}
