#include "manual/help_window.h"

#include "manual/help_browser.h"
#include "platform/key_codes.h"
#include "support/window_driver.h"

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QRegularExpression>
#include <QScreen>
#include <QScrollBar>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QWheelEvent>
#include <QWindow>

#include <gtest/gtest.h>

namespace {

struct HelpWindowTest : testing::Test {
    HelpWindow help{QStringLiteral(HELP_PAGES)};
    WindowDriver driver{help};
    HelpBrowser& browser = driver.find<HelpBrowser>("pagina");
    QTreeWidget& contents = driver.find<QTreeWidget>("contenuti");

    HelpWindowTest() { show({}); }

    void show(const QString& file) {
        help.showPage(file);
        QApplication::processEvents();
    }

    QString page() const { return browser.source().fileName(); }

    void key(int key, Qt::KeyboardModifiers modifiers = {}) const {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
            sendSystemKey(help, type, key, modifiers);
    }

    void turnWheel(int steps, Qt::KeyboardModifiers modifiers) const {
        QWheelEvent event({50, 50}, browser.mapToGlobal(QPointF(50, 50)), {}, {0, 120 * steps},
                          Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
        QApplication::sendEvent(browser.viewport(), &event);
    }
};

}  // namespace

TEST_F(HelpWindowTest, TheContentsHaveEveryPageUnderItsSectionAndOpenIt) {
    EXPECT_EQ(page(), "index.html");
    auto expected = help.pages().pages().begin();
    for (QTreeWidgetItemIterator it(&contents, QTreeWidgetItemIterator::NoChildren); *it; ++it) {
        const QTreeWidgetItem* section = (*it)->parent();
        EXPECT_EQ((*it)->text(0), expected->title);
        EXPECT_EQ(section == nullptr, expected->section.isEmpty());
        EXPECT_EQ(section ? section->text(0) : QString(), expected->section);
        EXPECT_TRUE(!section || (section->isExpanded() && section->font(0).bold()));
        contents.setCurrentItem(*it);
        EXPECT_EQ(page(), expected->file);
        EXPECT_EQ(browser.documentTitle(), expected++->title);
    }
    EXPECT_EQ(expected, help.pages().pages().end());
}

TEST_F(HelpWindowTest, LinksAndTheWayBackMoveTheContentsToo) {
    browser.setFocus();
    key(Qt::Key_Tab);
    key(Qt::Key_Return);
    const QString linked = page();
    const QString first = QStringLiteral("index.html");
    EXPECT_NE(linked, first);
    const std::tuple<std::function<void()>, QString, bool, bool> steps[] = {
        {[] {}, linked, true, false},
        {[&] { driver.click("cmdIndietro"); }, first, false, true},
        {[&] { driver.click("cmdAvanti"); }, linked, true, false},
        {[&] { key(Qt::Key_Left, Qt::AltModifier); }, first, false, true},
        {[&] { key(Qt::Key_Right, Qt::AltModifier); }, linked, true, false},
        {[&] { driver.click("cmdInizio"); }, first, true, false},
        {[&] { show("midi.html"); }, "midi.html", true, false},
        {[&] { show({}); }, "midi.html", true, false},
        {[&] { key(Qt::Key_Home, Qt::AltModifier); }, first, true, false},
    };
    for (const auto& [act, file, back, forward] : steps) {
        act();
        EXPECT_EQ(page(), file);
        EXPECT_EQ(contents.currentItem()->text(0), browser.documentTitle());
        EXPECT_EQ(driver.enabled("cmdIndietro"), back) << qPrintable(file);
        EXPECT_EQ(driver.enabled("cmdAvanti"), forward) << qPrintable(file);
    }
    key(Qt::Key_Escape);
    EXPECT_FALSE(help.isVisible());
}

TEST_F(HelpWindowTest, LettersGrowAndShrinkWithinBounds) {
    const int usual = browser.font().pointSize();
    const std::tuple<std::function<void()>, int, int> steps[] = {
        {[&] { driver.click("cmdIngrandisci"); }, 1, 1},
        {[&] { key(Qt::Key_Plus, Qt::ControlModifier); }, 1, 2},
        {[&] { key(Qt::Key_Equal, Qt::ControlModifier); }, 20, 12},
        {[&] { driver.click("cmdRiduci"); }, 1, 11},
        {[&] { key(Qt::Key_Minus, Qt::ControlModifier); }, 20, -4},
        {[&] { turnWheel(1, Qt::ControlModifier); }, 5, 1},
        {[&] { turnWheel(-1, Qt::ControlModifier); }, 2, -1},
        {[&] { turnWheel(-1, Qt::NoModifier); }, 1, -1},
        {[&] { key(Qt::Key_0, Qt::ControlModifier); }, 1, 0},
    };
    for (const auto& [act, times, larger] : steps) {
        for (int i = 0; i < times; ++i)
            act();
        EXPECT_EQ(browser.font().pointSize() - usual, larger);
    }
    EXPECT_GT(browser.verticalScrollBar()->value(), 0) << "the wheel alone scrolls";
}

TEST_F(HelpWindowTest, SearchListsThePagesOpensThemAndMarksTheWords) {
    auto& results = driver.find<QListWidget>("risultati");
    auto& question = driver.find<QLineEdit>("txtCerca");
    key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(help.focusWidget(), &question);
    question.setText("supercalifragilistico");
    EXPECT_EQ(driver.text("lblTrovate"), "Nessuna pagina trovata");
    question.setText("CANTAVISTA_HOME");
    EXPECT_EQ(driver.text("lblTrovate"), "1 pagina trovata");
    question.setText("MELODIA");
    const auto found = help.pages().search("MELODIA");
    ASSERT_EQ(results.count(), static_cast<int>(found.size()));
    EXPECT_EQ(driver.text("lblTrovate"), QStringLiteral("%1 pagine trovate").arg(results.count()));
    EXPECT_TRUE(driver.shown("risultati") && driver.shown("lblTrovate"));
    EXPECT_FALSE(driver.shown("contenuti"));
    key(Qt::Key_Return);
    for (int row = 0; row < results.count(); results.setCurrentRow(++row)) {
        const HelpMatch& match = found[static_cast<std::size_t>(row)];
        EXPECT_EQ(results.item(row)->text(), match.title + '\n' + match.snippet);
        EXPECT_EQ(page(), match.file);
        EXPECT_EQ(browser.extraSelections().size(),
                  HelpPages::folded(browser.toPlainText()).count("melodia"));
        for (const auto& mark : browser.extraSelections())
            EXPECT_EQ(HelpPages::folded(mark.cursor.selectedText()), "melodia");
        EXPECT_TRUE(browser.viewport()->rect().contains(browser.cursorRect().center()));
    }
    results.setCurrentRow(0);
    driver.click("cmdInizio");
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
        sendMouse(*results.viewport(), type, results.visualItemRect(results.item(0)).center());
    EXPECT_EQ(page(), found.front().file) << "a click on the row that is chosen already";
    key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(question.selectedText(), "MELODIA");
    question.clear();
    EXPECT_TRUE(browser.extraSelections().isEmpty() && driver.shown("contenuti"));
    EXPECT_FALSE(driver.shown("risultati") || driver.shown("lblTrovate"));
}

TEST_F(HelpWindowTest, FitsTheScreenAndItsPicturesThePage) {
    EXPECT_LE(help.width(), help.screen()->availableSize().width());
    show("principale.html");
    for (const int width : {780, 620, 790}) {
        help.resize(width, 500);
        QApplication::processEvents();
        const QRegularExpression source("<img src=\"([^\"]+)\"");
        const QString name = source.match(browser.toHtml()).captured(1);
        const auto shown = browser.document()->resource(QTextDocument::ImageResource, QUrl(name));
        const int room = browser.viewport()->width() - 36;
        const int fitting = std::min(QImage(HELP_PAGES "/" + name).width(), room);
        EXPECT_NEAR(shown.value<QImage>().width(), fitting - 10, 10) << width;
    }
    help.hide();
    help.show();
    EXPECT_EQ(help.width(), 790) << "the user's own size stays";
}

TEST_F(HelpWindowTest, StaysUsableBesideModalWindowsAndPlaysNothing) {
    QDialog dialog;
    dialog.setModal(true);
    dialog.show();
    EXPECT_EQ(help.windowHandle()->transientParent(), dialog.windowHandle());
    EXPECT_TRUE(help.windowHandle()->property(kKeepsKeys).toBool());
    EXPECT_FALSE(help.testAttribute(Qt::WA_QuitOnClose));
    dialog.hide();
    help.showMinimized();
    show({});
    EXPECT_TRUE(help.isActiveWindow() && !help.isMinimized());
}
