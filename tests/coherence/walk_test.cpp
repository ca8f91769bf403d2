#include "coherence/scenes.h"
#include "composer/melody/melody.h"
#include "platform/desktop/qt_dialogs.h"
#include "support/test_world.h"
#include "support/window_driver.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QRegularExpression>
#include <QTranslator>

#include <gmock/gmock.h>

#include <map>

namespace {

constexpr QSize kSmallScreen(1366, 728);  ///< without its panel
constexpr double kLargeText = 1.5;
constexpr int kFrame = 4;  ///< that every style leaves around a text

/// Translates every text into a language of one letter.
struct OneLetter : QTranslator {
    bool isEmpty() const override { return false; }
    QString translate(const char*, const char* source, const char*, int) const override {
        static const QRegularExpression letter(QStringLiteral("\\p{L}"));
        return QString::fromUtf8(source).replace(letter, QStringLiteral("x"));
    }
};

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

/// The words on a widget; what a user typed is none of them.
QStringList captionsOf(const QWidget& widget) {
    QStringList texts{widget.property("title").toString()};
    if (!widget.inherits("QLineEdit"))
        texts << widget.property("text").toString();
    const auto* list = qobject_cast<const QComboBox*>(&widget);
    for (int i = 0; list && i < list->count(); ++i)
        texts << list->itemText(i);
    return texts;
}

bool isClipped(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        const QSize wanted =
            label->wordWrap() ? QSize(0, label->heightForWidth(label->width())) : label->sizeHint();
        const bool elided = label->toolTip() == label->text();  // which shows the whole text
        return !elided && wanted.boundedTo(label->size()) != wanted;
    }
    const QFontMetrics metrics(widget.font());
    return std::ranges::any_of(captionsOf(widget), [&](const QString& text) {
        const int width = metrics.size(Qt::TextShowMnemonic, text).width() + kFrame;
        return !text.isEmpty() && (width > widget.width() || metrics.ascent() > widget.height());
    });
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
    std::map<QString, QStringList> keys;
    for (const QAction* action : window.findChildren<QAction*>()) {
        keys[action->shortcut().toString()] << action->text();
        for (const QObject* menu : action->associatedObjects()) {
            const bool own = menu->inherits("QMenu") && menu != action->menu();
            const QString bar = menu->inherits("QMenuBar") ? QString() : menu->objectName() + " ";
            if (own || bar.isEmpty())
                keys[bar + QKeySequence::mnemonic(action->text()).toString()] << action->text();
        }
    }
    for (const QWidget* widget : widgetsOf(window)) {
        const auto* label = qobject_cast<const QLabel*>(widget);
        if (widget->isVisible() && widget->inherits("QAbstractButton"))
            keys[widget->property("shortcut").toString()] << widget->objectName();
        if (widget->isVisible() && label && label->buddy())
            keys[QKeySequence::mnemonic(label->text()).toString()] << widget->objectName();
    }
    QStringList faults;
    for (const auto& [key, owners] : keys) {
        if (owners.size() > 1 && !key.isEmpty() && !key.endsWith(' '))
            faults << key + " does " + owners.join(" and ");
    }
    return faults;
}

void settle() {
    for (int pass = 0; pass < 5; ++pass)
        QCoreApplication::processEvents();
}

struct EveryWindow : testing::TestWithParam<Scene> {
    const QFont font = QApplication::font();

    ~EveryWindow() override { QApplication::setFont(font); }

    /// A scene whose window never comes has not been looked at.
    static void look(const Look& look) {
        bool looked = false;
        GetParam().show([&](QWidget& window) {
            settle();
            look(window);
            looked = true;
        });
        EXPECT_TRUE(looked);
    }

    static void expectRoomForAllTexts(QWidget& window) {
        window.resize(window.minimumSizeHint().expandedTo(window.minimumSize()));
        settle();
        EXPECT_EQ(clipped(window), QStringList());
    }
};

}  // namespace

TEST_P(EveryWindow, IsNamedHasItsOwnKeysAndIsSeenWhole) {
    look([](QWidget& window) {
        EXPECT_FALSE(window.windowTitle().isEmpty() || window.windowIcon().isNull());
        for (QWidget* widget : widgetsOf(window))
            EXPECT_FALSE(lacksName(*widget)) << widget->objectName().toStdString();
        EXPECT_EQ(doubledKeys(window), QStringList());
        expectRoomForAllTexts(window);
        EXPECT_EQ(window.size().boundedTo(kSmallScreen), window.size());
        WindowDriver(window).type(Qt::Key_Escape);
        settle();
        EXPECT_EQ(window.isVisible(), !GetParam().escCloses);
    });
}

TEST_P(EveryWindow, IsSeenWholeInLargeText) {
    QFont large = font;
    large.setPointSizeF(font.pointSizeF() * kLargeText);
    QApplication::setFont(large);
    look(expectRoomForAllTexts);
}

TEST_P(EveryWindow, HasTextsThatCanBeTranslated) {
    OneLetter translator;
    QCoreApplication::installTranslator(&translator);
    static const QRegularExpression italian(QStringLiteral("(?!x)\\p{L}{2,}"));
    // Names, the scenes' own words, paths and beats are no texts of the program.
    static const QRegularExpression data(
        QStringLiteral("Cantavista|Sintetizzatore interno|Amazing Grace|^\\.\\.\\\\.*|^[abc]+$"));
    look([](QWidget& window) {
        if (window.inherits("QMessageBox") || window.inherits("QInputDialog"))
            return;  // shows what it is given
        const QWidgetList widgets = widgetsOf(window) << &window;
        for (const QWidget* widget : widgets) {
            QStringList texts = captionsOf(*widget);
            for (const char* name : {"windowTitle", "toolTip", "accessibleName"})
                texts << widget->property(name).toString();
            for (const QAction* action : widget->actions())
                texts << action->text();
            for (QString& text : texts)
                EXPECT_FALSE(text.remove(data).contains(italian)) << text.toStdString();
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Scenes, EveryWindow, testing::ValuesIn(scenes()), [](const auto& scene) {
    return QString::fromLatin1(scene.param.name).remove(QLatin1Char('-')).toStdString();
});

TEST(StandardTexts, AreItalian) {
    TestWorld world;
    QtDialogs dialogs(world.runtime);
    QStringList texts;
    const auto read = [&](const std::function<void()>& show) {
        workInModal(world.runtime, show, [&](const WindowDriver&) {
            QWidget* box = QApplication::activeModalWidget();
            for (const auto* button : box->findChildren<QAbstractButton*>())
                texts << button->text();
            box->close();
        });
    };
    read([&] { dialogs.confirm("?"); });
    read([&] { dialogs.input("?", "?", {}); });
    read([&] { dialogs.saveFile("?", "a", {"MIDI", "mid"}); });
    texts.removeAll(QString());
    EXPECT_THAT(texts, testing::ElementsAre("&Sì", "&No", "OK", "Annulla", "&Salva", "Annulla"));
}
