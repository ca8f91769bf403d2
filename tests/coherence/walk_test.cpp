#include "coherence/scenes.h"
#include "coherence/window_walk.h"
#include "support/window_driver.h"

#include <QApplication>
#include <QDirIterator>
#include <QFile>
#include <QIcon>
#include <QRegularExpression>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>

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

/// The classes of the program's own windows and panels, as the headers declare them, but for those
/// from which others are derived.
std::set<QString> declaredWindows() {
    static const QRegularExpression declaration(
        QStringLiteral("^class (\\w+)(?: final)? : public (\\w+)"),
        QRegularExpression::MultilineOption);
    std::map<QString, QString> bases;
    QDirIterator headers(QStringLiteral(PROGRAM_SOURCES), {QStringLiteral("*.h")}, QDir::Files,
                         QDirIterator::Subdirectories);
    while (headers.hasNext()) {
        QFile header(headers.next());
        EXPECT_TRUE(header.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(header.readAll());
        for (auto found = declaration.globalMatch(text); found.hasNext();) {
            const QRegularExpressionMatch match = found.next();
            bases[match.captured(1)] = match.captured(2);
        }
    }
    const QStringList toolkit{"QDialog", "QFrame", "QGroupBox", "QMainWindow", "QWidget"};
    std::set<QString> names;
    std::set<QString> derivedFrom;
    for (const auto& [name, base] : bases) {
        QString root = base;
        while (bases.count(root) != 0)
            root = bases[root];
        if (toolkit.contains(root)) {
            names.insert(name);
            derivedFrom.insert(base);
        }
    }
    std::erase_if(names, [&](const QString& name) { return derivedFrom.count(name) != 0; });
    return names;
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

TEST(Scenes, ShowEveryWindowPanelAndControl) {
    window_walk::Coverage coverage;
    for (const Scene& scene : scenes()) {
        scene.show([&coverage](QWidget& window) {
            settle();
            coverage.add(window);
        });
    }
    EXPECT_EQ(lines(coverage.neverShown()), "") << "a scene has to show them";
    const std::set<QString> declared = declaredWindows();
    EXPECT_GT(declared.size(), 20U);
    for (const QString& name : declared)
        EXPECT_TRUE(coverage.hasShown(name)) << "no scene shows a " << name.toStdString();
}

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
