#include "coherence/scenes.h"
#include "composer/melody/melody.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QRegularExpression>
#include <QTranslator>

#include <gtest/gtest.h>

namespace {

/// Translates every text into a language of one letter.
struct OneLetter : QTranslator {
    OneLetter() { QCoreApplication::installTranslator(this); }
    ~OneLetter() override { QCoreApplication::removeTranslator(this); }

    bool isEmpty() const override { return false; }
    QString translate(const char*, const char* source, const char*, int) const override {
        static const QRegularExpression letter(QStringLiteral("\\p{L}"));
        return QString::fromUtf8(source).replace(letter, QStringLiteral("x"));
    }
};

/// What a widget says by itself; lists and boxes to type in hold the user's own words.
QStringList textsOf(const QWidget& widget) {
    QStringList texts{widget.windowTitle(), widget.toolTip(), widget.accessibleName(),
                      widget.accessibleDescription()};
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
        texts << label->text();
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
        texts << button->text();
    if (const auto* group = qobject_cast<const QGroupBox*>(&widget))
        texts << group->title();
    if (const auto* list = qobject_cast<const QComboBox*>(&widget)) {
        for (int i = 0; i < list->count(); ++i)
            texts << list->itemText(i);
    }
    for (const QAction* action : widget.actions())
        texts << action->text();
    return texts;
}

}  // namespace

TEST(UserTexts, OfEveryWindowAreTranslated) {
    const OneLetter translator;
    EXPECT_EQ(damagedMelodyText(), QStringLiteral("xxxx xxxxxxxx !!!"));
    static const QRegularExpression italian(QStringLiteral("(?!x)\\p{L}{2,}"));
    // Names, the scenes' own words, paths and beats are no texts of the program.
    static const QRegularExpression data(
        QStringLiteral("Cantavista|Sintetizzatore interno|Amazing Grace|^\\.\\.\\\\.*|^[abc]+$"));
    QStringList faults;
    for (const Scene& scene : scenes()) {
        scene.show([&](QWidget& window) {
            if (qobject_cast<QMessageBox*>(&window) || qobject_cast<QInputDialog*>(&window))
                return;  // shows what it is given
            QWidgetList widgets = window.findChildren<QWidget*>();
            widgets << &window;
            for (const QWidget* widget : widgets) {
                for (QString text : textsOf(*widget)) {
                    if (text.remove(data).contains(italian))
                        faults << QStringLiteral("%1: %2: %3")
                                      .arg(scene.name, widget->objectName(), text);
                }
            }
        });
    }
    faults.removeDuplicates();
    EXPECT_EQ(faults.join(QLatin1Char('\n')).toStdString(), "");
}
