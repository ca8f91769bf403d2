#include "platform/desktop/qt_runtime.h"

#include "platform/desktop/qt_dialogs.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QEventLoop>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>

#include <gmock/gmock.h>

#include <csignal>

using namespace std::chrono_literals;
using testing::ElementsAre;

namespace {

struct QtRuntimeTest : testing::Test {
    QtRuntime runtime;
    QtDialogs dialogs{runtime};

    /// Works in the next box that comes up.
    static void inBox(const std::function<void(QDialog&)>& act) {
        QTimer::singleShot(1, [act] {
            auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            box ? act(*box) : inBox(act);
        });
    }
};

}  // namespace

TEST_F(QtRuntimeTest, WaitsAndPassesEndAtTheirInstant) {
    const Instant end = runtime.now() + 1ms;
    runtime.blockUntil(end);
    EXPECT_GE(runtime.now(), end);
    runtime.blockUntil(kForever * -1);
    bool done = false;
    QMetaObject::invokeMethod(
        qApp, [&] { done = true; }, Qt::QueuedConnection);
    runtime.blockUntil(runtime.now() + 60ms);
    EXPECT_TRUE(done) << "a wait serves what is no input";

    const Instant soon = runtime.now() + 1ms;
    while (runtime.now() < soon)
        runtime.pump(soon);
    QTimer::singleShot(1, [&] { done = false; });
    while (done)
        runtime.pump(kForever);
    EXPECT_FALSE(runtime.ending());
}

TEST_F(QtRuntimeTest, BothWallClocksTellTheLocalTime) {
    const double before = QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
    const double seconds = runtime.secondsSinceMidnight();
    const double after = runtime.dateTime().time().msecsSinceStartOfDay() / 1000.0;
    EXPECT_TRUE((before <= seconds && seconds < after + 0.001) || after < before) << "midnight";
}

TEST_F(QtRuntimeTest, AnAlarmGoesOffInEveryLoopUnlessItIsCancelled) {
    int rung = 0;
    const auto alarm = runtime.makeAlarm([&rung] { ++rung; });
    alarm->set(runtime.now());
    runtime.blockUntil(runtime.now() + 60ms);
    EXPECT_EQ(rung, 1) << "in a wait";
    QEventLoop box;
    const auto end = runtime.makeAlarm([&box] { box.quit(); });
    alarm->set(runtime.now());
    end->set(runtime.now() + 1ms);
    box.exec();
    EXPECT_EQ(rung, 2) << "in a loop of the toolkit's own";
    alarm->set(runtime.now() + 1ms);
    alarm->cancel();
    end->set(runtime.now() + 5ms);
    box.exec();
    alarm->set(runtime.now() + 1h);
    runtime.yield();
    EXPECT_EQ(rung, 2);
}

TEST_F(QtRuntimeTest, BoxesProposeWhatLosesNothingAndTellWhatTheUserChose) {
    QStringList seen;
    const auto chosen = [&](bool (Dialogs::*show)(const QString&), const QString& button) {
        inBox([&](QDialog& shown) {
            auto* box = qobject_cast<QMessageBox*>(&shown);
            seen << box->windowTitle() + " " + box->text() + " " + box->defaultButton()->text();
            for (QAbstractButton* one : box->buttons()) {
                if (one->text() == button)
                    return one->click();
            }
            box->close();
        });
        return (dialogs.*show)("a\r\n<b>");
    };
    EXPECT_TRUE(chosen(&Dialogs::confirm, "&Sì"));
    EXPECT_FALSE(chosen(&Dialogs::confirm, {}));
    EXPECT_FALSE(chosen(&Dialogs::offer, "&No"));
    EXPECT_TRUE(chosen(&Dialogs::offer, {}));
    const QString no = "Cantavista a\n<b> &No";
    const QString yes = "Cantavista a\n<b> &Sì";
    EXPECT_EQ(seen, (QStringList{no, no, yes, yes}));

    const auto typed = [&](const QString& title, auto answer) {
        inBox([&, answer](QDialog& box) {
            seen << box.windowTitle();
            (box.*answer)();
        });
        return dialogs.input("?", title, "proposta");
    };
    EXPECT_EQ(typed("Titolo", &QDialog::accept), "proposta");
    EXPECT_EQ(typed({}, &QDialog::reject), QString());
    EXPECT_EQ(seen.mid(4), (QStringList{"Titolo", "Cantavista"}));
}

TEST_F(QtRuntimeTest, AFileIsSavedIntoTheMusicFolderOrWhereTheLastOneWas) {
    const QTemporaryDir folder;
    const QString music = QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
    QStringList proposed;
    const auto save = [&](const QString& name) {
        inBox([&](QDialog& shown) {
            auto* box = qobject_cast<QFileDialog*>(&shown);
            proposed << box->directory().path() + " " +
                            box->selectedFiles().value(0).section('/', -1);
            box->selectFile(name);
            shown.done(name.isEmpty() ? QDialog::Rejected : QDialog::Accepted);
        });
        return dialogs.saveFile("?", "Mia", {"File MIDI", "mid"});
    };
    const QString first = QFileInfo(music).isDir() ? music : QDir::homePath();
    EXPECT_EQ(save({}), QString());
    EXPECT_EQ(save(folder.filePath("b")), folder.filePath("b.mid").replace(u'/', u'\\'));
    EXPECT_EQ(save({}), QString());
    EXPECT_EQ(proposed,
              (QStringList{first + " Mia.mid", first + " Mia.mid", folder.path() + " Mia.mid"}));
}

struct EndOfTheProgram : QtRuntimeTest, testing::WithParamInterface<int> {
    static constexpr int kQuit = 0;

    /// Asks for it in the middle of what follows.
    static void ask() {
        QTimer::singleShot(0, [] {
            if (GetParam() == kQuit)
                QCoreApplication::quit();
            else
                std::raise(GetParam());
        });
    }
};

TEST_P(EndOfTheProgram, CutsWaitsAndBoxesShortAndSavesTheWork) {
    int saved = 0;
    const SavedAtEnd work(runtime, [&saved] { ++saved; });
    Q_EMIT qApp->aboutToQuit({});
    EXPECT_EQ(std::exchange(saved, 0), 1);
    EXPECT_FALSE(runtime.ending());
    for (const bool inBox : {false, true}) {
        bool offered = false;
        QTimer::singleShot(0, [&] {
            ask();
            if (!inBox)
                runtime.blockUntil(runtime.now() + 1h);
            offered = dialogs.offer("?");
            EXPECT_EQ(dialogs.input("?", {}, "a") + dialogs.saveFile("?", "a", {}), QString());
        });
        EXPECT_EQ(QApplication::exec(), 0);
        EXPECT_TRUE(runtime.ending() && saved > 0);
        EXPECT_TRUE(offered) << "nothing is given up without an answer";
    }
}

INSTANTIATE_TEST_SUITE_P(Asked, EndOfTheProgram,
                         testing::Values(EndOfTheProgram::kQuit, SIGTERM, SIGINT, SIGHUP));
