#include "coherence/contrast.h"
#include "coherence/scenes.h"
#include "shell/application.h"
#include "support/window_driver.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QScrollArea>

#include <gtest/gtest.h>

#include <array>

namespace {

/// The smallest screen at 200 %, 1920 × 1080, less a window's frame and title bar.
constexpr QSize kSmallScreen(952, 500);
constexpr QSize kLargeScreen(1920, 1050);
constexpr double kLargeType = 18;  ///< points
constexpr int kFrame = 4;          ///< that every style leaves around a text

/// The window's widgets but for parts of the toolkit's own, which have no names.
QWidgetList widgetsOf(const QWidget& window) {
    QWidgetList found = window.findChildren<QWidget*>();
    found.removeIf([&](const QWidget* widget) {
        return widget->window() != &window || widget->objectName().isEmpty() ||
               widget->objectName().startsWith("qt_");
    });
    return found;
}

bool isControl(const QWidget& widget) {
    const auto types = {"QAbstractButton", "QComboBox", "QLineEdit", "QAbstractSlider",
                        "QAbstractItemView"};
    return std::ranges::any_of(types, [&](const char* type) { return widget.inherits(type); });
}

/// Whether a screen reader could not name it, or only by the frame around it.
bool lacksName(QWidget& widget) {
    const bool paintsItself = *widget.metaObject()->className() != 'Q' && widget.isVisible();
    if (!isControl(widget) && (!paintsItself || !widget.findChildren<QWidget*>().isEmpty()))
        return false;
    const auto* frame = qobject_cast<const QGroupBox*>(widget.parentWidget());
    const QString name = QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name);
    return name.trimmed().isEmpty() ||
           (frame && widget.accessibleName().isEmpty() && name == frame->title());
}

bool isClipped(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        const QSize wanted =
            label->wordWrap() ? QSize(0, label->heightForWidth(label->width())) : label->sizeHint();
        const bool elided = label->toolTip() == label->text();  // which shows the whole text
        return !elided && wanted.boundedTo(label->size()) != wanted;
    }
    const QFontMetrics metrics(widget.font());
    return std::ranges::any_of(std::array{"title", "text"}, [&](const char* name) {
        const QString text = widget.property(name).toString();
        const int width = metrics.size(Qt::TextShowMnemonic, text).width() + kFrame;
        return !text.isEmpty() && !widget.inherits("QLineEdit") &&
               (width > widget.width() || metrics.ascent() > widget.height());
    });
}

/// Where the window is not wide enough for what scrolls in it.
QStringList scrolledSideways(const QWidget& window) {
    QStringList faults;
    for (const auto* area : window.findChildren<QScrollArea*>()) {
        if (area->isVisible() && area->widget()->width() > area->viewport()->width())
            faults << area->objectName();
    }
    return faults;
}

QStringList clipped(const QWidget& window) {
    QStringList faults;
    for (const QWidget* widget : widgetsOf(window)) {
        if (!widget->isVisible())
            continue;
        const QRect place(widget->mapTo(&window, QPoint()), widget->size());
        bool scrolls = false;
        for (const QWidget* parent = widget; parent; parent = parent->parentWidget())
            scrolls |= parent->inherits("QScrollArea");
        if (isClipped(*widget) || (!scrolls && !window.rect().contains(place)))
            faults << widget->objectName();
    }
    return faults;
}

/// Mnemonics and shortcuts that would do two things.
QStringList doubledKeys(const QWidget& window) {
    QStringList keys;
    for (const QAction* action : window.findChildren<QAction*>())
        keys << action->shortcut().toString();
    for (const QMenu* menu : window.findChildren<QMenu*>()) {
        for (const QAction* action : menu->actions())
            keys << menu->objectName() + " " + QKeySequence::mnemonic(action->text()).toString();
    }
    for (const QWidget* widget : widgetsOf(window)) {
        const auto* label = qobject_cast<const QLabel*>(widget);
        if (widget->isVisible() && widget->inherits("QAbstractButton"))
            keys << widget->property("shortcut").toString();
        if (widget->isVisible() && label && label->buddy())
            keys << QKeySequence::mnemonic(label->text()).toString();
    }
    for (const QMenuBar* bar : window.findChildren<QMenuBar*>()) {
        for (const QAction* action : bar->actions())
            keys << QKeySequence::mnemonic(action->text()).toString();
    }
    QStringList doubled;
    std::ranges::copy_if(keys, std::back_inserter(doubled), [&](const QString& key) {
        return keys.count(key) > 1 && key.contains("+");
    });
    return doubled;
}

void settle() {
    for (int pass = 0; pass < 5; ++pass)
        QCoreApplication::processEvents();
}

struct EveryWindow : testing::TestWithParam<Scene> {};

}  // namespace

TEST_P(EveryWindow, IsNamedHasItsOwnKeysAndIsSeenWholeAndWell) {
    const QFont font = QApplication::font();
    for (const bool large : {true, false}) {
        application::showTheme(large ? application::Theme::Light : application::Theme::Dark);
        QFont scaled = font;
        scaled.setPointSizeF(large ? kLargeType : font.pointSizeF());
        QApplication::setFont(scaled);
        bool looked = false;
        GetParam().show([&](QWidget& window) {
            looked = true;
            settle();
            EXPECT_FALSE(window.windowTitle().isEmpty() || window.windowIcon().isNull());
            EXPECT_TRUE(window.screen()->geometry().contains(window.geometry()));
            for (QWidget* widget : widgetsOf(window))
                EXPECT_FALSE(lacksName(*widget)) << widget->objectName().toStdString();
            EXPECT_EQ(doubledKeys(window), QStringList());
            EXPECT_EQ(pale(window), QStringList());
            window.resize(window.minimumSizeHint().expandedTo(window.minimumSize()));
            settle();
            EXPECT_EQ(clipped(window), QStringList());
            if (!large) {
                EXPECT_LE(window.width(), kSmallScreen.width());
                EXPECT_LE(window.height(), kSmallScreen.height());
                window.resize(kSmallScreen.boundedTo(window.maximumSize()));
                settle();
                EXPECT_EQ(scrolledSideways(window), QStringList());
            }
            if (window.maximumWidth() > kLargeScreen.width()) {
                window.resize(kLargeScreen);
                settle();
                EXPECT_EQ(clipped(window), QStringList()) << "maximised";
                EXPECT_EQ(scrolledSideways(window), QStringList()) << "maximised";
            }
            WindowDriver(window).type(Qt::Key_Escape);
            settle();
            EXPECT_EQ(window.isVisible(), !GetParam().escCloses);
        });
        EXPECT_TRUE(looked);
    }
}

TEST_P(EveryWindow, TakesTheColoursOfADesktopOfHighContrast) {
    for (const auto& [behind, text, accent] :
         {std::tuple(Qt::black, Qt::white, Qt::yellow), std::tuple(Qt::black, Qt::yellow, Qt::blue),
          std::tuple(Qt::white, Qt::black, Qt::darkMagenta)}) {
        QPalette desktop(text, behind, behind, behind, behind, text, text, behind, behind);
        desktop.setColor(QPalette::Highlight, accent);
        application::followDesktop(desktop);
        GetParam().show([&](QWidget& window) {
            settle();
            EXPECT_EQ(window.palette().color(QPalette::Window), QColor(behind));
            EXPECT_EQ(pale(window), QStringList());
        });
    }
}

INSTANTIATE_TEST_SUITE_P(Scenes, EveryWindow, testing::ValuesIn(scenes()), [](const auto& scene) {
    return QString::fromLatin1(scene.param.name).remove(QLatin1Char('-')).toStdString();
});
