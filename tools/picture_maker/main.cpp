#include "coherence/large_screen.h"
#include "coherence/scenes.h"
#include "shell/application.h"

#include <QApplication>
#include <QDir>
#include <QFont>
#include <QPalette>
#include <QPixmap>
#include <QWidget>

#include <gtest/gtest.h>

#include <cstdio>

namespace {

void settle() {
    for (int pass = 0; pass < 5; ++pass)
        QCoreApplication::processEvents();
}

bool writePicture(const Scene& scene, const QString& folder) {
    bool written = false;
    scene.show([&](QWidget& window) {
        settle();
        const QString file = QDir(folder).filePath(QLatin1String(scene.name) + ".png");
        written = window.grab().save(file);
    });
    settle();
    return written;
}

/// What follows an option, which goes with it; nothing without it.
QString takeOption(QStringList& arguments, const char* name) {
    const qsizetype at = arguments.indexOf(QLatin1String(name));
    if (at < 0 || at + 1 >= arguments.size())
        return {};
    arguments.removeAt(at);
    return arguments.takeAt(at);
}

QPalette desktopOf(const QStringList& colours) {
    const auto colour = [&](int index) { return QColor(colours.value(index)); };
    QPalette palette(colour(1), colour(0), colour(0), colour(0), colour(0), colour(1), colour(1),
                     colour(0), colour(0));
    palette.setColor(QPalette::Highlight, colour(2));
    palette.setColor(QPalette::HighlightedText, colour(0));
    return palette;
}

}  // namespace

/// picture_maker [--points SIZE] [--colours BACKGROUND,TEXT,ACCENT] FOLDER [SCENE…] writes the
/// windows as they stand in the scenes to FOLDER, with a system font of that size and a desktop of
/// these colours. It needs no display; CANTAVISTA_THEME and QT_SCALE_FACTOR mean what they mean to
/// the program.
int main(int argc, char* argv[]) {
    const LargeScreen screen;
    testing::InitGoogleTest(&argc, argv);
    QApplication app(argc, argv);
    application::prepare(app);
    QStringList arguments = QApplication::arguments().mid(1);
    if (const QString points = takeOption(arguments, "--points"); !points.isEmpty()) {
        QFont font = QApplication::font();
        font.setPointSizeF(points.toDouble());
        QApplication::setFont(font);
    }
    if (const QString colours = takeOption(arguments, "--colours"); !colours.isEmpty())
        application::followDesktop(desktopOf(colours.split(u',')));
    if (arguments.isEmpty() || !QDir().mkpath(arguments[0])) {
        std::fputs(
            "Usage: picture_maker [--points SIZE] [--colours BACKGROUND,TEXT,ACCENT] "
            "FOLDER [SCENE…]\n",
            stderr);
        return 2;
    }
    const QString folder = arguments.takeFirst();
    bool whole = true;
    for (const Scene& scene : scenes()) {
        const bool skipped = !arguments.isEmpty() && !arguments.contains(QLatin1String(scene.name));
        if (!skipped && !writePicture(scene, folder)) {
            std::fprintf(stderr, "No picture of %s\n", scene.name);
            whole = false;
        }
    }
    // A scene whose acts go astray says so as a test's would.
    return whole && !testing::UnitTest::GetInstance()->ad_hoc_test_result().Failed() ? 0 : 1;
}
