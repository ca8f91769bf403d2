#include "core/intervals.h"
#include "core/note_values.h"
#include "reference/engraved_pictures.h"
#include "reference/frmOptions.h"
#include "support/window_driver.h"
#include "widgets/ink.h"

#include <QLabel>
#include <QPushButton>

#include <gtest/gtest.h>

#include <random>

TEST(FrmOptions, EachPageShowsItsTable) {
    frmOptions window{nullptr};
    const WindowDriver user(window);
    window.show();
    QCoreApplication::processEvents();
    const auto place = [&](const QString& text) -> QRect {
        for (const QLabel* label : window.findChildren<QLabel*>()) {
            if (label->text() == text && label->isVisible())
                return {label->mapTo(&window, QPoint()), label->size()};
        }
        qFatal("no label %s", qPrintable(text));
    };
    const QSize size = window.size();
    const QRgb plain = window.palette().color(QPalette::Button).rgb();
    EXPECT_TRUE(user.find<QWidget>("cmdSel_0").hasFocus());
    for (const int index : {0, 1, 1, 2, 1, 0}) {
        user.click(QStringLiteral("cmdSel_%1").arg(index));
        for (int i = 0; i < 3; ++i) {
            const auto& button = user.find<QPushButton>(QStringLiteral("cmdSel_%1").arg(i));
            EXPECT_EQ(button.palette().color(QPalette::Button).rgb() != plain, i == index);
            EXPECT_EQ(user.shown(QStringLiteral("Frame1_%1").arg(i + 1)), i == index);
        }
    }
    EXPECT_EQ(window.size(), size);

    QList<QImage> pictures;
    std::map<int, int> rows;
    for (ValuePicture* picture : window.findChildren<ValuePicture*>()) {
        const QImage image = picture->grab().toImage();
        EXPECT_FALSE(pictures.contains(image));
        pictures << image;
        ++rows[picture->mapTo(&window, picture->rect().center()).y()];
    }
    EXPECT_GT(changeBetween(pictures[0], pictures[2]).height(),
              2 * changeBetween(pictures[1], pictures[3]).height())
        << "a stem comes to a note alone";
    for (const auto& value : note_values::kAll) {
        const int row = place(value.name).center().y();
        EXPECT_EQ(rows[row], 2) << value.name;
        for (const char* text : {value.otherName, value.fraction})
            EXPECT_LT(std::abs(place(text).center().y() - row), 3) << text;
    }

    user.click("cmdSel_1");
    QImage before;
    for (SignatureStaff* staff : window.findChildren<SignatureStaff*>()) {
        const QImage image = staff->grab().toImage();
        EXPECT_TRUE(before.isNull() || changeBetween(before, image).height() > image.height() / 2)
            << "one more sign on both staves";
        before = image;
    }
    std::mt19937 random(1);
    for (int shown = 0, i = 0; i < 300; ++i) {
        const int button = 1 + static_cast<int>(random() % (i % 2 ? 16 : 3));
        auto& key = user.find<QPushButton>(QStringLiteral("Ton_%1").arg(button));
        const auto labels = window.findChildren<QLabel*>();
        if (i % 3 == 0)
            sendMouse(**std::ranges::find(labels, &key, &QLabel::buddy), QEvent::MouseButtonRelease,
                      {});
        key.setFocus();
        if (i % 3 == 1)
            user.type(Qt::Key_Space);
        if (i % 3 == 2)
            user.click(key.objectName());
        shown = shown == button ? 0 : button;
        for (int k = 1; k <= 16; ++k) {
            const QString name = QStringLiteral("Ton_%1").arg(k);
            ASSERT_EQ(user.text(name), k == shown ? "-" : "+") << button;
            ASSERT_EQ(user.shown(k == 16 ? "Gradi" : QStringLiteral("Img_%1").arg(k)), k == shown);
        }
        for (const QLabel* label : labels)
            EXPECT_TRUE(!label->text().startsWith("Premi +") || label->isVisible() == (shown == 0));
    }

    user.click("cmdSel_2");
    for (const auto& interval : intervals::kAll) {
        const QPoint name = place(intervals::nameOf(interval)).center();
        EXPECT_LT(std::abs(name.y() - place(QString::number(interval.semitones)).center().y()), 3);
        int column = -1;
        for (const char* heading : {"Intervalli consonanti", "Intervalli dissonanti",
                                    "Consonanti se l'intervallo è melodico"})
            column += place(heading).x() <= name.x() ? 1 : 0;
        EXPECT_EQ(column, static_cast<int>(interval.group));
    }
    user.click("cmdOk");
    EXPECT_FALSE(window.isVisible());
}
