#include "manual/desktop_help_viewer.h"
#include "support/test_world.h"

#include <QApplication>
#include <QDialog>
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
    TestWorld world;
    bool systemHasViewer = false;
    DesktopHelpViewer viewer(world.folders, world.dialogs,
                             [&](const QString&) { return systemHasViewer; },
                             {folder.filePath("prima"), folder.filePath("dopo")});
    const QString compiled = folder.filePath("cantavista.chm");
    viewer.show(compiled);
    EXPECT_TRUE(QFile(compiled).open(QIODevice::WriteOnly));
    viewer.show(compiled);
    EXPECT_THAT(
        world.dialogs.lines,
        testing::ElementsAre(
            "message: File della guida non trovato !!!\n" + compiled.toStdString(),
            "message: Nessun programma può aprire la guida !!!\n" + compiled.toStdString()));

    QDir(folder.path()).mkpath("dopo");
    QFile::link(QStringLiteral(HELP_PAGES), folder.filePath("dopo/aiuto"));
    systemHasViewer = true;
    viewer.show(compiled);
    EXPECT_EQ(pageOnShow(), "");
    systemHasViewer = false;
    viewer.show(compiled);
    EXPECT_EQ(pageOnShow(), "index.html");
    QDialog dialog;
    QWidget frame(&dialog);
    frame.setFocusPolicy(Qt::StrongFocus);
    dialog.setObjectName("frmInto");
    dialog.open();
    frame.setFocus();
    for (const auto& [frameName, number, page] : {std::tuple{"", 0, "intonazione.html"},
                                                  {"", 7, "accordi.html"},
                                                  {"FrmIntervalli", 7, "intervalli.html"}}) {
        frame.setObjectName(frameName);
        dialog.setProperty("contextNumber", number);
        dialog.activateWindow();
        QApplication::processEvents();
        viewer.show(compiled);
        EXPECT_EQ(pageOnShow(), page);
    }
    frame.clearFocus();
    viewer.show(compiled);
    EXPECT_EQ(pageOnShow(), "accordi.html") << "of the window, without a focus";
    frame.setObjectName({});
    QApplication::processEvents();
    viewer.show(compiled);
    EXPECT_EQ(pageOnShow(), "accordi.html") << "who reads the manual stays there";
}
