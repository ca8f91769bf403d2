#include "composer/export/melody_score.h"
#include "composer/export/midi_file_writer.h"
#include "composer/frmComposer.h"
#include "composer/melody/composition.h"
#include "platform/wave_renderer.h"
#include "support/test_world.h"
#include "support/window_driver.h"

#include <QApplication>
#include <QProgressDialog>
#include <QPushButton>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const QString kInTree = QStringLiteral("C:\\Cantavista\\Melodie\\Mie\\Due.mel");
const QString kOutside = QStringLiteral("C:\\Scaricati\\Tre.v2.mel");
const QString kWave = QStringLiteral("C:\\Musica\\Due.wav");
const QByteArray kMelody = "60;62;\r\n0,5;0,5;\r\nn;s;\r\n 120 \r\n 73 \r\n";

/// Four stretches of two frames, each of which takes a second to make.
class SlowRenderer : public WaveRenderer {
public:
    explicit SlowRenderer(VirtualRuntime& runtime) : runtime_(runtime) {}

    std::vector<TimedMessage> messages;

    std::unique_ptr<WaveRendering> start(std::vector<TimedMessage> score, std::int64_t) override {
        messages = std::move(score);
        return std::make_unique<Rendering>(runtime_);
    }

private:
    class Rendering : public WaveRendering {
    public:
        explicit Rendering(VirtualRuntime& runtime) : runtime_(runtime) {}

        const Frames& next() override {
            runtime_.advance(1s);
            frames_ = ++made_ > 4 ? Frames{} : Frames{1, -1, 2, -2};
            return frames_;
        }

    private:
        VirtualRuntime& runtime_;
        Frames frames_;
        int made_ = 0;
    };

    VirtualRuntime& runtime_;
};

struct ExportWindowTest : testing::Test {
    TestWorld world;
    SlowRenderer renderer{world.runtime};
    bool hasRenderer = true;
    std::unique_ptr<frmComposer> window;

    ExportWindowTest() {
        world.openOutput();
        world.folders.put(kInTree, kMelody);
        world.folders.put(kOutside, kMelody);
        world.folders.put(kWave, "old");
    }

    WindowDriver user() const { return WindowDriver(*window); }

    /// Opens the composer with a melody, does something in it, and closes it.
    void inComposer(const QString& melody, const std::function<void()>& act) {
        Services services = world.services();
        services.waveRenderer = hasRenderer ? &renderer : nullptr;
        window = std::make_unique<frmComposer>(services, nullptr, melody);
        world.runtime.at(world.runtime.now() + 10ms, act);
        world.runtime.at(world.runtime.now() + 60s, [this] { window->reject(); });
        window->exec();
    }
};

}  // namespace

TEST_F(ExportWindowTest, TheItemsNeedAMelodyAndAudioASynthesizer) {
    inComposer({}, [this] {
        EXPECT_FALSE(user().enabled("mnuEsportaAudio"));
        EXPECT_FALSE(user().enabled("mnuEsportaMidi"));
    });
    hasRenderer = false;
    inComposer(kInTree, [this] {
        EXPECT_FALSE(user().enabled("mnuEsportaAudio"));
        EXPECT_TRUE(user().enabled("mnuEsportaMidi"));
    });
}

TEST_F(ExportWindowTest, AMidiFileHasTheTempoAndInstrumentOfTheWindow) {
    const QString path = QStringLiteral("C:\\Musica\\Due.mid");
    inComposer(kInTree, [&] {
        world.dialogs.inputs = {path, {}, path};
        user().trigger("mnuPiano");
        world.dialogs.confirmations = {true};
        user().trigger("mnuEsportaMidi");
        user().trigger("mnuEsportaMidi");
        world.folders.writeFailure = {61, QStringLiteral("Disco pieno !!!")};
        user().trigger("mnuEsportaMidi");
    });
    Composition composition;
    MelodyEditor(composition).open({{"60;62;", "0,5;0,5;", "n;s;"}, {}, {}});
    EXPECT_EQ(world.folders.at(path),
              midi_file::write(scoreOf(composition.melody, 120, 0), 120, QStringLiteral("Due")));
    EXPECT_THAT(world.dialogs.lines,
                ElementsAre("save: Esporta MIDI | Due.mid", "message: Esportato: Due.mid",
                            "save: Esporta MIDI | Due.mid", "save: Esporta MIDI | Due.mid",
                            "message: Errore: 61\n\nDisco pieno !!!",
                            "confirm: La melodia non è stata salvata. Chiudere comunque ?"));
}

TEST_F(ExportWindowTest, ALongRenderingShowsABoxAndCanBeGivenUp) {
    const auto box = [this] { return window->findChild<QProgressDialog*>("boxEsporta"); };
    inComposer(kInTree, [&] {
        world.dialogs.inputs = {kWave, kWave};
        world.runtime.at(world.runtime.now() + 1500ms, [&] {
            ASSERT_TRUE(box() && box()->isVisible());
            EXPECT_EQ(QApplication::activeModalWidget(), box());
            box()->findChild<QPushButton*>()->click();
        });
        user().trigger("mnuEsportaAudio");
        EXPECT_EQ(world.folders.at(kWave), "old");
        user().trigger("mnuEsportaAudio");
        EXPECT_EQ(box(), nullptr);
    });
    const QByteArray wave = world.folders.at(kWave);
    ASSERT_EQ(wave.size(), 44 + 4 * 2 * 4);
    EXPECT_EQ(wave.mid(44, 8), QByteArray("\1\0\xFF\xFF\2\0\xFE\xFF", 8));
    EXPECT_EQ(renderer.messages.size(), 5U);
    EXPECT_EQ(renderer.messages.front().message, 73U << 8 | 0xC0);
    const std::string asked = "save: Esporta audio | Due.wav";
    EXPECT_THAT(world.dialogs.lines, ElementsAre(asked, asked, "message: Esportato: Due.wav"));
}

TEST_F(ExportWindowTest, AMelodyFromElsewhereIsOpenedAndSavedBackWhereItIs) {
    inComposer(kOutside, [this] {
        EXPECT_EQ(user().text("lblNome"), QStringLiteral("Tre.v2"));
        EXPECT_EQ(user().text("lblNt"), QStringLiteral("2"));
        user().click("cmdInsPausa");
        user().trigger("mnuSalva");
        EXPECT_EQ(user().text("lblNome"), QStringLiteral("Salvato: Tre.v2"));
        world.dialogs.inputs = {QStringLiteral("Copia")};
        user().trigger("mnuSaveAs");
        user().click("cmdInsPausa");
        user().trigger("mnuSalva");
    });
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("program 73"))
        << "it does not play by itself";
    EXPECT_TRUE(world.folders.at(kOutside).startsWith("60;62;00;\r\n"));
    EXPECT_TRUE(world.folders.at(QStringLiteral("C:\\Cantavista\\Melodie\\Copia.mel"))
                    .startsWith("60;62;00;00;\r\n"));
    EXPECT_THAT(
        world.folders.files(QStringLiteral("C:\\Cantavista\\Melodie\\"), QStringLiteral("*")),
        testing::SizeIs(1));
}

TEST_F(ExportWindowTest, AMelodyOfTheTreeIsOpenedInItsFolderAndAnUnreadableOneNotAtAll) {
    inComposer(kInTree, [this] {
        user().click("cmdInsPausa");
        user().trigger("mnuSalva");
        user().trigger("mnuApri");
        EXPECT_EQ(user().text("lblPercorso"), QStringLiteral("..\\Melodie\\Mie\\"));
    });
    EXPECT_TRUE(world.folders.at(kInTree).startsWith("60;62;00;\r\n"));
    EXPECT_THAT(world.dialogs.lines, IsEmpty());

    inComposer(kWave, [this] { EXPECT_EQ(user().text("lblNt"), QString()); });
    inComposer(QStringLiteral("C:\\nulla.mel"),
               [this] { EXPECT_EQ(user().text("lblNt"), QString()); });
    EXPECT_THAT(world.dialogs.lines,
                ElementsAre("message: File corrotto !!!",
                            "message: Errore: 53\n\nTesto dell'errore 53 !!!"));
}
