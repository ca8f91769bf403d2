#include "ink.h"
#include "support/window_driver.h"
#include "widgets/announcement.h"
#include "widgets/appearance.h"
#include "widgets/colour_button.h"
#include "widgets/degree_label.h"
#include "widgets/double_click_label.h"
#include "widgets/key_button.h"
#include "widgets/lamp_row.h"
#include "widgets/level_bar.h"
#include "widgets/picture_button.h"
#include "widgets/verdict_mark.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QPainter>

#include <gmock/gmock.h>

namespace {

QImage pictureOf(QWidget& widget) {
    return widget.grab().toImage();
}

/// The colour that covers most of a part of a picture.
QColor mostOf(const QImage& image) {
    std::map<QRgb, int> count;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            ++count[image.pixel(x, y)];
    }
    return std::ranges::max_element(count, {}, [](const auto& one) { return one.second; })->first;
}

}  // namespace

/// Whatever changes a widget changes its picture: each act shows something that was not seen
/// before, from the middle of the widget out.
TEST(PaintedWidgets, LookDifferentInEveryState) {
    QWidget window;
    window.resize(900, 300);
    auto& colour = *new ColourButton(&window);
    auto& key = *new KeyButton(&window);
    auto& verdict = *new VerdictMark(&window);
    auto& label = *new DoubleClickLabel(&window);
    auto& degree = *new DegreeLabel(&window);
    auto& bar = *new LevelBar(&window);
    auto& picture = *new PictureButton(
        "p", "?", [](QPainter& painter, const QRectF& rect) { painter.drawEllipse(rect); },
        &window);
    colour.setText("W");
    const std::pair<QWidget*, std::vector<std::function<void()>>> rows[] = {
        {&colour,
         {[&] { colour.setColours(qRgb(1, 2, 200), qRgb(250, 250, 250)); },
          [&] { colour.showAvailable(true); }, [&] { colour.showAvailable(false); },
          [&] { colour.setDown(true); }, [&] { colour.setText({}); }, [&] { colour.setFocus(); }}},
        {&key,
         {[&] { key.showOpen(true); }, [&] { key.setText({}); }, [&] { key.setDown(true); },
          [&] { key.setFocus(); }}},
        {&verdict,
         {[&] { verdict.setMark(Mark::Tick, qRgb(0, 0, 255)); },
          [&] { verdict.setMark(Mark::Cross, qRgb(0, 0, 255)); },
          [&] { verdict.setMark(Mark::None, qRgb(0, 0, 255)); },
          [&] { verdict.setMark(Mark::None, qRgb(0, 99, 0)); }}},
        {&label, {[&] { label.setText("W"); }, [&] { label.setFocus(); }}},
        {&degree,
         {[&] { degree.setText(" IV    Sotto"); }, [&] { degree.setText(" V    Sotto"); },
          [&] { degree.setText(" V    Domi"); }}},
        {&bar, {[&] { bar.setValue(99); }, [&] { bar.setFocus(); }}},
        {&picture,
         {[&] { picture.setChecked(true); }, [&] { picture.setFocus(); },
          [&] { picture.setEnabled(false); }}},
    };
    window.show();
    window.activateWindow();
    window.setFocusPolicy(Qt::StrongFocus);
    window.setFocus();
    QCoreApplication::processEvents();
    for (const auto& [widget, acts] : rows) {
        widget->resize(80, 40);
        std::vector<QImage> seen{pictureOf(*widget)};
        for (const auto& act : acts) {
            act();
            seen.push_back(pictureOf(*widget));
            for (std::size_t i = 0; i + 1 < seen.size(); ++i)
                EXPECT_NE(seen[i], seen.back()) << widget->metaObject()->className() << seen.size();
        }
    }
    EXPECT_EQ(mostOf(pictureOf(verdict)), QColor(0, 99, 0));
    colour.setDown(false);
    EXPECT_EQ(mostOf(pictureOf(colour)), QColor(255, 0, 0));
    picture.setEnabled(true);
    EXPECT_EQ(mostOf(pictureOf(picture)), QColor(10, 254, 10));
}

TEST(LampRow, ShowsItsLampsInTheirColoursSideBySide) {
    LampRow row;
    row.resize(500, 40);
    row.show();
    for (const int count : {20, 7, 1, 0}) {
        row.setVisibleLamps(count);
        row.setAllColours(0x0000FF);
        row.setColour(3, 0xFF0000);
        row.setColour(20, 0);
        const QImage image = pictureOf(row);
        int right = 0;
        for (int i = 0; i < LampRow::kCount; ++i) {
            const auto& lamp = *row.findChild<QWidget*>(QStringLiteral("lblPuls_%1").arg(i));
            ASSERT_EQ(lamp.isVisible(), i < count);
            if (i >= count)
                continue;
            const QRect place = lamp.geometry();
            EXPECT_TRUE(row.rect().contains(place) && place.left() >= right) << i;
            EXPECT_GE(place.width(), std::min(40, 500 / count) * 4 / 5);
            right = place.right();
            const QPoint middle = (QPointF(place.center()) * image.devicePixelRatio()).toPoint();
            EXPECT_EQ(image.pixelColor(middle), i == 3 ? QColor(0, 0, 255) : QColor(255, 0, 0));
            EXPECT_TRUE(
                lamp.accessibleName().startsWith(QStringLiteral("Pulsazione %1: ").arg(i + 1)));
        }
        EXPECT_EQ(QAccessible::queryAccessibleInterface(&row)->childCount(), count);
    }
}

TEST(DoubleClickLabel, IsClickedByDoubleClicksAndByTheKeyboardOnly) {
    DoubleClickLabel label;
    int clicks = 0;
    QObject::connect(&label, &QToolButton::clicked, [&] { ++clicks; });
    label.show();
    label.activateWindow();
    label.setFocus();
    const std::tuple<QEvent::Type, Qt::MouseButton, int> rows[] = {
        {QEvent::MouseButtonPress, Qt::LeftButton, 0},
        {QEvent::MouseButtonRelease, Qt::LeftButton, 0},
        {QEvent::MouseButtonDblClick, Qt::RightButton, 0},
        {QEvent::MouseButtonDblClick, Qt::LeftButton, 1},
        {QEvent::MouseButtonRelease, Qt::LeftButton, 1}};
    for (const auto& [type, button, expected] : rows) {
        sendMouse(label, type, label.rect().center(), button);
        EXPECT_EQ(clicks, expected) << type;
    }
    for (const int key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space})
        WindowDriver(label).type(key);
    EXPECT_EQ(clicks, 4);
}

TEST(LevelBar, RisesTowardsItsTop) {
    LevelBar bar;
    bar.resize(20, 200);
    bar.setRange(0, 100);
    bar.setPageStep(10);
    bar.show();
    int before = 50;
    for (const auto& [y, change] : {std::pair{3, 1}, {197, -1}, {30, 10}, {170, -10}}) {
        bar.setValue(before);
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
            sendMouse(bar, type, {10.0, static_cast<double>(y)});
        EXPECT_EQ(bar.value(), before + change) << y;
    }
    WindowDriver(bar).type(Qt::Key_Up);
    EXPECT_EQ(bar.value(), before - 10 + 1);
}
