#include "manual/help_window.h"

#include "manual/help_browser.h"
#include "platform/key_codes.h"
#include "support/window_driver.h"

#include <QApplication>
#include <QDialog>
#include <QListWidget>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QWindow>

#include <gtest/gtest.h>

namespace {

struct HelpWindowTest : testing::Test {
    HelpWindow help{QStringLiteral(HELP_PAGES)};
    WindowDriver driver{help};
    HelpBrowser& browser = driver.find<HelpBrowser>("pagina");
    QTreeWidget& contents = driver.find<QTreeWidget>("contenuti");

    HelpWindowTest() {
        help.showPage({});
        QApplication::processEvents();
    }

    QString page() const { return browser.source().fileName(); }
};

}  // namespace

TEST_F(HelpWindowTest, TheContentsOpenEveryPageAlsoBesideModalWindows) {
    auto expected = help.pages().pages().begin();
    for (QTreeWidgetItemIterator it(&contents, QTreeWidgetItemIterator::NoChildren); *it; ++it) {
        const QTreeWidgetItem* section = (*it)->parent();
        EXPECT_EQ((*it)->text(0), expected->title);
        EXPECT_EQ(section ? section->text(0) : QString(), expected->section);
        contents.setCurrentItem(*it);
        EXPECT_EQ(page(), expected->file);
        ++expected;
    }
    EXPECT_EQ(expected, help.pages().pages().end());
    QDialog dialog;
    dialog.setModal(true);
    dialog.show();
    EXPECT_EQ(help.windowHandle()->transientParent(), dialog.windowHandle());
    EXPECT_TRUE(help.windowHandle()->property(kKeepsKeys).toBool());
    EXPECT_FALSE(help.testAttribute(Qt::WA_QuitOnClose));
}

TEST_F(HelpWindowTest, ButtonsAndKeysMoveThroughThePagesAndSizeTheirLetters) {
    browser.setFocus();
    driver.type(Qt::Key_Tab);
    driver.type(Qt::Key_Return);
    const QString linked = page();
    const QString first = QStringLiteral("index.html");
    EXPECT_NE(linked, first);
    const int usual = browser.font().pointSize();
    const std::tuple<const char*, QKeyCombination, QString, bool, bool, int> steps[] = {
        {"cmdIndietro", {}, first, false, true, 0},
        {"cmdAvanti", {}, linked, true, false, 0},
        {"", Qt::ALT | Qt::Key_Left, first, false, true, 0},
        {"", Qt::ALT | Qt::Key_Right, linked, true, false, 0},
        {"cmdInizio", {}, first, true, false, 0},
        {"cmdIndietro", {}, linked, true, true, 0},
        {"", Qt::ALT | Qt::Key_Home, first, true, false, 0},
        {"cmdIngrandisci", {}, first, true, false, 1},
        {"", Qt::CTRL | Qt::Key_Plus, first, true, false, 2},
        {"cmdRiduci", {}, first, true, false, 1},
        {"", Qt::CTRL | Qt::Key_Minus, first, true, false, 0},
        {"", Qt::CTRL | Qt::Key_Equal, first, true, false, 1},
        {"", Qt::CTRL | Qt::Key_0, first, true, false, 0},
    };
    for (const auto& [button, keys, file, back, forward, larger] : steps) {
        if (*button)
            driver.click(button);
        else
            driver.type(keys.key(), {}, keys.keyboardModifiers());
        EXPECT_EQ(page(), file);
        EXPECT_EQ(contents.currentItem()->text(0), browser.documentTitle());
        EXPECT_EQ(driver.enabled("cmdIndietro"), back) << qPrintable(file);
        EXPECT_EQ(driver.enabled("cmdAvanti"), forward) << qPrintable(file);
        EXPECT_EQ(browser.font().pointSize() - usual, larger);
    }
    browser.zoomBy(99);
    EXPECT_EQ(browser.font().pointSize() - usual, 12);
    driver.type(Qt::Key_Escape);
    EXPECT_FALSE(help.isVisible());
}

TEST_F(HelpWindowTest, SearchListsThePagesOpensThemAndMarksTheWords) {
    auto& results = driver.find<QListWidget>("risultati");
    for (const char* question : {"supercalifragilistico", "CANTAVISTA_HOME", "MELODIA", ""}) {
        driver.type(Qt::Key_F, {}, Qt::ControlModifier);
        driver.type(Qt::Key_Delete);
        driver.type(Qt::Key_unknown, question);
        const auto found = help.pages().search(question);
        ASSERT_EQ(results.count(), static_cast<int>(found.size()));
        EXPECT_TRUE(driver.text("lblTrovate")
                        .startsWith(found.empty() ? "Nessuna" : QString::number(found.size())));
        EXPECT_EQ(driver.shown("risultati") && driver.shown("lblTrovate"), *question != 0);
        EXPECT_EQ(driver.shown("contenuti"), *question == 0);
        driver.type(Qt::Key_Return);
        for (int row = 0; row < results.count(); results.setCurrentRow(++row)) {
            const HelpMatch& match = found[static_cast<std::size_t>(row)];
            EXPECT_EQ(results.item(row)->text(), match.title + '\n' + match.snippet);
            EXPECT_EQ(page(), match.file);
            const QString word = HelpPages::folded(question);
            EXPECT_EQ(browser.extraSelections().size(),
                      HelpPages::folded(browser.toPlainText()).count(word));
            EXPECT_EQ(HelpPages::folded(browser.extraSelections().back().cursor.selectedText()),
                      word);
            EXPECT_TRUE(browser.viewport()->rect().contains(browser.cursorRect().center()));
        }
    }
    EXPECT_TRUE(browser.extraSelections().isEmpty());
}
