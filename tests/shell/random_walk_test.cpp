#include "shell/main_window.h"
#include "shell/status_line.h"
#include "support/test_world.h"
#include "support/window_driver.h"

#include <QAbstractSlider>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QStatusBar>
#include <QTimer>
#include <QToolButton>

#include <gtest/gtest.h>

#include <random>

using namespace std::chrono_literals;

namespace {

constexpr unsigned kWalks = 70;
constexpr unsigned kSteps = 250;

/// Which notes sound, and whether any was begun that may not be.
class MidiWatch : public MidiRecorder {
public:
    using MidiRecorder::MidiRecorder;

    std::set<std::uint32_t> sounding;  ///< status and note
    std::function<bool()> clicksMayBegin;

    int send(MidiHandle handle, std::uint32_t message) override {
        const std::uint32_t note = message & 0xFFFF;
        if (message == note)
            sounding.erase(note);
        else if (handle != 0 && (note & 0xF0) == 0x90)
            sounding.insert(note);
        const bool click = sounding.count(note) > 0 && (note & 0xF) == 9;
        EXPECT_TRUE(!click || clicksMayBegin()) << "a click without an activity";
        return 0;
    }
    int reset(MidiHandle) override {
        sounding.clear();
        return 0;
    }
    int close(MidiHandle handle) override { return reset(handle); }
};

/// Answers as it comes.
class HastyDialogs : public Dialogs {
public:
    explicit HastyDialogs(std::mt19937& random) : random_(random) {}

    void message(const QString&) override {}
    bool confirm(const QString&) override { return random_() % 2 == 0; }
    QString input(const QString&, const QString&, const QString& proposed) override {
        return random_() % 2 == 0 ? proposed : QStringLiteral("Nome %1").arg(random_() % 5);
    }

private:
    std::mt19937& random_;
};

/// Lets something happen in the middle of a wait now and then, as a screen reader can. Its end
/// leaves the loops of modal windows as the program's own does.
class WalkRuntime : public VirtualRuntime {
public:
    void end() override {
        VirtualRuntime::end();
        QCoreApplication::exit();
    }

    std::function<void()> duringWait;

    void blockUntil(Instant end) override {
        if (duringWait)
            duringWait();
        VirtualRuntime::blockUntil(end);
    }
};

bool opensMenu(const QAbstractButton& button) {
    const auto* push = qobject_cast<const QPushButton*>(&button);
    const auto* tool = qobject_cast<const QToolButton*>(&button);
    return (push && push->menu()) || (tool && tool->menu());
}

/// One user at the main window and whatever it opens, who does things at random.
struct Walk {
    std::mt19937 random;
    WalkRuntime runtime;
    MidiWatch midi{runtime};
    MediaRecorder media;
    HastyDialogs dialogs{random};
    MemoryFolders folders;
    HelpRecorder help;
    FunzioniMM funzioniMM{runtime, midi, media, dialogs,
                          [this] { return static_cast<float>(random() >> 8) * 0x1p-24F; }};
    std::unique_ptr<MainWindow> window;
    std::string trace;
    bool ended = false;

    explicit Walk(unsigned seed) : random(seed) {}

    std::size_t draw(std::size_t count) { return random() % count; }

    void note(const QString& what) {
        trace += std::to_string(runtime.now() / 1ms) + ' ' + what.toStdString() + '\n';
        if (trace.size() > 1500)
            trace.erase(0, 500);
    }

    bool metronomeRuns() const { return !WindowDriver(*window).enabled("cmdEsci"); }

    template <typename Control>
    Control* any(QWidget& in) {
        QList<Control*> usable;
        for (Control* control : in.findChildren<Control*>()) {
            if (control->isVisible() && control->isEnabled() && control->window() == &in)
                usable << control;
        }
        return usable.isEmpty() ? nullptr : usable[static_cast<int>(draw(usable.size()))];
    }

    void clickAny(QWidget& in) {
        auto* button = any<QAbstractButton>(in);
        // A menu that comes up has a loop of the toolkit's own, in which virtual time stands still.
        if (button && !opensMenu(*button)) {
            note("click " + button->objectName());
            sendMouse(*button, QEvent::MouseButtonPress, button->rect().center());
            if (draw(4) == 0)
                queueKey(in, Qt::Key_Escape);
            sendMouse(*button, QEvent::MouseButtonRelease, button->rect().center());
        }
    }

    void triggerAny(QWidget& in) {
        QList<QAction*> items;
        for (const QMenu* menu : in.findChildren<QMenu*>()) {
            for (QAction* item : menu->actions()) {
                if (menu->isEnabled() && item->isEnabled() && !item->isSeparator())
                    items << item;
            }
        }
        // Most of what the main menu offers is another window.
        if (items.isEmpty() || draw(2) == 0)
            return;
        QAction* item = items[static_cast<int>(draw(items.size()))];
        if (item->objectName() == "Esci" && draw(20) != 0)
            return;
        note("menu " + item->objectName());
        item->trigger();
    }

    void changeAny(QWidget& in) {
        if (auto* bar = any<QAbstractSlider>(in); bar && draw(2) == 0)
            bar->setValue(bar->minimum() +
                          static_cast<int>(draw(std::size_t(bar->maximum() - bar->minimum()) + 1)));
        else if (auto* list = any<QComboBox>(in); list && list->count() > 0) {
            list->setCurrentIndex(static_cast<int>(draw(std::size_t(list->count()))));
            note("list " + list->objectName());
            Q_EMIT list->activated(list->currentIndex());
        }
    }

    void close(QWidget& in) {
        if (&in == window.get() && draw(15) != 0)
            return;
        note("close " + in.objectName());
        in.close();
        queueKey(in, Qt::Key_Space);
    }

    void step() {
        checkControls();
        QWidget* modal = QApplication::activeModalWidget();
        QWidget& in = modal ? *modal : *window;
        const std::array<std::function<void()>, 7> actions{
            [&] { clickAny(in); },
            [&] { clickAny(in); },
            [&] { triggerAny(in); },
            [&] { changeAny(in); },
            [&] {
                note("keys");
                queueKey(in, draw(2) == 0 ? Qt::Key_Escape : Qt::Key_Return);
                queueKey(in, Qt::Key_Space);
            },
            [&] {
                const KeyCode key = "ZSXDFGH"[draw(7)];
                runtime.press(key, runtime.now(), runtime.now() + 300ms);
            },
            [&] { close(in); },
        };
        actions[draw(actions.size())]();
    }

    /// A screen reader's press comes through a wait too.
    void stepInWait() {
        QWidget* modal = QApplication::activeModalWidget();
        auto* button = draw(6) == 0 ? any<QAbstractButton>(modal ? *modal : *window) : nullptr;
        if (button && !opensMenu(*button)) {
            note("reader " + button->objectName());
            button->click();
        }
    }

    /// What a session or the metronome disables is disabled together.
    void checkControls() const {
        const WindowDriver main(*window);
        const bool idle = main.enabled("cmdEsci");
        const bool session = main.text("Start") == "Stop";
        for (const char* control : {"cmdSetup", "lblCloseMetro", "f1", "es", "Opzioni"})
            EXPECT_EQ(window->findChild<QWidget*>(control)->isEnabled(), idle) << control;
        EXPECT_EQ(main.enabled("Regolo"), !session);
        EXPECT_EQ(main.shown("Slider1"), main.find<QAction>("mnuAutomatico").isChecked());
        EXPECT_FALSE(main.enabled("pdo") && main.shown("Slider1")) << "answers in automatic mode";
        const auto* status = main.find<QStatusBar>("statusBar").findChild<QLabel*>();
        EXPECT_EQ(status->text(), status_line::text(funzioniMM));
    }

    /// With no activity on, nothing sounds; the custom sequence's clicks end by themselves.
    void checkRest() {
        const bool session = WindowDriver(*window).text("Start") == "Stop";
        if (session || metronomeRuns() || QApplication::activeModalWidget())
            return;
        std::erase_if(midi.sounding, [](std::uint32_t note) { return (note & 0xF) == 9; });
        EXPECT_TRUE(midi.sounding.empty()) << "a note sounds without an activity";
    }

    void go() {
        window = std::make_unique<MainWindow>(
            Services{runtime, midi, dialogs, folders, help, funzioniMM});
        midi.clicksMayBegin = [this] {
            const QWidget* modal = QApplication::activeModalWidget();
            return metronomeRuns() || (modal && modal->objectName() == "frmConfMetro");
        };
        window->show();
        while (runtime.now() == Instant{0})
            QCoreApplication::processEvents();
        runtime.duringWait = [this] { stepInWait(); };
        Instant when = runtime.now();
        for (unsigned i = 0; i < kSteps; ++i)
            runtime.at(when += std::chrono::milliseconds(draw(900)), [this] { step(); });
        runtime.at(when += 1s, [this] { runtime.end(); });
        while (!runtime.ending()) {
            runtime.runNextAct();
            checkRest();
        }
        runtime.forgetActs();
        EXPECT_TRUE(midi.sounding.empty()) << "a note sounds at the end";
    }
};

}  // namespace

TEST(RandomWalk, NothingSoundsWhileNoActivityRuns) {
    for (unsigned seed = 0; seed < kWalks && !testing::Test::HasFailure(); ++seed) {
        Walk walk(seed);
        QTimer::singleShot(0, [&walk] { walk.go(); });
        QApplication::exec();
        if (testing::Test::HasFailure())
            ADD_FAILURE() << "seed " << seed << '\n' << walk.trace;
    }
}
