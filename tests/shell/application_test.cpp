#include "shell/application.h"

#include "shell/menu_escape.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QWindow>

#include <gtest/gtest.h>

#include <set>

namespace {

int lightness(QPalette::ColorRole role) {
    return QApplication::palette().color(role).lightness();
}

}  // namespace

TEST(Application, PaletteIsReadableInBothThemesAndButtonsAreItalian) {
    using P = QPalette;
    for (const char* theme : {"dark", "light"}) {
        qputenv("CANTAVISTA_THEME", theme);
        application::prepare(*qApp);
        EXPECT_EQ(lightness(P::Window) < 128, theme == std::string("dark"));
        EXPECT_GT(std::abs(lightness(P::WindowText) - lightness(P::Window)), 50);
        EXPECT_GT(std::abs(lightness(P::Text) - lightness(P::Base)), 50);
        EXPECT_GT(std::abs(lightness(P::ButtonText) - lightness(P::Button)), 50);
        EXPECT_GT(std::abs(lightness(P::HighlightedText) - lightness(P::Highlight)), 50);
    }
    EXPECT_EQ(QLocale().language(), QLocale::Italian) << "without a locale of the system";
    const QDialogButtonBox box(QDialogButtonBox::Ok | QDialogButtonBox::Cancel |
                               QDialogButtonBox::Save | QDialogButtonBox::Yes);
    std::set<QString> texts;
    for (QAbstractButton* button : box.buttons())
        texts.insert(button->text().remove(u'&'));
    EXPECT_EQ(texts, (std::set<QString>{"OK", "Annulla", "Sì", "Salva"}));
}

TEST(ClosedWindows, GetNoPresses) {
    struct Window : QWindow {
        QList<QEvent::Type> got;
        bool event(QEvent* event) override {
            got << event->type();
            return true;
        }
    } window;
    const QList types{QEvent::KeyPress, QEvent::MouseButtonPress, QEvent::Wheel,
                      QEvent::KeyRelease};
    for (const bool open : {false, true}) {
        window.setVisible(open);
        window.got.clear();
        for (const QEvent::Type type : types) {
            QEvent event(type);
            QCoreApplication::sendEvent(&window, &event);
        }
        EXPECT_EQ(window.got, open ? types : QList{QEvent::KeyRelease});
    }
}

TEST(MenuEscape, GivesTheFocusBackFromTheMenuBar) {
    MenuEscape escape;
    qApp->installEventFilter(&escape);
    QMainWindow window;
    auto* button = new QPushButton(&window);
    window.setCentralWidget(button);
    QMenu& menu = *window.menuBar()->addMenu(QStringLiteral("&Opzioni"));
    menu.addAction(QStringLiteral("Metronomo"));
    window.show();
    window.activateWindow();
    QCoreApplication::processEvents();
    button->setFocus();
    window.menuBar()->setActiveAction(menu.menuAction());
    ASSERT_TRUE(menu.isVisible());
    QKeyEvent key(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(&menu, &key);
    EXPECT_FALSE(menu.isVisible());
    window.activateWindow();
    QCoreApplication::processEvents();
    EXPECT_EQ(QApplication::focusWidget(), button);
}
