#pragma once

#include "composer/composer_state.h"
#include "composer/frmComposer.h"
#include "platform/printing.h"
#include "platform/wave_renderer.h"
#include "support/heard.h"
#include "support/test_world.h"
#include "support/window_driver.h"

#include <QListWidget>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

/// Makes four stretches of two frames, each of which takes a second.
class SlowRenderer : public WaveRenderer {
public:
    explicit SlowRenderer(VirtualRuntime& runtime) : runtime_(runtime) {}

    std::unique_ptr<WaveRendering> start(std::vector<TimedMessage> score, std::int64_t) override;

private:
    VirtualRuntime& runtime_;
};

/// Ends as a test says, with a line among those of the boxes.
class ScriptedPrinting : public Printing {
public:
    explicit ScriptedPrinting(ScriptedDialogs& dialogs) : dialogs_(dialogs) {}

    Readiness ready = Readiness::Ready;
    Outcome outcome = Outcome::Printed;

    Readiness readiness() override { return ready; }

    Outcome print(const QString& title, const PaintPages&) override {
        dialogs_.lines.push_back("print: " + title.toStdString());
        return outcome;
    }

private:
    ScriptedDialogs& dialogs_;
};

/// "a|*b|c": the items of a list without blanks, the selected one with a mark before it.
QString itemsOf(const QListWidget& list, const QString& selected);

/// The composer, open on virtual time over files in memory. Acts are scheduled before `runUntil`
/// opens it.
struct OpenComposer {
    const QString root = QStringLiteral("C:\\Cantavista\\Melodie\\");
    TestWorld world;
    SlowRenderer renderer{world.runtime};
    ComposerState state;
    Heard heard;
    ScriptedPrinting printing{world.dialogs};
    frmComposer window;
    WindowDriver user{window};

    explicit OpenComposer(const QString& melodyFile = {});

    /// "Due.mel", which has bookmarks, "Rotta.mel", which is damaged, "Mie\\Tre.mel" and, on the
    /// floppy disk, "Sette.mel".
    void putMelodies();

    void at(Instant instant, std::function<void()> act);
    void clickAt(Instant instant, const char* control);

    /// Opens the window and closes it at an instant, saying yes if it asks.
    void runUntil(Instant end);

    /// Clicks keys and inserts their notes.
    void enter(const std::vector<int>& notes);

    /// One step of a user: a control's or menu item's name clicks it, with "*" behind it by a
    /// double click; "lblid_1" is held for 0.15 s; "lblNini=3" is typed and Enter; "cmbPer=2",
    /// "Slider1=90" and "List1=0" choose, "Regolo=2" an entry on the staff; "lb_24" is a key of the
    /// piano, "lb" moves the focus there, "midi_60" is one of a MIDI keyboard and "pedal" its
    /// pedal; "Ctrl+Z" and "Return" are keys; "in=…", "yes" and "no" are answers to the next box.
    void step(const QString& what);

    /// What some steps changed, as far as the user can tell: "lblNt=3" for each control that shows
    /// something else now, then what sounded and which boxes there were. With the step "…" it is
    /// what the controls show 100 ms later, with "said" what is announced as well.
    std::string effectOf(const QString& steps);

private:
    using Look = std::map<QString, QString>;

    Services services();
    Look look();
};

struct ComposerWindowTest : testing::Test, OpenComposer {};
