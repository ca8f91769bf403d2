#include "composer/library/melody_library.h"

#include "composer/library/floppy.h"
#include "composer/library/melody_file.h"
#include "library/library_fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <tuple>

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using Activated = MelodyLibrary::Activated;

namespace {

const QByteArray kMelody = "60;62;\r\n1;1;\r\nn;n;\r\n 90 \r\n 40 \r\n1 \xF7 2 \xF7 Tutto;\r\n";
const char* const kInvalid = "message: Nome non valido !!!";
const char* const kUnknown = "message: Nome con carattere non consentito !!!";

struct LibraryTest : testing::Test, OpenLibrary {
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

    /// What the program says after its question, if it says anything.
    std::string reply(const QString& answer, const std::function<void()>& act) {
        world.dialogs.inputs = {answer};
        world.dialogs.confirmations = {true};
        act();
        const Lines lines = takeLines();
        return lines.size() > 1 ? lines[1] : std::string();
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
    EXPECT_EQ(library.activate(1), Activated::Folder);
    EXPECT_THAT(list(), ElementsAre("» ..", "» Interna", "c"));
    library.activate(1);
    EXPECT_EQ(library.pathLabel(), "..\\Melodie\\Alfa\\Interna\\");
    library.activate(0);
    EXPECT_EQ(library.MelodyFolder(), kRoot + "Alfa\\");

    EXPECT_EQ(library.openFile(kRoot + "Alfa\\Interna\\b.mel"), Activated::Melody);
    EXPECT_EQ(library.FolderDepth(), 2);
    folders.loseFolder(kRoot + "Alfa");
    library.fill();
    EXPECT_EQ(library.MelodyFolder(), kRoot) << "a folder that is gone leaves no one stranded";
    EXPECT_EQ(library.FolderDepth(), 0);
    EXPECT_EQ(library.activate(99), Activated::Nothing);
}

TEST_F(LibraryTest, AMelodyIsOpenedAndSavedOrKeptAsItWas) {
    fill({"Aria.MEL"});
    folders.put(kRoot + "Rotta.mel", "60;62;\r\n1;\r\nn;n;\r\n 90 \r\n 7 \r\n");
    library.fill();
    EXPECT_EQ(library.activate(0), Activated::Melody);
    EXPECT_EQ(world.funzioniMM.currentInstrument(), 40);
    world.funzioniMM.chooseInstrument(12);
    for (const int number : {file_error::kDeviceFault, file_error::kNoAccess}) {
        folders.readFailure = {number, "Negato !!!"};
        EXPECT_EQ(library.activate(1), Activated::Nothing);
    }
    folders.readFailure = {};
    EXPECT_EQ(library.activate(1), Activated::Damaged);
    EXPECT_EQ(world.funzioniMM.currentInstrument(), 7);
    // Undo brings back the melody, the instrument in use before and the file that is saved to.
    editor.undo();
    EXPECT_EQ(composition.instrument, 12);
    compose();
    for (const int number : {file_error::kDiskFull, file_error::kBadName}) {
        folders.writeFailure = {number, "Disco pieno !!!"};
        EXPECT_FALSE(library.save(-1));
    }
    folders.writeFailure = {};
    EXPECT_EQ(folders.at(kRoot + "Aria.MEL"), kMelody);
    EXPECT_EQ(composition.name, "Aria");
    EXPECT_TRUE(editor.modified());
    EXPECT_TRUE(library.save(-1));
    EXPECT_FALSE(editor.modified());
    EXPECT_EQ(composition.name, "Salvato: Aria");
    EXPECT_EQ(folders.at(kRoot + "Aria.MEL"),
              "60;62;72;\r\n1;1;1;\r\nn;n;n;\r\n 90 \r\n 7 \r\n1 \xF7 3 \xF7 Tutto;\r\n");
    editor.setBookmarks({"1 ÷ 3 ÷ 曲"});
    EXPECT_FALSE(library.save(-1));
    EXPECT_THAT(
        takeLines(),
        ElementsAre("message: File corrotto !!!", "message: Errore: 75\n\nNegato !!!",
                    "message: File corrotto !!!", "message: Errore: 61\n\nDisco pieno !!!",
                    kInvalid, "message: Il file non può contenere il carattere \"曲\" !!!"));
}

TEST_F(LibraryTest, NewNamesKeepToTheirCharactersAndToTheTree) {
    const char* const invalidFolder = "message: Nome cartella non valido !!!";
    const std::string there = "E' già presente una melodia dal nome: ";
    // What the program says to the new name of a folder, of a melody, and of a saved one.
    const std::tuple<QString, std::string, std::string, std::string> rows[] = {
        {"", "", "", ""},
        {"曲", kUnknown, kUnknown, kUnknown},
        {"a\nb", kUnknown, kUnknown, kUnknown},
        {"Sotto\\", invalidFolder, kInvalid, kInvalid},
        {"..\\fuori", invalidFolder, kInvalid, kInvalid},
        {"Sotto\\x", invalidFolder, kInvalid, ""},
        {"Manca\\x", invalidFolder, kInvalid, "message: Errore: 76\n\nTesto dell'errore 76 !!!"},
        {"Altra", "", "message: " + there + "Altra",
         "confirm: " + there + "Altra\nVuoi sostituirla ?"},
        {"Sotto", "message: Errore: 58\n\nTesto dell'errore 58 !!!", "",
         "confirm: " + there + "Sotto\nVuoi sostituirla ?"},
        {"Perche\u0301", "", "", "confirm: " + there + "Perch\u00E9\nVuoi sostituirla ?"},
    };
    for (const auto& [name, toFolder, toMelody, toSaved] : rows) {
        folders.loseFolder(kRoot.chopped(1));
        fill({"Aria.mel", "Altra.mel", "Sotto\\q.mel"});
        library.openFile(kRoot + "Aria.mel");
        EXPECT_EQ(reply(name, [&] { library.createFolder(); }), toFolder) << name.toStdString();
        EXPECT_EQ(reply(name, [&] { library.rename(library.rowOf("Aria")); }), toMelody);
        EXPECT_EQ(reply(name, [&] { library.saveAs(0); }), toSaved) << name.toStdString();
    }
    EXPECT_THAT(list(), ElementsAre("» Sotto", "» Perché", "Altra", "Perché"));
    for (const QChar c : QStringLiteral(",.-;:|\\/!%&()='^+*°§<>")) {
        EXPECT_EQ(reply(c + QString("a"), [&] { library.createFolder(); }), invalidFolder);
        EXPECT_EQ(reply("a" + QString(c), [&] { library.rename(2); }), kInvalid)
            << int{c.unicode()};
    }
    EXPECT_FALSE(library.rename(0)) << "folders keep their names";
}

TEST_F(LibraryTest, WhatIsNotTheMelodysOwnLastVersionGoesToTheTrash) {
    fill({"Aria.mel", "Sotto\\Aria.mel"});
    const auto save = [this] {
        compose();
        EXPECT_TRUE(library.save(-1));
        return std::exchange(folders.trash, {});
    };
    library.activate(1);
    EXPECT_EQ(save(), QList<QByteArray>{});
    EXPECT_EQ(save(), QList<QByteArray>{}) << "its own, again and again";
    folders.put(kRoot + "Aria.mel", "another program's");
    EXPECT_EQ(save(), QList<QByteArray>{"another program's"});
    world.dialogs.inputs = {"Bella"};
    library.rename(1);
    EXPECT_EQ(composition.name, "Bella");
    EXPECT_EQ(save(), QList<QByteArray>{}) << "under its new name";
    const QByteArray bella = folders.at(kRoot + "Bella.mel");
    editor.reset();
    EXPECT_EQ(save(), QList<QByteArray>{bella}) << "another melody in the place of this one";
    library.activate(0);
    library.setCurrentMelodyName("Aria");
    EXPECT_EQ(save(), QList<QByteArray>{kMelody}) << "one that Salva meets without a question";
}

TEST_F(LibraryTest, OnlyEmptyFoldersAreDeletedAndOnlyAfterAQuestion) {
    fill({"Piena\\q.mel", "Cupa\\Interna\\q.mel", "Estranea\\x.txt", "Aria.mel"});
    folders.createFolder(kRoot + "Vuota");
    library.fill();
    world.dialogs.confirmations = {true, false, false, true, true};
    for (const int row : {-1, 0, 1, 2, 3, 4})
        EXPECT_FALSE(library.remove(row)) << row;
    EXPECT_TRUE(library.remove(3) && library.remove(3));
    EXPECT_EQ(folders.trash, QList<QByteArray>{kMelody});
    EXPECT_THAT(takeLines(), Contains("message: Impossibile eliminare la cartella !!!").Times(3));
}

struct FloppyTest : LibraryTest {
    std::string pointer;
    Floppy floppy{world.services(), composition, library,
                  [this](bool busy) { pointer += busy ? 'B' : 'N'; }};
};

TEST_F(FloppyTest, TheMelodyIsSavedUnderItsNameAndFailuresHaveTheirWords) {
    floppy.save();
    compose();
    world.dialogs.duringMessage = [this] { pointer += '!'; };
    const std::pair<const char*, std::string> rows[] = {
        {"", ""},
        {"曲", kUnknown},
        {"..\\x", kInvalid},
        {"a/x", kInvalid},
        {"Mia", "message: Salvato: Mia.mel\nsu dischetto"}};
    for (const auto& [name, said] : rows)
        EXPECT_EQ(reply(name, [this] { floppy.save(); }), said);
    EXPECT_EQ(pointer, "!!!BN!") << "the pointer is normal again before the box";
    EXPECT_TRUE(folders.at("a:\\Mia.mel").startsWith("72;\r\n"));
    library.setCurrentMelodyName("Sotto\\Uno");
    const std::string replies[] = {
        "message: Salvato: Uno.mel\nsu dischetto", "message: Errore: 61\n\nDischetto pieno !!!",
        "message: Errore: 71\n\nDischetto non inserito o non inserito correttamente !!!",
        "message: Errore: 70\n\nProtetto !!!"};
    for (const int number : {0, 61, 71, 70}) {
        folders.writeFailure = {number, "Protetto !!!"};
        floppy.save();
    }
    EXPECT_THAT(takeLines(), ElementsAreArray(replies));
}

TEST_F(FloppyTest, SelectedMelodiesAreCopiedUpToAFailure) {
    const QByteArray largest(melody_file::kLargestFile, 'x');
    folders.put("A:\\due.mel", largest + 'x');
    for (const char* name : {"quattro.mel", "TRE.MEL", "uno.mel"})
        folders.put(QStringLiteral("A:\\") + name, name);
    floppy.list();
    EXPECT_EQ(floppy.copy({3, 0, 1}), 1) << "the first one first";
    folders.put("A:\\due.mel", largest);
    EXPECT_EQ(floppy.copy({3, 0, 1}), 3);
    EXPECT_THAT(list(), ElementsAre("due", "TRE", "uno"));
    EXPECT_EQ(pointer, "BNBN");
}

}  // namespace
