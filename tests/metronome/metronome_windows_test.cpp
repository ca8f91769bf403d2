#include "shell/main_window.h"
#include "support/test_world.h"
#include "support/window_driver.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScrollBar>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct MetronomeWindowsTest : testing::Test {
    TestWorld world;
    MainWindow main{world.services()};
    WindowDriver user{main};

    MetronomeWindowsTest() {
        main.show();
        while (world.runtime.now() == Instant{0})
            QCoreApplication::processEvents();
        EXPECT_FALSE(user.shown("frmMetro"));
        user.trigger("mnuMetro");
        QCoreApplication::processEvents();
        world.midi.take();
    }

    QRgb colourOf(const char* button) const {
        return user.find<QWidget>(button).palette().color(QPalette::Active, QPalette::Button).rgb();
    }

    /// The visible lamps by their colours: "r", "g", "b", "-" for grey.
    std::string lamps() const {
        const std::map<QRgb, char> names{
            {0xFFFF0000, 'r'}, {0xFF00FF00, 'g'}, {0xFF0000FF, 'b'}, {0xFFAAAAAA, '-'}};
        std::string colours;
        for (int i = 0; i < 20; ++i) {
            const auto& lamp = user.find<QWidget>(QStringLiteral("lblPuls_%1").arg(i));
            if (lamp.isVisible())
                colours += names.at(lamp.palette().color(QPalette::Window).rgb());
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
            world.runtime, [this] { user.click("cmdSetup"); },
            [&work](const WindowDriver& window) {
                work(window);
                window.close();
            });
    }
};

}  // namespace

TEST_F(MetronomeWindowsTest, AStartDisablesTheControlsAndShowsEachPulse) {
    EXPECT_EQ(lamps(), "--");
    EXPECT_EQ(QApplication::focusWidget(), &user.find<QWidget>("cmdSSmetro"));
    for (int i = 0; i < 3; ++i)
        user.click("lblTs");
    EXPECT_EQ(user.text("lblTs"), "6/8");
    EXPECT_EQ(lamps(), "------");

    const Instant begin = world.runtime.now();
    std::vector<std::string> seen;
    for (int pulse = 0; pulse < 7; ++pulse)
        world.runtime.at(begin + pulse * 1s - 500ms, [&] { seen.push_back(lamps()); });
    world.runtime.at(begin + 6500ms, [&] {
        const auto resting = {"cmdEsci", "cmdSetup", "lblCloseMetro", "f1", "es", "Opzioni"};
        for (const char* name : resting)
            EXPECT_FALSE(user.enabled(name)) << name;
        EXPECT_TRUE(user.enabled("Help"));
        EXPECT_EQ(colourOf("cmdSSmetro"), colourOf("pdo"));
        main.close();
        EXPECT_TRUE(main.isVisible()) << "it goes on beating";
        user.click("lblTs");
        EXPECT_EQ(user.text("lblTs"), "6/8");
        user.click("cmdSSmetro");
        for (const char* name : resting)
            EXPECT_TRUE(user.enabled(name)) << name;
        EXPECT_EQ(colourOf("cmdSSmetro"), colourOf("cmdEsci"));
    });
    user.type(Qt::Key_Space);
    EXPECT_THAT(seen,
                ElementsAre("------", "r-----", "-g----", "--g---", "---b--", "----g-", "-----g"));
    EXPECT_EQ(lamps(), "------");
    user.click("lblCloseMetro");
    EXPECT_FALSE(user.shown("frmMetro"));
}

TEST_F(MetronomeWindowsTest, TempoDoublingAndTheVolumesThumb) {
    auto& tempo = user.find<QScrollBar>("MetroTempoS");
    tempo.setValue(200);
    user.click("lblX12");
    EXPECT_EQ(user.text("lblX12"), "x2");
    EXPECT_EQ(user.find<QWidget>("lblX12").toolTip(), "Clicca per dimezzare la velocità");
    EXPECT_EQ(user.text("lblTempo"), "400");
    tempo.setValue(20);
    EXPECT_EQ(user.text("lblTempo"), "40");
    user.click("lblX12");
    EXPECT_EQ(user.text("lblTempo"), "20");

    auto& volume = user.find<QScrollBar>("MetroVol");
    volume.setFocus();
    user.type(Qt::Key_Down);
    volume.triggerAction(QAbstractSlider::SliderPageStepSub);
    EXPECT_EQ(volume.value(), 116) << "down means softer";
    const QPointF lowerArrow(volume.width() / 2.0, volume.height() - 3);
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, lowerArrow, volume.mapToGlobal(lowerArrow), Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&volume, &event);
    }
    EXPECT_EQ(volume.value(), 115) << "by its arrow too";
    const Instant begin = world.runtime.now();
    EXPECT_EQ(click(), "on 10 76 127") << "but only the thumb changes the volume";
    EXPECT_EQ(std::chrono::round<std::chrono::milliseconds>(world.runtime.now() - begin), 3s);
    volume.setSliderDown(true);
    volume.setSliderPosition(50);
    EXPECT_EQ(click(), "on 10 76 50");
}

TEST_F(MetronomeWindowsTest, ASequenceIsTypedFilteredAndKeptWhenTheWindowCloses) {
    configure([&](const WindowDriver& window) {
        EXPECT_EQ(window.text("txtPattern") + window.text("txtTempo"), "ab2/4");
        EXPECT_EQ(window.text("InstrA") + window.text("InstrB1") + window.text("InstrC"), "768533");
        window.find<QLineEdit>("txtTempo").clear();
        window.find<QLineEdit>("txtPattern").selectAll();
        for (const char typed : {'A', 'd', 'B', '1', ' ', 'c', 'b', 'a'})
            window.type(QChar::fromLatin1(typed).toUpper().unicode(), QString(QLatin1Char(typed)));
        window.type(Qt::Key_Backspace, "\b");
        window.type(Qt::Key_B, "b");
        EXPECT_EQ(window.text("txtPattern"), "abcbb");
    });
    EXPECT_THAT(world.midi.takeUntimed(), IsEmpty()) << "opening is silent";
    EXPECT_EQ(user.text("lblTs"), "2/4");
    click();
    EXPECT_EQ(user.text("lblTs"), "P.");
    EXPECT_EQ(lamps(), "-----");

    const QString twenty = "aXYbcabcabcabcabcabc";
    configure([&](const WindowDriver& window) {
        QApplication::clipboard()->setText(twenty + "abc");
        auto& pattern = window.find<QLineEdit>("txtPattern");
        pattern.selectAll();
        pattern.paste();
        window.type(Qt::Key_Escape);
    });
    configure([&](const WindowDriver& window) { EXPECT_EQ(window.text("txtPattern"), twenty); });
}

TEST_F(MetronomeWindowsTest, PresetsAndSounds) {
    configure([&](const WindowDriver& window) {
        const auto choose = [&](const char* list, int position) {
            auto& box = window.find<QComboBox>(list);
            box.setCurrentIndex(position);
            Q_EMIT box.activated(position);
        };
        EXPECT_EQ(window.text("seqPreset"), QString());
        choose("seqPreset", 1);
        EXPECT_EQ(window.text("txtTempo"), "3/4");
        EXPECT_EQ(window.text("txtPattern"), "abcbcb");
        for (const auto& [list, position] : {std::pair{"InstrA", 0}, {"InstrB1", 0}, {"InstrC", 7}})
            choose(list, position);
        window.click("lblB1");
        EXPECT_THAT(world.midi.takeUntimed(),
                    ElementsAre("on 1 60 0", "on 10 38 127", "on 1 60 0", "on 10 27 127",
                                "on 1 60 0", "on 10 51 127", "on 1 60 0", "on 10 27 127"));
        window.find<QLineEdit>("txtPattern").setText("ca");
        window.click("cmdTest");
        EXPECT_THAT(world.midi.takeUntimed(),
                    ElementsAre("reset", "on 10 51 127", "reset", "on 10 38 127"));
        window.find<QLineEdit>("txtPattern").clear();
        window.click("cmdTest");
        window.click("cmdOk");
    });
    EXPECT_THAT(world.midi.takeUntimed(), IsEmpty());
    configure([&](const WindowDriver& window) {
        EXPECT_EQ(window.text("txtPattern") + window.text("txtTempo"), "ab2/4");
        EXPECT_EQ(window.text("InstrA") + window.text("InstrB1") + window.text("InstrC"), "382751");
    });
}
