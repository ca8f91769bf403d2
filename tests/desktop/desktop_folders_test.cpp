#include "platform/desktop/desktop_folders.h"

#include "support/memory_folders.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <random>

namespace {

struct DesktopFoldersTest : testing::Test {
    QTemporaryDir home;
    const QByteArray data = qgetenv("XDG_DATA_HOME");

    void SetUp() override {
        qputenv("CANTAVISTA_HOME", home.path().toUtf8());
        qputenv("XDG_DATA_HOME", native("data").toUtf8());
    }
    void TearDown() override {
        qunsetenv("CANTAVISTA_HOME");
        qunsetenv("CANTAVISTA_DRIVE_A");
        data.isNull() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", data);
    }

    QString native(const QString& path) const { return home.filePath(path); }
    QString path(const QString& name) const { return native(name).replace(u'/', u'\\'); }

    void put(const QString& name, const QByteArray& bytes = "x", int daysAgo = 0) const {
        QDir().mkpath(QFileInfo(native(name)).path());
        QFile out(native(name));
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
        out.flush();
        out.setFileTime(QDateTime::currentDateTime().addDays(-daysAgo),
                        QFileDevice::FileModificationTime);
    }
};

/// Does one random operation; answers its error and what it read.
std::pair<int, QByteArray> operate(Folders& folders, const QString& root, std::mt19937 random) {
    const QString names[] = {"a.mel", "B.MEL",        "c.txt",        "Sotto",
                             "Zeta",  "Sotto\\a.mel", "Sotto\\Altra", "manca\\a.mel"};
    const auto name = [&] { return root + names[random() % std::size(names)]; };
    const QString path = name();
    const QByteArray bytes(random() % 4, "ab"[random() % 2]);
    const std::function<FileError()> acts[] = {
        [&] { return folders.writeFile(path, bytes); },
        [&] { return folders.replaceFile(path, bytes); },
        [&] { return folders.writeInBackground(path, bytes).get(); },
        [&] { return folders.renameFile(path, name()); },
        [&] { return folders.removeFile(path); },
        [&] { return folders.discardFile(path); },
        [&] { return folders.createFolder(path); },
        [&] { return folders.removeFolder(path); },
        [&] { return folders.discardFolder(path); },
        [&] {
            const Folders::Draft draft = folders.draftFile(path);
            if (draft.error.failed())
                return draft.error;
            draft.file->append("vwx");
            draft.file->amend(1, bytes.left(2));
            draft.file->append("yz");
            return bytes.isEmpty() ? FileError() : draft.file->finish();
        }};
    const auto act = random() % (std::size(acts) + 1);
    const Folders::Content content = act < std::size(acts) ? Folders::Content{acts[act](), {}}
                                                           : folders.readFile(path, random() % 4);
    EXPECT_EQ(content.error.text.isEmpty(), !content.error.failed()) << "every error has words";
    return {content.error.number, content.bytes};
}

}  // namespace

/// The folders in memory, over which all other tests run, and those on the disk do the same.
TEST_F(DesktopFoldersTest, RandomOperationsEndAsInMemory) {
    DesktopFolders disk;
    // The examples are there where the program was built.
    QDir(native("Melodie/Esempi")).removeRecursively();
    MemoryFolders memory;
    std::mt19937 random(15);
    const QString roots[] = {path("Melodie\\"), "C:\\Cantavista\\Melodie\\"};
    memory.createFolder(roots[1].chopped(1));
    for (int step = 0; step < 1500; ++step) {
        ASSERT_EQ(operate(disk, roots[0], random), operate(memory, roots[1], random)) << step;
        random.discard(16);
        for (const char* folder : {"", "Sotto\\", "manca\\"}) {
            const auto sorted = [](QStringList names) {
                names.sort(Qt::CaseInsensitive);
                return names;
            };
            const QString at[] = {roots[0] + folder, roots[1] + folder};
            ASSERT_EQ(disk.files(at[0], "*.mel"), sorted(memory.files(at[1], "*.mel"))) << step;
            ASSERT_EQ(disk.subFolders(at[0]), sorted(memory.subFolders(at[1]))) << step;
            ASSERT_EQ(disk.folderExists(at[0]), memory.folderExists(at[1])) << step;
            for (const char* name : {"a.mel", "Altra"})
                ASSERT_EQ(disk.fileExists(at[0] + name), memory.fileExists(at[1] + name)) << step;
            for (const char* name : {"", "x", "..\\x", "manca\\..\\..\\..\\x"}) {
                ASSERT_EQ(disk.isInside(roots[0], at[0] + name),
                          memory.isInside(roots[1], at[1] + name))
                    << folder << name;
            }
        }
    }
    const QString tooLong(250, u'x');
    EXPECT_EQ(disk.writeFile(roots[0] + tooLong, "x").number, file_error::kBadName);
}

TEST_F(DesktopFoldersTest, AFirstStartMakesTheMelodiesAndLaterOnesLeaveThemAlone) {
    // What comes with the program stands beside the executable.
    const QString name = QStringLiteral("Melodie/%1.mel").arg(QCoreApplication::applicationPid());
    QDir beside(QCoreApplication::applicationDirPath());
    beside.mkpath("Melodie");
    ASSERT_TRUE(QFile(beside.filePath(name)).open(QIODevice::NewOnly, QFileDevice::ReadOwner));
    EXPECT_EQ(DesktopFolders().programFolder() + "\\", path("x").chopped(1));
    beside.remove(name);
    EXPECT_TRUE(QFileInfo(native(name)).permissions() & QFileDevice::WriteOwner);
    QFile::remove(native(name));
    const DesktopFolders second;
    EXPECT_FALSE(QFile::exists(native(name)));
}

TEST_F(DesktopFoldersTest, LinksAreFollowedToSeeWhatLiesInTheTree) {
    put("Melodie/Sotto/x");
    put("Fuori/vera.mel");
    QFile::link(native("Fuori"), native("Melodie/Via"));
    if (!QFileInfo::exists(native("Melodie/Via/vera.mel")))
        GTEST_SKIP() << "this system has no such links";
    QFile::link(native("Melodie/Sotto"), native("Melodie/Dentro"));
    QFile::link(native("Fuori/manca.mel"), native("Melodie/pendente.mel"));
    const DesktopFolders folders;
    EXPECT_TRUE(folders.isInside(path("Melodie\\"), path("Melodie\\Dentro\\x.mel")));
    for (const char* name : {"Via\\x.mel", "Via\\..\\x.mel", "pendente.mel"})
        EXPECT_FALSE(folders.isInside(path("Melodie\\"), path("Melodie\\") + name)) << name;
}

TEST_F(DesktopFoldersTest, DriveAIsTheNamedFolderForAsLongAsItIsThere) {
    DesktopFolders folders;
    put("disco/x.mel");
    qputenv("CANTAVISTA_DRIVE_A", native("disco").toUtf8());
    EXPECT_EQ(folders.files("A:\\", "*.mel"), QStringList{"x.mel"});
    EXPECT_TRUE(folders.isInside("a:\\", "A:\\y.mel"));
    QDir(native("disco")).removeRecursively();
    EXPECT_EQ(folders.writeFile("a:\\x.mel", "x").number, file_error::kNotReady);
    EXPECT_EQ(folders.readFile("a:\\x.mel", 1).error.number, file_error::kNotReady);
    EXPECT_FALSE(folders.isInside("a:\\", "a:\\y.mel") || folders.fileExists("a:\\x.mel"));
}

TEST_F(DesktopFoldersTest, WhatIsDiscardedOrReplacedLiesInTheTrashWhereThereIsOne) {
    if (QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) != native("data"))
        GTEST_SKIP() << "this system's trash is not where the environment says";
    DesktopFolders folders;
    const QString file = path("Melodie\\a.mel");
    for (const char* bytes : {"prima", "prima", "seconda"})
        folders.replaceFile(file, bytes);
    EXPECT_EQ(folders.readFile(path("data\\Trash\\files\\a.mel"), 99).bytes, "prima");
    folders.discardFile(file);
    EXPECT_EQ(QDir(native("data/Trash/files")).entryList(QDir::Files).size(), 2);

    // Where no trash can be, the toolkit would put the file into the current folder.
    qputenv("XDG_DATA_HOME", native("nulla").toUtf8());
    put("nulla");
    put("Melodie/b.mel");
    EXPECT_EQ(folders.discardFile(path("Melodie\\b.mel")).number, 0);
    EXPECT_FALSE(QFile::exists(native("Melodie/b.mel")) || QFile::exists("files/b.mel"));
}

TEST_F(DesktopFoldersTest, AClaimLastsAsLongAsItsObject) {
    DesktopFolders folders;
    folders.claim(path("x.mel"));
    const auto claim = folders.claim(path("x.mel"));
    EXPECT_TRUE(claim) << "the first one has ended";
    EXPECT_FALSE(folders.claim(path("x.mel")));
    put("y.mel.lock", "999999\ncantavista\n");
    EXPECT_TRUE(folders.claim(path("y.mel"))) << "what a killed program left";
}

TEST_F(DesktopFoldersTest, OldTemporaryFilesOfItsOwnGo) {
    const std::pair<const char*, bool> files[] = {{"Melodie/Sotto/a.mel.AbCdEf", false},
                                                  {"Musica/a.wav.AbCdEf", false},
                                                  {"Esportazione-AbCdEf", false},
                                                  {"Melodie/a.mel.AbCd12", true},
                                                  {"Melodie/a.mel", true},
                                                  {"Musica/c.wav.AbCdEf", true},
                                                  {"Musica/a.wav.bak", true}};
    for (const auto& [file, stays] : files)
        put(file, native("Musica/a.wav").toUtf8(), 2);
    put("Melodie/young.mel.ABCDEF");
    const DesktopFolders folders;
    for (const auto& [file, stays] : files)
        EXPECT_EQ(QFile::exists(native(file)), stays) << file;
    EXPECT_TRUE(QFile::exists(native("Melodie/young.mel.ABCDEF")));
}
