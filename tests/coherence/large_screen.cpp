#include "coherence/large_screen.h"

LargeScreen::LargeScreen() {
    constexpr const char* kScreen =
        R"({"screens": [{"name": "screen", "x": 0, "y": 0, "width": 3200, "height": 2000,
                         "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})";
    if (!file_.open() || file_.write(kScreen) < 0 || !file_.flush())
        qFatal("no temporary file for the screen");
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + file_.fileName().toUtf8());
}
