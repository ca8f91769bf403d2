#include "composer/composer_window.h"

#include <QApplication>
#include <QComboBox>
#include <QProgressDialog>
#include <QPushButton>

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

using Lines = std::vector<std::string>;
using Act = std::function<void(OpenComposer&)>;

const QString kRoot = QStringLiteral("C:\\Cantavista\\Melodie\\");
const QString kDue = kRoot + QStringLiteral("Due.mel");
const QString kMusic = QStringLiteral("C:\\Musica\\");
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
        for (const QString& folder : {kRoot + "Mie\\", QString("C:\\Scaricati\\"), kMusic})
            composer.world.folders.put(folder + "x");
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
    const auto act = [](OpenComposer& composer) {
        auto& world = composer.world;
        const auto kept = [&world](const char* text) {
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
    };
    EXPECT_THAT(run(act, {true}), ElementsAre("message: ", kLosesChanges));
    EXPECT_FALSE(disk.folders.fileExists(kCopy)) << "given up by an answer";
}

TEST_F(ComposerFilesTest, AnUnsavedMelodyIsOfferedUntilItIsSaved) {
    const std::string offer = "confirm: L'ultima melodia non è stata salvata. Recuperarla ?";
    const Act openDue = steps("lb_24 InstrS=40 cmdInsNota mnuApri List1=1 cmdEseguiFile");
    EXPECT_THAT(run(openDue), IsEmpty()) << "it made way for another one";
    EXPECT_THAT(run(steps("mnuAnnulla"), {true}, kDue), ElementsAre(offer));
    EXPECT_TRUE(disk.folders.fileExists(kCopy)) << "an undone recovery loses nothing";
    const auto save = [](OpenComposer& composer) {
        EXPECT_EQ(composer.user.text("lblInstr"), QStringLiteral("40-Violin"));
        EXPECT_THAT(composer.world.midi.takeUntimed(), ElementsAre("program 40"));
        steps("in=Mia mnuSalva")(composer);
    };
    EXPECT_THAT(run(save, {true}), ElementsAre(offer, "input: Nome melodia | Salva con nome | "));
    EXPECT_TRUE(disk.folders.at(kRoot + QStringLiteral("Mia.mel")).startsWith("60;\r\n"));
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

TEST_F(ComposerFilesTest, ClosingSavesIfItIsAskedToAndStaysIfThatFails) {
    const auto act = [](OpenComposer& composer) {
        composer.world.dialogs.savesAtClosing = true;
        composer.world.dialogs.inputs = {QString(), QStringLiteral("Mia")};
        steps("lb_24 cmdInsNota")(composer);
        composer.window.reject();
        EXPECT_TRUE(composer.window.isVisible()) << "no name was given";
    };
    const std::string name = "input: Nome melodia | Salva con nome | ";
    EXPECT_THAT(run(act), ElementsAre(name, name));
    EXPECT_TRUE(disk.folders.at(kRoot + QStringLiteral("Mia.mel")).startsWith("60;\r\n"));
    EXPECT_FALSE(disk.folders.fileExists(kCopy));
}

TEST_F(ComposerFilesTest, AMelodyFromElsewhereIsSavedBackWhereItIs) {
    const QString outside = QStringLiteral("C:\\Scaricati\\Tre.v2.mel");
    disk.folders.put(outside, disk.folders.at(kDue));
    const auto act = [](OpenComposer& composer) {
        EXPECT_EQ(composer.user.text("lblNome"), QStringLiteral("Tre.v2"));
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
    const QString wave = kMusic + QStringLiteral("Due.wav");
    const auto act = [&](OpenComposer& composer) {
        const auto box = [&] { return composer.window.findChild<QProgressDialog*>("boxEsporta"); };
        composer.world.dialogs.inputs = {wave, wave};
        composer.at(composer.world.runtime.now() + 1500ms, [box] {
            ASSERT_TRUE(box());
            EXPECT_EQ(QApplication::activeModalWidget(), box());
            box()->findChild<QPushButton*>()->click();
        });
        composer.step("mnuEsportaAudio");
        EXPECT_FALSE(composer.world.folders.fileExists(wave));
        composer.step("mnuEsportaAudio");
    };
    EXPECT_THAT(run(act, {}, kDue),
                ElementsAre("save: Esporta audio | Due.wav", "save: Esporta audio | Due.wav",
                            "message: Esportato: Due.wav"));
    EXPECT_EQ(disk.folders.at(wave).size(), 44 + 4 * 2 * 4);
}

TEST_F(ComposerFilesTest, TheSelectedMelodiesOfTheFloppyDiskAreCopied) {
    disk.folders.put("A:\\a.mel", "a");
    disk.folders.put("A:\\b.mel", "b");
    run([](OpenComposer& composer) {
        composer.step("mnuApri");
        composer.at(composer.world.runtime.now() + 1ms, [&] {
            const WindowDriver user(*QApplication::activeModalWidget());
            auto& list = user.find<QListWidget>("List1");
            EXPECT_EQ(itemsOf(list, "*"), "Sette|a|b");
            EXPECT_FALSE(user.enabled("cmdCopia"));
            list.item(0)->setSelected(true);
            list.item(1)->setSelected(true);
            user.click("cmdCopia");
            EXPECT_EQ(user.text("lblEsito"), QStringLiteral("Melodie copiate: 2 di 2"));
            list.clearSelection();
            list.item(2)->setSelected(true);
            composer.world.folders.writeFailure.number = file_error::kDiskFull;
            Q_EMIT list.itemDoubleClicked(list.item(2));
            EXPECT_EQ(user.text("lblEsito"), QStringLiteral("Melodie copiate: 0 di 1"));
            user.click("cmdChiudi");
        });
        composer.step("mnuCopyFromA");
        auto& browser = composer.user.find<QListWidget>("List1");
        EXPECT_EQ(itemsOf(browser, "*"), "»Mie|a|Due|Rotta|Sette");
    });
}

/// The choice of bars and key is asked each time and proposed again; without bars not for MusicXML.
TEST_F(ComposerFilesTest, AMelodyIsExportedInBarsAndKey) {
    const Lines lines = run(
        [](OpenComposer& composer) {
            const auto step = [&](const char* name, const QString& metre, const char* button,
                                  const QStringList& metres, const QString& proposed) {
                composer.at(composer.world.runtime.now() + 1ms, [=, &composer] {
                    const WindowDriver user(*QApplication::activeModalWidget());
                    auto& list = user.find<QComboBox>("cmbTempoBattuta");
                    EXPECT_EQ(list.count(), metres.size());
                    EXPECT_EQ(
                        list.currentText() + user.find<QComboBox>("cmbTonalita").currentText(),
                        proposed);
                    list.setCurrentText(metre);
                    user.find<QComboBox>("cmbTonalita").setCurrentText("Re minore");
                    user.click(button);
                });
                composer.step(name);
            };
            const QStringList metres{"2/4", "3/4", "4/4", "6/8"};
            const QStringList all = metres + QStringList{"Nessuno"};
            composer.world.dialogs.inputs = {kMusic + "a.musicxml", kMusic + "b.brf",
                                             kMusic + "d.mxl", kMusic + "c.txt", kMusic + "e.pdf"};
            step("mnuEsportaMusicXml", "3/4", "cmdAnnulla", metres, "4/4Do maggiore");
            step("mnuEsportaMusicXml", "3/4", "cmdOK", metres, "4/4Do maggiore");
            step("mnuEsportaBraille", "Nessuno", "cmdOK", all, "3/4Re minore");
            step("mnuEsportaMusicXml", "3/4", "cmdOK", metres, "3/4Re minore");
            step("mnuEsportaBraille", "6/8", "cmdOK", all, "NessunoRe minore");
            step("mnuEsportaPdf", "Nessuno", "cmdOK", all, "6/8Re minore");
            using Readiness = Printing::Readiness;
            for (const Readiness ready : {Readiness::NotInstalled, Readiness::NoPrinter}) {
                composer.printing.ready = ready;
                composer.step("mnuStampa");
            }
            composer.printing.ready = Readiness::Ready;
            using Outcome = Printing::Outcome;
            for (const Outcome outcome : {Outcome::Cancelled, Outcome::Failed, Outcome::Printed}) {
                composer.printing.outcome = outcome;
                step("mnuStampa", "Nessuno", "cmdOK", all, "NessunoRe minore");
            }
            step("mnuStampa", "3/4", "cmdAnnulla", all, "NessunoRe minore");
        },
        {}, kDue);
    EXPECT_TRUE(disk.folders.at(kMusic + "a.musicxml").contains("<beats>3</beats>"));
    EXPECT_TRUE(disk.folders.at(kMusic + "b.brf").contains("#ABJ <\r\n"));
    EXPECT_TRUE(disk.folders.at(kMusic + "e.pdf").startsWith("%PDF"));
    EXPECT_TRUE(disk.folders.at(kMusic + "c.txt").contains("\u2823\u283C\u280B\u2826"));
    EXPECT_THAT(
        lines,
        ElementsAre("save: Esporta MusicXML | Due.musicxml", "message: Esportato: a.musicxml",
                    "save: Esporta braille | Due.brf", "message: Esportato: b.brf",
                    "save: Esporta MusicXML | Due.musicxml", "message: Esportato: d.mxl",
                    "save: Esporta braille | Due.brf", "message: Esportato: c.txt",
                    "save: Esporta PDF | Due.pdf", "message: Esportato: e.pdf",
                    HasSubstr("Manca il modulo"), HasSubstr("nessuna stampante"), "print: Due",
                    "print: Due", HasSubstr("non è riuscita"), "print: Due"));
}

TEST_F(ComposerFilesTest, TheBrowserKeepsItsPlaceAsItsFolderChanges) {
    run([](OpenComposer& composer) {
        auto& list = composer.user.find<QListWidget>("List1");
        const auto refill = [&] {
            for (const char* step : {"cmdHideFr2", "mnuApri", "lblNt*"})
                composer.step(step);
            return itemsOf(list, "*");
        };
        composer.step("mnuApri");
        composer.step("List1=2");
        composer.world.folders.put(kRoot + "Beta.mel");
        EXPECT_EQ(refill(), "»Mie|Beta|Due|*Rotta");
        composer.world.folders.removeFile(kRoot + "Rotta.mel");
        EXPECT_EQ(refill(), "»Mie|Beta|Due");
        composer.user.type(Qt::Key_Up);
        EXPECT_EQ(itemsOf(list, "*"), "»Mie|*Beta|Due") << "from where it was";
        list.clearSelection();
        list.setCurrentRow(0, QItemSelectionModel::NoUpdate);
        composer.user.type(Qt::Key_Return);
        EXPECT_EQ(itemsOf(list, "*"), "»..|Tre") << "Enter means the row that the arrows came to";
    });
}
