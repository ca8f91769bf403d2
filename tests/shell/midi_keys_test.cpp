#include "composer/frmComposer.h"
#include "eartraining/ear_training_state.h"
#include "eartraining/frmInto.h"
#include "shell/main_window.h"
#include "support/test_world.h"
#include "support/window_driver.h"
#include "widgets/piano_keyboard.h"

#include <QAction>

#include <gtest/gtest.h>

#include <optional>

using namespace std::chrono_literals;

namespace {

enum class Source { Mouse, ComputerKey, MidiKey };

/// One of three users of a window, who plays the same notes in his own way.
struct Player {
    explicit Player(Source theSource) : source(theSource) {
        world.openOutput();
        world.plugKeyboard();
        world.random.numbers = {0.1F, 0.9F, 0.5F, 0.3F, 0.7F, 0.1F, 0.2F};
        // A modal window's opening takes the first acts in a single pass.
        for (const Instant opening : {1ms, 2ms})
            world.runtime.at(opening, [] {});
    }

    /// Presses a key at an instant and lets it go 0.1 s later.
    void play(QWidget& window, int note, Instant when) {
        if (source == Source::ComputerKey && window.objectName() == "frmComposer")
            return world.runtime.press("ZSXDCVGBHNJM"[note - 48], when, when + 100ms);
        for (const bool down : {true, false})
            world.runtime.at(down ? when : when + 100ms,
                             [=, this, &window] { move(window, note, down); });
    }
    void move(QWidget& window, int note, bool down) {
        if (source == Source::MidiKey)
            return world.key(note, down);
        auto& keyboard = *window.findChild<PianoKeyboard*>();
        auto& key = *keyboard.findChild<QWidget*>(QStringLiteral("lb_%1").arg(note - 36));
        if (source == Source::Mouse)
            return sendMouse(keyboard, down ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease,
                             key.mapTo(&keyboard, QPoint(key.width() / 2, key.height() - 3)));
        keyboard.setFocus();
        keyboard.moveCursor(note - 36);
        sendSystemKey(window, down ? QEvent::KeyPress : QEvent::KeyRelease, Qt::Key_Space);
    }

    /// All that is left when the window's time is over.
    std::vector<std::string> outcome(QWidget& window, std::initializer_list<const char*> controls) {
        std::vector<std::string> lines = world.midi.takeUntimed();
        for (const auto* more : {&world.media.lines, &world.dialogs.lines})
            lines.insert(lines.end(), more->begin(), more->end());
        for (const char* name : controls)
            lines.push_back(WindowDriver(window).text(name).toStdString());
        for (const auto* keyboard : window.findChildren<PianoKeyboard*>()) {
            for (int key = 0; key < PianoKeyboard::kKeys; ++key)
                lines.push_back(std::to_string(keyboard->pressed(key)) +
                                std::to_string(keyboard->rangeMark(key)));
        }
        return lines;
    }

    std::vector<std::string> drill(bool automatic) {
        MainWindow window(world.services());
        const WindowDriver user(window);
        window.show();
        while (world.runtime.now() == Instant{0})
            QCoreApplication::processEvents();
        world.midi.take();
        user.trigger(automatic ? "mnuAutomatico" : "mnuNormale");
        // Si, La, Mi, Si …: right and wrong answers, one key that is held into the next note.
        for (int i = 0; i < 12; ++i) {
            const int degree = (i * 5 + 6) % 7;
            const Instant from = world.runtime.now() + i * 700ms + 10ms;
            const Instant until = from + (i == 4 ? 900ms : 100ms);
            const QString typed(QStringLiteral("d1f2g3h").at(degree));
            if (source == Source::ComputerKey && automatic)
                world.runtime.press(degree % 2 ? kKeyNumpad0 + "4162738"[degree] - '0'
                                               : letterKey("D-F-G-H"[degree]),
                                    from, until);
            else if (source == Source::ComputerKey)
                world.runtime.at(from, [=] { user.type(Qt::Key_unknown, typed); });
            else if (source == Source::Mouse)
                world.runtime.at(from, [=] {
                    user.click(
                        QStringList{"pdo", "pre", "pmi", "pfa", "psol", "pla", "psi"}.at(degree));
                });
            for (const bool down : {true, false}) {
                if (source == Source::MidiKey)
                    world.runtime.at(down ? from : until, [=, this] {
                        world.key(12 * (i % 11) + "024579;"[degree] - '0', down);
                    });
            }
        }
        const Instant end = world.runtime.now() + 9s;
        world.runtime.at(end, [&] { user.click("Start"); });
        user.click("Start");
        world.runtime.runActs();
        return outcome(window, {"conta", "er", "Start"});
    }

    std::vector<std::string> melody() {
        frmComposer window(world.services(), nullptr);
        const WindowDriver user(window);
        const Instant start = 100ms;
        for (int i = 0; i < 12; ++i) {
            play(window, 48 + i, start + i * 500ms);
            if (i == 7)
                world.runtime.at(start + i * 500ms - 50ms, [=] { user.click("cmdAttrNota_2"); });
            world.runtime.at(start + i * 500ms + 200ms, [=] { user.click("cmdInsNota"); });
        }
        std::vector<std::string> lines;
        world.runtime.at(7s, [&] {
            lines = outcome(window, {"lblActNote", "lblNt"});
            world.dialogs.confirmations = {true};
            window.reject();
        });
        window.exec();
        return lines;
    }

    std::vector<std::string> pitches() {
        EarTrainingState state;
        frmInto window(world.services(), state, nullptr);
        const WindowDriver user(window);
        const int notes[] = {60, 61, 72, 80, 66, 61, 70, 71, 65, 60, 60};
        Instant when = 100ms;
        for (const int note : notes) {
            play(window, note, when);
            if (when == 1300ms)
                world.runtime.at(when + 200ms, [=] { user.click("IntoStart"); });
            when += 300ms;
        }
        std::vector<std::string> lines;
        world.runtime.at(when, [&] {
            lines = outcome(window, {"lblStep", "txtResatte", "txtRerrate", "lblPerc"});
            user.click("IntoStart");
            window.close();
        });
        window.exec();
        return lines;
    }

    Source source;
    TestWorld world;
};

}  // namespace

TEST(ThreeSources, GiveTheSameStateAndMessages) {
    using Work = std::function<std::vector<std::string>(Player&)>;
    const std::pair<const char*, Work> works[] = {
        {"drill", [](Player& player) { return player.drill(false); }},
        {"automatic drill", [](Player& player) { return player.drill(true); }},
        {"composer", [](Player& player) { return player.melody(); }},
        {"ear training", [](Player& player) { return player.pitches(); }},
    };
    for (const auto& [name, work] : works) {
        std::optional<std::vector<std::string>> byKey;
        for (const Source source : {Source::ComputerKey, Source::MidiKey, Source::Mouse}) {
            if (source == Source::Mouse && name == works[1].first)
                continue;  // it is answered with keys alone
            Player player(source);
            const std::vector<std::string> lines = work(player);
            byKey = byKey.value_or(lines);
            EXPECT_EQ(lines, *byKey) << name << ' ' << static_cast<int>(source);
        }
    }
}
