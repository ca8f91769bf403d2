#include "composer/frmComposer.h"
#include "support/test_world.h"
#include "support/window_driver.h"

#include <QListWidget>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const QString kRoot = QStringLiteral("C:\\Cantavista\\Melodie\\");
const QByteArray kTwoNotes =
    "60;62;\r\n0,5;0,5;\r\nn;s;\r\n 120 \r\n 73 \r\n1 \xF7 2 \xF7 Tutto;\r\n";
const QByteArray kDamaged = "60;62;\r\n1;\r\nn;n;\r\n";

/// The composer over files in memory, on virtual time.
struct ComposerLibraryTest : testing::Test {
    TestWorld world;
    std::unique_ptr<frmComposer> window;

    ComposerLibraryTest() {
        world.openOutput();
        world.folders.put(kRoot + QStringLiteral("Due.mel"), kTwoNotes);
        world.folders.put(kRoot + QStringLiteral("Rotta.mel"), kDamaged);
        window = std::make_unique<frmComposer>(world.services(), nullptr);
        world.runtime.at(1ms, [] {});
    }

    WindowDriver user() const { return WindowDriver(*window); }

    /// Opens the browser and activates the melody of this name.
    void open(const QString& name) {
        user().trigger("mnuApri");
        auto& list = *user().find<QWidget>("Fr2").findChild<QListWidget*>("List1");
        list.setCurrentItem(list.findItems(name, Qt::MatchExactly).value(0));
        user().click("cmdEseguiFile");
    }

    void runUntil(Instant end) {
        world.runtime.at(end, [this] {
            world.dialogs.confirmations.push_back(true);
            window->reject();
        });
        window->exec();
    }
};

}  // namespace

TEST_F(ComposerLibraryTest, AMelodyIsOpenedPlayedAndSavedUnderAnotherName) {
    world.runtime.at(10ms, [this] { open(QStringLiteral("Due")); });
    world.runtime.at(3s, [this] {
        EXPECT_EQ(user().text("lblNome"), QStringLiteral("Due"));
        EXPECT_EQ(user().text("lblNt"), QStringLiteral("2"));
        EXPECT_TRUE(user().shown("frBookMark"));
        world.dialogs.inputs = {QStringLiteral("Altra")};
        user().trigger("mnuSaveAs");
        EXPECT_EQ(user().text("lblNome"), QStringLiteral("Salvato: Altra"));
    });
    runUntil(4s);
    EXPECT_THAT(world.midi.take(),
                ElementsAre("0.010 program 73", "0.010 on 1 60 100", "0.230 on 1 60 0",
                            "0.260 on 1 62 120", "0.322 on 1 62 0"));
    EXPECT_EQ(world.folders.at(kRoot + QStringLiteral("Altra.mel")), kTwoNotes);
    EXPECT_THAT(world.dialogs.lines, ElementsAre("input: Nome melodia | Salva con nome | Due"));
}

TEST_F(ComposerLibraryTest, ADamagedFileIsRefusedAtEveryPlayAndUndoBringsTheFormerMelodyBack) {
    world.runtime.at(10ms, [this] { open(QStringLiteral("Due")); });
    world.runtime.at(2s, [this] {
        open(QStringLiteral("Rotta"));
        world.midi.take();
        user().click("cmdPlay");
        user().click("lblStep_1");
        user().click("cmdReset");
        user().trigger("mnuAnnulla");
        user().click("cmdCanc");
        EXPECT_THAT(world.dialogs.lines,
                    ElementsAre("message: File corrotto !!!", "message: File corrotto !!!",
                                "message: File corrotto !!!"));
        user().trigger("mnuAnnulla");
        EXPECT_EQ(user().text("lblNt"), QStringLiteral("2"));
        EXPECT_EQ(user().text("lblNome"), QStringLiteral("Due"));
    });
    runUntil(5s);
}
