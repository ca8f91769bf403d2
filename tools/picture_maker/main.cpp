#include "coherence/scenes.h"
#include "shell/application.h"

#include <QApplication>
#include <QDir>
#include <QPixmap>
#include <QTemporaryFile>
#include <QWidget>

#include <gtest/gtest.h>

#include <cstdio>

namespace {

/// Large enough for every window at twice its size; the platform's own is not.
constexpr const char* kScreen =
    R"({"screens": [{"name": "screen", "x": 0, "y": 0, "width": 3200, "height": 2000,
                     "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})";

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

}  // namespace

/// picture_maker FOLDER [SCENE…] writes the windows as they stand in the scenes to FOLDER. It needs
/// no display; CANTAVISTA_THEME and QT_SCALE_FACTOR mean what they mean to the program.
int main(int argc, char* argv[]) {
    QTemporaryFile screen;
    if (!screen.open() || screen.write(kScreen) < 0 || !screen.flush())
        return 1;
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screen.fileName().toUtf8());
    testing::InitGoogleTest(&argc, argv);
    QApplication app(argc, argv);
    application::prepare(app);
    const QStringList wanted = QApplication::arguments().mid(2);
    if (argc < 2 || !QDir().mkpath(QString::fromLocal8Bit(argv[1]))) {
        std::fputs("Usage: picture_maker FOLDER [SCENE…]\n", stderr);
        return 2;
    }
    bool whole = true;
    for (const Scene& scene : scenes()) {
        const bool skipped = !wanted.isEmpty() && !wanted.contains(QLatin1String(scene.name));
        if (!skipped && !writePicture(scene, QString::fromLocal8Bit(argv[1]))) {
            std::fprintf(stderr, "No picture of %s\n", scene.name);
            whole = false;
        }
    }
    // A scene whose acts go astray says so as a test's would.
    return whole && !testing::UnitTest::GetInstance()->ad_hoc_test_result().Failed() ? 0 : 1;
}
