#include "coherence/scenes.h"

#include "composer/composer_state.h"
#include "composer/frmComposer.h"
#include "eartraining/ear_training_state.h"
#include "eartraining/frmInto.h"
#include "manual/help_window.h"
#include "platform/desktop/held_input.h"
#include "platform/desktop/qt_dialogs.h"
#include "reading/staff_step.h"
#include "shell/main_window.h"
#include "support/test_world.h"
#include "support/window_driver.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>

#include <gtest/gtest.h>

#include <map>

using namespace std::chrono_literals;

namespace {

/// Does what a user does: clicks on controls, chooses items of the menu ("mnuApri"), and opens the
/// melody or folder of the library whose name ends so ("/Esempi").
void act(const WindowDriver& user, const QString& acts) {
    for (const QString& name : acts.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        if (name.startsWith(QLatin1String("mnu"))) {
            user.trigger(name);
        } else if (name.startsWith(QLatin1Char('/'))) {
            auto& list = *user.find<QWidget>("Fr2").findChild<QListWidget*>("List1");
            list.setCurrentItem(list.findItems(name.mid(1), Qt::MatchEndsWith).value(0));
            user.click("cmdEseguiFile");
        } else {
            user.click(name);
        }
    }
}

/// What a user does, by the time after a modal window has opened.
using Acts = std::map<Instant, QString>;

/// Opens a modal window, looks at it after the acts, ends with the last ones and closes it.
void lookAtModal(TestWorld& world, const std::function<void()>& open, const Acts& acts,
                 const Look& look, const QString& last = {}) {
    const Instant now = world.runtime.now();
    const auto window = [] { return qobject_cast<QDialog*>(QApplication::activeModalWidget()); };
    for (const auto& [after, names] : acts)
        world.runtime.at(now + after, [&, window] { act(WindowDriver(*window()), names); });
    world.runtime.at(now + 6s, [&, window] {
        QDialog& shown = *window();
        look(shown);
        act(WindowDriver(shown), last);
        if (shown.isVisible())
            shown.done(QDialog::Rejected);
    });
    open();
}

/// The composer over the example melodies, one of which is open and plays.
auto composer(const Acts& acts) {
    return [acts](const Look& look) {
        TestWorld world;
        world.openOutput();
        const QDir examples(QStringLiteral(MELODY_EXAMPLES));
        for (const QString& name : examples.entryList({QStringLiteral("*.mel")}, QDir::Files)) {
            QFile file(examples.filePath(name));
            EXPECT_TRUE(file.open(QIODevice::ReadOnly));
            world.folders.put("C:\\Cantavista\\Melodie\\Esempi\\" + name, file.readAll());
        }
        world.dialogs.confirmations.push_back(true);
        ComposerState state;
        frmComposer window(world.services(), state, nullptr);
        window.resize(1180, 720);
        world.runtime.at(1ms, [] {});
        Acts all = acts;
        all[10ms] = QStringLiteral("mnuApri /Esempi /Grace");
        lookAtModal(
            world, [&] { window.exec(); }, all, look);
    };
}

/// The ear-training window on an exercise, after these acts; a running one ends with the last.
auto ear(ExerciseCode exercise, const char* acts, const char* last = "") {
    return [=](const Look& look) {
        TestWorld world;
        world.openOutput();
        world.random.numbers = {0.3F};
        EarTrainingState state;
        state.request(exercise);
        frmInto window(world.services(), state, nullptr);
        lookAtModal(
            world, [&] { window.exec(); }, {{10ms, acts}}, look, last);
    };
}

/// The main window, past its first activation.
struct Main {
    TestWorld world;
    MainWindow window{world.services()};
    WindowDriver user{window};

    Main() {
        world.random.numbers = {0.15F, 0.7F, 0.4F, 0.85F, 0.05F, 0.55F, 0.3F,
                                0.95F, 0.5F, 0.2F, 0.75F, 0.35F, 0.6F,  0.45F};
        world.midi.mapperName = QStringLiteral("Sintetizzatore interno");
        window.show();
        while (world.runtime.now() == Instant{0})
            QCoreApplication::processEvents();
    }

    /// Starts a session and answers that many notes, the fifth of them wrongly at first.
    void answer(int notes) {
        const QStringList buttons{"pdo", "pre", "pmi", "pfa", "psol", "pla", "psi"};
        user.click("Start");
        for (int note = 1; note <= notes; ++note) {
            world.runtime.advance(1400ms);
            for (const int step : staff_step::all()) {
                const int degree = staff_step::degree(step);
                if (!user.shown(QStringLiteral("n%1").arg(step)))
                    continue;
                if (note == 5)
                    user.click(buttons[(degree + 2) % pitch::kDegrees]);
                user.click(buttons[degree]);
                break;
            }
        }
    }
};

/// The main window after some notes of a session.
void showSession(const Look& look) {
    Main main;
    main.answer(9);
    look(main.window);
}

/// The metronome beats during a session in the automatic mode.
void showMetronome(const Look& look) {
    Main main;
    const Instant now = main.world.runtime.now();
    act(main.user, QStringLiteral("mnuAutomatico mnuMetro"));
    for (int i = 0; i < 12 && main.user.text("lblTs") != QLatin1String("4/4"); ++i)
        main.user.click("lblTs");
    main.world.runtime.at(now + 500ms, [&] { main.user.click("cmdSSmetro"); });
    main.world.runtime.at(now + 5s, [&] {
        look(main.window);
        main.user.click("cmdSSmetro");
    });
    main.world.runtime.at(now + 6s, [&] { main.user.click("Start"); });
    main.user.click("Start");
}

void showSequence(const Look& look) {
    Main main;
    main.user.trigger("mnuMetro");
    lookAtModal(
        main.world, [&] { main.user.click("cmdSetup"); }, {},
        [&look](QWidget& window) {
            const WindowDriver user(window);
            user.find<QLineEdit>("txtPattern").setText(QStringLiteral("abcabcab"));
            user.find<QLineEdit>("txtTempo").setText(QStringLiteral("8/8"));
            look(window);
        });
}

/// A window that an item of the main window's menu opens, after these acts in it.
auto fromMenu(const char* item, const char* acts = "") {
    return [=](const Look& look) {
        Main main;
        main.world.midi.devices = {QStringLiteral("Tastiera USB MIDI 1"),
                                   QStringLiteral("Modulo sonoro Porta A")};
        lookAtModal(
            main.world, [&] { main.user.trigger(QLatin1String(item)); }, {{10ms, acts}}, look);
    };
}

void showHelp(const Look& look) {
    HelpWindow window(QStringLiteral(HELP_PAGES));
    window.showPage(QStringLiteral("index.html"));
    look(window);
}

auto box(const std::function<void(Dialogs&)>& show) {
    return [show](const Look& look) {
        TestWorld world;
        HeldInput heldInput;
        QtDialogs dialogs(world.runtime, heldInput);
        lookAtModal(
            world, [&] { show(dialogs); }, {}, look);
    };
}

}  // namespace

const std::vector<Scene>& scenes() {
    static const std::vector<Scene> all{
        {"main", false, showSession},
        {"metronome", false, showMetronome},
        {"sequence", true, showSequence},
        {"composer", true, composer({{2500ms, "cmdHideFr2 cmdHideBm"}})},
        {"library", true, composer({})},
        // A raised note becomes the active one.
        {"all-panels", true,
         composer({{2500ms, "cmdPlay"},
                   {2550ms, "lblStep_1"},
                   {4050ms, "lblStep_1"},
                   {5000ms, "lb_30"}})},
        {"pitches", false,
         ear(ExerciseCode::Pitch, "lb_24 lb_36 lb_24 IntoStart lb_27 lb_27 lb_29 lb_27 lb_27",
             "IntoStart")},
        {"intervals", false,
         ear(ExerciseCode::Interval, "Il_1 Il_6 Label7 CmdIntStart LblSemi_4 LblSemi_7 LblSemi_4",
             "CmdIntStart")},
        {"chords", false,
         ear(ExerciseCode::Chord, "lb_24 lb_36 EsclTa_3 ComdRacStart TipoAcc_0 TipoAcc_1 TipoAcc_1",
             "ComdRacStart")},
        {"reference-values", true, fromMenu("mnuPromemoria")},
        {"reference-keys", true, fromMenu("mnuPromemoria", "cmdSel_1 Ton_4")},
        {"reference-intervals", true, fromMenu("mnuPromemoria", "cmdSel_2")},
        {"midi-test", true, fromMenu("mnuMidiTest")},
        {"about", true, fromMenu("mnuVersione")},
        {"help", true, showHelp},
        {"message", true, box([](Dialogs& d) { d.message("Scegli un'altra nota !!!"); })},
        {"question", true,
         box([](Dialogs& d) { d.confirm("La melodia esiste già.\r\nVuoi sostituirla ?"); })},
        {"closing", true, box([](Dialogs& d) {
             d.confirmClosing("La melodia non è stata salvata. Chiudere comunque ?");
         })},
        {"input", true,
         box([](Dialogs& d) { d.input("Nome melodia", "Salva con nome", "Astro del ciel"); })},
    };
    return all;
}
