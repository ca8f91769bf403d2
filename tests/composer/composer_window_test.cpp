#include "composer/composer_window.h"

#include "widgets/piano_keyboard.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QFile>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <random>

using namespace std::chrono_literals;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

/// How many more note-ons than note-offs every note had.
std::map<std::string, int> sounding(const std::vector<std::string>& untimed) {
    std::map<std::string, int> notes;
    for (const std::string& line : untimed) {
        if (line.rfind("on ", 0) != 0)
            continue;
        const std::string note = line.substr(0, line.rfind(' '));
        notes[note] = line.substr(line.rfind(' ')) == " 0" ? 0 : notes[note] + 1;
    }
    std::erase_if(notes, [](const auto& note) { return note.second == 0; });
    return notes;
}

}  // namespace

/// Each section of `composer_wiring.txt` is a window, each row some steps, "->", and all that they
/// change; of "> lblStep_1" 100 ms after a click on "Play".
TEST(ComposerWiring, EveryStepHasItsOwnEffect) {
    QFile file(QStringLiteral(COMPOSER_WIRING));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Text));
    for (const QString& section : QString::fromUtf8(file.readAll()).split("\n\n")) {
        QStringList rows = section.split(u'\n', Qt::SkipEmptyParts);
        const bool opens = rows.takeFirst().endsWith(QStringLiteral("Due.mel"));
        OpenComposer composer(opens ? "C:\\Cantavista\\Melodie\\Due.mel" : "");
        composer.putMelodies();
        composer.at(10ms, [&] {
            for (const QString& row : rows) {
                QString steps = row.section(QStringLiteral(" ->"), 0, 0);
                std::string effect;
                if (steps.startsWith(QStringLiteral("> "))) {
                    composer.at(composer.world.runtime.now() + 100ms,
                                [&] { effect = composer.effectOf(steps.mid(2)); });
                    composer.step(QStringLiteral("cmdPlay"));
                } else {
                    effect = composer.effectOf(steps);
                }
                EXPECT_EQ(QString::fromStdString(effect).simplified().toStdString(),
                          row.section(QStringLiteral(" ->"), 1).simplified().toStdString())
                    << steps.toStdString();
            }
        });
        composer.runUntil(10h);
    }
}

TEST_F(ComposerWindowTest, TheMenusHaveTheirItemsAndTheContextMenuItsOwn) {
    const auto named = [](const QMenu& menu) {
        QStringList names;
        for (const QAction* action : menu.actions())
            names << (action->isSeparator() ? QStringLiteral("|") : action->objectName().mid(3));
        return names.join(u' ');
    };
    QStringList menus;
    for (const QAction* action : user.find<QMenuBar>("menu").actions())
        menus << named(*action->menu());
    EXPECT_EQ(menus.value(0),
              "Apri Salva SaveAs | EsportaAudio EsportaMidi | SalvaA CopyFromA | Chiudi");
    EXPECT_EQ(menus.value(1), "Annulla Ripeti | Memorizza");
    EXPECT_EQ(menus.value(2), "PlayRitardo | Organo Piano");
    auto& context = user.find<QMenu>("mnuContestuale");
    EXPECT_EQ(named(context),
              "Annulla Ripeti | Memorizza | ApriCont SalvaCont SaveAsCont | PlayRitardo | Organo "
              "Piano");
    at(100ms, [&] {
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(3, 3), QPoint(30, 30));
        QCoreApplication::sendEvent(&window, &event);
        EXPECT_TRUE(context.isVisible());
        context.close();
        int program = 0;
        const auto families = user.find<QPushButton>("cmdStrumento").menu()->actions();
        for (const QAction* family : families) {
            EXPECT_EQ(family->menu()->actions().size(), 8);
            for (QAction* item : family->menu()->actions()) {
                item->trigger();
                EXPECT_EQ(user.text("InstrS"), QString::number(program));
                EXPECT_EQ(user.text("lblInstr"), item->text());
                EXPECT_TRUE(item->text().startsWith(QStringLiteral("%1-").arg(program++)));
            }
        }
        EXPECT_EQ(program, 128);
    });
    runUntil(1s);
}

TEST_F(ComposerWindowTest, EveryKeyOfTheComputerKeyboardPlaysItsNote) {
    const std::string rows = "ZSXDCVGBHNJMQ2W3ER5T6Y7UI9O0P";
    std::vector<std::pair<KeyCode, int>> keys{{188, 12}, {'L', 13}, {190, 14}, {192, 15}, {189, 16},
                                              {186, 29}, {221, 30}, {187, 31}, {8, 32}};
    for (std::size_t i = 0; i < rows.size(); ++i)
        keys.emplace_back(rows[i], i);
    std::vector<std::string> expected;
    Instant time = 100ms;
    for (const int base : {48, 60, 36}) {
        for (const auto& [key, offset] : keys) {
            const int note = base + offset;
            world.runtime.press(key, time, time + 20ms);
            at(time + 10ms, [this, note] {
                EXPECT_TRUE(user.find<PianoKeyboard>("lb").marked(note - 36)) << note;
            });
            expected.push_back("on 1 " + std::to_string(note) + " 90");
            expected.push_back("on 1 " + std::to_string(note) + " 0");
            time += 40ms;
        }
        at(time, [this] { user.doubleClick("lblActNote"); });
        time += 40ms;
    }
    runUntil(time);
    EXPECT_EQ(world.midi.takeUntimed(), expected);
    for (int key = 0; key < PianoKeyboard::kKeys; ++key)
        EXPECT_FALSE(user.find<PianoKeyboard>("lb").marked(key));
}

TEST_F(ComposerWindowTest, TheFocusDecidesWhatAKeyMeans) {
    at(100ms, [this] {
        enter({60, 62, 64});
        step("mnuApri");
        step("lblStep_1");
    });
    // "z" plays, "u" goes a semitone up, "r" steps; the others are the control's own.
    const std::vector<std::pair<const char*, const char*>> meanings{
        {"cmdInsNota", "zur"}, {"lblStep_0", "zur"}, {"lb", "zu"},      {"Slider1", "z"},
        {"List1", "z"},        {"lblNini", ""},      {"cmbDurata", ""}, {"chekLoop", "zur"}};
    Instant time = 3s;
    for (const auto& [control, meaning] : meanings) {
        at(time, [this, control = control] {
            user.find<QWidget>(control).setFocus();
            world.midi.take();
        });
        world.runtime.press('Z', time + 100ms, time + 200ms);
        world.runtime.press(kKeyUp, time + 300ms, time + 400ms);
        world.runtime.press(kKeyRight, time + 500ms, time + 600ms);
        at(time + 700ms, [] {});
        at(time + 2500ms, [this, control = control, meaning = meaning] {
            std::string meant;
            for (const std::string& line : world.midi.takeUntimed()) {
                const bool played = line.ends_with(" 100");
                if (!line.ends_with(" 0"))
                    meant += played ? 'r' : line == "on 1 48 90" ? 'z' : 'u';
            }
            EXPECT_EQ(meant, meaning) << control;
        });
        time += 3s;
    }
    at(time, [this] {
        for (const char* control : {"cmdInsNota", "lb", "InstrS"}) {
            auto& widget = user.find<QWidget>(control);
            widget.setFocus();
            user.find<PianoKeyboard>("lb").moveCursor(5);
            user.find<QSlider>("InstrS").setValue(5);
            user.type(Qt::Key_Right);
            EXPECT_EQ(window.focusWidget(), &widget) << "an arrow moves no focus";
        }
        EXPECT_EQ(user.find<PianoKeyboard>("lb").cursorKey(), 5);
        EXPECT_EQ(user.text("InstrS"), QStringLiteral("6"));
        user.find<QWidget>("cmdInsNota").setFocus();
        world.midi.take();
    });
    // An act of its own before them lets the next two fall into one pass, as a key's event and its
    // state do.
    at(time + 100ms, [] {});
    at(time + 100ms,
       [this] { sendSystemKey(window, QEvent::KeyPress, Qt::Key_X, Qt::ControlModifier); });
    world.runtime.press('X', time + 100ms, time + 200ms);
    at(time + 300ms, [this] {
        EXPECT_THAT(world.midi.takeUntimed(), IsEmpty()) << "a shortcut";
        auto& menu = user.find<QMenu>("mnuContestuale");
        menu.popup({30, 30});
        at(world.runtime.now() + 100ms, [&menu] { menu.close(); });
    });
    world.runtime.press('Z', time + 310ms, time + 350ms);
    runUntil(time + 1s);
    EXPECT_THAT(world.midi.takeUntimed(), IsEmpty()) << "an open menu takes them";
}

TEST_F(ComposerWindowTest, ArrowsAndFunctionKeysGoThroughNotesAndEntries) {
    world.runtime.press(kKeyDown, 100ms, 150ms);
    world.runtime.press(kKeyUp, 200ms, 250ms);
    world.runtime.press(kKeyDown, 300ms, 500ms);
    world.runtime.press(kKeyUp, 400ms, 450ms);
    world.runtime.press(kKeyBackspace, 600ms, 700ms);
    world.runtime.repeat(kKeyBackspace, 650ms);
    at(750ms, [this] { step("lb_0"); });
    world.runtime.press(kKeyDown, 800ms, 850ms);
    at(900ms, [this] {
        EXPECT_THAT(world.midi.takeUntimed(),
                    ElementsAre("on 1 60 90", "on 1 60 0", "on 1 61 90", "on 1 61 0", "on 1 60 90",
                                "on 1 60 0", "on 1 61 90", "on 1 61 0", "on 1 80 90", "on 1 80 90",
                                "on 1 80 0", "on 1 36 90", "on 1 36 0", "on 1 36 90", "on 1 36 0"));
        enter({60, 62, 64});
    });
    Instant time = 1s;
    for (const auto& [key, entry] : std::vector<std::pair<KeyCode, const char*>>{
             {kKeyRight, "1"}, {kKeyF1 + 5, "2"}, {kKeyLeft, "1"}, {kKeyF1 + 4, "3"}}) {
        world.runtime.press(key, time, time + 100ms);
        at(time + 2s, [this, entry = entry] {
            EXPECT_EQ(user.text("lblNe"), QLatin1String(entry));
            EXPECT_EQ(window.focusWidget(), &user.find<QWidget>("cmdInsNota"));
        });
        time += 3s;
    }
    runUntil(time);
}

TEST_F(ComposerWindowTest, AnArrowOfTheRangeIsHeldByMouseAndKeyAndSteppedByAScreenReader) {
    at(100ms, [this] { enter({60, 62, 64, 65, 67, 69, 71, 72}); });
    at(200ms, [this] {
        auto& arrow = user.find<QAbstractButton>("lblid_1");
        const auto press = [&] {
            QAccessible::queryAccessibleInterface(&arrow)->actionInterface()->doAction(
                QAccessibleActionInterface::pressAction());
            return user.text("lblNini");
        };
        EXPECT_EQ(press(), QStringLiteral("2"));
        arrow.setFocus();
        at(300ms, [this] { sendSystemKey(window, QEvent::KeyRelease, Qt::Key_Space); });
        sendSystemKey(window, QEvent::KeyPress, Qt::Key_Space);
        EXPECT_EQ(user.text("lblNini"), QStringLiteral("4")) << "held for 0.1 s";
        EXPECT_EQ(press(), QStringLiteral("5")) << "no loop waits for its release";
        sendMouse(arrow, QEvent::MouseButtonPress, {3, 3}, Qt::RightButton);
        EXPECT_EQ(press(), QStringLiteral("6"));
        step("lblid_0");
        EXPECT_EQ(user.text("lblNini"), QStringLiteral("4"));
        EXPECT_EQ(press(), QStringLiteral("5"));
    });
    runUntil(2s);
    EXPECT_EQ(world.runtime.now(), Instant(2s));
}

TEST_F(ComposerWindowTest, ClosingWhilePlayingOrHoldingLeavesNoNote) {
    at(100ms, [this] { enter({60, 62, 64}); });
    clickAt(1000ms, "cmdPlay");
    world.runtime.press('Z', 1100ms, 20s);
    at(1200ms, [this] {
        sendMouse(user.find<QWidget>("lblid_3"), QEvent::MouseButtonPress, {3, 3});
    });
    at(2100ms, [this] {
        world.dialogs.confirmations.push_back(false);
        window.reject();
        EXPECT_TRUE(window.isVisible()) << "the answer was no";
    });
    world.runtime.press(kKeyUp, 5s, 20s);
    // An entry too short leaves "Stop" on the button.
    at(5500ms, [this] {
        step("cmdReset");
        step("Slider1=250");
        step("cmdSimbNote_6");
        enter({60});
        step("cmdPlay");
        EXPECT_EQ(user.text("cmdPlay"), QStringLiteral("Stop"));
        world.dialogs.confirmations.push_back(false);
        window.reject();
        EXPECT_EQ(user.text("cmdPlay") + user.text("lblNe"), QStringLiteral("Play"));
        EXPECT_TRUE(user.enabled("cmdCanc"));
        step("cmdSimbNote_0");
        step("cmdCanc");
        enter({62});
    });
    clickAt(6s, "cmdPlay");
    runUntil(7s);
    EXPECT_THAT(sounding(world.midi.takeUntimed()), IsEmpty());
    EXPECT_THAT(world.dialogs.lines,
                Each("confirm: La melodia non è stata salvata. Chiudere comunque ?"));
    world.runtime.runActs();
    EXPECT_FALSE(window.isVisible());
}

TEST_F(ComposerWindowTest, EachActivationBeginsAtTheFirstOctaveAndAtTheInsertion) {
    at(100ms, [this] {
        EXPECT_EQ(window.focusWidget(), &user.find<QWidget>("cmdInsNota"));
        enter({95});
    });
    world.dialogs.duringMessage = [this] {
        at(world.runtime.now() + 10ms,
           [] { static_cast<QDialog*>(QApplication::activeModalWidget())->accept(); });
        QMessageBox(&window).exec();
    };
    at(200ms, [this] {
        user.doubleClick("lblActNote");
        user.find<QWidget>("cmdReset").setFocus();
        world.dialogs.duringMessage();
        window.activateWindow();
    });
    at(250ms, [this] { EXPECT_EQ(window.focusWidget(), &user.find<QWidget>("cmdInsNota")); });
    world.runtime.press('Z', 300ms, 350ms);
    at(400ms, [this] {
        step("lblIDs_1");
        step("lblSemitoni");
        window.activateWindow();
    });
    at(500ms, [this] {
        EXPECT_EQ(window.focusWidget(), &user.find<QWidget>("cmdPlay")) << "chosen after the box";
    });
    runUntil(1s);
    EXPECT_THAT(world.midi.take(), ElementsAre("0.300 on 1 48 90", "0.350 on 1 48 0"));
}

TEST_F(ComposerWindowTest, APressBehindTheOneThatClosesItPlaysNothing) {
    at(100ms, [this] { enter({60, 62}); });
    clickAt(200ms, "chekLoop");
    clickAt(1000ms, "cmdPlay");
    at(5400ms, [this] {
        world.dialogs.confirmations.push_back(true);
        world.midi.take();
        for (const int key : {Qt::Key_Escape, Qt::Key_Space})
            queueKey(window, key);
    });
    bool playsOn = false;
    at(30s, [&] {
        playsOn = true;
        window.reject();
    });
    window.exec();
    EXPECT_FALSE(playsOn);
    world.runtime.forgetActs();
    EXPECT_THAT(world.midi.takeUntimed(), IsEmpty());
}

TEST_F(ComposerWindowTest, TheEndOfTheProgramKeepsTheMelody) {
    at(100ms, [this] { enter({60, 62}); });
    at(200ms, [this] {
        world.runtime.end();
        EXPECT_THAT(world.folders.files("C:\\Cantavista", "*.mel"), SizeIs(1))
            << "before any loop returns";
        window.QDialog::done(0);
    });
    window.exec();
}

namespace {

/// What the window's state is in its plainest form, with whole copies for undo.
struct WalkModel {
    struct State {
        QStringList names;
        QStringList bookmarks;
        QString name;
        int start = 0;
        int end = 0;
    };

    State now;
    bool playing = false;
    bool framed = false;
    bool browser = false;
    bool bookmarks = false;
    std::vector<std::pair<State, State>> done;
    std::vector<std::pair<State, State>> undone;

    int count() const { return static_cast<int>(now.names.size()); }

    void change(State to, bool always = false) {
        if (!to.bookmarks.isEmpty())
            to.bookmarks[0] = QStringLiteral("1÷%1÷Tutto").arg(to.names.size());
        if (!always && to.names == now.names && to.bookmarks == now.bookmarks)
            return;
        done.emplace_back(now, to);
        undone.clear();
        now = to;
    }

    void append(const QString& name) {
        State to = now;
        to.names << name;
        to.end = count();
        change(to);
    }

    void empty() {
        playing = framed = false;
        change({});
    }

    void travel(bool back) {
        auto& from = back ? done : undone;
        if (from.empty() || playing)
            return;
        const auto [before, after] = from.back();
        (back ? undone : done).push_back(from.back());
        from.pop_back();
        const QString name = before.name == after.name ? now.name : back ? before.name : after.name;
        now = back ? before : after;
        now.name = name;
        framed = framed && count() > 0;
    }

    void play() {
        framed = false;
        playing = !playing && count() > 0;
    }
};

}  // namespace

TEST_F(ComposerWindowTest, ARandomWalkShowsWhatItsStateSays) {
    putMelodies();
    WalkModel model;
    std::mt19937 random(3);
    const auto draw = [&](int most) { return static_cast<int>(random() % unsigned(most)); };
    const auto tickLoop = [&] {
        if (!user.find<QAbstractButton>("chekLoop").isChecked())
            step("chekLoop");
    };
    // The model goes first: "Play" returns only when the playing has ended.
    const std::vector<std::function<void()>> acts{
        [&] {
            model.append("P");
            step("cmdInsPausa");
        },
        [&] {
            if (!user.enabled("cmdCanc"))
                return;
            WalkModel::State to = model.now;
            if (model.count() > 1) {
                to.names.removeLast();
                to.start = 0;
                to.end = model.count() - 2;
                model.change(to);
            } else {
                model.empty();
            }
            step("cmdCanc");
        },
        [&] {
            if (draw(4) > 0)
                return;
            model.empty();
            step("cmdReset");
        },
        [&] {
            model.travel(true);
            step("Ctrl+Z");
        },
        [&] {
            model.travel(false);
            step("Ctrl+Y");
        },
        [&] {
            tickLoop();
            model.play();
            step("cmdPlay");
        },
        [&] {
            model.framed = model.framed || (model.count() > 0 && !model.playing);
            step(draw(2) == 0 ? "lblStep_0" : "lblStep_1");
        },
        [&] {
            const int number = draw(8);
            if (model.count() == 0)
                return;
            if (number >= 1 && number <= model.now.end + 1)
                model.now.start = number - 1;
            step(QStringLiteral("lblNini=%1").arg(number));
        },
        [&] {
            const int number = draw(8);
            if (model.count() == 0)
                return;
            if (number <= model.count() && number > model.now.start)
                model.now.end = number - 1;
            step(QStringLiteral("lblNfine=%1").arg(number));
        },
        [&] {
            if (model.now.end >= model.count())
                return;
            WalkModel::State to = model.now;
            if (to.bookmarks.isEmpty())
                to.bookmarks << QString();
            to.bookmarks << QStringLiteral("%1÷%2÷k").arg(to.start + 1).arg(to.end + 1);
            model.change(to);
            model.bookmarks = true;
            step("in=k");
            step("Ctrl+B");
        },
        [&] {
            if (!model.bookmarks)
                return;
            step("lstBookMark=1");
            if (model.now.bookmarks.size() > 1 && !model.playing) {
                WalkModel::State to = model.now;
                to.bookmarks.removeAt(1);
                if (to.bookmarks.size() == 1)
                    to.bookmarks.clear();
                model.change(to);
            }
            step("cmdDelBm");
        },
        [&] {
            if (!model.bookmarks)
                return;
            step("lstBookMark=1");
            if (model.now.bookmarks.size() > 1 && !model.playing) {
                const int last = model.count() - 1;
                const QStringList pieces = model.now.bookmarks[1].split(u'÷');
                model.now.start = std::min(pieces[0].toInt() - 1, last);
                model.now.end = std::clamp(pieces[1].toInt() - 1, model.now.start, last);
                tickLoop();
                model.play();
            }
            step("cmdPlayBm");
        },
        [&] {
            model.bookmarks = false;
            step("cmdHideBm");
        },
        [&] {
            model.browser = draw(2) == 0;
            step(model.browser ? "mnuApri" : "cmdHideFr2");
        },
        [&] {
            if (!model.browser || draw(3) > 0)
                return;
            tickLoop();
            const QStringList names{"Do", "Re", "Mi", "P"};
            model.playing = false;
            model.change({names, {"", "2÷3÷a", "3÷3÷b"}, "Due", 0, 3}, true);
            model.bookmarks = true;
            model.play();
            step("List1=1");
            step("cmdEseguiFile");
        }};

    const auto& list = user.find<QListWidget>("lstBookMark");
    int turns = 400;
    std::string path;
    std::function<void()> turn = [&] {
        const QString names = model.now.names.isEmpty() ? "" : model.now.names.join(u';') + u';';
        const bool any = model.count() > 0;
        const auto shownIf = [](bool any, int number) {
            return any ? QString::number(number) : QString();
        };
        SCOPED_TRACE(path);
        EXPECT_EQ(user.text("lblNoteString"), names.right(40));
        EXPECT_EQ(user.text("lblNt"), shownIf(any, model.count()));
        EXPECT_EQ(user.text("lblNini"), shownIf(any, model.now.start + 1));
        EXPECT_EQ(user.text("lblNfine"), shownIf(any, model.now.end + 1));
        EXPECT_EQ(user.text("lblNome"), model.now.name);
        EXPECT_EQ(user.text("cmdPlay"), QString(model.playing ? "Stop" : "Play"));
        EXPECT_EQ(itemsOf(list, {}), model.now.bookmarks.join(u'|'));
        EXPECT_EQ(user.enabled("mnuAnnulla"), !model.playing && !model.done.empty());
        EXPECT_EQ(user.enabled("mnuRipeti"), !model.playing && !model.undone.empty());
        EXPECT_EQ(user.enabled("mnuEsportaMidi"), any);
        EXPECT_EQ(user.shown("frmModifica"), model.framed);
        EXPECT_EQ(user.shown("Fr2"), model.browser);
        EXPECT_EQ(user.shown("frBookMark"), model.bookmarks);
        EXPECT_EQ(user.shown("lblGuida"), !model.framed && !model.browser && !model.bookmarks);
        EXPECT_TRUE(model.framed || user.enabled("cmdCanc") == !model.playing);
        if (HasFailure() || --turns < 0) {
            world.dialogs.confirmations = {true};
            return window.reject();
        }
        at(world.runtime.now() + Instant(10ms) * (1 + draw(150)), turn);
        const int kind = draw(static_cast<int>(acts.size()));
        path = (path + ' ' + std::to_string(kind)).substr(path.size() < 60 ? 0 : 3);
        acts[static_cast<std::size_t>(kind)]();
    };
    at(10ms, turn);
    world.runtime.press('Z', 1s, 10h);
    window.exec();
    EXPECT_LT(turns, 0);
    world.runtime.forgetActs();
    EXPECT_THAT(sounding(world.midi.takeUntimed()), IsEmpty());
}
