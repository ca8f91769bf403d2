#include "shell/main_window.h"

#include "reading/regolo.h"
#include "support/test_world.h"
#include "support/window_driver.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSlider>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct MainWindowTest : testing::Test {
    TestWorld world;
    std::unique_ptr<MainWindow> window = std::make_unique<MainWindow>(world.services());
    WindowDriver user{*window};

    /// Shows the window and lets its first activation run, which waits for the first painting.
    void activate() {
        window->show();
        while (world.runtime.now() == Instant{0})
            QCoreApplication::processEvents();
    }

    void open() {
        activate();
        world.midi.take();
        world.media.lines.clear();
    }

    QString noteOnShow() const {
        for (int step = 11; step <= 64; ++step) {
            const auto* note = window->findChild<QWidget*>(QStringLiteral("n%1").arg(step));
            if (note && note->isVisible())
                return note->objectName();
        }
        return {};
    }

    void type(int key, Qt::KeyboardModifiers modifiers) {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
            sendSystemKey(*window, type, key, modifiers);
    }

    bool checked(const QString& item) const { return user.find<QAction>(item).isChecked(); }

    /// The next note drawn from the first difficulty item will be this step.
    void willShow(int step) {
        world.random.numbers = {(static_cast<float>(step - 43) + 0.5F) / 11.0F};
    }
};

}  // namespace

TEST_F(MainWindowTest, TheMenuBarIsComplete) {
    QStringList items;
    for (const QAction* top : window->menuBar()->actions()) {
        items << top->menu()->objectName() + '=' + top->text();
        for (const QAction* item : top->menu()->actions()) {
            const QString shown = item->text() + '|' + item->shortcut().toString();
            items << item->objectName() + '|' + (item->isSeparator() ? "-" : shown);
        }
    }
    EXPECT_EQ(
        items.join(' '),
        "f1=&File Esci|Esci|Ctrl+Q "
        "es=&Esercizi mnuLettura|Lettura note| Sep3|- Intonazione|Intonazione|Ctrl+O step4|- "
        "mnuRint|Riconoscimento intervallo|Ctrl+I SeparatoreN|- "
        "mnuRac|Riconoscimento tipo accordo|Ctrl+T step5|- "
        "mnuComposer|Composizione Melodie|Ctrl+S Step6|- mnuPromemoria|Promemoria|Ctrl+R "
        "Opzioni=&Opzioni mnuMetro|Metronomo|Ctrl+M Separatore30|- Nominote1|Do,Re,Mi...|Ctrl+D "
        "Nominote2|C,D,E...|Ctrl+C Separatore1|- Suono1|Suono Generico|Ctrl+N Suono2|Suono Nota| "
        "mnuOrgano|Organo| mnuPiano|Pianoforte| Separatore2|- mnuNormale|Normale|Ctrl+P "
        "mnuAutomatico|Automatico|Ctrl+A Separatore3|- mnuMidiTest|MIDI Test ...| "
        "Help=&? mnuAiuto|Aiuto| mnuVersione|Versione|");
}

TEST_F(MainWindowTest, LoadsIdleAndIsActivatedOnce) {
    for (const char* hidden : {"Lresatte", "Lrerrate", "Ridate", "Lnmostrate", "Lpercento",
                               "Tempoimp", "Slider1", "lblVelocita", "lblAuto1", "lblAuto2"})
        EXPECT_FALSE(user.shown(hidden)) << hidden;
    EXPECT_FALSE(user.enabled("pdo"));
    EXPECT_EQ(user.text("difficolt"), "Chiave di Sol: SI - MI");

    activate();
    EXPECT_EQ(std::chrono::round<std::chrono::milliseconds>(world.runtime.now()), 2200ms);
    EXPECT_EQ(QApplication::focusWidget(), &user.find<QWidget>("Start"));
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("open -1", "program 16"));
    window->hide();
    window->show();
    QCoreApplication::processEvents();
    EXPECT_THAT(world.midi.takeUntimed(), IsEmpty());
}

TEST_F(MainWindowTest, ASessionInNormalModeByMouseAndKeys) {
    open();
    willShow(44);
    user.click("Start");
    EXPECT_EQ(user.text("Start"), "Stop");
    EXPECT_EQ(noteOnShow(), "n44");
    willShow(45);
    user.click("pdo");
    EXPECT_EQ(noteOnShow(), "n45");
    user.type(Qt::Key_H, "h");
    user.find<QWidget>("pmi").setFocus();
    user.type(Qt::Key_1, "1");
    user.find<QWidget>("difficolt").setFocus();
    user.type(Qt::Key_1, "1");
    EXPECT_EQ(user.text("conta"), "2");
    EXPECT_EQ(user.text("er"), "1");
    user.click("Start");
    EXPECT_EQ(noteOnShow(), QString());
    EXPECT_FALSE(user.enabled("pdo"));
    EXPECT_TRUE(user.shown("Ridate") && !user.shown("Lnmostrate"));
    EXPECT_EQ(user.text("Lpercento"), " R. Esatte: 66.67%");
    user.click("Start");
    EXPECT_FALSE(user.shown("Ridate")) << "a new session hides the statistics";
}

TEST_F(MainWindowTest, AnAutomaticSessionIsAnsweredByKeysAndStoppedByItsButton) {
    open();
    user.trigger("mnuAutomatico");
    EXPECT_TRUE(user.shown("Slider1") && user.shown("lblAuto2"));
    auto& speed = user.find<QSlider>("Slider1");
    speed.setValue(60);
    EXPECT_EQ(user.text("lblVelocita"), "Velocità: 60");
    willShow(44);
    const Instant begin = world.runtime.now();
    world.runtime.press(letterKey('D'), begin + 100ms, begin + 200ms);
    world.runtime.at(begin + 1500ms, [this, &speed] {
        speed.setFocus();
        type(Qt::Key_Home, Qt::KeypadModifier);  // a 7 without NumLock
        user.find<QWidget>("difficolt").setFocus();
        type(Qt::Key_Down, Qt::KeypadModifier);
        EXPECT_EQ(speed.value(), 60) << "a key that answers does nothing else";
        EXPECT_EQ(user.text("difficolt"), "Chiave di Sol: SI - MI");
        type(Qt::Key_Down, Qt::NoModifier);
        EXPECT_NE(user.text("difficolt"), "Chiave di Sol: SI - MI");
        user.click("psi");
        user.click("Start");
        EXPECT_EQ(user.text("Start"), "Stop") << "the loop has not ended yet";
        user.click("Start");
    });
    user.click("Start");
    EXPECT_EQ(user.text("Start"), "Start");
    EXPECT_EQ(world.runtime.now(), begin + 1500ms);
    EXPECT_EQ(user.text("Lnmostrate"), " Note mostrate: 2");
    EXPECT_EQ(user.text("Lrerrate"), " Risposte errate: 0");
    EXPECT_FALSE(user.shown("Ridate"));
    user.trigger("mnuNormale");
    EXPECT_TRUE(!user.shown("Slider1") && user.enabled("psi"));
}

TEST_F(MainWindowTest, TheRulerSetsARangeAndTheListSetsItBack) {
    open();
    auto& ruler = user.find<Regolo>("Regolo");
    ruler.pressStep(50);
    EXPECT_FALSE(user.enabled("Start"));
    EXPECT_FALSE(user.shown("m50"));
    ruler.pressStep(48);
    EXPECT_TRUE(user.enabled("Start"));
    EXPECT_EQ(user.text("lblIntervallo"), "Note da SOL a SI");
    ruler.pressStep(20);
    EXPECT_TRUE(user.shown("m20")) << "both bounds are chosen";
    world.random.numbers = {0.99F};
    user.click("Start");
    EXPECT_EQ(noteOnShow(), "n50");
    EXPECT_TRUE(user.shown("m50"));
    ruler.pressStep(20);
    EXPECT_TRUE(user.enabled("Start")) << "no range is chosen in a session";
    user.click("Start");

    ruler.pressStep(20);
    EXPECT_FALSE(user.enabled("Start"));
    auto& list = user.find<QComboBox>("difficolt");
    list.setCurrentIndex(4);
    Q_EMIT list.activated(4);
    EXPECT_EQ(list.currentIndex(), 0);
    EXPECT_TRUE(user.enabled("Start"));
    EXPECT_TRUE(user.shown("m20"));
}

TEST_F(MainWindowTest, OptionsSetNamesSoundsAndInstrument) {
    open();
    user.trigger("Nominote2");
    EXPECT_EQ(user.text("psol"), "G");
    EXPECT_TRUE(checked("Nominote2") && !checked("Nominote1"));
    user.trigger("Nominote1");
    for (const auto& [counter, key] : {std::pair{"conta", Qt::Key_A}, {"er", Qt::Key_C}}) {
        user.find<QWidget>(counter).setFocus();
        type(key, Qt::ControlModifier);
    }
    EXPECT_TRUE(checked("mnuAutomatico")) << "a counter has no shortcuts of its own";
    EXPECT_TRUE(checked("Nominote2"));
    user.trigger("mnuNormale");
    user.trigger("Nominote1");
    user.trigger("Nominote1");
    EXPECT_TRUE(checked("Nominote1")) << "an item stays checked";
    EXPECT_EQ(user.text("psol"), "SOL");

    user.trigger("Suono2");
    EXPECT_FALSE(checked("Suono1"));
    EXPECT_FALSE(user.find<QAction>("Suono2").isCheckable());
    willShow(44);
    user.click("Start");
    user.click("pdo");
    user.trigger("mnuPiano");
    user.trigger("mnuOrgano");
    EXPECT_THAT(world.midi.takeUntimed(),
                ElementsAre("on 1 36 0", "on 1 60 100", "program 0", "program 16"));
    user.trigger("Suono1");
    EXPECT_TRUE(checked("Suono1"));
}

TEST_F(MainWindowTest, HelpAndVersion) {
    open();
    user.trigger("mnuAiuto");
    QCoreApplication::processEvents();
    EXPECT_THAT(world.help.shown, ElementsAre("C:\\Cantavista\\cantavista.chm"));
    workInModal(
        world.runtime, [this] { user.trigger("mnuVersione"); },
        [](const WindowDriver& about) {
            const QString version = about.text("lblVersion");
            EXPECT_TRUE(version.startsWith("Versione ") && version.endsWith(" - Ottobre 2004"));
            about.click("cmdOK");
        });
}

TEST_F(MainWindowTest, ClosingEndsTheProgramAndAnAutomaticSession) {
    open();
    user.trigger("mnuAutomatico");
    world.runtime.at(world.runtime.now() + 500ms, [this] { user.click("cmdEsci"); });
    user.click("Start");
    EXPECT_TRUE(world.runtime.ending());
    EXPECT_FALSE(window->isVisible());
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("close"));
}
