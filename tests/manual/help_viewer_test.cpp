#include "manual/desktop_help_viewer.h"
#include "support/test_world.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTextBrowser>

#include <gmock/gmock.h>

namespace {

QString pageOnShow() {
    for (const QWidget* widget : QApplication::topLevelWidgets())
        if (widget->isVisible() && widget->inherits("HelpWindow"))
            return widget->findChild<QTextBrowser*>()->source().fileName();
    return {};
}

}  // namespace

TEST(HelpViewer, ShowsWhatThereIsAtWhatTheUserLooksAt) {
    const QTemporaryDir folder;
    const QTemporaryDir other;
    TestWorld world;
    bool systemHasViewer = false;
    QStringList opened;
    DesktopHelpViewer viewer(world.folders, world.dialogs,
                             [&](const QString& file) {
                                 opened << file;
                                 return systemHasViewer;
                             },
                             {other.path(), other.filePath("dopo")});
    const QString compiled = folder.filePath("cantavista.chm");

    viewer.show(compiled);
    EXPECT_TRUE(QFile(compiled).open(QIODevice::WriteOnly));
    viewer.show(compiled);
    EXPECT_THAT(
        world.dialogs.lines,
        testing::ElementsAre(
            "message: File della guida non trovato !!!\n" + compiled.toStdString(),
            "message: Nessun programma può aprire la guida !!!\n" + compiled.toStdString()));
    EXPECT_EQ(opened, QStringList(compiled));

    QDir(other.path()).mkpath("dopo/aiuto");
    EXPECT_TRUE(QFile(other.filePath("dopo/aiuto/contenuti.txt")).open(QIODevice::WriteOnly));
    QFile::link(QStringLiteral(HELP_PAGES), other.filePath("aiuto"));
    systemHasViewer = true;
    viewer.show(compiled);
    EXPECT_EQ(opened.size(), 2);
    EXPECT_EQ(pageOnShow(), "");
    systemHasViewer = false;
    viewer.show(compiled);
    EXPECT_EQ(pageOnShow(), "index.html");

    QDialog dialog;
    QWidget frame(&dialog);
    dialog.setObjectName("frmInto");
    dialog.open();
    viewer.show(compiled);
    EXPECT_EQ(pageOnShow(), "intonazione.html");
    viewer.show(compiled);
    EXPECT_EQ(pageOnShow(), "intonazione.html") << "who reads the manual stays there";
    dialog.setProperty("contextNumber", 7);
    dialog.activateWindow();
    viewer.show(compiled);
    EXPECT_EQ(pageOnShow(), "accordi.html");
    frame.setObjectName("FrmIntervalli");
    frame.setFocusPolicy(Qt::StrongFocus);
    dialog.activateWindow();
    frame.setFocus();
    QApplication::processEvents();
    viewer.show(compiled);
    EXPECT_EQ(pageOnShow(), "intervalli.html") << "the frame in which the focus is";
}
