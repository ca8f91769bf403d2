#include "composer/composer_window.h"

#include <QApplication>
#include <QProgressDialog>
#include <QPushButton>
#include <QScrollBar>

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Lines = std::vector<std::string>;
using Act = std::function<void(OpenComposer&)>;

const QString kRoot = QStringLiteral("C:\\Cantavista\\Melodie\\");
const QString kDue = kRoot + QStringLiteral("Due.mel");
const QString kCopy = QStringLiteral("C:\\Cantavista\\Melodia non salvata.mel");
const char* const kLosesChanges = "confirm: La melodia non è stata salvata. Chiudere comunque ?";

/// The files of the disk, from one run of the program to the next.
struct ComposerFilesTest : testing::Test {
    TestWorld disk;

    ComposerFilesTest() {
        OpenComposer composer;
        composer.putMelodies();
        disk.folders.takeFiles(composer.world.folders);
        composer.world.runtime.forgetActs();
    }

    /// Opens the composer for a minute and does something in it; answers which boxes there were.
    Lines run(const Act& act, std::deque<bool> answers = {}, const QString& file = {}) {
        OpenComposer composer(file);
        composer.world.folders.takeFiles(disk.folders);
        for (const char* folder :
             {"C:\\Scaricati\\", "C:\\Musica\\", "C:\\Cantavista\\Melodie\\Mie\\"})
            composer.world.folders.put(QLatin1String(folder) + "x");
        composer.world.dialogs.confirmations = std::move(answers);
        composer.at(10ms, [&] { act(composer); });
        composer.at(60s, [&] { composer.window.reject(); });
        composer.window.exec();
        disk.folders.takeFiles(composer.world.folders);
        return composer.world.dialogs.lines;
    }
};

Act steps(const QString& all) {
    return [all](OpenComposer& composer) {
        for (const QString& step : all.split(u' ', Qt::SkipEmptyParts))
            composer.step(step);
    };
}

}  // namespace

TEST_F(ComposerFilesTest, AnUnsavedMelodyIsWrittenWithinTwoSecondsWhateverPlaysOrAsks) {
    EXPECT_THAT(run(
                    [](OpenComposer& composer) {
                        auto& world = composer.world;
                        const auto kept = [&world](const QByteArray& text) {
                            return world.folders.at(kCopy).contains(text);
                        };
                        composer.enter({60});
                        composer.at(1900ms, [&world, &composer, kept] {
                            EXPECT_TRUE(kept("60;\r\n")) << "while it plays";
                            world.dialogs.duringMessage = [&world, kept] {
                                world.runtime.blockUntil(world.runtime.now() + 2s);
                                EXPECT_TRUE(kept("\r\n 200 \r\n")) << "in a box";
                            };
                            composer.step("Slider1=200");
                            world.dialogs.message({});
                        });
                        composer.clickAt(6s, "cmdPlay");
                        composer.step("chekLoop");
                        composer.step("cmdPlay");
                    },
                    {true}),
                ElementsAre("message: ", kLosesChanges));
    EXPECT_FALSE(disk.folders.fileExists(kCopy)) << "given up by an answer";
}

TEST_F(ComposerFilesTest, AnUnsavedMelodyIsOfferedUntilItIsSavedOrRefused) {
    const std::string offer = "confirm: L'ultima melodia non è stata salvata. Recuperarla ?";
    const QString second = QString(kCopy).replace(".mel", " 2.mel");
    const Act openDue = steps("lb_24 InstrS=40 cmdInsNota mnuApri List1=1 cmdEseguiFile");
    EXPECT_THAT(run(openDue), IsEmpty()) << "it made way for another one";
    EXPECT_TRUE(disk.folders.at(kCopy).startsWith("60;\r\n"));
    disk.folders.put(second, "72;\r\n1;\r\nn;\r\n");
    EXPECT_THAT(run(steps("mnuAnnulla"), {false, true}, kDue), ElementsAre(offer, offer));
    EXPECT_FALSE(disk.folders.fileExists(second)) << "refused, and the newer one";
    EXPECT_TRUE(disk.folders.fileExists(kCopy)) << "an undone recovery loses nothing";
    const auto save = [](OpenComposer& composer) {
        EXPECT_EQ(composer.user.text("lblInstr"), QStringLiteral("40-Violin"));
        EXPECT_THAT(composer.world.midi.takeUntimed(), ElementsAre("program 40"));
        steps("in=Mia mnuSalva")(composer);
    };
    EXPECT_THAT(run(save, {true}), ElementsAre(offer, "input: Nome melodia | Salva con nome | "));
    EXPECT_TRUE(disk.folders.at(kRoot + QStringLiteral("Mia.mel")).startsWith("60;\r\n"));
    EXPECT_FALSE(disk.folders.fileExists(kCopy));
    disk.folders.put(kCopy, "60;62;\r\n1;");
    EXPECT_THAT(run(steps({})), IsEmpty()) << "what is no melody is not offered";
}

TEST_F(ComposerFilesTest, ClosingAsksAboutWhatWouldBeLostAndOnlyThen) {
    for (const char* change : {"mnuPiano", "Slider1=90", "cmdInsPausa", "cmdReset"})
        EXPECT_THAT(run(steps(change), {true}, kDue), ElementsAre(kLosesChanges)) << change;
    EXPECT_THAT(run(steps("cmdInsPausa mnuAnnulla lblStep_1"), {}, kDue), IsEmpty());
    EXPECT_THAT(run(steps("mnuPiano")), IsEmpty()) << "there is no melody";
    const auto fullDisk = [](OpenComposer& composer) {
        composer.world.folders.writeFailure = {file_error::kDiskFull, {}};
        steps("cmdInsPausa mnuApri List1=1 cmdEseguiFile")(composer);
    };
    EXPECT_THAT(run(fullDisk, {true}), ElementsAre(kLosesChanges)) << "it could not be kept";
}

TEST_F(ComposerFilesTest, AMelodyFromElsewhereIsSavedBackWhereItIs) {
    const QString outside = QStringLiteral("C:\\Scaricati\\Tre.v2.mel");
    disk.folders.put(outside, disk.folders.at(kDue));
    const auto act = [](OpenComposer& composer) {
        EXPECT_EQ(composer.user.text("lblNome"), QStringLiteral("Tre.v2"));
        EXPECT_TRUE(composer.user.shown("frBookMark"));
        EXPECT_THAT(composer.world.midi.takeUntimed(), ElementsAre("program 73")) << "it is silent";
        steps("cmdInsPausa mnuApri mnuSalva in=Copia mnuSaveAs cmdInsPausa mnuSalva")(composer);
    };
    run(act, {}, outside);
    EXPECT_TRUE(disk.folders.at(outside).startsWith("60;62;64;00;00;\r\n"));
    EXPECT_TRUE(
        disk.folders.at(kRoot + QStringLiteral("Copia.mel")).startsWith("60;62;64;00;00;00;\r\n"));
    const QString inTree = kRoot + QStringLiteral("Mie\\Tre.mel");
    run(steps("cmdInsPausa mnuSalva"), {}, inTree);
    EXPECT_TRUE(disk.folders.at(inTree).startsWith("72;00;\r\n"));
    EXPECT_THAT(run(steps({}), {}, QStringLiteral("C:\\nulla.mel")),
                ElementsAre("message: Errore: 53\n\nTesto dell'errore 53 !!!"));
}

TEST_F(ComposerFilesTest, ALongRenderingShowsABoxAndCanBeGivenUp) {
    const QString wave = QStringLiteral("C:\\Musica\\Due.wav");
    const auto act = [&](OpenComposer& composer) {
        const auto box = [&] { return composer.window.findChild<QProgressDialog*>("boxEsporta"); };
        composer.world.dialogs.inputs = {wave, wave};
        const Instant start = composer.world.runtime.now();
        composer.at(start + 1500ms, [box] {
            ASSERT_TRUE(box() && box()->isVisible());
            EXPECT_EQ(QApplication::activeModalWidget(), box());
            box()->findChild<QPushButton*>()->click();
        });
        composer.step("mnuEsportaAudio");
        EXPECT_FALSE(composer.world.folders.fileExists(wave));
        composer.step("mnuEsportaAudio");
        EXPECT_EQ(box(), nullptr);
    };
    EXPECT_THAT(run(act, {}, kDue),
                ElementsAre("save: Esporta audio | Due.wav", "save: Esporta audio | Due.wav",
                            "message: Esportato: Due.wav"));
    EXPECT_EQ(disk.folders.at(wave).size(), 44 + 4 * 2 * 4);
    OpenComposer deaf(kDue, false);
    deaf.putMelodies();
    deaf.at(10ms, [&] {
        EXPECT_FALSE(deaf.user.enabled("mnuEsportaAudio")) << "without a synthesizer";
        EXPECT_TRUE(deaf.user.enabled("mnuEsportaMidi"));
    });
    deaf.runUntil(1s);
}

TEST_F(ComposerFilesTest, TheSelectedMelodiesOfTheFloppyDiskAreCopied) {
    for (const char* name : {"a", "b", "c"})
        disk.folders.put(QStringLiteral("A:\\%1.mel").arg(name), name);
    const auto inCopyWindow = [](OpenComposer& composer,
                                 const std::function<void(const WindowDriver&)>& act) {
        composer.at(composer.world.runtime.now() + 1ms, [act] {
            const WindowDriver user(*QApplication::activeModalWidget());
            act(user);
            user.click("cmdChiudi");
        });
        composer.step("mnuCopyFromA");
    };
    run([&](OpenComposer& composer) {
        MemoryFolders& folders = composer.world.folders;
        composer.step("mnuApri");
        inCopyWindow(composer, [&](const WindowDriver& user) {
            auto& list = user.find<QListWidget>("List1");
            EXPECT_EQ(QApplication::activeModalWidget()->focusWidget(),
                      &user.find<QWidget>("cmdChiudi"));
            EXPECT_EQ(user.text("lblCurrPath"), QStringLiteral("..\\Melodie\\"));
            EXPECT_EQ(itemsOf(list, "*"), "Sette|a|b|c");
            EXPECT_FALSE(user.enabled("cmdCopia"));
            list.item(1)->setSelected(true);
            list.item(3)->setSelected(true);
            user.click("cmdCopia");
            EXPECT_EQ(user.text("lblEsito"), QStringLiteral("Melodie copiate: 2 di 2"));
            list.clearSelection();
            EXPECT_EQ(user.text("lblEsito") + (user.enabled("cmdCopia") ? "on" : ""), QString());
            Q_EMIT list.itemDoubleClicked(list.item(1));
            list.item(2)->setSelected(true);
            folders.writeFailure.number = file_error::kDiskFull;
            Q_EMIT list.itemDoubleClicked(list.item(2));
            EXPECT_EQ(user.text("lblEsito"), QStringLiteral("Melodie copiate: 0 di 1"));
            folders.writeFailure = {};
        });
        EXPECT_EQ(itemsOf(composer.user.find<QListWidget>("List1"), "*"), "»Mie|a|c|Due|Rotta");
        folders.hasDriveA = false;
        inCopyWindow(composer, [](const WindowDriver& user) {
            EXPECT_EQ(user.find<QListWidget>("List1").count(), 0);
        });
    });
}

TEST_F(ComposerFilesTest, TheBrowserKeepsItsPlaceAsItsFolderChanges) {
    disk.folders.put(kRoot + QString(200, u'A') + ".mel", "x");
    run([](OpenComposer& composer) {
        auto& list = composer.user.find<QListWidget>("List1");
        const auto refill = [&](const char* steps) {
            for (const char* step : {"cmdHideFr2", "mnuApri", steps})
                composer.step(step);
            return itemsOf(list, "*").section(u'|', 2);
        };
        composer.step("mnuApri");
        list.doItemsLayout();
        EXPECT_LE(list.visualItemRect(list.item(2)).width(), list.viewport()->width())
            << "a long name makes no row wider than the list";
        EXPECT_EQ(list.item(0)->data(Qt::AccessibleTextRole), "Cartella Mie");
        composer.step("List1=3");
        composer.world.folders.put(kRoot + "Beta.mel");
        EXPECT_EQ(refill("lblNt*"), "Beta|Due|*Rotta");
        composer.world.folders.removeFile(kRoot + "Rotta.mel");
        EXPECT_EQ(refill("lblNt*"), "Beta|Due");
        composer.user.type(Qt::Key_Up);
        EXPECT_EQ(itemsOf(list, "*").section(u'|', 2), "*Beta|Due") << "from where it was";
        list.clearSelection();
        list.setCurrentRow(0, QItemSelectionModel::NoUpdate);
        composer.user.type(Qt::Key_Return);
        EXPECT_EQ(itemsOf(list, "*"), "»..|Tre") << "Enter means the row that the arrows came to";
        EXPECT_EQ(list.item(0)->data(Qt::AccessibleTextRole), "Cartella superiore");
        EXPECT_EQ(composer.user.find<QWidget>("lblPercorso").toolTip(), "..\\Melodie\\Mie\\");
        composer.user.find<QWidget>("cmdMkdir").setFocus();
        composer.user.type(Qt::Key_Return);
        EXPECT_EQ(itemsOf(list, "*"), "»..|Tre") << "Enter is the list's alone";
        composer.step("cmdEseguiFile");
        composer.step("cmdDelete");
        EXPECT_EQ(itemsOf(list, "*"), "»..|Tre") << "nothing is selected";
    });
}
