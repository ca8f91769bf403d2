#include "shell/application.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStyle>
#include <QWindow>

#include <gtest/gtest.h>

namespace {

int contrast(const QPalette& palette, QPalette::ColorRole text, QPalette::ColorRole ground) {
    return std::abs(palette.color(text).lightness() - palette.color(ground).lightness());
}

/// How often a widget's edge is lighter than its ground.
bool hasOutline(QWidget& widget) {
    widget.resize(80, 40);
    const QImage picture = widget.grab().toImage();
    return qGray(picture.pixel(40, 0)) > widget.palette().color(QPalette::Window).lightness() + 20;
}

}  // namespace

TEST(Application, PaletteIsReadableInBothThemesAndButtonsAreItalian) {
    for (const char* theme : {"dark", "light"}) {
        qputenv("CANTAVISTA_THEME", theme);
        application::prepare(*qApp);
        const QPalette palette = QApplication::palette();
        EXPECT_EQ(palette.color(QPalette::Window).lightness() < 128, theme == std::string("dark"));
        using P = QPalette;
        for (const auto& [text, ground] : {std::pair{P::WindowText, P::Window},
                                           {P::Text, P::Base},
                                           {P::Text, P::AlternateBase},
                                           {P::ButtonText, P::Button},
                                           {P::HighlightedText, P::Highlight},
                                           {P::ToolTipText, P::ToolTipBase},
                                           {P::Link, P::Base}}) {
            EXPECT_GT(contrast(palette, text, ground), 50) << theme << text;
            EXPECT_LE(contrast(palette, ground, P::Window), ground == P::Highlight ? 255 : 40);
        }
        EXPECT_GT(contrast(palette, P::PlaceholderText, P::Base), 30);
        for (const P::ColorRole role : {P::WindowText, P::Text, P::ButtonText})
            EXPECT_NE(palette.color(P::Disabled, role), palette.color(P::Active, role))
                << theme << role;
        QLabel label;
        label.setFrameShape(QFrame::StyledPanel);
        QListWidget list;
        QWidget plain;
        EXPECT_EQ(hasOutline(label), theme == std::string("dark"));
        EXPECT_EQ(hasOutline(list), theme == std::string("dark"));
        EXPECT_FALSE(hasOutline(plain));
    }
    EXPECT_EQ(QLocale().language(), QLocale::Italian) << "without a locale of the system";
    EXPECT_EQ(QApplication::applicationName(), "cantavista");
    EXPECT_TRUE(!QApplication::windowIcon().isNull() &&
                !QApplication::applicationVersion().isEmpty());
    const QDialogButtonBox box(QDialogButtonBox::Cancel);
    EXPECT_EQ(box.button(QDialogButtonBox::Cancel)->text().remove(u'&'), "Annulla");
    EXPECT_TRUE(box.button(QDialogButtonBox::Cancel)->icon().isNull());
    const QRgb accent = QApplication::palette().color(QPalette::Highlight).rgb();
    QImage last;
    for (const auto icon : {QStyle::SP_MessageBoxInformation, QStyle::SP_MessageBoxQuestion}) {
        const QImage badge = qApp->style()->standardIcon(icon).pixmap(64).toImage();
        EXPECT_TRUE(badge.pixel(8, 32) == accent && qAlpha(badge.pixel(1, 1)) == 0);
        EXPECT_NE(badge, last);
        last = badge;
    }
}

TEST(ClosedWindows, GetNoPresses) {
    struct Window : QWindow {
        QList<QEvent::Type> got;
        bool event(QEvent* event) override {
            got << event->type();
            return true;
        }
    } window;
    const QList<QEvent::Type> presses{
        QEvent::KeyPress,   QEvent::MouseButtonPress, QEvent::MouseButtonDblClick,
        QEvent::TouchBegin, QEvent::TabletPress,      QEvent::Wheel};
    const auto send = [&] {
        window.got.clear();
        for (const QEvent::Type type : presses + QList{QEvent::KeyRelease}) {
            QEvent event(type);
            QCoreApplication::sendEvent(&window, &event);
        }
        return window.got;
    };
    EXPECT_EQ(send(), QList{QEvent::KeyRelease});
    window.setVisible(true);
    EXPECT_EQ(send().size(), presses.size() + 1);
}
