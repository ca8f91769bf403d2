#include "platform/desktop/desktop_folders.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

TEST(DesktopFolders, TheEnvironmentNamesTheProgramFolderAndPathsAreTranslated) {
    const QTemporaryDir home;
    ASSERT_TRUE(QFile(home.filePath(QStringLiteral("ap.mid"))).open(QIODevice::WriteOnly));
    qputenv("CANTAVISTA_HOME", home.path().toUtf8());
    const DesktopFolders folders;
    qunsetenv("CANTAVISTA_HOME");

    EXPECT_FALSE(folders.programFolder().contains(QLatin1Char('/')));
    EXPECT_EQ(folders.nativePath(folders.programFolder()), home.path());
    EXPECT_TRUE(folders.fileExists(folders.programFolder() + QStringLiteral("\\ap.mid")));
    EXPECT_FALSE(folders.fileExists(folders.programFolder() + QStringLiteral("\\none.mid")));
    EXPECT_FALSE(folders.fileExists(folders.programFolder())) << "a folder is no file";
}
