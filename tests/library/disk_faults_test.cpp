// Faults of real disks and processes. Some can only be produced by root, who in turn is stopped by
// no permission: the tests of those run as another user.

#include "platform/desktop/desktop_folders.h"

#include <QDir>
#include <QFile>
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

    void SetUp() override {
        ASSERT_TRUE(home.isValid());
        QDir(home.path()).mkdir("Melodie");
        qputenv("CANTAVISTA_HOME", home.path().toUtf8());
        setMode(home.path(), 0755);
    }

    QString path(const char* name) const {
        return QString(home.path() + "/Melodie/" + name).replace('/', '\\');
    }

    static void setMode(const QString& native, mode_t mode) {
        ASSERT_EQ(chmod(native.toStdString().c_str(), mode), 0);
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

/// A small disk in memory, as long as the test lasts.
class SmallDisk {
public:
    SmallDisk(const QString& folder, const char* options) : folder_(folder.toStdString()) {
        mounted_ = mount("tmpfs", folder_.c_str(), "tmpfs", 0, options) == 0;
    }
    ~SmallDisk() {
        if (mounted_)
            umount2(folder_.c_str(), MNT_DETACH);
    }
    bool mounted() const { return mounted_; }
    bool makeReadOnly() const {
        return mount("tmpfs", folder_.c_str(), "tmpfs", MS_REMOUNT | MS_RDONLY, nullptr) == 0;
    }

private:
    std::string folder_;
    bool mounted_ = false;
};

TEST_F(DiskTest, AFullOrReadOnlyDiskKeepsTheOldFile) {
    const SmallDisk disk(home.path() + "/Melodie", "size=32k,nr_inodes=5");
    if (!disk.mounted())
        GTEST_SKIP() << "only root can mount a disk";
    DesktopFolders folders;
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
    QFile filler(home.path() + "/Melodie/pieno");
    ASSERT_TRUE(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    while (filler.write(QByteArray(4096, 'x')) == 4096) {
    }
    EXPECT_EQ(folders.writeFile(path("a.mel"), "nuova").number, file_error::kDiskFull);
    EXPECT_EQ(folders.readFile(path("a.mel"), kMuch).bytes, old);
    filler.remove();

    // No place for one name more.
    for (const char* name : {"b.mel", "c.mel", "d.mel"})
        folders.writeFile(path(name), {});
    EXPECT_EQ(folders.writeFile(path("e.mel"), "nuova").number, file_error::kDiskFull);
    EXPECT_EQ(folders.createFolder(path("Cartella")).number, file_error::kDiskFull);

    ASSERT_TRUE(disk.makeReadOnly());
    EXPECT_EQ(folders.writeFile(path("a.mel"), "nuova").number, file_error::kWriteProtected);
    EXPECT_EQ(folders.removeFile(path("a.mel")).number, file_error::kWriteProtected);
    EXPECT_EQ(folders.readFile(path("a.mel"), kMuch).bytes, old);
}

TEST_F(DiskTest, AFolderThatTakesNoNewFilesLetsTheOldOnesBeWritten) {
    DesktopFolders folders;
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
    setMode(folders.nativePath(closed), 0000);
    EXPECT_EQ(asUser([&] { return folders.readFile(closed, kMuch).error.number; }),
              file_error::kNoAccess);
    setMode(home.path() + "/Melodie", 0755);
}

/// Writes 200 melodies, each of one letter, over one another.
void saveAllTheTime(DesktopFolders& folders, const QString& file) {
    for (int i = 0; i < 200; ++i)
        folders.writeFile(file, QByteArray(20'000 + 100 * i, static_cast<char>('a' + i % 26)));
}

TEST_F(DiskTest, AProcessKilledWhileItSavesLeavesAWholeFile) {
    DesktopFolders folders;
    const QString file = path("a.mel");
    ASSERT_EQ(folders.writeFile(file, "vecchia").number, 0);
    std::srand(static_cast<unsigned>(getpid()));
    int interrupted = 0;
    for (int round = 0; round < 20; ++round) {
        const pid_t child = fork();
        if (child == 0) {
            saveAllTheTime(folders, file);
            _exit(0);
        }
        usleep(static_cast<useconds_t>(1000 + std::rand() % 40'000));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        interrupted += WIFSIGNALED(status) ? 1 : 0;

        const QByteArray bytes = folders.readFile(file, kMuch).bytes;
        ASSERT_FALSE(bytes.isEmpty());
        if (bytes != "vecchia") {
            EXPECT_EQ(bytes, QByteArray(20'000 + 100 * ((bytes.size() - 20'000) / 100), bytes[0]));
            EXPECT_EQ(bytes[0], static_cast<char>('a' + (bytes.size() - 20'000) / 100 % 26));
        }
    }
    EXPECT_GT(interrupted, 0) << "no process was killed in the middle of its work";
    // What the killed ones left is listed nowhere and does not hold the folder.
    EXPECT_EQ(folders.files(path(""), "*.mel"), QStringList{"a.mel"});
    folders.removeFile(file);
    EXPECT_EQ(folders.removeFolder(path("").chopped(1)).number, 0);
}

}  // namespace
