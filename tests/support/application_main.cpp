#include "shell/application.h"

#include <QApplication>

#include <gtest/gtest.h>

/// The main function of the test programs that open windows; they need no display.
int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QApplication app(argc, argv);
    application::prepare(app);
    return RUN_ALL_TESTS();
}
