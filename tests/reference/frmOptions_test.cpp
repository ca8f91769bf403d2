#include "reference/frmOptions.h"

#include "support/window_driver.h"
#include "widgets/key_button.h"

#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct FrmOptionsTest : testing::Test {
    frmOptions window{nullptr};
    WindowDriver user{window};

    FrmOptionsTest() {
        window.show();
        QCoreApplication::processEvents();
    }

    std::vector<int> shownOf(const QString& array, int from, int to) const {
        std::vector<int> shown;
        for (int i = from; i <= to; ++i) {
            if (user.shown(QStringLiteral("%1_%2").arg(array).arg(i)))
                shown.push_back(i);
        }
        return shown;
    }

    std::vector<int> pages() const { return shownOf(QStringLiteral("Frame1"), 1, 3); }
    std::vector<int> pictures() const { return shownOf(QStringLiteral("Img"), 1, 15); }

    /// The page buttons that do not have the ordinary colour.
    std::vector<int> highlighted() const {
        std::vector<int> buttons;
        for (int i = 0; i < 3; ++i) {
            const auto& button = user.find<QPushButton>(QStringLiteral("cmdSel_%1").arg(i));
            if (button.palette().color(QPalette::Button) !=
                window.palette().color(QPalette::Button))
                buttons.push_back(i);
        }
        return buttons;
    }

    /// The background of a button, beside its caption and inside its edge.
    QRgb background(const QString& name) const {
        const QImage image = user.find<QWidget>(name).grab().toImage();
        return image.pixel(image.width() / 2, image.height() / 6);
    }
};

}  // namespace

TEST_F(FrmOptionsTest, ShowsOnePageAndHighlightsItsButton) {
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Promemoria"));
    const QSize size = window.size();
    EXPECT_THAT(pages(), ElementsAre(1));
    EXPECT_THAT(highlighted(), ElementsAre(0));
    for (const int index : {1, 1, 2, 0, 2, 1}) {
        user.click(QStringLiteral("cmdSel_%1").arg(index));
        EXPECT_THAT(pages(), ElementsAre(index + 1));
        EXPECT_THAT(highlighted(), ElementsAre(index));
    }
    const QStringList titles{"Nomi delle note, loro durata e simboli delle relative pause ",
                             "Specchio delle tonalità ", "Intervalli "};
    for (int page = 1; page <= 3; ++page) {
        const QString name = QStringLiteral("Frame1_%1").arg(page);
        EXPECT_EQ(user.find<QGroupBox>(name).title(), titles[page - 1]);
    }
    EXPECT_EQ(window.size(), size);
    user.click(QStringLiteral("cmdOk"));
    EXPECT_FALSE(window.isVisible());
}

TEST_F(FrmOptionsTest, KeyButtonsShowTheirPictureInTheirColours) {
    user.click(QStringLiteral("cmdSel_1"));
    EXPECT_THAT(pictures(), IsEmpty());
    EXPECT_FALSE(user.shown("Gradi"));
    EXPECT_EQ(user.find<QWidget>("Ton_16").toolTip(), QStringLiteral("Gradi"));
    const QSize size = window.size();
    for (int key = 1; key <= 15; ++key) {
        const QString button = QStringLiteral("Ton_%1").arg(key);
        EXPECT_EQ(user.text(button), QStringLiteral("+"));
        user.click(button);
        EXPECT_THAT(pictures(), ElementsAre(key));
        EXPECT_EQ(user.text(button), QStringLiteral("-"));
        EXPECT_TRUE(user.find<QWidget>(button).accessibleName().endsWith(": visibile"));
    }
    EXPECT_EQ(user.find<QWidget>("Img_3").accessibleName(),
              QStringLiteral("2 diesis: Fa, Do. Re maggiore, Si minore"));
    user.click("Ton_16");
    EXPECT_THAT(pictures(), IsEmpty());
    EXPECT_TRUE(user.shown("Gradi"));
    user.find<QWidget>("cmdOk").setFocus();
    EXPECT_EQ(user.text("Ton_15") + user.text("Ton_16"), QStringLiteral("+-"));
    EXPECT_EQ(background("Ton_15"), 0xFFFF8080);
    EXPECT_EQ(background("Ton_16"), 0xFFEEFFC0);
    EXPECT_EQ(window.size(), size);
}

TEST_F(FrmOptionsTest, WorksByKeyboard) {
    user.click(QStringLiteral("cmdSel_1"));
    QStringList order;
    QStringList expected{"cmdSel_1", "cmdSel_2"};
    for (int i = 1; i <= 16; ++i)
        expected += QStringLiteral("Ton_%1").arg(i);
    expected += {"cmdOk", "cmdSel_0"};
    while (order.size() < expected.size()) {
        user.type(Qt::Key_Tab);
        order += QApplication::focusWidget()->objectName();
    }
    EXPECT_EQ(order.join(' ').toStdString(), expected.join(' ').toStdString());
    user.find<QWidget>("Ton_4").setFocus();
    user.type(Qt::Key_Return);
    EXPECT_THAT(pictures(), ElementsAre(4));
    user.type(Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
}
