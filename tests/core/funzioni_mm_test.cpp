#include "core/funzioni_mm.h"

#include "support/test_world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;

TEST(FunzioniMM, PlaysOneNoteAtATimeAndNeverSendsANoteOffStatus) {
    TestWorld world;
    world.openOutput();
    auto& mm = world.funzioniMM;
    for (const std::int16_t index : {-1, 5, 5, -1, -1})
        mm.PlayNoteIndex(index);
    EXPECT_THAT(world.midi.takeUntimed(),
                ElementsAre("on 1 36 0", "on 1 36 0", "on 1 41 100", "on 1 41 0", "on 1 41 100",
                            "on 1 41 0", "on 1 41 0"));
    EXPECT_EQ(mm.lastNoteIndex(), 5);
    EXPECT_FALSE(mm.noteDrawn());
}

TEST(FunzioniMM, DrawsARandomNoteAndSilencesItItselfWhenAsked) {
    TestWorld world;
    world.openOutput();
    auto& mm = world.funzioniMM;
    mm.setRangeLower(10);
    mm.setRangeUpper(13);
    world.random.numbers = {0.75F, 0.0F};
    mm.PlayNoteIndex(FunzioniMM::kRandomNote);
    EXPECT_EQ(mm.drawnIndex(), 13);
    EXPECT_TRUE(mm.noteDrawn());
    EXPECT_THAT(world.midi.take(), ElementsAre("0.000 on 1 36 0", "0.000 on 1 49 100"));

    mm.setAutoSilence(true);
    mm.PlayNoteIndex(-7);
    EXPECT_THAT(world.midi.take(),
                ElementsAre("0.000 on 1 49 0", "0.000 on 1 46 100", "0.900 on 1 46 0"));

    mm.setRangeLower(0);
    mm.setRangeUpper(0);
    mm.PlayNoteIndex(FunzioniMM::kRandomNote);
    EXPECT_EQ(mm.drawnIndex(), 0);
    EXPECT_EQ(world.random.drawn, 3);
    EXPECT_EQ(mm.RandomNoteIndex(4, 4), 4);
    EXPECT_EQ(world.random.drawn, 3) << "equal bounds draw nothing";
}

TEST(FunzioniMM, PacksMessagesAndKeepsTheLastOne) {
    TestWorld world;
    world.openOutput();
    auto& mm = world.funzioniMM;
    mm.NoteOn(10, 76, 127);
    EXPECT_EQ(mm.lastMessage(), 0x7F4C99U);
    mm.ProgramChange(16);
    EXPECT_EQ(mm.lastMessage(), 0x7F4C99U) << "a program change is sent past the last message";
    mm.SendShortMsg(0x90, -1, 0);
    EXPECT_EQ(mm.lastMessage(), 0x7F4C99U) << "what does not fit is not sent";
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("on 10 76 127", "program 16"));
}

TEST(FunzioniMM, ReportsEveryRefusalButThatOfAProgramChange) {
    TestWorld world;
    auto& mm = world.funzioniMM;
    mm.MidiClose();
    EXPECT_THAT(world.midi.take(), IsEmpty()) << "nothing is open";

    world.midi.openCode = 4;
    EXPECT_FALSE(mm.MidiOpen(kMidiMapper));
    EXPECT_FALSE(mm.output().isOpen());
    mm.NoteOn(1, 60, 100);
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("open -1")) << "without sound all is silent";

    world.midi.openCode = 0;
    EXPECT_TRUE(mm.MidiOpen(1));
    world.midi.closeCode = 65;
    EXPECT_TRUE(mm.MidiOpen(0)) << "an output that does not close gives way all the same";
    mm.MidiClose();
    EXPECT_TRUE(mm.output().isOpen());

    world.midi.sendCode = 3;
    mm.ProgramChange(5);
    mm.NoteOff(1, 60);
    EXPECT_EQ(mm.lastSendResult(), 3);
    EXPECT_THAT(world.dialogs.lines,
                ElementsAre("message: Operation:Open\r\nErrore di sistema 4",
                            "message: Operation:Close midi error: \r\nErrore di sistema 65",
                            "message: Operation:Close midi error: \r\nErrore di sistema 65",
                            "message: Operation:ShortMsg\r\nErrore di sistema 3"));
}

TEST(FunzioniMM, AnOutputThatIsGoneIsReportedOnceAndComesBackWithItsInstrument) {
    TestWorld world;
    world.openOutput();
    auto& mm = world.funzioniMM;
    int changes = 0;
    mm.onChange([&] { ++changes; });
    mm.chooseInstrument(40);
    world.midi.take();
    const auto later = [&] { world.runtime.advance(OpenOutput::kRetryInterval); };

    world.midi.deviceGone = true;
    mm.chooseInstrument(41);
    EXPECT_TRUE(mm.output().isOpen()) << "nobody looks at the answer to a program change";
    for (int i = 0; i < 100; ++i) {
        mm.NoteOn(1, 60, 90);
        mm.NoteOff(1, 60);
        mm.ResetOutput();
        later();
    }
    EXPECT_FALSE(mm.output().isOpen() || mm.output().ready());
    EXPECT_TRUE(mm.output().isLost());
    EXPECT_THAT(world.dialogs.lines,
                ElementsAre("message: Operation:ShortMsg\r\nErrore di sistema 6"));
    world.midi.deviceGone = false;
    EXPECT_TRUE(mm.MidiOpen(1));
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("open 1", "close"));

    world.midi.replug();
    mm.NoteOn(1, 60, 90);
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("reopen", "program 41", "on 1 60 90"))
        << "it was gone and back before anybody noticed";
    world.midi.deviceGone = true;
    mm.NoteOn(1, 60, 90);
    world.midi.deviceGone = false;
    mm.NoteOn(1, 60, 90);
    EXPECT_FALSE(mm.output().isOpen()) << "not at every note of a run";
    later();
    mm.NoteOff(1, 60);
    EXPECT_FALSE(mm.output().isOpen()) << "the end of a note is nothing to open an output for";
    mm.chooseInstrument(7);
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("reopen", "program 7"));
    EXPECT_EQ(world.dialogs.lines.size(), 2U);
    EXPECT_EQ(changes, 8);

    world.midi.sendCode = 3;
    mm.NoteOn(1, 60, 90);
    mm.NoteOn(1, 60, 90);
    EXPECT_EQ(world.dialogs.lines.size(), 4U) << "a refusal by a living output";
}

TEST(FunzioniMM, ReportsAFailedPlayOrCloseOfTheTuneButNotAFailedOpen) {
    TestWorld world;
    auto& mm = world.funzioniMM;
    world.media.codes = {{"PLAY", 277}, {"CLOSE", 263}};
    mm.MediaOpen("C:\\a b\\ap.mid");
    mm.MediaPlay();
    mm.MediaClose();
    EXPECT_FALSE(mm.mediaOpenFailed());
    world.media.codes = {{"OPEN", 275}};
    mm.MediaOpen("x");
    world.media.codes.clear();
    mm.MediaOpen("y");
    EXPECT_TRUE(mm.mediaOpenFailed()) << "a failure is remembered for the rest of the run";
    EXPECT_THAT(world.media.lines,
                ElementsAre("OPEN C:\\a b\\ap.mid ALIAS jepa ", "PLAY jepa", "CLOSE jepa",
                            "OPEN x ALIAS jepa ", "OPEN y ALIAS jepa "));
    EXPECT_THAT(world.dialogs.lines,
                ElementsAre("message: Play file midi error: Errore multimediale 277",
                            "message: Close file midi error: Errore multimediale 263"));
}
