#include "shell/main_window.h"
#include "support/test_world.h"
#include "support/window_driver.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
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
            [&](const auto& window) {
                work(window);
                window.close();
            });
    }
};

}  // namespace

TEST_F(MetronomeWindowsTest, AStartDisablesTheControlsAndShowsEachPulse) {
    EXPECT_EQ(QApplication::focusWidget(), &user.find<QWidget>("cmdSSmetro"));
    for (int i = 0; i < 3; ++i)
        user.click("lblTs");
    EXPECT_EQ(user.text("lblTs"), "6/8");
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
        QTimerEvent repeat(1);
        EXPECT_TRUE(QCoreApplication::sendEvent(&user.find<QScrollBar>("MetroVol"), &repeat));
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
    for (const auto& [value, doubled, shown] :
         {std::tuple{300, "x2", "400"}, {1, "x1", "20"}, {70, "x2", "140"}, {60, "x1", "60"}}) {
        tempo.setValue(value);
        user.click("lblX12");
        EXPECT_EQ(user.text("lblX12"), doubled);
        EXPECT_EQ(user.text("lblTempo"), shown);
        EXPECT_EQ(user.find<QWidget>("lblX12").toolTip().contains("dimezzare"), doubled[1] == '2');
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

TEST_F(MetronomeWindowsTest, ACustomSequenceIsHeardTypedAndKept) {
    configure([&](const WindowDriver& window) {
        EXPECT_THAT(world.midi.take(), IsEmpty()) << "opening is silent";
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
        const std::tuple<QString, QString, QString> sounds[] = {
            {"A", "76", "38 40 46 49 53 61 65 66 76 77 81"},
            {"B1", "85", "27 35 36 45 48 54 69 75 82 85"},
            {"C", "33", "31 33 34 37 42 43 44 51"}};
        for (const auto& [kind, before, notes] : sounds) {
            EXPECT_EQ(window.text("Instr" + kind), before);
            for (int i = 0; i <= notes.count(' '); ++i) {
                const QString note = choose("Instr" + kind, i);
                window.click("lbl" + kind);
                EXPECT_EQ(note, notes.section(' ', i, i));
                const std::string sound = "on 10 " + note.toStdString() + " 127";
                EXPECT_THAT(world.midi.takeUntimed(),
                            ElementsAre("on 1 60 0", sound, "on 1 60 0", sound));
                EXPECT_FALSE(window.text("lblSuono" + kind).isEmpty());
            }
        }
        window.find<QLineEdit>("txtPattern").setText("ca");
        window.click("cmdTest");
        EXPECT_THAT(world.midi.takeUntimed(),
                    ElementsAre("reset", "on 10 51 127", "reset", "on 10 81 127"));
        window.find<QLineEdit>("txtTempo").clear();
        window.find<QLineEdit>("txtPattern").selectAll();
        for (const char typed : {'A', 'd', 'B', '1', ' ', 'c', 'b', 'a'})
            window.type(QChar::fromLatin1(typed).toUpper().unicode(), QString(QLatin1Char(typed)));
        window.type(Qt::Key_Backspace, "\b");
        window.type(Qt::Key_B, "b");
        window.click("cmdOk");
    });
    EXPECT_EQ(user.text("lblTs"), "2/4");
    click();
    EXPECT_EQ(user.text("lblTs") + QString::fromStdString(lamps()), "P.-----");
    const QString twenty = "aXYbcabcabcabcabcabc";
    configure([&](const WindowDriver& window) {
        EXPECT_EQ(window.text("txtPattern"), "abcbb");
        EXPECT_EQ(window.text("InstrA") + window.text("InstrB1") + window.text("InstrC"), "818551");
        for (const char* box : {"txtTempo", "txtPattern"}) {
            window.find<QLineEdit>(box).clear();
            window.find<QLineEdit>(box).insert(twenty + "abc");
        }
        window.type(Qt::Key_Escape);
    });
    configure([&](const WindowDriver& window) {
        EXPECT_EQ(window.text("txtPattern") + window.text("txtTempo"), twenty + twenty.left(5));
    });
}
