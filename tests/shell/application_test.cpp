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

#include <random>
#include <set>

namespace {

int lightness(QPalette::ColorRole role) {
    return QApplication::palette().color(role).lightness();
}

}  // namespace

TEST(Application, PaletteIsReadableOnEveryDesktopAndButtonsAreItalian) {
    using P = QPalette;
    std::mt19937 random(18);
    const QColor colours[] = {Qt::black, 0x101010, 0x303030, 0xEFEFEF, Qt::white, Qt::yellow};
    const auto any = [&] { return colours[random() % std::size(colours)]; };
    for (int i = 0; i < 3000; ++i) {
        const QColor behind = any(), text = any();
        P desktop(text, i % 2 ? any() : behind, behind, behind, behind, text, text, behind,
                  i % 3 ? behind : any());
        desktop.setColor(P::Highlight, any());
        desktop.setColor(P::HighlightedText, any());
        const bool isDark = i >= 2 ? desktop.window().color().lightness() < 128 : i == 0;
        if (i < 2) {
            qputenv("CANTAVISTA_THEME", isDark ? "dark" : "light");
            application::prepare(*qApp);
        } else {
            application::followDesktop(desktop);
        }
        EXPECT_EQ(lightness(P::Window) < 128, isDark);
        const bool flat =
            desktop.button() == desktop.window() && desktop.base() == desktop.window();
        const int apart = std::abs(text.lightness() - behind.lightness());
        const bool followed = QApplication::palette().window() == desktop.window();
        EXPECT_TRUE(followed || i < 2 || !flat || apart < 255);
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
