#include "composer/library/melody_library.h"

#include "composer/library/floppy.h"
#include "library/library_fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tuple>

using testing::ElementsAre;
using testing::IsEmpty;
using Activated = MelodyLibrary::Activated;

namespace {

const QByteArray kMelody = "60;62;\r\n1;1;\r\nn;n;\r\n 90 \r\n 40 \r\n1 \xF7 2 \xF7 Tutto;\r\n";
const QByteArray kDamaged = "60;62;\r\n1;\r\nn;n;\r\n 90 \r\n 7 \r\n";

struct LibraryTest : LibraryFixture {
    void fill(std::initializer_list<const char*> paths) {
        for (const char* path : paths)
            folders.put(kRoot + path, kMelody);
        library.fill();
    }

    Lines list() const {
        Lines texts;
        for (const LibraryEntry& entry : library.entries())
            texts.push_back(entry.text().toStdString());
        return texts;
    }

    Activated activate(const QString& text) {
        const auto& entries = library.entries();
        for (std::size_t i = 0; i < entries.size(); ++i) {
            if (entries[i].text() == text)
                return library.activate(static_cast<int>(i));
        }
        ADD_FAILURE() << text.toStdString() << " is not listed";
        return Activated::Nothing;
    }

    /// Makes the melody one of a single note, without a name.
    void compose() {
        composition.activeNote = 72;
        editor.insertNote();
    }
};

TEST_F(LibraryTest, FoldersAreListedEnteredAndLeft) {
    fill({"Zeta\\a.mel", "Alfa\\Interna\\b.mel", "Alfa\\c.mel", "zoo.mel", "Ètude.MEL", "alba.mel",
          "Estate.v2.mel", "note.txt", "._alba.mel", ".mel"});
    EXPECT_THAT(list(), ElementsAre("» Zeta", "» Alfa", "alba", "Estate.v2", "Ètude", "zoo"));
    EXPECT_EQ(library.pathLabel(), "..\\Melodie\\");

    EXPECT_EQ(activate("» Alfa"), Activated::Folder);
    EXPECT_THAT(list(), ElementsAre("» ..", "» Interna", "c"));
    activate("» Interna");
    EXPECT_EQ(library.MelodyFolder(), kRoot + "Alfa\\Interna\\");
    EXPECT_EQ(library.pathLabel(), "..\\Melodie\\Alfa\\Interna\\");
    EXPECT_EQ(library.FolderDepth(), 2);
    activate("» ..");
    EXPECT_EQ(library.MelodyFolder(), kRoot + "Alfa\\");

    activate("» Interna");
    folders.loseFolder(kRoot + "Alfa");
    library.fill();
    EXPECT_EQ(library.MelodyFolder(), kRoot) << "a folder that is gone leaves no one stranded";
    EXPECT_EQ(library.FolderDepth(), 0);
    EXPECT_EQ(library.activate(-1), Activated::Nothing);
    EXPECT_EQ(library.activate(99), Activated::Nothing);
}

TEST_F(LibraryTest, AMelodyIsOpenedAndSavedWithAllThatItsFileHolds) {
    fill({"Aria.MEL"});
    folders.put(kRoot + "Rotta.mel", kDamaged);
    folders.put(kRoot + "Vuota.mel", "");
    library.fill();
    world.openOutput();
    EXPECT_EQ(activate("Aria"), Activated::Melody);
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("program 40"));
    EXPECT_EQ(composition.name, "Aria");
    compose();
    EXPECT_TRUE(library.save(-1));
    EXPECT_FALSE(editor.modified());
    EXPECT_EQ(composition.name, "Salvato: Aria");
    const QByteArray saved =
        "60;62;72;\r\n1;1;1;\r\nn;n;n;\r\n 90 \r\n 40 \r\n1 \xF7 3 \xF7 Tutto;\r\n";
    EXPECT_EQ(folders.at(kRoot + "Aria.MEL"), saved);
    EXPECT_FALSE(folders.fileExists(kRoot + "Aria.mel"));

    world.funzioniMM.chooseInstrument(12);
    world.midi.take();
    EXPECT_EQ(activate("Vuota"), Activated::Nothing);
    for (const FileError& failure : {FileError{file_error::kDeviceFault, {}},
                                     FileError{file_error::kNoAccess, "Negato !!!"}}) {
        folders.readFailure = failure;
        EXPECT_EQ(activate("Rotta"), Activated::Nothing);
    }
    folders.readFailure = {};
    EXPECT_THAT(world.midi.take(), IsEmpty());
    EXPECT_EQ(library.CurrentMelodyName(), "Aria");
    EXPECT_EQ(activate("Rotta"), Activated::Damaged);
    EXPECT_THAT(takeLines(),
                ElementsAre("message: File corrotto !!!", "message: File corrotto !!!",
                            "message: Errore: 75\n\nNegato !!!", "message: File corrotto !!!"));
    EXPECT_EQ(world.funzioniMM.currentInstrument(), 7);
    // Undo brings back the melody, the instrument in use before and the file that is saved to.
    editor.undo();
    EXPECT_EQ(composition.instrument, 12);
    compose();
    EXPECT_TRUE(library.save(-1));
    EXPECT_TRUE(folders.at(kRoot + "Aria.MEL").startsWith("60;62;72;72;\r\n"));
    EXPECT_EQ(folders.at(kRoot + "Rotta.mel"), kDamaged);
    EXPECT_TRUE(folders.trash.empty());
}

TEST_F(LibraryTest, SaveAsTakesAnyNameThatStaysInTheTree) {
    struct Row {
        const char* name;
        const char* path;   ///< where it is saved, if it is
        const char* reply;  ///< the box behind the question, if there is one
        bool replace = false;
    };
    const char* const there =
        "confirm: E' già presente una melodia dal nome: c'era\nVuoi sostituirla ?";
    const char* const invalid = "message: Nome non valido !!!";
    const char* const unknown = "message: Nome con carattere non consentito !!!";
    const Row rows[] = {
        {"", nullptr, nullptr},
        {"Valzer n.1 - (prova)", "Valzer n.1 - (prova).mel", nullptr},
        {"c'era", nullptr, there},
        {"c'era", "c'era.mel", there, true},
        {"Sotto\\x", "Sotto\\x.mel", nullptr},
        {"Perche\u0301", "Perch\u00E9.mel", nullptr},
        {"..\\fuori", nullptr, invalid},
        {"Sotto\\", nullptr, invalid},
        {"曲", nullptr, unknown},
        {"a\nb", nullptr, unknown},
        {"Manca\\x", nullptr, "message: Errore: 76\n\nTesto dell'errore 76 !!!"},
    };
    const std::string ask = "input: Nome melodia | Salva con nome | ";
    compose();
    for (const Row& row : rows) {
        folders.loseFolder(kRoot.chopped(1));
        folders.put(kRoot + "Sotto\\q.mel");
        folders.put(kRoot + "c'era.mel", "vecchia");
        library.fill();
        library.setCurrentMelodyName({});
        world.dialogs.inputs = {row.name};
        world.dialogs.confirmations = {row.replace};
        EXPECT_EQ(library.save(-1), row.path != nullptr) << row.name;
        EXPECT_EQ(takeLines(), row.reply ? Lines({ask, row.reply}) : Lines{ask}) << row.name;
        if (row.path) {
            EXPECT_TRUE(folders.at(kRoot + row.path).startsWith("72;\r\n")) << row.name;
        }
        EXPECT_EQ(folders.at(kRoot + "c'era.mel") == "vecchia", !row.replace);
    }

    world.dialogs.inputs = {{}};
    library.saveAs(0);
    EXPECT_THAT(takeLines(), ElementsAre(ask + "» Sotto"));
    editor.reset();
    EXPECT_FALSE(library.saveAs(0)) << "there is nothing to save";
    EXPECT_THAT(takeLines(), IsEmpty());
}

TEST_F(LibraryTest, ASaveThatFailsIsReportedAndLosesNothing) {
    fill({"Aria.mel"});
    activate("Aria");
    compose();
    folders.writeFailure = {file_error::kDiskFull, "Disco pieno !!!"};
    EXPECT_FALSE(library.save(-1));
    EXPECT_THAT(takeLines(), ElementsAre("message: Errore: 61\n\nDisco pieno !!!"));
    EXPECT_TRUE(editor.modified());
    EXPECT_EQ(composition.name, "Aria");
    EXPECT_EQ(folders.at(kRoot + "Aria.mel"), kMelody);
    folders.writeFailure = {file_error::kBadName, {}};
    EXPECT_FALSE(library.save(-1));
    EXPECT_THAT(takeLines(), ElementsAre("message: Nome non valido !!!"));

    folders.writeFailure = {};
    editor.setBookmarks({"1 ÷ 3 ÷ 曲"});
    EXPECT_FALSE(library.save(-1));
    EXPECT_THAT(takeLines(),
                ElementsAre("message: Il file non può contenere il carattere \"曲\" !!!"));
}

TEST_F(LibraryTest, WhatIsNotTheMelodysOwnLastVersionGoesToTheTrash) {
    fill({"Aria.mel", "Altra.mel", "Sotto\\Aria.mel"});
    const auto save = [this] {
        compose();
        EXPECT_TRUE(library.save(-1));
        return std::exchange(folders.trash, {});
    };
    activate("Aria");
    EXPECT_EQ(save(), QList<QByteArray>{});
    EXPECT_EQ(save(), QList<QByteArray>{}) << "its own, again and again";
    folders.put(kRoot + "Aria.mel", "another program's");
    EXPECT_EQ(save(), QList<QByteArray>{"another program's"});
    world.dialogs.inputs = {"Bella"};
    library.rename(library.rowOf("Aria"));
    EXPECT_EQ(save(), QList<QByteArray>{}) << "under its new name";
    const QByteArray bella = folders.at(kRoot + "Bella.mel");
    editor.reset();
    EXPECT_EQ(save(), QList<QByteArray>{bella}) << "another melody in the place of this one";
    world.dialogs.inputs = {"Altra"};
    world.dialogs.confirmations = {true};
    library.saveAs(-1);
    EXPECT_EQ(std::exchange(folders.trash, {}), QList<QByteArray>{kMelody}) << "a namesake";
    activate("» Sotto");
    library.setCurrentMelodyName("Aria");
    EXPECT_EQ(save(), QList<QByteArray>{kMelody}) << "one that Salva meets without a question";

    const QByteArray aria = folders.at(kRoot + "Sotto\\Aria.mel");
    world.dialogs.confirmations = {true};
    EXPECT_TRUE(library.remove(library.rowOf("Aria")));
    EXPECT_EQ(folders.trash, QList<QByteArray>{aria});
}

TEST_F(LibraryTest, RenamingAndNewFoldersKeepToTheirCharacters) {
    fill({"Aria.mel", "Altra.mel", "Sotto\\q.mel"});
    const char* const invalid = "message: Nome non valido !!!";
    const char* const invalidFolder = "message: Nome cartella non valido !!!";
    const char* const unknown = "message: Nome con carattere non consentito !!!";
    const char* const none = nullptr;
    // What the program says to a melody's and to a folder's new name.
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"", none, none},
        {"曲", unknown, unknown},
        {"Altra", "message: E' già presente una melodia dal nome: Altra", none},
        {"Sotto", none, "message: Errore: 58\n\nTesto dell'errore 58 !!!"},
    };
    const auto with = [](const char* ask, const char* reply) {
        return reply ? Lines{ask, reply} : Lines{ask};
    };
    for (const auto& [name, toMelody, toFolder] : rows) {
        fill({"Aria.mel"});
        activate("Aria");
        world.dialogs.inputs = {name, name};
        library.rename(library.rowOf("Aria"));
        EXPECT_EQ(takeLines(), with("input: Rinominare | Rinomina melodia | Aria", toMelody));
        library.createFolder();
        EXPECT_EQ(takeLines(), with("input: Nome cartella | Nome Cartella | ", toFolder));
    }
    EXPECT_EQ(library.CurrentMelodyName(), "Sotto") << "the open melody goes by its new name";
    for (const QChar c : QStringLiteral(",.-;:|\\/!%&()='^+*°§<>")) {
        world.dialogs.inputs = {"a" + QString(c), c + QString("a")};
        EXPECT_FALSE(library.rename(library.rowOf("Sotto")));
        EXPECT_FALSE(library.createFolder());
        const Lines lines = takeLines();
        EXPECT_EQ(lines.at(1) + lines.back(), std::string(invalid) + invalidFolder)
            << int{c.unicode()};
    }
    EXPECT_THAT(list(), ElementsAre("» Sotto", "» Altra", "Altra", "Sotto"));
    EXPECT_FALSE(library.rename(0)) << "folders keep their names";
    EXPECT_THAT(takeLines(), IsEmpty());
}

TEST_F(LibraryTest, AMelodyFromElsewhereIsSavedWhereItIs) {
    fill({"Sotto\\Dentro\\Aria.mel", "Sotto\\Fuori.mel"});
    const QString outside = "C:\\Musica\\Fuori.v2.mel";
    folders.put(outside, kMelody);
    EXPECT_EQ(library.openFile(outside), Activated::Melody);
    EXPECT_EQ(library.MelodyFolder(), kRoot);
    compose();
    EXPECT_TRUE(library.save(-1));
    EXPECT_EQ(composition.name, "Salvato: Fuori.v2");
    EXPECT_TRUE(folders.at(outside).startsWith("60;62;72;"));
    EXPECT_EQ(library.openFile("C:\\niente.mel"), Activated::Nothing);
    EXPECT_EQ(library.openFile(kRoot + "..\\..\\Musica\\Fuori.v2.mel"), Activated::Melody);
    EXPECT_TRUE(composition.source.outside);
    EXPECT_EQ(library.openFile(kRoot + "Sotto\\Dentro\\Aria.mel"), Activated::Melody);
    EXPECT_EQ(library.MelodyFolder(), kRoot + "Sotto\\Dentro\\");
    EXPECT_EQ(library.FolderDepth(), 2);
    EXPECT_FALSE(composition.source.outside);
    EXPECT_EQ(takeLines().size(), 1U);
}

TEST_F(LibraryTest, OnlyEmptyFoldersAreDeleted) {
    fill({"Piena\\q.mel", "Cupa\\Interna\\q.mel", "Estranea\\x.txt", "Aria.mel"});
    folders.createFolder(kRoot + "Vuota");
    library.fill();
    world.dialogs.confirmations = {true, true, false, true};
    for (int row = 0; row < 3; ++row)
        EXPECT_FALSE(library.remove(row)) << row;
    const std::string impossible = "message: Impossibile eliminare la cartella !!!";
    EXPECT_THAT(takeLines(), ElementsAre(impossible, impossible,
                                         "confirm: Eliminare la cartella: Estranea ?", impossible));
    EXPECT_TRUE(library.remove(3));
    EXPECT_FALSE(library.remove(3)) << "the answer was no";
    EXPECT_TRUE(library.remove(3));
    EXPECT_THAT(takeLines(), ElementsAre("confirm: Eliminare la cartella: Vuota ?",
                                         "confirm: Eliminare il file: Aria ?",
                                         "confirm: Eliminare il file: Aria ?"));
    EXPECT_FALSE(library.remove(-1));
    activate("» Piena");
    EXPECT_FALSE(library.remove(0)) << "the parent entry";
    EXPECT_THAT(list(), ElementsAre("» ..", "q"));
    EXPECT_THAT(world.dialogs.lines, IsEmpty());
}

struct FloppyTest : LibraryTest {
    std::string pointer;
    Floppy floppy{world.services(), composition, library,
                  [this](bool busy) { pointer += busy ? 'B' : 'N'; }};
};

TEST_F(FloppyTest, TheMelodyIsSavedUnderItsNameAndFailuresHaveTheirWords) {
    floppy.save();
    EXPECT_EQ(pointer, "") << "there is nothing to save";
    compose();
    world.dialogs.inputs = {{}, "..\\x", "Mia"};
    world.dialogs.duringMessage = [this] { pointer += '!'; };
    floppy.save();
    floppy.save();
    EXPECT_EQ(library.CurrentMelodyName(), "");
    floppy.save();
    floppy.save();
    const std::string ask = "input: Nome melodia | Nome File | ";
    const std::string saved = "message: Salvato: Mia.mel\nsu dischetto";
    EXPECT_THAT(takeLines(),
                ElementsAre(ask, ask, "message: Nome non valido !!!", ask, saved, saved));
    EXPECT_EQ(pointer, "!BN!BN!") << "the pointer is normal again before the box";
    EXPECT_EQ(library.CurrentMelodyName(), "Mia");
    EXPECT_TRUE(folders.at("a:\\Mia.mel").startsWith("72;\r\n"));

    for (const char* name : {"Sotto\\Uno", "Sotto/Due"}) {
        library.setCurrentMelodyName(name);
        floppy.save();
    }
    EXPECT_THAT(takeLines(), ElementsAre("message: Salvato: Uno.mel\nsu dischetto",
                                         "message: Salvato: Due.mel\nsu dischetto"));
    library.setCurrentMelodyName("Mia");

    for (const int number : {61, 71, 70}) {
        folders.writeFailure = {number, "Protetto !!!"};
        floppy.save();
    }
    folders.writeFailure = {};
    folders.hasDriveA = false;
    floppy.save();
    const std::string notReady =
        "message: Errore: 71\n\nDischetto non inserito o non inserito correttamente !!!";
    EXPECT_THAT(takeLines(), ElementsAre("message: Errore: 61\n\nDischetto pieno !!!", notReady,
                                         "message: Errore: 70\n\nProtetto !!!", notReady));
}

TEST_F(FloppyTest, SelectedMelodiesAreCopiedWithoutAsking) {
    fill({"due.mel"});
    for (const char* name : {"due.mel", "quattro.mel", "TRE.MEL", "uno.mel"})
        folders.put(QStringLiteral("A:\\") + name, name);
    folders.put("A:\\Cartella\\cinque.mel");
    floppy.list();
    ASSERT_EQ(floppy.melodies().size(), 4U);
    EXPECT_EQ(floppy.copy({}), 0);
    folders.removeFile("A:\\due.mel");
    EXPECT_EQ(floppy.copy({3, 0, 1}), 1) << "the first one first, up to a failure";
    EXPECT_THAT(list(), ElementsAre("due", "TRE"));
    folders.put("A:\\due.mel", "due.mel");
    EXPECT_EQ(floppy.copy({3, 0, 1}), 3);
    EXPECT_EQ(pointer, "BNBN");
    EXPECT_THAT(list(), ElementsAre("due", "TRE", "uno"));
    EXPECT_EQ(folders.at(kRoot + "due.mel"), "due.mel");

    folders.writeFailure = {file_error::kDiskFull, {}};
    EXPECT_EQ(floppy.copy({2}), 0);
    folders.hasDriveA = false;
    floppy.list();
    EXPECT_THAT(floppy.melodies(), IsEmpty());
    EXPECT_EQ(pointer, "BNBNBN");
    EXPECT_THAT(world.dialogs.lines, IsEmpty());
}

}  // namespace
