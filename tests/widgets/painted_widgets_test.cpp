#include "support/window_driver.h"
#include "widgets/colour_button.h"
#include "widgets/degree_label.h"
#include "widgets/double_click_label.h"
#include "widgets/ink.h"
#include "widgets/key_button.h"
#include "widgets/lamp_row.h"
#include "widgets/level_bar.h"
#include "widgets/picture_button.h"
#include "widgets/room_scale.h"
#include "widgets/verdict_badge.h"
#include "widgets/verdict_mark.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <random>

/// Whatever changes a widget changes its picture: each act shows something not seen before.
TEST(PaintedWidgets, LookDifferentInEveryState) {
    QWidget window;
    window.resize(800, 600);
    auto& colour = *new ColourButton(&window);
    auto& key = *new KeyButton(&window);
    auto& verdict = *new VerdictMark(&window);
    auto& label = *new DoubleClickLabel(&window);
    auto& degree = *new DegreeLabel(&window);
    auto& bar = *new LevelBar(&window);
    auto& lamps = *new LampRow(&window);
    auto& picture = *new PictureButton(
        "p", "?", [](QPainter& painter, const QRectF& rect) { painter.drawEllipse(rect); },
        &window);
    auto& badge = *new VerdictBadge(&window);
    badge.setGeometry(0, 0, 80, 40);
    colour.setText("W");
    const std::pair<QWidget*, std::vector<std::function<void()>>> rows[] = {
        {&colour,
         {[&] { colour.setColours(qRgb(1, 2, 200), qRgb(250, 250, 250)); },
          [&] { colour.showAvailable(true); }, [&] { colour.showAvailable(false); },
          [&] { colour.setDown(true); }, [&] { colour.setText({}); }, [&] { colour.setFocus(); }}},
        {&key,
         {[&] { key.showOpen(true); }, [&] { key.setText({}); }, [&] { key.setDown(true); },
          [&] { key.setFocus(); },
          [&] {
              key.showOpen(false);
              key.setText({});
          }}},
        {&badge,
         {[&] { badge.showAt(window, badge.geometry(), Verdict::Right); },
          [&] { badge.showAt(window, badge.geometry(), Verdict::Wrong); },
          [&] { badge.showOver(window, Verdict::Wrong); },
          [&] { badge.showOver(window, Verdict::Right); }}},
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
        {&lamps,
         {[&] { lamps.setVisibleLamps(2); }, [&] { lamps.setVisibleLamps(3); },
          [&] { lamps.setAllColours(0x0000FF); }, [&] { lamps.setColour(1, 0xFF0000); },
          [&] { lamps.setColour(2, 0x00FF00); }}},
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
        widget->setGeometry(0, 0, 80, 40);
        widget->raise();
        std::vector<QImage> seen{onScreen(*widget)};
        for (const auto& act : acts) {
            act();
            seen.push_back(onScreen(*widget));
            for (std::size_t i = 0; i + 1 < seen.size(); ++i)
                EXPECT_NE(seen[i], seen.back()) << widget->metaObject()->className() << seen.size();
        }
    }
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&lamps)->childCount(), 3);
}

TEST(DoubleClickLabel, IsClickedByDoubleClicksAndByTheKeyboardOnly) {
    DoubleClickLabel label;
    std::string clicks;
    QObject::connect(&label, &QToolButton::clicked, [&] { clicks += "click "; });
    label.show();
    label.activateWindow();
    label.setFocus();
    for (const auto type :
         {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick}) {
        clicks += std::to_string(type) + ' ';
        sendMouse(label, type, {5, 5}, Qt::RightButton);
        sendMouse(label, type, {5, 5});
    }
    for (const int key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space})
        WindowDriver(label).type(key);
    EXPECT_EQ(clicks, "2 3 4 click click click click ");
}

TEST(LevelBar, RisesTowardsItsTop) {
    LevelBar bar;
    bar.resize(20, 200);
    bar.show();
    for (const auto& [y, value] : {std::pair{3.0, 51}, {197.0, 49}, {30.0, 60}, {170.0, 40}}) {
        bar.setValue(50);
        sendMouse(bar, QEvent::MouseButtonPress, {10.0, y});
        sendMouse(bar, QEvent::MouseButtonRelease, {10.0, y});
        EXPECT_EQ(bar.value(), value) << y;
    }
    WindowDriver(bar).type(Qt::Key_Up);
    EXPECT_EQ(bar.value(), 41);
}

/// On the screen of the tests, which is 800 × 800; every second text is shown after the window.
TEST(RoomScale, TypeThatIsTooLargeForTheScreenIsAsLargeAsFits) {
    const QSize room = QGuiApplication::primaryScreen()->availableSize() - QSize(8, 40);
    std::mt19937 random(5);
    for (int i = 0; i < 60; ++i) {
        const double points = 8 + static_cast<int>(random() % 22);
        const QString text =
            QStringLiteral("Semibreve ").repeated(1 + static_cast<int>(random() % 9));
        const auto fill = [&](QWidget& window, double size) {
            QFont font = window.font();
            font.setPointSizeF(size);
            window.setFont(font);
            auto* part = new QWidget;
            (new QVBoxLayout(part))->addWidget(new QLabel(text));
            (new QVBoxLayout(&window))->addWidget(part);
            return part;
        };
        const auto fits = [&](double size) {
            QWidget tried;
            fill(tried, size);
            return tried.minimumSizeHint().width() <= room.width();
        };
        double expected = points;
        for (int step = 9; step > 0 && expected > 10 && !fits(expected); --step)
            expected = std::max(10.0, points * step / 10);
        QWidget window;
        QWidget& part = *fill(window, points);
        const bool later = i % 2 == 1;
        part.setHidden(later);
        new RoomScale(window, room / 1.25);
        EXPECT_NEAR(window.font().pointSizeF(), later ? points : expected, 0.01) << points;
        window.show();
        const QSize least = window.minimumSize();
        window.resize(room);
        part.show();
        QCoreApplication::processEvents();
        EXPECT_EQ(window.minimumSizeHint().width() <= room.width(), fits(std::min(points, 10.0)))
            << points << later;
        if (later && expected < points)
            continue;
        const double grown = fits(expected * 1.2) ? 1.2 : fits(expected * 1.1) ? 1.1 : 1;
        EXPECT_NEAR(window.font().pointSizeF(), expected * grown, 0.01) << points << later;
        EXPECT_TRUE(later || window.minimumSize() == least) << "it can be small again";
    }
}
