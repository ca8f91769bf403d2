#include "core/intervals.h"
#include "reference/engraved_pictures.h"
#include "reference/frmOptions.h"
#include "support/window_driver.h"

#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

#include <gtest/gtest.h>

#include <random>

namespace {

struct FrmOptionsTest : testing::Test {
    frmOptions window{nullptr};
    WindowDriver user{window};

    FrmOptionsTest() {
        window.show();
        QCoreApplication::processEvents();
    }

    QLabel& labelled(const QString& text) const {
        for (QLabel* label : window.findChildren<QLabel*>()) {
            if (label->text() == text && label->isVisible())
                return *label;
        }
        qFatal("no label %s", qPrintable(text));
    }
    static QPoint middle(const QWidget& widget) {
        return widget.mapTo(widget.window(), widget.rect().center());
    }
    /// How much is painted in the upper and in the lower half.
    static std::pair<int, int> ink(QWidget& widget) {
        const QImage image = widget.grab().toImage();
        std::pair<int, int> ink;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                (y < image.height() / 2 ? ink.first : ink.second) += 255 - qGray(image.pixel(x, y));
        }
        return ink;
    }
};

}  // namespace

TEST_F(FrmOptionsTest, ShowsOnePageAndHighlightsItsButton) {
    const QSize size = window.size();
    const QRgb plain = window.palette().color(QPalette::Button).rgb();
    for (const int index : {0, 1, 1, 2, 0, 2, 1}) {
        user.click(QStringLiteral("cmdSel_%1").arg(index));
        for (int i = 0; i < 3; ++i) {
            const auto& button = user.find<QPushButton>(QStringLiteral("cmdSel_%1").arg(i));
            EXPECT_EQ(button.palette().color(QPalette::Button).rgb() != plain, i == index);
            EXPECT_EQ(user.shown(QStringLiteral("Frame1_%1").arg(i + 1)), i == index);
        }
        EXPECT_EQ(window.size(), size);
    }
    user.click("cmdOk");
    EXPECT_FALSE(window.isVisible());
}

TEST_F(FrmOptionsTest, AtMostOnePictureIsShownByItsButton) {
    EXPECT_TRUE(user.find<QWidget>("cmdSel_0").hasFocus());
    user.click("cmdSel_1");
    std::mt19937 random(1);
    for (int shown = 0, i = 0; i < 300; ++i) {
        const int button = i < 16 ? i + 1 : 1 + static_cast<int>(random() % (i % 2 ? 16 : 3));
        auto& key = user.find<QPushButton>(QStringLiteral("Ton_%1").arg(button));
        const auto press = random() % 3;
        for (QLabel* label : window.findChildren<QLabel*>()) {
            for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
                if (press == 0 && label->buddy() == &key)
                    sendMouse(*label, type, label->rect().center());
            }
        }
        key.setFocus();
        if (press == 1)
            user.type(i % 2 ? Qt::Key_Return : Qt::Key_Space);
        if (press == 2)
            user.click(key.objectName());
        shown = shown == button ? 0 : button;
        user.find<QWidget>("cmdOk").setFocus();
        for (int k = 1; k <= 16; ++k) {
            const QString name = QStringLiteral("Ton_%1").arg(k);
            ASSERT_EQ(user.text(name), k == shown ? "-" : "+") << button;
            ASSERT_EQ(user.shown(k == 16 ? "Gradi" : QStringLiteral("Img_%1").arg(k)), k == shown);
        }
        const QString hint(
            "Premi + accanto a una tonalità\nper vedere le sue alterazioni in chiave");
        for (const QLabel* label : window.findChildren<QLabel*>())
            EXPECT_TRUE(label->text() != hint || label->isVisible() == (shown == 0));
        const QImage image = key.grab().toImage();
        EXPECT_EQ(image.pixel(image.width() / 2, image.height() / 6),
                  shown == button ? 0xFFEEFFC0 : 0xFFFF8080);
    }
}

/// Each further sharp or flat is one more sign on both staves.
TEST_F(FrmOptionsTest, TheSignsOfEachKeyArePainted) {
    user.click("cmdSel_1");
    for (const auto& [first, last] : {std::pair{2, 8}, {9, 15}}) {
        auto before = ink(*user.find<QWidget>("Img_1").findChild<SignatureStaff*>());
        EXPECT_GT(std::min(before.first, before.second), 0);
        for (int key = first; key <= last; ++key) {
            const auto now = ink(*user.find<QWidget>(QStringLiteral("Img_%1").arg(key))
                                      .findChild<SignatureStaff*>());
            EXPECT_GT(now.first, before.first) << key;
            EXPECT_GT(now.second, before.second) << key;
            before = now;
        }
    }
}

TEST_F(FrmOptionsTest, EachNoteValueHasItsNoteAndItsRestInARow) {
    std::set<std::pair<int, int>> inks;
    std::map<int, int> rows;
    for (ValuePicture* picture : window.findChildren<ValuePicture*>()) {
        inks.insert(ink(*picture));
        const QImage image = picture->grab().toImage();
        int lines = 0;
        for (int y = 1; y < image.height(); ++y)
            lines += qGray(image.pixel(1, y)) < 128 && qGray(image.pixel(1, y - 1)) >= 128 ? 1 : 0;
        EXPECT_EQ(lines, 5);
        ++rows[middle(*picture).y()];
    }
    EXPECT_EQ(inks.size(), 14U) << "each looks different";
    for (const char* fraction : {"4/4", "2/4", "1/4", "1/8", "1/16", "1/32", "1/64"})
        EXPECT_EQ(rows[middle(labelled(fraction)).y()], 2) << fraction;
}

TEST_F(FrmOptionsTest, EachIntervalStandsAtItsSizeUnderItsHeading) {
    user.click("cmdSel_2");
    const QStringList headings{"Intervalli consonanti", "Intervalli dissonanti",
                               "Consonanti se l'intervallo è melodico"};
    for (const auto& interval : intervals::kAll) {
        const auto& name = labelled(intervals::nameOf(interval));
        const auto& size = labelled(QString::number(interval.semitones));
        EXPECT_LT(std::abs(middle(name).y() - middle(size).y()), 3);
        int column = -1;
        for (const QString& heading : headings)
            column += labelled(heading).mapTo(&window, QPoint()).x() <= middle(name).x() ? 1 : 0;
        EXPECT_EQ(column, static_cast<int>(interval.group)) << qPrintable(name.text());
    }
}
