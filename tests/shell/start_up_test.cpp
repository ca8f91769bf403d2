#include "shell/start_up.h"

#include "support/test_world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

namespace {

struct ViewRecorder : StartUpView {
    std::vector<std::string> lines;
    const Runtime& runtime;

    explicit ViewRecorder(const Runtime& r) : runtime(r) {}
    void enableStartUpControls(bool on) override {
        const auto millis = std::chrono::round<std::chrono::milliseconds>(runtime.now());
        lines.push_back(std::to_string(millis.count()) + (on ? " enable" : " disable"));
    }
    void focusStart() override { lines.emplace_back("focus"); }
};

void activate(TestWorld& world, ViewRecorder& view) {
    world.funzioniMM.setCurrentInstrument(16);
    start_up::firstActivation(world.runtime, world.funzioniMM,
                              start_up::noteFolder(world.folders.programFolder()), view);
    EXPECT_THAT(view.lines, ElementsAre("0 disable", "2200 enable", "focus"));
}

}  // namespace

TEST(StartUp, PlaysTheTuneThenOpensTheOutputAndSendsTheInstrument) {
    TestWorld world;
    ViewRecorder view(world.runtime);
    activate(world, view);
    EXPECT_THAT(world.media.lines, ElementsAre("OPEN C:\\Cantavista\\note\\ap.mid ALIAS jepa ",
                                               "PLAY jepa", "CLOSE jepa"));
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("open -1", "program 16"));
}

TEST(StartUp, AMissingTuneIsIgnoredAndAMissingOutputReportedOnce) {
    TestWorld world;
    ViewRecorder view(world.runtime);
    world.media.codes = {{"OPEN", 275}};
    world.midi.openCode = 2;
    activate(world, view);
    EXPECT_EQ(world.media.lines.size(), 1U);
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("open -1"));
    EXPECT_THAT(world.dialogs.lines, ElementsAre("message: Operation:Open\r\nErrore di sistema 2"));
}
