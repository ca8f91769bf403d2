// What src/platform/windows does without the toolkit, on the console. The argument says whether the
// machine has the logging MIDI output ("output") or none ("none").

#include "platform/key_places.h"
#include "platform/midi_bytes.h"
#include "platform/windows/media_player.h"
#include "platform/windows/midi_inputs.h"
#include "platform/windows/midi_output.h"
#include "platform/windows/paths.h"
#include "platform/windows/timer_resolution.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

namespace {

namespace fs = std::filesystem;

int failures = 0;

void expect(bool holds, const char* what) {
    if (holds)
        return;
    std::printf("FAILED: %s\n", what);
    ++failures;
}

void checkNoOutput() {
    MidiOutput output;
    expect(MidiOutput::count() == 0, "no output is counted");
    expect(!MidiOutput::name(0), "a missing output has no name");
    const auto [code, handle] = output.open(-1);
    expect(code != 0 && handle == 0, "the mapper does not open");
    expect(!MidiOutput::errorText(code).empty(), "the system has a text");
    expect(output.open(7).code == MMSYSERR_BADDEVICEID, "an unknown number does not open");
}

Instant now() {
    return std::chrono::duration_cast<Instant>(std::chrono::steady_clock::now().time_since_epoch());
}

/// Ten notes at tenths of a second and one that is taken back; the log has their instants.
void checkPlanned(MidiOutput& output, std::uint32_t handle) {
    using namespace std::chrono_literals;
    const Instant begin = now();
    for (int i = 1; i <= 10; ++i)
        expect(
            output.plan(handle, 0x642890u + static_cast<unsigned>(i) * 0x100u, begin + i * 100ms),
            "a note is planned");
    expect(output.plan(handle, 0x647F90, begin + 1300ms), "a note is planned");
    std::this_thread::sleep_for(1200ms);
    output.cancelPlanned(handle);
    std::this_thread::sleep_for(300ms);
    expect(!output.plan(handle + 1, 0x643C90, begin), "an unknown handle plans nothing");
}

void checkOutput() {
    MidiOutput output;
    expect(MidiOutput::count() == 1, "one output is counted");
    expect(MidiOutput::name(0) == L"Uscita di prova", "the output has its name");
    expect(MidiOutput::name(-1).has_value(), "the mapper has a name");
    expect(!MidiOutput::name(1), "a missing output has no name");
    const auto [code, handle] = output.open(-1);
    expect(code == 0 && handle != 0, "the mapper opens");
    expect(output.send(handle, 0x10C0) == 0, "a program is sent");
    expect(output.send(handle, 0x643C90) == 0, "a note is sent");
    expect(output.reset(handle) == 0, "the output is reset");
    expect(output.close(handle) == 0, "the output closes");
    expect(output.send(handle, 0x3C90) == MMSYSERR_INVALHANDLE, "a closed handle sends nothing");
    expect(output.close(handle) == MMSYSERR_INVALHANDLE, "a closed handle does not close again");
    const auto again = output.open(0);
    expect(again.code == 0 && again.handle != handle, "handles are not used twice");
    checkPlanned(output, again.handle);
}

/// The driver's fifty keys come down and up, and nothing of what it sends between them.
void checkInputs() {
    std::atomic<int> down = 0, up = 0, others = 0, changes = 0;
    expect(MidiInputs::names() == std::vector<std::wstring>{L"Tastiera di prova"},
           "the input is listed");
    {
        MidiInputs inputs(
            [&](const std::vector<MidiInputs::Input>& now) {
                changes += now.size() == 1 ? 1 : 100;
            },
            [&](int, std::uint32_t message) {
                ++(!midi_bytes::isAboutKeys(message)                    ? others
                   : midi_bytes::kindOf(message) == midi_bytes::kNoteOn ? down
                                                                        : up);
            });
        SendMessageW(FindWindowW(L"Cantavista MIDI", nullptr), WM_DEVICECHANGE, 7, 0);
        Sleep(1500);
    }
    std::printf("%d %d %d %d\n", down.load(), up.load(), others.load(), changes.load());
    expect(changes == 1, "the input is told of once, however often devices change");
    expect(down == 50 && up == 50, "every key comes down and up");
}

void checkKeys() {
    expect(keyPlaceOf(0x4B) == 75 && keyPlaceOf(0x14B) == 105, "the arrow is not the keypad's 4");
}

void checkPaths(const fs::path& folder) {
    for (const wchar_t* good : {L"C:\\Canto d'estate.mel", L"CONTO.mel", L"..\\\u00E8.mel"})
        expect(paths::isPossible(good), "a good name is possible");
    for (const wchar_t* bad :
         {L"C:\\a:b.mel", L"C:\\con.mel", L"Com1", L"a .\\b", L"a\tb", L"fine."})
        expect(!paths::isPossible(bad), "a bad name is impossible");

    const fs::path melodies = folder / L"Melodie";
    fs::create_directories(melodies / L"Sotto");
    const std::wstring root = paths::followed(melodies.native());
    expect(paths::followed((melodies / L"SOTTO\\..\\..\\melodie").native()) == root,
           "the folder's own letters count");
    expect(paths::followed((melodies / L"x\\y.mel").native()) == root + L"\\x\\y.mel",
           "what is missing is added");
    expect(!paths::isReady(L"A:\\"), "there is no disk in the drive");
}

/// A MIDI file with a note that lasts a second.
constexpr unsigned char kTune[] = {'M',  'T',  'h',  'd',  0,    0,    0, 6, 0,    0,    0, 1,
                                   0,    96,   'M',  'T',  'r',  'k',  0, 0, 0,    13,   0, 0x90,
                                   0x45, 0x64, 0x81, 0x40, 0x90, 0x45, 0, 0, 0xFF, 0x2F, 0};

void checkMedia(const fs::path& folder) {
    const fs::path tune = folder / L"con spazi \u00E8 lungo.mid";
    std::ofstream(tune, std::ios::binary).write(reinterpret_cast<const char*>(kTune), sizeof kTune);
    const std::wstring alias = L"jepa";
    expect(media_player::open(tune.native(), alias) == 0, "a file with blanks in its name opens");
    expect(media_player::play(alias) == 0, "it plays");
    const int again = media_player::open(tune.native(), alias);
    expect(again != 0 && !media_player::errorText(again).empty(), "an alias opens one file");
    Sleep(300);
    expect(media_player::close(alias) == 0, "it closes");
    const int missing = media_player::open((folder / L"no.mid").native(), alias);
    expect(missing != 0, "a missing file does not open");
}

}  // namespace

int main(int count, char* arguments[]) {
    const TimerResolution resolution;
    const fs::path folder = fs::temp_directory_path() / "cantavista prova";
    fs::create_directories(folder);
    if (count > 1 && arguments[1] == std::string("none")) {
        checkNoOutput();
        expect(MidiInputs::names().empty(), "no input is listed");
        MidiInputs none([](const auto&) { expect(false, "an input came"); }, [](int, auto) {});
    } else {
        checkOutput();
        checkInputs();
    }
    checkKeys();
    checkPaths(folder);
    checkMedia(folder);
    fs::remove_all(folder);
    std::printf(failures == 0 ? "passed\n" : "%d failures\n", failures);
    return failures == 0 ? 0 : 1;
}
