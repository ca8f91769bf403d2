#pragma once

#include "core/funzioni_mm.h"
#include "core/midi_keyboard.h"
#include "core/services.h"
#include "platform/dialogs.h"
#include "platform/help_viewer.h"
#include "platform/media.h"
#include "platform/midi_out.h"
#include "support/memory_folders.h"
#include "support/virtual_runtime.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <deque>
#include <map>
#include <set>
#include <string>
#include <vector>

/// Stands for the MIDI outputs and writes down what reaches them, one line a happening:
/// "0.000 open -1", "2.200 on 1 60 100" (channel, note, velocity), "2.200 program 16",
/// "3.000 reset", "4.000 close". Times are virtual seconds. What is planned is written down with
/// its instant when that has come, and after what a test wrote down at that very instant; nothing
/// that was taken back before.
class MidiRecorder : public MidiOut {
public:
    explicit MidiRecorder(const Runtime& runtime) : runtime_(runtime) {}

    QString mapperName = QStringLiteral("Mapper");
    std::vector<QString> devices{QStringLiteral("Porta A"), QStringLiteral("Porta B")};
    std::set<int> silentDevices;  ///< devices that do not tell their name
    int openCode = 0;
    int closeCode = 0;
    int sendCode = 0;
    bool deviceGone = false;  ///< refuses everything, also to be opened again

    bool takesPlans = true;
    Instant heardLater{0};  ///< the answer to `delay`

    /// The lines since the last call.
    std::vector<std::string> take();
    /// The same without the times.
    std::vector<std::string> takeUntimed();
    /// The device goes and is back before anybody notices.
    void replug();
    /// Puts a line of the test's own between the others.
    void note(const std::string& what);

    int deviceCount() override { return static_cast<int>(devices.size()); }
    std::optional<QString> deviceName(int deviceId) override;
    MidiOpenResult open(int deviceId) override;
    int send(MidiHandle handle, std::uint32_t message) override;
    int reset(MidiHandle handle) override;
    int close(MidiHandle handle) override;
    bool plan(MidiHandle handle, std::uint32_t message, Instant at) override;
    bool planReset(MidiHandle handle, Instant at) override;
    void cancelPlanned(MidiHandle handle) override;
    Instant delay(MidiHandle) const override { return heardLater; }
    bool gone(MidiHandle handle) const override;
    MidiOpenResult reopen(MidiHandle handle) override;
    QString errorText(int code) const override;

private:
    bool take(MidiHandle handle, const std::string& line, Instant at);
    void write(Instant when, const std::string& what) const;
    void writePlanned(Instant before) const;

    const Runtime& runtime_;
    MidiHandle lastHandle_ = 0;
    mutable std::vector<std::string> lines_;
    mutable std::multimap<Instant, std::string> planned_;
};

/// Writes down commands and sounds: "OPEN …", "sound rok.wav 20003" (flags in hexadecimal).
class MediaRecorder : public Media {
public:
    std::vector<std::string> lines;
    std::map<QString, int> codes;  ///< the answer to a command by its first word

    int command(const QString& text) override;
    QString errorText(int code) const override;
    bool playSound(const QString& path, std::uint32_t flags) override;
};

/// Answers boxes from a script and writes them down: "message: …", "confirm: …", "input: …",
/// "save: …", "open: …". Inputs answer the questions for files as well.
class ScriptedDialogs : public Dialogs {
public:
    std::vector<std::string> lines;
    std::deque<bool> confirmations;
    std::deque<QString> inputs;
    bool savesAtClosing = false;          ///< instead of an answer of the script
    std::function<void()> duringMessage;  ///< what happens while a message is on show

    void message(const QString& text) override;
    bool confirm(const QString& text) override;
    Closing confirmClosing(const QString& text) override {
        return savesAtClosing ? Closing::Save : Dialogs::confirmClosing(text);
    }
    QString input(const QString& prompt, const QString& title, const QString& proposed) override;
    QString saveFile(const QString& title, const QString& proposed, const FileKind& kind) override;
    QString openFile(const QString& title, const QString& kind,
                     const QStringList& suffixes) override;

private:
    QString nextInput(const QString& question);
};

class HelpRecorder : public HelpViewer {
public:
    QStringList shown;
    void show(const QString& helpFile) override { shown << helpFile; }
};

/// Random numbers from a script; when it is used up, the last one again.
class ScriptedRandom {
public:
    std::deque<float> numbers{0.0F};
    int drawn = 0;

    Random source();
};

/// Stands for the MIDI inputs: a test plugs keyboards in and sends their messages.
class MidiInFake : public MidiIn {
public:
    void plug(std::vector<MidiInput> inputs);
    void send(int input, std::uint32_t message, Instant at) const;

    std::vector<QString> inputNames() override;
    void listen(MidiInListener& listener) override;
    void stop() override { listener_ = nullptr; }

private:
    std::vector<MidiInput> inputs_;
    MidiInListener* listener_ = nullptr;
};

/// Everything that a window or a logic class is given, on virtual time.
struct TestWorld {
    VirtualRuntime runtime;
    MidiRecorder midi{runtime};
    MidiInFake midiIn;
    MediaRecorder media;
    ScriptedDialogs dialogs;
    MemoryFolders folders;
    HelpRecorder help;
    ScriptedRandom random;
    FunzioniMM funzioniMM{runtime, midi, media, dialogs, random.source()};

    MidiKeyboard midiKeyboard{runtime, midiIn};

    Services services() {
        return {runtime, midi, dialogs, folders, help, funzioniMM, nullptr, &midiKeyboard};
    }

    /// Plugs one keyboard in, which is heard at once.
    void plugKeyboard();
    /// Moves a key of it now.
    void key(int note, bool down) {
        midiIn.send(1, 0x90u | static_cast<std::uint32_t>(note) << 8 | (down ? 0x400000u : 0u),
                    runtime.now());
    }

    /// Opens the default output and forgets that it did.
    void openOutput();
};
