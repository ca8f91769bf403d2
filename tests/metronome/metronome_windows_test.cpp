#include "metronome/frmConfMetro.h"
#include "metronome/frmMetro.h"
#include "metronome/metronome_host.h"
#include "support/test_world.h"
#include "support/window_driver.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDateTime>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr QRgb kPdo = 0xFF112233;
constexpr QRgb kEsci = 0xFF445566;

/// A window around the frame.
class Host : public QWidget, public MetronomeHost {
public:
    Host() : pdo(this), cmdEsci(this) {
        pdo.setPalette(QPalette(QColor::fromRgb(kPdo)));
        cmdEsci.setPalette(QPalette(QColor::fromRgb(kEsci)));
        cmdEsci.setObjectName(QStringLiteral("cmdEsci"));
    }
    void setMetronomeRunning(bool running) override { cmdEsci.setEnabled(!running); }
    const QWidget& startColourSource() const override { return pdo; }
    const QWidget& stopColourSource() const override { return cmdEsci; }

    QPushButton pdo;
    QPushButton cmdEsci;
};

struct MetronomeWindowsTest : testing::Test {
    TestWorld world;
    MetronomeState state;
    Metronome metronome{world.runtime, world.funzioniMM, state};
    Host host;
    frmMetro frame{metronome, world.funzioniMM, host, &host};
    WindowDriver user{host};

    MetronomeWindowsTest() {
        world.runtime.setWallClock(QDateTime(QDate(2004, 10, 1), QTime(0, 0)));
        world.openOutput();
        (new QVBoxLayout(&host))->addWidget(&frame);
        host.show();
        EXPECT_FALSE(user.shown("frmMetro"));
        frame.mnuMetro_Click();
        QCoreApplication::processEvents();
    }

    QRgb startColour() const {
        return user.find<QPushButton>("cmdSSmetro").palette().color(QPalette::Button).rgb();
    }

    /// The visible lamps by their colours: "r", "g", "b", "-" for grey, "?" for anything else.
    std::string lamps() const {
        std::string colours;
        for (int i = 0; i < 20; ++i) {
            const auto& lamp = user.find<QWidget>(QStringLiteral("lblPuls_%1").arg(i));
            if (!lamp.isVisible())
                continue;
            const QRgb colour = lamp.palette().color(QPalette::Window).rgb();
            const std::map<QRgb, char> names{
                {0xFFFF0000, 'r'}, {0xFF00FF00, 'g'}, {0xFF0000FF, 'b'}, {0xFFAAAAAA, '-'}};
            colours += names.count(colour) ? names.at(colour) : '?';
        }
        return colours;
    }

    /// Opens the window for custom sequences and works in it.
    void configure(const std::function<void(const WindowDriver&)>& work) {
        bool worked = false;
        world.runtime.at(world.runtime.now(), [&] {
            QWidget* window = QApplication::activeModalWidget();
            ASSERT_TRUE(window);
            QCoreApplication::processEvents();
            work(WindowDriver(*window));
            worked = true;
            window->close();
        });
        user.click("cmdSetup");
        EXPECT_TRUE(worked);
    }
};

}  // namespace

TEST_F(MetronomeWindowsTest, AStartRestsTheControlsAndShowsEachPulse) {
    EXPECT_EQ(lamps(), "--");
    EXPECT_EQ(QApplication::focusWidget(), &user.find<QWidget>("cmdSSmetro"));
    for (int i = 0; i < 3; ++i)
        user.click("lblTs");
    EXPECT_EQ(user.text("lblTs"), QStringLiteral("6/8"));
    EXPECT_EQ(lamps(), "------");

    std::vector<std::string> seen;
    for (int pulse = 0; pulse < 7; ++pulse)
        world.runtime.at(pulse * 1s - 500ms, [&] { seen.push_back(lamps()); });
    world.runtime.at(6500ms, [&] {
        for (const char* resting : {"cmdEsci", "cmdSetup", "lblCloseMetro"})
            EXPECT_FALSE(user.enabled(resting)) << resting;
        EXPECT_EQ(startColour(), kPdo);
        user.click("lblTs");
        EXPECT_EQ(user.text("lblTs"), QStringLiteral("6/8"));
        user.click("cmdSSmetro");
        for (const char* back : {"cmdEsci", "cmdSetup", "lblCloseMetro"})
            EXPECT_TRUE(user.enabled(back)) << back;
        EXPECT_EQ(startColour(), kEsci);
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
    EXPECT_EQ(user.text("lblX12"), QStringLiteral("x2"));
    EXPECT_EQ(user.find<QWidget>("lblX12").toolTip(),
              QStringLiteral("Clicca per dimezzare la velocità"));
    EXPECT_EQ(user.text("lblTempo"), QStringLiteral("400"));
    EXPECT_DOUBLE_EQ(state.MetroPeriod, 0.15);
    tempo.setValue(20);
    EXPECT_EQ(user.text("lblTempo"), QStringLiteral("40"));
    user.click("lblX12");
    EXPECT_EQ(user.text("lblTempo"), QStringLiteral("20"));
    EXPECT_DOUBLE_EQ(state.MetroPeriod, 3);

    auto& volume = user.find<QScrollBar>("MetroVol");
    volume.setFocus();
    user.type(Qt::Key_Down);
    volume.triggerAction(QAbstractSlider::SliderPageStepSub);
    EXPECT_EQ(volume.value(), 116) << "down means softer";
    EXPECT_EQ(state.MetroVolume, 127) << "but only the thumb changes the volume";
    volume.setSliderDown(true);
    volume.setSliderPosition(50);
    EXPECT_EQ(state.MetroVolume, 50);
}

TEST_F(MetronomeWindowsTest, ASequenceIsTypedFilteredAndKeptWhenTheWindowCloses) {
    configure([&](const WindowDriver& window) {
        EXPECT_EQ(window.text("txtPattern"), QStringLiteral("ab"));
        EXPECT_EQ(window.text("txtTempo"), QStringLiteral("2/4"));
        EXPECT_EQ(window.text("InstrA") + window.text("InstrB1") + window.text("InstrC"),
                  QStringLiteral("768533"));
        window.find<QLineEdit>("txtTempo").clear();
        window.find<QLineEdit>("txtPattern").selectAll();
        for (const char typed : {'A', 'd', 'B', '1', ' ', 'c', 'b', 'a'})
            window.type(QChar::fromLatin1(typed).toUpper().unicode(), QString(QLatin1Char(typed)));
        window.type(Qt::Key_Backspace, QStringLiteral("\b"));
        window.type(Qt::Key_B, QStringLiteral("b"));
        EXPECT_EQ(window.text("txtPattern"), QStringLiteral("abcbb"));
    });
    EXPECT_THAT(world.midi.takeUntimed(), IsEmpty()) << "opening is silent";
    EXPECT_EQ(state.MetroPattern, QStringLiteral("abcbb"));
    EXPECT_EQ(user.text("lblTs"), QStringLiteral("2/4"));
    world.runtime.at(world.runtime.now() + 4500ms, [&] { user.click("cmdSSmetro"); });
    user.click("cmdSSmetro");
    EXPECT_EQ(user.text("lblTs"), QStringLiteral("P."));
    EXPECT_EQ(lamps(), "-----");

    configure([&](const WindowDriver& window) {
        QApplication::clipboard()->setText(QStringLiteral("aXYbcabcabcabcabcabcabc"));
        auto& pattern = window.find<QLineEdit>("txtPattern");
        pattern.selectAll();
        pattern.paste();
        EXPECT_EQ(pattern.text(), QStringLiteral("aXYbcabcabcabcabcabc")) << "20 letters";
        window.type(Qt::Key_Escape);
    });
    EXPECT_EQ(state.MetroPattern, QStringLiteral("aXYbcabcabcabcabcabc"));
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
        EXPECT_EQ(window.text("txtTempo"), QStringLiteral("3/4"));
        EXPECT_EQ(window.text("txtPattern"), QStringLiteral("abcbcb"));
        choose("InstrA", 0);
        choose("InstrB1", 0);
        choose("InstrC", 7);
        window.click("lblB1");
        EXPECT_THAT(world.midi.takeUntimed(),
                    ElementsAre("on 1 60 0", "on 10 38 127", "on 1 60 0", "on 10 27 127",
                                "on 1 60 0", "on 10 51 127", "on 1 60 0", "on 10 27 127"));
        window.find<QLineEdit>("txtPattern").setText(QStringLiteral("ca"));
        window.click("cmdTest");
        EXPECT_THAT(world.midi.takeUntimed(),
                    ElementsAre("reset", "on 10 51 127", "reset", "on 10 38 127"));
        window.find<QLineEdit>("txtPattern").clear();
        window.click("cmdTest");
        window.click("cmdOk");
    });
    EXPECT_THAT(world.midi.takeUntimed(), IsEmpty());
    EXPECT_EQ(state.MetroPattern, QStringLiteral("ab"));
    EXPECT_EQ(state.MetroTimeSig, QStringLiteral("2/4"));
    configure([&](const WindowDriver& window) {
        EXPECT_EQ(window.text("InstrA") + window.text("InstrB1") + window.text("InstrC"),
                  QStringLiteral("382751"));
    });
}
