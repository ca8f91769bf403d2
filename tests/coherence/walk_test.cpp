#include "coherence/scenes.h"
#include "coherence/window_walk.h"
#include "support/window_driver.h"

#include <QApplication>
#include <QIcon>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

void PrintTo(const Scene& scene, std::ostream* out) {
    *out << scene.name;
}

namespace {

constexpr QSize kSmallScreen(1366, 728);  ///< without its panel
constexpr double kLargeText = 1.5;

std::string lines(const QStringList& faults) {
    return faults.join(QLatin1Char('\n')).toStdString();
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

    static void shrink(QWidget& window) {
        window.resize(window.minimumSizeHint().expandedTo(window.minimumSize()));
        settle();
    }
};

}  // namespace

TEST_P(EveryWindow, NamesItselfAndItsControls) {
    look([](QWidget& window) {
        EXPECT_FALSE(window.windowTitle().isEmpty());
        EXPECT_FALSE(window.windowIcon().isNull());
        EXPECT_EQ(lines(window_walk::unnamed(window)), "");
        EXPECT_EQ(lines(window_walk::sharedKeys(window)), "");
    });
}

TEST_P(EveryWindow, IsWorkedByKeys) {
    look([](QWidget& window) {
        EXPECT_EQ(lines(window_walk::unreachable(window)), "");
        WindowDriver(window).type(Qt::Key_Escape);
        settle();
        EXPECT_EQ(window.isVisible(), !GetParam().escCloses);
    });
}

TEST_P(EveryWindow, FitsASmallScreenAndClipsNothingAtItsSmallest) {
    look([](QWidget& window) {
        shrink(window);
        EXPECT_LE(window.width(), kSmallScreen.width());
        EXPECT_LE(window.height(), kSmallScreen.height());
        EXPECT_EQ(lines(window_walk::clipped(window)), "");
    });
}

TEST_P(EveryWindow, ClipsNothingInLargeText) {
    QFont large = font;
    large.setPointSizeF(font.pointSizeF() * kLargeText);
    QApplication::setFont(large);
    look([](QWidget& window) {
        shrink(window);
        EXPECT_EQ(lines(window_walk::clipped(window)), "");
    });
}

INSTANTIATE_TEST_SUITE_P(Scenes, EveryWindow, testing::ValuesIn(scenes()), [](const auto& scene) {
    return QString::fromLatin1(scene.param.name).remove(QLatin1Char('-')).toStdString();
});
