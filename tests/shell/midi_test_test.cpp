#include "shell/midi_test.h"

#include "core/instruments.h"
#include "shell/frmMidiTest.h"
#include "support/test_world.h"
#include "support/window_driver.h"

#include <QApplication>
#include <QListWidget>
#include <QSlider>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

using testing::ElementsAre;

namespace {

struct MidiTestWindow : testing::Test {
    TestWorld world;

    /// Opens the window, works in it and closes it.
    void open(const std::function<void(const WindowDriver&)>& work) {
        frmMidiTest window(world.midi, world.funzioniMM, nullptr);
        workInModal(
            world.runtime, [&window] { window.exec(); },
            [&work](const WindowDriver& user) {
                work(user);
                user.click("cmdChiudi");
            });
    }
};

}  // namespace

/// One number is first the place of the line added last, then the count of devices, then a place
/// again; the first line is opened if that ends above 0.
TEST(MidiTest, ListsTheOutputsThatTellTheirName) {
    std::mt19937 random(1);
    for (int round = 0; round < 300; ++round) {
        TestWorld world;
        world.midi.devices.clear();
        for (unsigned i = random() % 4; i > 0; --i)
            world.midi.devices.push_back(QString::number(random() % 90));
        for (unsigned i = random() % 4; i > 0; --i)
            world.midi.silentDevices.insert(static_cast<int>(random() % 4) - 1);
        std::vector<std::pair<int, QString>> expected;
        int k = static_cast<int>(world.midi.devices.size());
        for (int id = -1; id < static_cast<int>(world.midi.devices.size()); ++id) {
            if (world.midi.silentDevices.count(id))
                continue;
            expected.emplace_back(id, id < 0 ? "Mapper" : world.midi.devices[std::size_t(id)]);
            k = id < 0 ? k : static_cast<int>(expected.size()) - 1;
        }
        const midi_test::DeviceList list = midi_test::listDevices(world.midi);
        std::vector<std::pair<int, QString>> listed;
        for (const midi_test::Device& device : list.devices)
            listed.emplace_back(device.id, device.name);
        EXPECT_EQ(listed, expected) << round;
        EXPECT_EQ(list.opensFirst, k > 0 && !expected.empty()) << round;
    }
}

TEST_F(MidiTestWindow, EachControlDoesItsPart) {
    world.funzioniMM.setCurrentInstrument(16);
    int device = -1;
    open([&](const WindowDriver& user) {
        EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("open -1", "program 16"));
        auto& list = user.find<QListWidget>("LstMidiDev");
        ASSERT_EQ(list.count(), 3);
        std::mt19937 random(1);
        for (int i = 0, program = 16; i < 200; ++i) {
            const int what = static_cast<int>(random() % 5);
            const int number = static_cast<int>(random() % 128);
            std::vector<std::string> expected;
            const auto opens = [&](int id) {
                device = id;
                expected = {"close", "open " + std::to_string(id),
                            "program " + std::to_string(program)};
            };
            if (what == 0) {
                if (list.currentRow() < 2)
                    opens(list.currentRow());
                list.setFocus();
                user.type(Qt::Key_Down);
            } else if (what == 1) {
                opens(number % 3 - 1);
                const QPointF place = list.visualItemRect(list.item(device + 1)).center();
                sendMouse(*list.viewport(), QEvent::MouseButtonPress, place);
                world.midi.take();
                sendMouse(*list.viewport(), QEvent::MouseButtonRelease, place);
                QCoreApplication::processEvents();
            } else if (what == 2) {
                if (number != std::exchange(program, number))
                    expected = {"program " + std::to_string(number)};
                user.find<QSlider>("InstrS").setValue(number);
            } else {
                user.click(what == 3 ? "cmdTest" : "cmdOff");
                expected = {what == 3 ? "on 1 69 100" : "on 1 69 0"};
            }
            EXPECT_EQ(world.midi.takeUntimed(), expected) << what;
            EXPECT_EQ(user.text("lblDevID"), QString("Dev. ID: %1").arg(device));
            EXPECT_EQ(list.item(device + 1)->text(),
                      QStringList({"Mapper", "Porta A", "Porta B"})[device + 1]);
            EXPECT_EQ(user.text("lblInstr"), QString::number(program));
            EXPECT_EQ(user.text("lblNomeInstr"), instruments::InstrumentName(program));
            EXPECT_EQ(world.funzioniMM.currentInstrument(), program);
        }
    });
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("on 1 69 0"));
    EXPECT_EQ(world.funzioniMM.output().deviceId(), device);
}

TEST_F(MidiTestWindow, NothingIsSelectedWhenNothingIsOpened) {
    world.funzioniMM.setCurrentInstrument(16);
    world.midi.devices.clear();
    world.openOutput();
    open([&](const WindowDriver& user) {
        EXPECT_TRUE(user.find<QListWidget>("LstMidiDev").selectedItems().isEmpty());
        EXPECT_EQ(user.text("lblDevID") + user.text("lblInstr"), "Dev. ID: 16");
    });
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("on 1 69 0"));
}

TEST_F(MidiTestWindow, APressBehindTheOneThatClosesItStartsNothing) {
    frmMidiTest window(world.midi, world.funzioniMM, nullptr);
    workInModal(
        world.runtime, [&window] { window.exec(); },
        [&](const WindowDriver& user) {
            user.find<QWidget>("cmdTest").setFocus();
            world.midi.take();
            for (const int key : {Qt::Key_Space, Qt::Key_Escape, Qt::Key_Space})
                queueKey(window, key);
        });
    QCoreApplication::processEvents();
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("on 1 69 100", "on 1 69 0"));
}

TEST_F(MidiTestWindow, TheEndOfTheProgramEndsTheNote) {
    world.openOutput();
    {
        frmMidiTest window(world.midi, world.funzioniMM, nullptr);
        window.show();
        window.cmdTest_Click();
    }
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("on 1 69 100", "on 1 69 0"));
}
