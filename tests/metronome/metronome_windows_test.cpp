#include "shell/main_window.h"
#include "support/test_world.h"
#include "support/window_driver.h"

#include <QApplication>
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

struct MetronomeWindowsTest : testing::Test {
    TestWorld world;
    MainWindow main{world.services()};
    WindowDriver user{main};

    MetronomeWindowsTest() {
        main.show();
        while (world.runtime.now() == Instant{0})
            QCoreApplication::processEvents();
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
        QTimerEvent repeat(1);
        EXPECT_TRUE(QCoreApplication::sendEvent(&user.find<QScrollBar>("MetroVol"), &repeat));
        user.click("cmdSSmetro");
        EXPECT_NE(user.find<QWidget>("cmdSSmetro").palette().button(), stops);
    });
    user.type(Qt::Key_Space);
    EXPECT_THAT(seen,
                ElementsAre("------", "r-----", "-g----", "--g---", "---b--", "----g-", "-----g"));
    EXPECT_EQ(lamps(), "------");
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
    const auto turnWheel = [&](int angle) {
        QWheelEvent event(bar.rect().center(), bar.mapToGlobal(bar.rect().center()), {}, {0, angle},
                          {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&bar, &event);
    };
    for (const int key : {Qt::Key_Right, Qt::Key_Up, Qt::Key_PageUp, Qt::Key_Left, Qt::Key_End}) {
        const int before = bar.value();
        user.type(key);
        EXPECT_EQ(bar.value() > before, key != Qt::Key_Left) << key;
    }
    turnWheel(-120);
    EXPECT_LT(bar.value(), 200);

    quint64 now = 5000;
    const auto tap = [&](int distance) {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_T, Qt::NoModifier, "t");
        event.setTimestamp(now += distance);
        QCoreApplication::sendEvent(main.windowHandle(), &event);
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
    user.find<QWidget>("frmMetro").hide();
    for (const int distance : {4000, 1000})
        tap(distance);
    EXPECT_EQ(user.text("lblTempo"), "300") << "not while it is hidden";
}

TEST_F(MetronomeWindowsTest, ACustomSequenceIsHeardTypedAndKept) {
    configure([&](const WindowDriver& window) {
        EXPECT_EQ(window.text("txtPattern") + window.text("txtTempo"), "ab2/4");
        const auto choose = [&](const QString& list, int position) {
            auto& box = window.find<QComboBox>(list);
            box.setCurrentIndex(position);
            Q_EMIT box.activated(position);
            return window.text(list);
        };
        for (const auto& [tempo, i] : {std::pair{"2/4", 0}, {"3/4", 1}, {"4/4", 2}}) {
            EXPECT_EQ(choose("seqPreset", i), "ab" + QString("cb").repeated(i + 1));
            EXPECT_EQ(window.text("txtTempo") + window.text("txtPattern"),
                      tempo + window.text("seqPreset"));
        }
        std::set<QString> names;
        for (const auto& [kind, notes] : {std::pair{"A", "38 40 46 49 53 61 65 66 76 77 81"},
                                          {"B1", "27 35 36 45 48 54 69 75 82 85"},
                                          {"C", "31 33 34 37 42 43 44 51"}}) {
            const QStringList all = QString(notes).split(' ');
            for (int i = 0; i < all.size(); ++i) {
                EXPECT_EQ(choose(QString("Instr") + kind, i), all[i]);
                window.click(QString("lbl") + kind);
                const std::string sound = "on 10 " + all[i].toStdString() + " 127";
                EXPECT_THAT(world.midi.takeUntimed(),
                            ElementsAre("on 1 60 0", sound, "on 1 60 0", sound));
                names.insert(window.text(QString("lblSuono") + kind));
            }
        }
        EXPECT_EQ(names.size() - names.count(""), 29U);
        window.find<QLineEdit>("txtPattern").setText("ca");
        const QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        world.runtime.doInWait(world.runtime.now() + 1s, escape);
        window.click("cmdTest");
        EXPECT_THAT(world.midi.takeUntimed(),
                    ElementsAre("reset", "on 10 51 127", "reset", "reset"));
        window.type(Qt::Key_Escape);
        EXPECT_TRUE(window.window().isVisible()) << "it ended the test";
        auto& pattern = window.find<QLineEdit>("txtPattern");
        pattern.selectAll();
        for (const char* typed : {"A", "d", "B", "1", " ", "c", "b", "a", "\b", "b"})
            window.type(*typed == '\b' ? Qt::Key_Backspace : Qt::Key_X, typed);
        EXPECT_EQ(pattern.text(), "abcbb");
        for (const char* box : {"txtTempo", "txtPattern"})
            window.find<QLineEdit>(box).setText("abcabcabcabcabcabcabcabc");
        window.type(Qt::Key_Escape);
    });
    click();
    EXPECT_EQ(user.text("lblTs") + lamps(), "abcab--------------------");
    world.funzioniMM.MidiClose();
    for (const auto& [kept, pattern, tempo] : {std::tuple{"abcababcabcabcabcabcabcab", "cab", ""},
                                               {"P.cab", "abbb", "7/8"},
                                               {"P.abbb", "", "7/8"},
                                               {"2/4ab", "", ""}}) {
        configure([&](const WindowDriver& window) {
            EXPECT_EQ(window.text("txtTempo") + window.text("txtPattern"), kept);
            EXPECT_EQ(window.text("InstrA") + window.text("InstrB1") + window.text("InstrC"),
                      "818551");
            window.find<QLineEdit>("txtTempo").setText(tempo);
            window.find<QLineEdit>("txtPattern").setText(pattern);
            const Instant before = world.runtime.now();
            for (const char* button : {"lblA", "cmdTest", "cmdOk"})
                window.click(button);
            EXPECT_EQ(world.runtime.now(), before) << "nothing is played without an output";
        });
    }
}
