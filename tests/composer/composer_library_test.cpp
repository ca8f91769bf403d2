#include "composer/frmComposer.h"
#include "support/test_world.h"
#include "support/window_driver.h"

#include <QListWidget>
#include <QScrollBar>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const QString kRoot = QStringLiteral("C:\\Cantavista\\Melodie\\");
const QByteArray kTwoNotes =
    "60;62;\r\n0,5;0,5;\r\nn;s;\r\n 120 \r\n 73 \r\n1 \xF7 2 \xF7 Tutto;\r\n";
const QByteArray kDamaged = "60;62;\r\n1;\r\nn;n;\r\n60\r\n16\r\n1 \xF7 2 \xF7 Tutto;\r\n";

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
        user().find<QListWidget>("lstBookMark").setCurrentRow(0);
        user().click("cmdPlayBm");
        user().click("cmdReset");
        user().trigger("mnuAnnulla");
        user().click("cmdCanc");
        EXPECT_THAT(world.dialogs.lines,
                    ElementsAre("message: File corrotto !!!", "message: File corrotto !!!",
                                "message: File corrotto !!!", "message: File corrotto !!!"));
        user().trigger("mnuAnnulla");
        EXPECT_EQ(user().text("lblNt"), QStringLiteral("2"));
        EXPECT_EQ(user().text("lblNome"), QStringLiteral("Due"));
    });
    runUntil(5s);
}

/// What becomes of a melody that nobody saved, from one opening of the window to the next.
struct UnsavedMelodyTest : ComposerLibraryTest {
    const QString copy = QStringLiteral("C:\\Cantavista\\Melodia non salvata.mel");

    void enter(int note) const {
        user().click(QStringLiteral("lb_%1").arg(note - 36));
        user().click("cmdInsNota");
    }

    /// Opens another window for three seconds, as the next run of the program does; answers which
    /// boxes there were.
    std::vector<std::string> runAgain(std::deque<bool> answers, std::function<void()> act,
                                      const QString& file = {}) {
        window = std::make_unique<frmComposer>(world.services(), nullptr, file);
        world.dialogs.lines.clear();
        world.dialogs.confirmations = std::move(answers);
        const Instant start = world.runtime.now();
        world.runtime.at(start + 1ms, [] {});
        world.runtime.at(start + 2ms, std::move(act));
        world.runtime.at(start + 3s, [this] { window->reject(); });
        window->exec();
        return world.dialogs.lines;
    }
};

TEST_F(UnsavedMelodyTest, IsWrittenWithinTwoSecondsWhateverPlaysOrAsks) {
    const auto kept = [this](const char* notes) {
        return world.folders.at(copy).startsWith(QByteArray(notes) + "\r\n");
    };
    world.runtime.at(10ms, [this] {
        enter(60);
        user().click("chekLoop");
        user().click("cmdPlay");
    });
    world.runtime.at(1900ms, [&] {
        EXPECT_TRUE(kept("60;")) << "while it plays";
        world.dialogs.duringMessage = [&] {
            world.runtime.blockUntil(world.runtime.now() + 2s);
            EXPECT_TRUE(world.folders.at(copy).contains("\r\n 200 \r\n")) << "in a box";
        };
        user().find<QScrollBar>("Slider1").setValue(200);
        world.dialogs.message({});
    });
    world.runtime.at(4s, [this] { user().click("cmdPlay"); });
    runUntil(5s);
    EXPECT_FALSE(world.folders.fileExists(copy)) << "given up by an answer";
}

TEST_F(UnsavedMelodyTest, IsOfferedUntilItIsSavedOrRefused) {
    const std::string offer = "confirm: L'ultima melodia non è stata salvata. Recuperarla ?";
    const QString second = QString(copy).replace(".mel", " 2.mel");
    EXPECT_THAT(runAgain({},
                         [this] {
                             enter(60);
                             open(QStringLiteral("Due"));
                         }),
                IsEmpty())
        << "it made way for another one";
    EXPECT_TRUE(world.folders.at(copy).startsWith("60;\r\n"));
    world.folders.put(second, "72;\r\n1;\r\nn;\r\n");
    const auto undo = [this] { user().trigger("mnuAnnulla"); };
    EXPECT_THAT(runAgain({false, true}, undo, kRoot + QStringLiteral("Due.mel")),
                ElementsAre(offer, offer));
    EXPECT_FALSE(world.folders.fileExists(second)) << "refused, and the newer one";
    EXPECT_TRUE(world.folders.fileExists(copy)) << "an undone recovery loses nothing";
    world.dialogs.inputs = {QStringLiteral("Mia")};
    EXPECT_THAT(runAgain({true}, [this] { user().trigger("mnuSalva"); }),
                ElementsAre(offer, "input: Nome melodia | Salva con nome | "));
    EXPECT_TRUE(world.folders.at(kRoot + QStringLiteral("Mia.mel")).startsWith("60;\r\n"));
    EXPECT_FALSE(world.folders.fileExists(copy));
    world.folders.put(copy, kDamaged.left(9));
    EXPECT_THAT(runAgain({}, [] {}), IsEmpty()) << "what is no melody is not offered";
}

TEST_F(UnsavedMelodyTest, TempoAndInstrumentAreChangesAndPushedAsideOnesAreAskedForIfNotKept) {
    const std::string question = "confirm: La melodia non è stata salvata. Chiudere comunque ?";
    const QString due = kRoot + QStringLiteral("Due.mel");
    const auto piano = [this] { user().trigger("mnuPiano"); };
    EXPECT_THAT(runAgain({true}, piano, due), ElementsAre(question));
    EXPECT_THAT(runAgain({}, piano), IsEmpty()) << "there is no melody";
    EXPECT_THAT(runAgain({true},
                         [this] {
                             world.folders.writeFailure = {file_error::kDiskFull, {}};
                             enter(60);
                             open(QStringLiteral("Due"));
                         }),
                ElementsAre(question));
}
