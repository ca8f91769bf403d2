#include "manual/desktop_help_viewer.h"
#include "manual/help_browser.h"
#include "manual/help_window.h"
#include "platform/desktop/key_table.h"
#include "support/test_world.h"
#include "support/window_driver.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <QWindow>

#include <gtest/gtest.h>

namespace {

/// The program's folder, which may hold the compiled help, the pages, both or neither.
class HelpViewerTest : public testing::Test {
protected:
    void putCompiled() { QFile(helpFile()).open(QIODevice::WriteOnly); }

    static void putPages(const QTemporaryDir& folder) {
        QDir(folder.path()).mkdir(QStringLiteral("aiuto"));
        for (const QString& name : QDir(pages_).entryList(QDir::Files))
            QFile::copy(pages_ + '/' + name, folder.filePath(QStringLiteral("aiuto/") + name));
    }

    QString helpFile() const { return folder_.filePath(QStringLiteral("cantavista.chm")); }

    /// The built-in viewer, if it is on show.
    static HelpWindow* window() {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (auto* found = dynamic_cast<HelpWindow*>(widget); found && found->isVisible())
                return found;
        }
        return nullptr;
    }

    static QString pageOnShow() {
        const auto* browser = window() ? window()->findChild<QTextBrowser*>() : nullptr;
        return browser ? browser->source().fileName() : QString();
    }

    inline static const QString pages_ = QStringLiteral(HELP_PAGES);
    QTemporaryDir folder_;
    QTemporaryDir other_;
    TestWorld world_;
    bool systemHasViewer_ = false;
    QStringList opened_;
    DesktopHelpViewer viewer_{world_.folders,
                              world_.dialogs,
                              [this](const QString& file) {
                                  opened_ << file;
                                  return systemHasViewer_;
                              },
                              {other_.path()}};
};

TEST_F(HelpViewerTest, PrefersTheCompiledHelpInTheSystemsViewer) {
    putCompiled();
    putPages(other_);
    systemHasViewer_ = true;
    viewer_.show(helpFile());
    EXPECT_EQ(opened_.size(), 1);
    EXPECT_FALSE(window());

    systemHasViewer_ = false;
    viewer_.show(helpFile());
    EXPECT_EQ(pageOnShow(), QStringLiteral("index.html"));
    EXPECT_TRUE(world_.dialogs.lines.empty());
}

TEST_F(HelpViewerTest, SaysWhatIsMissing) {
    viewer_.show(helpFile());
    putCompiled();
    viewer_.show(helpFile());
    ASSERT_EQ(world_.dialogs.lines.size(), 2U);
    EXPECT_EQ(world_.dialogs.lines[0],
              "message: File della guida non trovato !!!\n" + helpFile().toStdString());
    EXPECT_TRUE(
        world_.dialogs.lines[1].starts_with("message: Nessun programma può aprire la guida !!!"));
    EXPECT_FALSE(window());
}

TEST_F(HelpViewerTest, OpensAtWhatTheUserLooksAt) {
    putPages(folder_);
    QDialog dialog;
    dialog.setObjectName(QStringLiteral("frmInto"));
    dialog.open();
    viewer_.show(helpFile());
    EXPECT_EQ(pageOnShow(), QStringLiteral("intonazione.html"));
    dialog.setProperty("contextNumber", 7);
    dialog.activateWindow();
    viewer_.show(helpFile());
    EXPECT_EQ(pageOnShow(), QStringLiteral("accordi.html"));
}

TEST_F(HelpViewerTest, NoModalWindowBlocksIt) {
    HelpWindow help(pages_);
    help.showPage({});
    QDialog first;
    first.setModal(true);
    first.show();
    QDialog second(&first);
    second.setModal(true);
    second.show();
    EXPECT_EQ(help.windowHandle()->transientParent(), second.windowHandle());
    second.hide();
    first.hide();
    EXPECT_TRUE(help.isVisible());
}

/// Whether a key typed into a window counts as held.
bool typingIsHeld(const QWidget& window) {
    const KeyTable keys;
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Q, Qt::NoModifier, QStringLiteral("q"));
    QApplication::sendEvent(window.windowHandle(), &press);
    return keys.held('Q');
}

TEST_F(HelpViewerTest, TypingIntoItPlaysNothing) {
    QDialog other;
    other.show();
    EXPECT_TRUE(typingIsHeld(other));
    HelpWindow help(pages_);
    help.showPage({});
    EXPECT_FALSE(typingIsHeld(help));
}

TEST_F(HelpViewerTest, SearchShowsThePageAndMarksTheWords) {
    HelpWindow help(pages_);
    help.showPage({});
    const WindowDriver driver(help);
    driver.find<QLineEdit>(QStringLiteral("txtCerca")).setText(QStringLiteral("TONALITA"));
    auto& results = driver.find<QListWidget>(QStringLiteral("risultati"));
    ASSERT_GT(results.count(), 0);
    EXPECT_TRUE(driver.shown(QStringLiteral("risultati")));
    results.setCurrentRow(0);
    auto& browser = driver.find<HelpBrowser>(QStringLiteral("pagina"));
    ASSERT_FALSE(browser.extraSelections().isEmpty());
    EXPECT_EQ(browser.extraSelections().front().cursor.selectedText().toLower(),
              QStringLiteral("tonalità"));
    driver.find<QLineEdit>(QStringLiteral("txtCerca")).clear();
    EXPECT_TRUE(browser.extraSelections().isEmpty());
    EXPECT_TRUE(driver.shown(QStringLiteral("contenuti")));
}

}  // namespace
