#include "platform/desktop/desktop_folders.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

struct DesktopFoldersTest : testing::Test {
    QTemporaryDir home;

    void SetUp() override { qputenv("CANTAVISTA_HOME", home.path().toUtf8()); }
    void TearDown() override {
        qunsetenv("CANTAVISTA_HOME");
        qunsetenv("CANTAVISTA_DRIVE_A");
    }

    QString native(const QString& path) const { return home.filePath(path); }
    QString path(const QString& name) const {
        return QString(home.path()).replace(u'/', u'\\') + u'\\' + name;
    }

    static void put(const QString& file, const QByteArray& bytes = "x") {
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
    }
};

TEST_F(DesktopFoldersTest, TheEnvironmentNamesTheProgramFolderAndPathsAreTranslated) {
    put(native("ap.mid"));
    const DesktopFolders folders;

    EXPECT_FALSE(folders.programFolder().contains(u'/'));
    EXPECT_EQ(folders.nativePath(folders.programFolder()), home.path());
    EXPECT_TRUE(folders.fileExists(folders.programFolder() + "\\ap.mid"));
    EXPECT_FALSE(folders.fileExists(folders.programFolder() + "\\none.mid"));
    EXPECT_FALSE(folders.fileExists(folders.programFolder())) << "a folder is no file";
}

TEST_F(DesktopFoldersTest, AFirstStartMakesTheMelodiesAndLaterOnesLeaveThemAlone) {
    // What comes with the program stands beside the executable.
    const QString name = QStringLiteral("prova%1.mel").arg(QCoreApplication::applicationPid());
    const QString examples = QCoreApplication::applicationDirPath() + "/Melodie/Esempi/";
    ASSERT_TRUE(QDir().mkpath(examples));
    put(examples + name);
    QFile::setPermissions(examples + name, QFileDevice::ReadOwner);
    ASSERT_TRUE(QDir().mkpath(QCoreApplication::applicationDirPath() + "/note"));
    const DesktopFolders first;
    QFile::remove(examples + name);
    EXPECT_TRUE(first.fileExists(path("Melodie\\Esempi\\" + name)));
    EXPECT_TRUE(QFileInfo(native("Melodie/Esempi/" + name)).permissions() &
                QFileDevice::WriteOwner);
    EXPECT_EQ(QDir(home.path()).entryList(QDir::Dirs | QDir::NoDotAndDotDot),
              (QStringList{"Melodie", "note"}));

    QDir(native("Melodie/Esempi")).removeRecursively();
    const DesktopFolders second;
    EXPECT_TRUE(second.folderExists(path("Melodie")));
    EXPECT_FALSE(second.folderExists(path("Melodie\\Esempi")));
}

TEST_F(DesktopFoldersTest, FilesAreListedReadWrittenRenamedAndRemoved) {
    DesktopFolders folders;
    const QString folder = path("Prove\\");
    EXPECT_EQ(folders.createFolder(folder.chopped(1)).number, 0);
    for (const char* name : {"b.mel", "A.MEL", "c.mel.txt", "è.mel"})
        EXPECT_FALSE(folders.writeFile(folder + name, name).failed());
    EXPECT_EQ(folders.createFolder(folder + "Zeta").number, 0);
    EXPECT_EQ(folders.createFolder(folder + "alfa.mel").number, 0);
    EXPECT_EQ(folders.createFolder(folder + "Zeta").number, file_error::kAlreadyExists);
    EXPECT_EQ(folders.subFolders(folder), (QStringList{".", "..", "alfa.mel", "Zeta"}));
    EXPECT_EQ(folders.files(folder, "*.mel"), (QStringList{"A.MEL", "b.mel", "è.mel"}));

    EXPECT_EQ(folders.readFile(folder + "A.MEL", 3).bytes, "A.M");
    EXPECT_EQ(folders.readFile(folder + "no.mel", 3).error.number, file_error::kNotFound);
    EXPECT_EQ(folders.readFile(folder + "Zeta", 3).error.number, file_error::kNotFound);
    EXPECT_EQ(folders.writeFile(folder + "Zeta", "x").number, file_error::kNoAccess);
    EXPECT_EQ(folders.writeFile(folder + "no\\x.mel", "x").number, file_error::kPathNotFound);
    EXPECT_EQ(folders.writeFile(folder + QString(250, u'x'), "x").number, file_error::kBadName);
    EXPECT_EQ(folders.writeFile(folder + QString(u'\0') + "x", "x").number, file_error::kBadName);

    EXPECT_EQ(folders.renameFile(folder + "b.mel", folder + "A.MEL").number,
              file_error::kAlreadyExists);
    EXPECT_EQ(folders.renameFile(folder + "no.mel", folder + "x.mel").number,
              file_error::kNotFound);
    EXPECT_EQ(folders.renameFile(folder + "b.mel", folder + "d.mel").number, 0);
    EXPECT_EQ(folders.readFile(folder + "d.mel", 9).bytes, "b.mel");
    EXPECT_EQ(folders.removeFile(folder + "d.mel").number, 0);
    EXPECT_EQ(folders.removeFile(folder + "d.mel").number, file_error::kNotFound);
    EXPECT_EQ(folders.removeFile(folder + "Zeta").number, file_error::kNoAccess);
    EXPECT_EQ(folders.removeFolder(folder.chopped(1)).number, file_error::kNoAccess);
    EXPECT_EQ(folders.removeFolder(folder + "Zeta").number, 0);
}

TEST_F(DesktopFoldersTest, DotsAreFollowedToSeeWhatLiesInTheTree) {
    DesktopFolders folders;
    const QString root = path("Melodie\\");
    QDir().mkpath(native("Melodie/Sotto"));
    QDir().mkpath(native("Melodie due"));
    const std::pair<const char*, bool> rows[] = {
        {"Melodie\\x.mel", true},        {"Melodie\\Sotto\\..\\x.mel", true},
        {"Melodie\\Manca\\x.mel", true}, {"Melodie\\", false},
        {"Melodie\\..\\x.mel", false},   {"Melodie\\Manca\\..\\..\\x.mel", false},
        {"Melodie due\\x.mel", false},
    };
    for (const auto& [name, inside] : rows)
        EXPECT_EQ(folders.isInside(root, path(name)), inside) << name;
}

TEST_F(DesktopFoldersTest, LinksAreFollowedToSeeWhatLiesInTheTree) {
    DesktopFolders folders;
    const QString root = path("Melodie\\");
    QDir().mkpath(native("Melodie/Sotto"));
    QDir().mkpath(native("Fuori"));
    put(native("Fuori/vera.mel"));
    QFile::link(native("Fuori"), native("Melodie/Via"));
    if (!QFileInfo::exists(native("Melodie/Via/vera.mel")))
        GTEST_SKIP() << "no links here, or only to files of their own";
    QFile::link(native("Melodie/Sotto"), native("Melodie/Dentro"));
    QFile::link(native("Fuori/vera.mel"), native("Melodie/legata.mel"));
    QFile::link(native("Fuori/manca.mel"), native("Melodie/pendente.mel"));
    const std::pair<const char*, bool> rows[] = {
        {"Melodie\\Dentro\\x.mel", true},   {"Melodie\\Via\\x.mel", false},
        {"Melodie\\Via\\..\\x.mel", false}, {"Melodie\\legata.mel", false},
        {"Melodie\\pendente.mel", false},
    };
    for (const auto& [name, inside] : rows)
        EXPECT_EQ(folders.isInside(root, path(name)), inside) << name;
}

TEST_F(DesktopFoldersTest, DriveAIsTheNamedFolderForAsLongAsItIsThere) {
    DesktopFolders folders;
    const QTemporaryDir disk;
    qputenv("CANTAVISTA_DRIVE_A", disk.path().toUtf8());
    EXPECT_EQ(folders.writeFile("a:\\x.mel", "x").number, 0);
    EXPECT_TRUE(QFile::exists(disk.filePath("x.mel")));
    EXPECT_EQ(folders.files("A:\\", "*.mel"), QStringList{"x.mel"});
    EXPECT_FALSE(folders.isInside("a:\\", "a:\\..\\y.mel"));

    qputenv("CANTAVISTA_DRIVE_A", disk.filePath("fuori").toUtf8());
    const FileError error = folders.writeFile("a:\\x.mel", "x");
    EXPECT_EQ(error.number, file_error::kNotReady);
    EXPECT_FALSE(error.text.isEmpty());
    EXPECT_EQ(folders.readFile("a:\\x.mel", 1).error.number, file_error::kNotReady);
    EXPECT_TRUE(folders.files("a:\\", "*.mel").isEmpty());
    EXPECT_TRUE(folders.subFolders("a:\\").isEmpty());
    EXPECT_FALSE(folders.fileExists("a:\\x.mel"));
}

TEST_F(DesktopFoldersTest, WhatIsDiscardedOrReplacedLiesInTheTrashWhereThereIsOne) {
    const QByteArray before = qgetenv("XDG_DATA_HOME");
    const auto trashed = [this] {
        QStringList names;
        for (const QString& name : QDir(native("data/Trash/files")).entryList(QDir::Files))
            names << name;
        return names;
    };
    DesktopFolders folders;
    QDir().mkpath(native("Melodie/Vuota"));
    qputenv("XDG_DATA_HOME", native("data").toUtf8());
    if (QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) != native("data"))
        GTEST_SKIP() << "this system's trash is not where the environment says";
    const QString file = path("Melodie\\a.mel");
    const QString inTrash = native("data/Trash/files/a.mel");
    EXPECT_EQ(folders.replaceFile(file, "prima").number, 0);
    EXPECT_EQ(folders.replaceFile(file, "prima").number, 0) << "the same is not replaced";
    EXPECT_EQ(trashed(), QStringList());
    EXPECT_EQ(folders.replaceFile(file, "seconda").number, 0);
    EXPECT_EQ(folders.readFile(path("data\\Trash\\files\\a.mel"), 99).bytes, "prima");
    EXPECT_EQ(folders.readFile(file, 99).bytes, "seconda");
    EXPECT_EQ(folders.discardFile(file).number, 0);
    EXPECT_EQ(folders.discardFile(file).number, file_error::kNotFound);
    EXPECT_EQ(trashed().size(), 2);
    EXPECT_EQ(folders.discardFolder(path("Melodie")).number, file_error::kNoAccess);
    EXPECT_EQ(folders.discardFolder(path("Melodie\\Vuota")).number, 0);
    EXPECT_TRUE(QFileInfo(native("data/Trash/files/Vuota")).isDir());

    // Where no trash can be, the toolkit would put the file into the current folder.
    put(native("nulla"));
    qputenv("XDG_DATA_HOME", native("nulla").toUtf8());
    put(native("Melodie/b.mel"));
    QDir().mkpath(native("Melodie/Vuota"));
    EXPECT_EQ(folders.replaceFile(path("Melodie\\b.mel"), "nuova").number, 0);
    EXPECT_EQ(folders.readFile(path("Melodie\\b.mel"), 99).bytes, "nuova");
    EXPECT_EQ(folders.discardFile(path("Melodie\\b.mel")).number, 0);
    EXPECT_EQ(folders.discardFolder(path("Melodie\\Vuota")).number, 0);
    EXPECT_FALSE(QFileInfo::exists(native("Melodie/b.mel")));
    EXPECT_FALSE(QFileInfo::exists(native("Melodie/Vuota")));
    EXPECT_FALSE(QFileInfo::exists("files/b.mel"));
    before.isNull() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", before);
}

TEST_F(DesktopFoldersTest, AClaimLastsAsLongAsItsObject) {
    DesktopFolders folders;
    auto claim = folders.claim(path("x.mel"));
    ASSERT_TRUE(claim);
    EXPECT_FALSE(folders.claim(path("x.mel")));
    EXPECT_FALSE(folders.writeInBackground(path("x.mel"), "x").get().failed());
    claim.reset();
    EXPECT_TRUE(folders.claim(path("x.mel")));
    put(native("x.mel.lock"), "999999\ncantavista\n");
    EXPECT_TRUE(folders.claim(path("x.mel"))) << "what a killed program left";
    EXPECT_TRUE(folders.claim(path("no\\x.mel"))) << "where nobody can claim anything";
}

TEST_F(DesktopFoldersTest, OldTemporaryFilesOfItsOwnGo) {
    const auto putOld = [](const QString& file, int days, const QByteArray& bytes = "x") {
        put(file, bytes);
        QFile opened(file);
        ASSERT_TRUE(opened.open(QIODevice::ReadWrite));
        opened.setFileTime(QDateTime::currentDateTime().addDays(-days),
                           QFileDevice::FileModificationTime);
    };
    const QTemporaryDir music;
    for (const char* folder : {"Melodie", "Melodie/Sotto"})
        QDir().mkpath(native(folder));
    const QStringList go{native("Melodie/Sotto/a.mel.AbCdEf"),
                         native("Melodia non salvata.mel.AbCdEf"), music.filePath("a.wav.AbCdEf"),
                         music.filePath("b.wav.AbCdEf"), native("Esportazione-AbCdEf")};
    const QStringList stay{native("Melodie/a.mel.AbCd12"), native("Melodie/a.mel"),
                           music.filePath("c.wav.AbCdEf"), music.filePath("a.wav.bak")};
    for (const QString& file : go + stay)
        putOld(file, 2, music.filePath("a.wav").toUtf8());
    putOld(native("Melodie/a.mel.ABCDEF"), 0);
    DesktopFolders folders;
    {
        const auto draft = folders.draftFile(QString(music.filePath("b.wav")).replace(u'/', u'\\'));
        EXPECT_EQ(QDir(home.path()).entryList({"Esportazione-*"}).size(), 1);
    }
    for (const QString& file : go)
        EXPECT_FALSE(QFile::exists(file)) << file.toStdString();
    for (const QString& file : stay + QStringList{native("Melodie/a.mel.ABCDEF")})
        EXPECT_TRUE(QFile::exists(file)) << file.toStdString();
    EXPECT_TRUE(QDir(home.path()).entryList({"Esportazione-*"}).isEmpty());
}

}  // namespace
