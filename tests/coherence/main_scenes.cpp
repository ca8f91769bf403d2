#include "coherence/stage.h"
#include "manual/help_window.h"
#include "platform/desktop/qt_dialogs.h"
#include "reading/staff_step.h"
#include "shell/main_window.h"

#include <QApplication>
#include <QDateTime>
#include <QLineEdit>
#include <QListWidget>

#include <array>
#include <optional>

using namespace std::chrono_literals;

namespace {

constexpr std::array kAnswerButtons{"pdo", "pre", "pmi", "pfa", "psol", "pla", "psi"};

/// The main window, past its first activation.
struct Main {
    TestWorld world;
    MainWindow window{world.services()};
    WindowDriver user{window};

    Main() {
        world.runtime.setWallClock(QDateTime(QDate(2004, 10, 1), QTime(0, 0)));
        world.random.numbers = {0.15F, 0.7F, 0.4F, 0.85F, 0.05F, 0.55F, 0.3F,
                                0.95F, 0.5F, 0.2F, 0.75F, 0.35F, 0.6F,  0.45F};
        world.midi.mapperName = QStringLiteral("Sintetizzatore interno");
        window.show();
        while (world.runtime.now() == Instant{0})
            QCoreApplication::processEvents();
    }

    std::optional<int> degreeOnShow() const {
        for (const int step : staff_step::all()) {
            if (user.shown(QStringLiteral("n%1").arg(step)))
                return staff_step::degree(step);
        }
        return std::nullopt;
    }

    /// Starts a session and answers that many notes, the fifth of them wrongly at first.
    void answer(int notes) {
        user.click("Start");
        for (int note = 1; note <= notes; ++note) {
            world.runtime.advance(1400ms);
            const int degree = degreeOnShow().value_or(0);
            if (note == 5)
                user.click(buttonOf((degree + 2) % pitch::kDegrees));
            user.click(buttonOf(degree));
        }
        world.runtime.advance(900ms);
    }

    static QString buttonOf(int degree) {
        return QLatin1String(kAnswerButtons[static_cast<std::size_t>(degree)]);
    }
};

void showReference(std::initializer_list<const char*> clicks, const Look& look) {
    Main main;
    lookAtModal(
        main.world, [&main] { main.user.trigger("mnuPromemoria"); },
        [&look, clicks](QWidget& window) {
            for (const char* button : clicks)
                WindowDriver(window).click(QLatin1String(button));
            look(window);
        });
}

}  // namespace

void showMain(const Look& look) {
    Main main;
    main.answer(9);
    look(main.window);
}

/// The right column at its fullest: statistics, speed and metronome.
void showStatistics(const Look& look) {
    Main main;
    main.answer(12);
    main.user.click("Start");
    main.user.trigger("mnuAutomatico");
    main.user.trigger("mnuMetro");
    look(main.window);
}

/// The metronome beats during a session in the automatic mode.
void showMetronome(const Look& look) {
    Main main;
    const Instant now = main.world.runtime.now();
    main.user.trigger("mnuAutomatico");
    main.user.trigger("mnuMetro");
    for (int i = 0; i < 12 && main.user.text("lblTs") != QLatin1String("4/4"); ++i)
        main.user.click("lblTs");
    main.world.runtime.at(now + 500ms, [&main] { main.user.click("cmdSSmetro"); });
    main.world.runtime.at(now + 5s, [&main, &look] {
        look(main.window);
        main.user.click("cmdSSmetro");
    });
    main.world.runtime.at(now + 6s, [&main] { main.user.click("Start"); });
    main.user.click("Start");
}

void showSequence(const Look& look) {
    Main main;
    main.user.trigger("mnuMetro");
    lookAtModal(
        main.world, [&] { main.user.click("cmdSetup"); },
        [&look](QWidget& window) {
            const WindowDriver user(window);
            user.find<QLineEdit>("txtPattern").setText(QStringLiteral("abcabcab"));
            user.find<QLineEdit>("txtTempo").setText(QStringLiteral("8/8"));
            look(window);
        });
}

void showNoteValues(const Look& look) {
    showReference({}, look);
}

void showKeySignature(const Look& look) {
    showReference({"cmdSel_1", "Ton_4"}, look);
}

void showDegrees(const Look& look) {
    showReference({"cmdSel_1", "Ton_16"}, look);
}

void showIntervalTable(const Look& look) {
    showReference({"cmdSel_2"}, look);
}

void showMidiTest(const Look& look) {
    Main main;
    main.world.midi.devices = {QStringLiteral("Tastiera USB MIDI 1"),
                               QStringLiteral("Modulo sonoro Porta A")};
    lookAtModal(
        main.world, [&] { main.user.trigger("mnuMidiTest"); }, look);
}

void showAbout(const Look& look) {
    Main main;
    lookAtModal(
        main.world, [&] { main.user.trigger("mnuVersione"); }, look);
}

void showHelp(const Look& look) {
    HelpWindow window(QStringLiteral(HELP_PAGES));
    window.showPage(QStringLiteral("index.html"));
    look(window);
}

void showHelpSearch(const Look& look) {
    HelpWindow window(QStringLiteral(HELP_PAGES));
    window.showPage(QStringLiteral("metronomo.html"));
    WindowDriver(window).find<QLineEdit>("txtCerca").setText(QStringLiteral("tempo"));
    look(window);
}

void showMessage(const Look& look) {
    TestWorld world;
    QtDialogs dialogs(world.runtime);
    lookAtModal(
        world, [&] { dialogs.message(QStringLiteral("Scegli un'altra nota !!!")); }, look);
}

void showQuestion(const Look& look) {
    TestWorld world;
    QtDialogs dialogs(world.runtime);
    lookAtModal(
        world,
        [&] { dialogs.confirm(QStringLiteral("La melodia esiste già.\r\nVuoi sostituirla ?")); },
        look);
}

void showInput(const Look& look) {
    TestWorld world;
    QtDialogs dialogs(world.runtime);
    lookAtModal(
        world,
        [&] {
            dialogs.input(QStringLiteral("Nome melodia"), QStringLiteral("Salva con nome"),
                          QStringLiteral("Astro del ciel"));
        },
        look);
}
