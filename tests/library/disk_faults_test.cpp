// Faults of real disks and processes. Some can only be produced by root, who in turn is stopped by
// no permission: the tests of those run as another user.

#include "platform/desktop/desktop_folders.h"

#include <QDir>
#include <QScopeGuard>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <string>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr uid_t kNobody = 65534;
constexpr qint64 kMuch = 1 << 20;

struct DiskTest : testing::Test {
    QTemporaryDir home;
    DesktopFolders folders;

    DiskTest() {
        QDir(home.path()).mkdir("Melodie");
        qputenv("CANTAVISTA_HOME", home.path().toUtf8());
        setMode(home.path(), 0755);
    }

    QString path(const char* name) const {
        return QString(home.path() + "/Melodie/" + name).replace('/', '\\');
    }

    static void setMode(const QString& native, mode_t mode) {
        chmod(native.toStdString().c_str(), mode);
    }

    /// Does something in another process, as another user if this one is root; answers its result.
    template <typename Act>
    static int asUser(Act act) {
        const pid_t child = fork();
        if (child == 0) {
            if (getuid() == 0 && setuid(kNobody) != 0)
                _exit(255);
            _exit(act());
        }
        int status = 0;
        waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
};

TEST_F(DiskTest, AFullOrReadOnlyDiskKeepsTheOldFile) {
    const std::string disk = (home.path() + "/Melodie").toStdString();
    if (mount("tmpfs", disk.c_str(), "tmpfs", 0, "size=32k,nr_inodes=5") != 0)
        GTEST_SKIP() << "only root can mount a disk";
    const auto unmount = qScopeGuard([&disk] { umount2(disk.c_str(), MNT_DETACH); });
    const QByteArray old = "vecchia";
    ASSERT_EQ(folders.writeFile(path("a.mel"), old).number, 0);
    // One byte too many for the disk, and a size of which most fits.
    for (const int size : {100'000, 30'000}) {
        EXPECT_EQ(folders.writeFile(path("a.mel"), QByteArray(size, 'x')).number,
                  file_error::kDiskFull)
            << size;
        EXPECT_EQ(folders.readFile(path("a.mel"), kMuch).bytes, old) << size;
    }
    EXPECT_EQ(QDir(home.path() + "/Melodie").entryList(QDir::Files | QDir::Hidden).size(), 1)
        << "no piece is left";
    // Every block taken: even a file of a few bytes finds no room.
    EXPECT_EQ(folders.writeFile(path("b.mel"), QByteArray(28'672, 'x')).number, 0);
    EXPECT_EQ(folders.writeFile(path("a.mel"), "nuova").number, file_error::kDiskFull);
    EXPECT_EQ(folders.readFile(path("a.mel"), kMuch).bytes, old);
    // No place for one name more.
    for (const char* name : {"b.mel", "c.mel", "d.mel"})
        folders.writeFile(path(name), {});
    EXPECT_EQ(folders.writeFile(path("e.mel"), "nuova").number, file_error::kDiskFull);
    EXPECT_EQ(folders.createFolder(path("Cartella")).number, file_error::kDiskFull);

    ASSERT_EQ(mount("tmpfs", disk.c_str(), "tmpfs", MS_REMOUNT | MS_RDONLY, nullptr), 0);
    EXPECT_EQ(folders.writeFile(path("a.mel"), "nuova").number, file_error::kWriteProtected);
    EXPECT_EQ(folders.removeFile(path("a.mel")).number, file_error::kWriteProtected);
    EXPECT_EQ(folders.readFile(path("a.mel"), kMuch).bytes, old);
}

TEST_F(DiskTest, AFolderThatTakesNoNewFilesLetsTheOldOnesBeWritten) {
    const QString open = path("aperta.mel");
    const QString closed = path("chiusa.mel");
    folders.writeFile(open, "vecchia e più lunga");
    folders.writeFile(closed, "vecchia");
    setMode(folders.nativePath(open), 0666);
    setMode(folders.nativePath(closed), 0444);
    setMode(home.path() + "/Melodie", 0555);
    EXPECT_EQ(asUser([&] { return folders.writeFile(path("nuova.mel"), "x").number; }),
              file_error::kNoAccess);
    EXPECT_EQ(asUser([&] { return folders.writeFile(closed, "x").number; }), file_error::kNoAccess);
    EXPECT_EQ(asUser([&] { return folders.removeFile(open).number; }), file_error::kNoAccess);
    EXPECT_EQ(asUser([&] { return folders.writeFile(open, "nuova").number; }), 0);
    EXPECT_EQ(folders.readFile(open, kMuch).bytes, "nuova");
    EXPECT_EQ(folders.readFile(closed, kMuch).bytes, "vecchia");
    setMode(home.path() + "/Melodie", 0755);
}

/// Melodies of all lengths, each of one letter.
QByteArray melody(qsizetype length) {
    return QByteArray(length, static_cast<char>('a' + length / 100 % 26));
}

TEST_F(DiskTest, AProcessKilledWhileItSavesLeavesAWholeFile) {
    const QString file = path("a.mel");
    ASSERT_EQ(folders.writeFile(file, melody(100)).number, 0);
    std::srand(static_cast<unsigned>(getpid()));
    for (int round = 0; round < 20; ++round) {
        const pid_t child = fork();
        for (qsizetype length = 20'000; child == 0; length += 100)
            folders.writeFile(file, melody(length));
        usleep(static_cast<useconds_t>(1000 + std::rand() % 40'000));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        const QByteArray bytes = folders.readFile(file, kMuch).bytes;
        ASSERT_EQ(bytes, melody(bytes.size()));
        ASSERT_FALSE(bytes.isEmpty());
    }
    // What the killed ones left is listed nowhere and does not hold the folder.
    EXPECT_EQ(folders.files(path(""), "*.mel"), QStringList{"a.mel"});
    folders.removeFile(file);
    EXPECT_EQ(folders.removeFolder(path("").chopped(1)).number, 0);
}

}  // namespace
