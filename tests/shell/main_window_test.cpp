#include "shell/main_window_fixture.h"

#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QStatusBar>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct MainWindowTest : MainWindowFixture {
    QString status() const {
        return user.find<QStatusBar>("statusBar").findChild<QLabel*>()->text();
    }

    QStringList disabled() const {
        QStringList names;
        for (const QObject* object : window->findChildren<QObject*>()) {
            if (object->property("enabled") == QVariant(false))
                names << object->objectName();
        }
        names.sort();
        return names;
    }
};

}  // namespace

TEST_F(MainWindowTest, FourControlsRestDuringTheTuneAndInputWaits) {
    QStringList before = disabled(), during;
    auto alarm = world.runtime.makeAlarm([&] {
        during = disabled();
        EXPECT_EQ(status(), "Uscita: in preparazione   ·   Strumento: 16-Hammond Organ");
        EXPECT_THAT(world.media.lines,
                    ElementsAre("OPEN C:\\Cantavista\\note\\ap.mid ALIAS jepa ", "PLAY jepa"));
        EXPECT_THAT(world.midi.take(), IsEmpty());
    });
    alarm->set(2199ms);
    world.runtime.at(1s, [&] {
        EXPECT_GE(world.runtime.now(), 2200ms - 1us);
        user.click("Start");
    });
    activate();
    for (const QString& name : before)
        during.removeAll(name);
    EXPECT_THAT(during, ElementsAre("Intonazione", "Start", "cmdEsci", "guida_Intonazione",
                                    "guida_mnuRint", "mnuRint"));
    EXPECT_EQ(disabled(), before);
    EXPECT_EQ(QApplication::focusWidget(), &user.find<QWidget>("Start"));
    EXPECT_EQ(world.media.lines.back(), "CLOSE jepa");
    EXPECT_THAT(world.midi.take(), ElementsAre("2.200 open -1", "2.200 program 16"));
    world.runtime.runActs();
    EXPECT_EQ(user.text("Start"), "Stop");
}

TEST_F(MainWindowTest, StartsWithoutTuneOrOutput) {
    world.media.codes = {{"OPEN", 275}};
    world.midi.openCode = 2;
    window->openMelodyAtStart("C:\\x.mel");
    world.runtime.at(5s, [] { QApplication::activeModalWidget()->close(); });
    world.dialogs.duringMessage = [this] { EXPECT_TRUE(status().startsWith("Uscita: nessuna ")); };
    activate();
    EXPECT_EQ(world.media.lines.size(), 1U);
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("open -1"));
    EXPECT_THAT(world.dialogs.lines, ElementsAre("message: Operation:Open\r\nErrore di sistema 2",
                                                 testing::StartsWith("message: Errore: 53")));
    workInModal(
        world.runtime, [this] { user.click("cmdUscita"); },
        [](const WindowDriver& opened) { opened.click("cmdChiudi"); });
}

TEST_F(MainWindowTest, EachMenuItemDoesItsWork) {
    activate();
    const std::tuple<const char*, const char*, const char*> windows[] = {
        {"Intonazione", "frmInto", "pitchPanel"},  {"mnuRint", "frmInto", "FrmIntervalli"},
        {"mnuRac", "frmInto", "frmRacc"},          {"Intonazione", "frmInto", "frmRacc"},
        {"mnuComposer", "frmComposer", "lblNome"}, {"mnuPromemoria", "frmOptions", "cmdOk"},
        {"mnuMidiTest", "frmMidiTest", "cmdTest"}, {"mnuVersione", "frmAbout", "cmdOK"}};
    for (const auto& [item, name, part] : windows) {
        world.runtime.at(world.runtime.now() + 2s, [] {});
        workInModal(
            world.runtime, [this, item = item] { choose(item); },
            [&, name = name, part = part](const WindowDriver& opened) {
                EXPECT_EQ(QApplication::activeModalWidget()->objectName(), name) << item;
                EXPECT_TRUE(opened.shown(part)) << item;
                part == std::string("cmdOK") ? opened.click(part) : opened.close();
            });
    }
    world.midi.take();
    EXPECT_EQ(status(), "Uscita: Mapper   ·   Strumento: 16-Hammond Organ");
    choose("mnuPiano");
    EXPECT_EQ(status(), "Uscita: Mapper   ·   Strumento: 0-Acoustic Grand Piano");
    choose("mnuOrgano");
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("program 0", "program 16"));
    EXPECT_FALSE(user.shown("cmdUscita")) << "there is an output";
    user.click("guida_mnuAiuto");
    QCoreApplication::processEvents();
    EXPECT_EQ(world.help.shown.size(), 1);
    user.click("Start");
    user.click("pdo");
    EXPECT_TRUE(user.shown("guida"));
    user.click("Start");
    EXPECT_FALSE(user.shown("guida")) << "its place is the statistics'";
    choose("mnuLettura");
    EXPECT_EQ(QApplication::focusWidget(), &user.find<QWidget>("Start"));
    EXPECT_FALSE(user.shown("cmdSSmetro"));
    choose("mnuMetro");
    EXPECT_EQ(QApplication::focusWidget(), &user.find<QWidget>("cmdSSmetro"));
    world.runtime.runActs();
    world.midi.take();
    choose("Esci");
    EXPECT_TRUE(world.runtime.ending() && !window->isVisible());
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("close"));
    EXPECT_EQ(status(), "Uscita: nessuna   ·   Strumento: 16-Hammond Organ");
}

TEST_F(MainWindowTest, F1OpensHelpFromAnywhereOnce) {
    activate();
    user.trigger("mnuAiuto");
    QCoreApplication::processEvents();
    user.find<QMenu>("es").popup({});
    user.type(Qt::Key_F1);
    EXPECT_FALSE(QApplication::activePopupWidget()) << "an open menu would hold the mouse";
    user.type(Qt::Key_F1, {}, Qt::ShiftModifier);
    EXPECT_EQ(world.help.shown, QStringList(2, "C:\\Cantavista\\cantavista.chm"));
}
