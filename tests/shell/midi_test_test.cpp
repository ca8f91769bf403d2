#include "shell/midi_test.h"

#include "shell/frmMidiTest.h"
#include "support/test_world.h"
#include "support/window_driver.h"

#include <QCoreApplication>
#include <QListWidget>
#include <QSlider>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

using testing::ElementsAre;

/// One number is first the place of the line added last, then the count of devices, then a place
/// again; the first line is opened if that ends above 0.
TEST(MidiTest, ListsTheOutputsThatTellTheirName) {
    std::mt19937 random(1);
    for (int round = 0; round < 300; ++round) {
        TestWorld world;
        const int count = static_cast<int>(random() % 4);
        world.midi.devices.assign(static_cast<std::size_t>(count), QString::number(round));
        std::vector<std::pair<int, QString>> expected, listed;
        int k = count;
        for (int id = -1; id < count; ++id) {
            if (random() % 3 == 0) {
                world.midi.silentDevices.insert(id);
                continue;
            }
            k = id < 0 ? k : static_cast<int>(expected.size());
            expected.emplace_back(id, id < 0 ? "Mapper" : QString::number(round));
        }
        const midi_test::DeviceList list = midi_test::listDevices(world.midi);
        for (const midi_test::Device& device : list.devices)
            listed.emplace_back(device.id, device.name);
        EXPECT_EQ(listed, expected) << round;
        EXPECT_EQ(list.opensFirst, k > 0 && !expected.empty()) << round;
    }
}

TEST(MidiTestWindow, EachControlDoesItsPart) {
    TestWorld world;
    world.funzioniMM.setCurrentInstrument(16);
    frmMidiTest window(world.services(), nullptr);
    const auto open = [&] { window.exec(); };
    workInModal(world.runtime, open, [&](const WindowDriver& user) {
        EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("open -1", "program 16"));
        auto& list = user.find<QListWidget>("LstMidiDev");
        std::mt19937 random(1);
        for (int i = 0, program = 16, device = -1; i < 200; ++i) {
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
            EXPECT_EQ(world.funzioniMM.output().deviceId(), device);
            EXPECT_EQ(user.text("lblDevID"), QString("Dev. ID: %1").arg(device));
            EXPECT_EQ(user.text("lblInstr"), QString::number(program));
        }
        user.find<QWidget>("cmdTest").setFocus();
        for (const int key : {Qt::Key_Space, Qt::Key_Escape, Qt::Key_Space})
            queueKey(window, key);
    });
    QCoreApplication::processEvents();
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("on 1 69 100", "on 1 69 0"))
        << "a press behind the one that closes it starts nothing";
}

TEST(MidiTestWindow, TheEndOfTheProgramEndsTheNoteAndNothingIsOpenedWithoutADevice) {
    TestWorld world;
    world.midi.devices.clear();
    world.openOutput();
    {
        frmMidiTest window(world.services(), nullptr);
        window.show();
        QCoreApplication::processEvents();
        EXPECT_TRUE(WindowDriver(window).find<QListWidget>("LstMidiDev").selectedItems().isEmpty());
        window.cmdTest_Click();
    }
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("on 1 69 100", "on 1 69 0"));
}
