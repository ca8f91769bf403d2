#include "coherence/large_screen.h"
#include "shell/application.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char* argv[]) {
    const LargeScreen screen;
    testing::InitGoogleTest(&argc, argv);
    QApplication app(argc, argv);
    application::prepare(app);
    return RUN_ALL_TESTS();
}
