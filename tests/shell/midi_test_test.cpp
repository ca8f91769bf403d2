#include "shell/midi_test.h"

#include "shell/frmMidiTest.h"
#include "support/test_world.h"
#include "support/window_driver.h"

#include <QCoreApplication>
#include <QListWidget>
#include <QSlider>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

void clickSelected(QListWidget& list) {
    const QPointF place = list.visualItemRect(list.selectedItems().front()).center();
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
        sendMouse(*list.viewport(), type, place);
    QCoreApplication::processEvents();
}

struct MidiTestWindow : testing::Test {
    TestWorld world;

    /// Opens the window, works in it and closes it.
    void open(const std::function<void(const WindowDriver&)>& work) {
        frmMidiTest window(world.midi, world.funzioniMM, nullptr);
        workInModal(
            world.runtime, [&window] { window.exec(); },
            [&work](const WindowDriver& user) {
                work(user);
                user.close();
            });
    }
};

}  // namespace

TEST(MidiTest, TheCountDecidesWhetherTheFirstLineIsOpened) {
    struct Case {
        const char* what;
        int devices;
        std::set<int> silent;
        std::vector<int> listed;
        bool opensFirst;
    };
    const std::array<Case, 7> kCases{{
        {"the mapper and real devices", 2, {}, {-1, 0, 1}, true},
        {"the mapper alone", 0, {}, {-1}, false},
        {"one real device, no mapper", 1, {-1}, {0}, false},
        {"two real devices, no mapper", 2, {-1}, {0, 1}, true},
        {"the mapper, no real device answers", 2, {0, 1}, {-1}, true},
        {"two real devices, the last answers, no mapper", 2, {-1, 0}, {1}, false},
        {"nothing answers", 2, {-1, 0, 1}, {}, false},
    }};
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.what);
        TestWorld world;
        world.midi.devices.resize(static_cast<std::size_t>(c.devices));
        world.midi.silentDevices = c.silent;
        const midi_test::DeviceList list = midi_test::listDevices(world.midi);
        std::vector<int> ids;
        for (const midi_test::Device& device : list.devices)
            ids.push_back(device.id);
        EXPECT_EQ(ids, c.listed);
        EXPECT_EQ(list.opensFirst, c.opensFirst);
    }
}

TEST_F(MidiTestWindow, OpensTheFirstDeviceAndTriesIt) {
    world.funzioniMM.setCurrentInstrument(16);
    open([&](const WindowDriver& user) {
        EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("open -1", "program 16"));
        EXPECT_EQ(user.text("lblDevID"), "Dev. ID: -1");
        EXPECT_EQ(user.text("lblInstr"), "16");
        user.find<QSlider>("InstrS").setValue(127);
        user.click("cmdTest");
        user.click("cmdTest");
        user.click("cmdOff");
        EXPECT_THAT(world.midi.takeUntimed(),
                    ElementsAre("program 127", "on 1 69 100", "on 1 69 100", "on 1 69 0"));
        EXPECT_EQ(world.funzioniMM.currentInstrument(), 127);

        user.find<QListWidget>("LstMidiDev").setFocus();
        user.type(Qt::Key_Down);
        EXPECT_EQ(user.text("lblDevID"), "Dev. ID: 0");
        clickSelected(user.find<QListWidget>("LstMidiDev"));
        EXPECT_THAT(world.midi.takeUntimed(),
                    ElementsAre("close", "open 0", "program 127", "close", "open 0", "program 127"))
            << "a click opens the selected line again";
        user.click("cmdTest");
    });
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("on 1 69 100", "on 1 69 0"));
    EXPECT_TRUE(world.funzioniMM.output().isOpen());
    EXPECT_EQ(world.funzioniMM.output().deviceId(), 0);
}

TEST_F(MidiTestWindow, NothingIsSelectedWhenNothingIsOpened) {
    world.funzioniMM.setCurrentInstrument(16);
    world.midi.devices.clear();
    world.openOutput();
    open([&](const WindowDriver& user) {
        auto& list = user.find<QListWidget>("LstMidiDev");
        EXPECT_EQ(list.count(), 1);
        list.setFocus();
        EXPECT_THAT(world.midi.takeUntimed(), IsEmpty());
        EXPECT_EQ(user.text("lblDevID"), "Dev. ID: ");
        user.type(Qt::Key_Space);
        EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("close", "open -1", "program 16"));
    });
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
