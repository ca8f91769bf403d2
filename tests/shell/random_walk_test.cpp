#include "shell/main_window.h"
#include "support/test_world.h"
#include "support/window_driver.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>

#include <gtest/gtest.h>

#include <random>
#include <sstream>

using namespace std::chrono_literals;

namespace {

constexpr unsigned kWalks = 70;
constexpr unsigned kSteps = 250;

/// One user at the main window and whatever it opens, who does things at random.
struct Walk {
    std::mt19937 random;
    TestWorld world;
    VirtualRuntime& runtime = world.runtime;
    MainWindow window{world.services()};
    WindowDriver user{window};
    /// A screen reader's press comes through a wait too.
    std::unique_ptr<Alarm> reader = runtime.makeAlarm([this] { press(false); });
    std::set<std::pair<int, int>> sounding;  ///< channel and note
    bool mayClick = false;

    explicit Walk(unsigned seed) : random(seed) {}

    int draw(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }

    QWidget& front() {
        QWidget* modal = QApplication::activeModalWidget();
        return modal ? *modal : window;
    }
    bool metronomeRuns() { return !user.enabled("cmdEsci"); }

    void press(bool byMouse) {
        listen();
        QList<QAbstractButton*> usable;
        for (auto* candidate : front().findChildren<QAbstractButton*>()) {
            if (candidate->isVisible() && candidate->isEnabled())
                usable << candidate;
        }
        QAbstractButton* button = usable.value(draw(std::max(1, int(usable.size()))));
        const auto* push = qobject_cast<QPushButton*>(button);
        const auto* tool = qobject_cast<QToolButton*>(button);
        // A menu that comes up has a loop of the toolkit's own, in which virtual time stands still.
        if (!button || (push && push->menu()) || (tool && tool->menu()))
            return;
        if (!byMouse)
            return button->click();
        sendMouse(*button, QEvent::MouseButtonPress, button->rect().center());
        if (draw(4) == 0)
            type(Qt::Key_Escape);
        sendMouse(*button, QEvent::MouseButtonRelease, button->rect().center());
    }

    void type(Qt::Key key) {
        queueKey(front(), key);
        mayClick = true;
    }

    void choose() {
        const QMenu* menu = front().findChildren<QMenu*>().value(draw(6));
        QAction* item = menu && menu->isEnabled() ? menu->actions().value(draw(12)) : nullptr;
        if (item && (item->objectName() != "Esci" || draw(20) == 0))
            item->trigger();
    }

    void close() {
        if (&front() == &window && draw(15) != 0)
            return;
        const bool stays = &front() == &window && metronomeRuns();
        EXPECT_TRUE(!front().close() || !stays);
        type(Qt::Key_Space);
    }

    void step() {
        listen();
        EXPECT_TRUE(user.enabled("Help"));
        for (const char* control : {"cmdSetup", "lblCloseMetro", "f1", "es", "Opzioni"})
            EXPECT_NE(user.enabled(control), metronomeRuns()) << control;
        world.random.numbers.resize(200);
        for (float& number : world.random.numbers)
            number = static_cast<float>(random() >> 8) * 0x1p-24F;
        world.dialogs.confirmations.assign(50, draw(2) == 0);
        world.dialogs.inputs.assign(50, QStringLiteral("Nome %1").arg(draw(5)));
        reader->set(runtime.now() + std::chrono::milliseconds(draw(5000)));
        const std::function<void()> acts[] = {
            [&] { press(true); },
            [&] { press(true); },
            [&] { choose(); },
            [&] { close(); },
            [&] { type(draw(2) == 0 ? Qt::Key_Escape : Qt::Key_Return); },
            [&] {
                runtime.press(letterKey("ZSXDFGH"[draw(7)]), runtime.now(), runtime.now() + 300ms);
            },
        };
        acts[draw(std::size(acts))]();
    }

    /// Notes which notes sound, and whether a click has begun that may not.
    void listen() {
        const bool clicks = metronomeRuns() || front().objectName() == "frmConfMetro";
        for (const std::string& line : world.midi.take()) {
            std::string time, what;
            int channel = 0, pitch = 0, velocity = 0;
            std::istringstream(line) >> time >> what >> channel >> pitch >> velocity;
            EXPECT_TRUE(what != "on" || channel != 10 || velocity == 0 || clicks || mayClick)
                << line;
            if (what == "on" && velocity > 0)
                sounding.emplace(channel, pitch);
            else if (what == "on")
                sounding.erase({channel, pitch});
            else if (what == "reset" || what == "close")
                sounding.clear();
        }
        mayClick = clicks;
    }

    /// With no activity on, nothing sounds; the custom sequence's clicks end by themselves.
    void checkRest() {
        listen();
        if (user.text("Start") == "Stop" || metronomeRuns() || &front() != &window)
            return;
        std::erase_if(sounding, [](auto note) { return note.first == 10; });
        EXPECT_TRUE(sounding.empty()) << "a note sounds without an activity";
    }

    void go() {
        window.show();
        while (runtime.now() == Instant{0})
            QCoreApplication::processEvents();
        Instant when = runtime.now();
        for (unsigned i = 0; i < kSteps; ++i)
            runtime.at(when += std::chrono::milliseconds(draw(900)), [this] { step(); });
        runtime.at(when + 1s, [this] {
            runtime.end();
            QCoreApplication::exit();
        });
        while (!runtime.ending()) {
            runtime.runNextAct();
            checkRest();
        }
        runtime.forgetActs();
        listen();
        EXPECT_TRUE(sounding.empty()) << "a note sounds at the end";
    }
};

}  // namespace

TEST(RandomWalk, NothingSoundsWhileNoActivityRuns) {
    for (unsigned seed = 0; seed < kWalks && !testing::Test::HasFailure(); ++seed) {
        Walk walk(seed);
        QTimer::singleShot(0, [&walk] { walk.go(); });
        QApplication::exec();
        EXPECT_FALSE(testing::Test::HasFailure()) << "seed " << seed;
    }
}
