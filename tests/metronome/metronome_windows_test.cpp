#include "shell/main_window_fixture.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QWheelEvent>
#include <QWindow>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace std::chrono_literals;
using testing::ElementsAre;

namespace {

struct MetronomeWindowsTest : MainWindowFixture {
    MetronomeWindowsTest() {
        activate();
        user.trigger("mnuMetro");
        QCoreApplication::processEvents();
        world.midi.take();
    }

    /// The visible lamps by their colours: "r", "g", "b", "-" for grey.
    QString lamps() const {
        const std::map<QRgb, QString> names{
            {0xFFFF0000, "r"}, {0xFF00FF00, "g"}, {0xFF0000FF, "b"}, {0xFFAAAAAA, "-"}};
        QString colours;
        for (const QWidget* lamp : user.find<QWidget>("lamps").findChildren<QWidget*>()) {
            if (lamp->isVisible())
                colours += names.at(lamp->palette().color(QPalette::Window).rgb());
        }
        return colours;
    }

    /// Whether a bar's arrow that is held down moves it again when its timer is due.
    bool repeatsAnArrow(const char* name) const {
        auto& bar = user.find<QScrollBar>(name);
        const int start = bar.value();
        bar.setValue(60);
        const QPointF arrow = bar.rect().bottomRight() - QPoint(2, 2);
        sendMouse(bar, QEvent::MouseButtonPress, arrow);
        const int once = bar.value();
        for (int timer = 0; timer < 300; ++timer) {
            QTimerEvent due(timer);
            QCoreApplication::sendEvent(&bar, &due);
        }
        sendMouse(bar, QEvent::MouseButtonRelease, arrow);
        const int end = bar.value();
        bar.setValue(start);
        return end != once;
    }

    /// Lets the metronome beat once.
    std::string click() {
        world.runtime.at(world.runtime.now() + 1ms, [this] { user.click("cmdSSmetro"); });
        user.click("cmdSSmetro");
        return world.midi.takeUntimed().at(1);
    }

    /// Opens the window for custom sequences and works in it.
    void configure(const std::function<void(const WindowDriver&)>& work) {
        workInModal(
            world.runtime, [this] { user.click("cmdSetup"); }, work);
    }
};

}  // namespace

TEST_F(MetronomeWindowsTest, ShowsEachPulseTheTempoAndTakesTheVolumesThumb) {
    for (int i = 0; i < 3; ++i)
        user.click("lblTs");
    EXPECT_EQ(user.text("lblTs"), "6/8");
    const Instant begin = world.runtime.now();
    QStringList seen;
    for (int pulse = 0; pulse < 7; ++pulse)
        world.runtime.at(begin + pulse * 1s - 500ms, [&] { seen.push_back(lamps()); });
    world.runtime.at(begin + 6500ms, [&] {
        const QBrush stops = user.find<QWidget>("cmdSSmetro").palette().button();
        EXPECT_FALSE(repeatsAnArrow("MetroVol") || repeatsAnArrow("MetroTempoS"));
        user.click("cmdSSmetro");
        EXPECT_NE(user.find<QWidget>("cmdSSmetro").palette().button(), stops);
    });
    user.type(Qt::Key_Space);
    EXPECT_THAT(seen,
                ElementsAre("------", "r-----", "-g----", "--g---", "---b--", "----g-", "-----g"));
    EXPECT_EQ(lamps(), "------");
    EXPECT_TRUE(repeatsAnArrow("MetroVol") && repeatsAnArrow("MetroTempoS"));
    for (const auto& [value, doubled, shown] :
         {std::tuple{300, "x2", "400"}, {1, "x1", "20"}, {70, "x2", "140"}, {60, "x1", "60"}}) {
        user.find<QScrollBar>("MetroTempoS").setValue(value);
        user.click("lblX12");
        EXPECT_EQ(user.text("lblX12"), doubled);
        EXPECT_EQ(user.text("lblTempo"), shown);
    }
    auto& volume = user.find<QScrollBar>("MetroVol");
    volume.setFocus();
    user.type(Qt::Key_Down);
    volume.triggerAction(QAbstractSlider::SliderPageStepSub);
    EXPECT_EQ(volume.value(), 116) << "down means softer";
    EXPECT_EQ(click(), "on 10 76 127") << "but only the thumb changes the volume";
    volume.setSliderDown(true);
    volume.setSliderPosition(50);
    EXPECT_EQ(click(), "on 10 76 50");
}

TEST_F(MetronomeWindowsTest, TheTempoFollowsTheBarsKeysWhatIsTypedAndTaps) {
    auto& bar = user.find<QScrollBar>("MetroTempoS");
    bar.setFocus();
    const auto turnWheel = [&](const char* name) {
        auto& target = user.find<QWidget>(name);
        const QPoint place = target.rect().center();
        QWheelEvent event(place, target.mapToGlobal(place), {}, {0, -120}, {}, {},
                          Qt::NoScrollPhase, false);
        const int before = bar.value();
        QCoreApplication::sendEvent(&target, &event);
        return bar.value() - before;
    };
    for (const int key : {Qt::Key_Right, Qt::Key_Up, Qt::Key_PageUp, Qt::Key_Left, Qt::Key_End}) {
        const int before = bar.value();
        user.type(key);
        EXPECT_EQ(bar.value() > before, key != Qt::Key_Left) << key;
    }
    EXPECT_LT(turnWheel("MetroTempoS"), 0);
    EXPECT_LT(turnWheel("lblTempo"), 0);

    quint64 now = 5000;
    const auto tap = [&](int distance) {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_T, Qt::NoModifier, "t");
        event.setTimestamp(now += distance);
        QCoreApplication::sendEvent(window->windowHandle(), &event);
    };
    const auto typed = [&](const char* digits) {
        user.click("lblTempo");
        for (const char* digit = digits; *digit != 0; ++digit)
            user.type(*digit, QString(*digit));
        tap(600);
        user.type(Qt::Key_Return);
    };
    for (const int distance : {4000, 750, 750})
        tap(distance);
    EXPECT_EQ(user.text("lblTempo") + user.text("lblAndamento"), "80Andante");
    typed("126");
    EXPECT_EQ(user.text("lblTempo") + user.text("lblAndamento"), "126Allegro");
    user.click("lblX12");
    typed("90");
    EXPECT_EQ(bar.value(), 45) << "as it is to be heard";
    for (const int distance : {4000, 200})
        tap(distance);
    EXPECT_EQ(user.text("lblTempo") + user.text("MetroTempoS"), "300150");
    user.click("lblTempo");
    user.type(Qt::Key_7, "7");
    user.type(Qt::Key_Escape);
    EXPECT_EQ(user.text("lblTempo"), "300");
    user.click("lblCloseMetro");
    EXPECT_TRUE(user.find<QWidget>("Start").hasFocus()) << "and not the button that ends it all";
    for (const int distance : {4000, 1000})
        tap(distance);
    EXPECT_EQ(user.text("lblTempo"), "300") << "not while it is hidden";
}

/// Each runs in a loop of its own, inside the other's.
TEST_F(MetronomeWindowsTest, OfItAndTheAutomaticDrillTheFirstOneWaits) {
    user.trigger("mnuAutomatico");
    for (const auto& [first, last, told] : {std::tuple{"cmdSSmetro", "Start", "lblAndamento"},
                                            {"Start", "cmdSSmetro", "lblIntervallo"}}) {
        const char* const label = told;
        const Instant begin = world.runtime.now();
        const QString before = user.text(label);
        const auto clickAt = [&](Instant at, const char* button) {
            world.runtime.at(begin + at, [this, button] { user.click(button); });
        };
        clickAt(500ms, last);
        world.runtime.at(begin + 3s,
                         [&] { EXPECT_TRUE(user.text(label).startsWith("In attesa")); });
        clickAt(5s, last);
        world.runtime.at(begin + 7s, [&] { EXPECT_EQ(user.text(label), before); });
        clickAt(9s, first);
        user.click(first);
    }
    world.funzioniMM.MidiClose();
    world.runtime.at(world.runtime.now() + 1s, [&] {
        EXPECT_EQ(user.text("lblAndamento"), "Nessuna uscita");
        user.click("cmdSSmetro");
    });
    user.click("cmdSSmetro");
    EXPECT_EQ(user.text("lblAndamento"), "Larghetto");
}

TEST_F(MetronomeWindowsTest, ACustomSequenceIsHeardTypedAndKept) {
    configure([&](const WindowDriver& opened) {
        const QString selected = opened.find<QLineEdit>("txtPattern").selectedText();
        EXPECT_EQ(selected + opened.text("txtTempo"), "ab2/4");
        const auto choose = [&](const QString& list, int position) {
            auto& box = opened.find<QComboBox>(list);
            box.setCurrentIndex(position);
            Q_EMIT box.activated(position);
            return opened.text(list);
        };
        for (const auto& [tempo, i] : {std::pair{"2/4", 0}, {"3/4", 1}, {"4/4", 2}}) {
            EXPECT_EQ(choose("seqPreset", i), "ab" + QString("cb").repeated(i + 1));
            EXPECT_EQ(opened.text("txtTempo") + opened.text("txtPattern"),
                      tempo + opened.text("seqPreset"));
        }
        std::set<QString> names;
        for (const auto& [kind, notes] : {std::pair{"A", "38 40 46 49 53 61 65 66 76 77 81"},
                                          {"B1", "27 35 36 45 48 54 69 75 82 85"},
                                          {"C", "31 33 34 37 42 43 44 51"}}) {
            const QStringList all = QString(notes).split(' ');
            for (int i = 0; i < all.size(); ++i) {
                EXPECT_EQ(choose(QString("Instr") + kind, i), all[i]);
                opened.click(QString("lbl") + kind);
                const std::string sound = "on 10 " + all[i].toStdString() + " 127";
                EXPECT_THAT(world.midi.takeUntimed(),
                            ElementsAre("on 1 60 0", sound, "on 1 60 0", sound));
                names.insert(opened.text(QString("lblSuono") + kind));
            }
        }
        EXPECT_EQ(names.size() - names.count(""), 29U);
        opened.find<QLineEdit>("txtPattern").setText("ca");
        const QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        world.runtime.doInWait(world.runtime.now() + 1s, escape);
        opened.click("cmdTest");
        EXPECT_THAT(world.midi.takeUntimed(),
                    ElementsAre("reset", "on 10 51 127", "reset", "reset"));
        opened.type(Qt::Key_Escape);
        EXPECT_TRUE(opened.window().isVisible()) << "it ended the test";
        auto& pattern = opened.find<QLineEdit>("txtPattern");
        pattern.selectAll();
        for (const char* typed : {"A", "d", "B", "1", " ", "c", "b", "a", "\b", "b"})
            opened.type(*typed == '\b' ? Qt::Key_Backspace : Qt::Key_X, typed);
        EXPECT_EQ(pattern.text(), "abcbb");
        for (const char* box : {"txtTempo", "txtPattern"})
            opened.find<QLineEdit>(box).setText("abcabcabcabcabcabcabcabc");
        opened.type(Qt::Key_Escape);
    });
    click();
    EXPECT_EQ(user.text("lblTs") + lamps(), "abcab--------------------");
    world.funzioniMM.MidiClose();
    for (const auto& [kept, pattern, tempo] : {std::tuple{"abcababcabcabcabcabcabcab", "cab", ""},
                                               {"P.cab", "abbb", "7/8"},
                                               {"P.abbb", "", "7/8"},
                                               {"2/4ab", "", ""}}) {
        configure([&](const WindowDriver& opened) {
            EXPECT_EQ(opened.text("txtTempo") + opened.text("txtPattern"), kept);
            EXPECT_EQ(opened.text("InstrA") + opened.text("InstrB1") + opened.text("InstrC"),
                      "818551");
            opened.find<QLineEdit>("txtTempo").setText(tempo);
            opened.find<QLineEdit>("txtPattern").setText(pattern);
            const Instant before = world.runtime.now();
            for (const char* button : {"lblA", "cmdTest", "cmdOk"})
                opened.click(button);
            EXPECT_EQ(world.runtime.now(), before) << "nothing is played without an output";
        });
    }
}
