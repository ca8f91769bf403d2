#include "composer/composer_window.h"
#include "composer/library/bookmark_commands.h"
#include "composer/library/melody_library.h"
#include "widgets/picture_button.h"

#include <QLineEdit>
#include <QListWidget>

#include <gmock/gmock.h>

#include <random>

using namespace std::chrono_literals;

namespace {

/// The window, and beside it the composer's logic in a world of its own: whatever is done to one is
/// done to the other.
struct ComposerWalk : ComposerWindowTest {
    TestWorld twin;
    Composition logic;
    MelodyEditor editor{logic};
    MelodyLibrary library{twin.services(), logic, editor};
    BookmarkCommands bookmarks{twin.dialogs, logic, editor};
    std::mt19937 random{2};

    ComposerWalk() {
        for (TestWorld* each : {&world, &twin}) {
            for (const char* name : {"Alba", "Sera"})
                each->folders.put(library.MelodyFolder() + name + ".mel",
                                  "60;62;00;\r\n1;0,75;2;\r\nn;s;p;\r\n 240 \r\n 16 \r\n"
                                  "1 \xF7 3 \xF7 Tutto;2 \xF7 3 \xF7 b;\r\n");
        }
        library.fill();
        twin.openOutput();
        logic.instrument = twin.funzioniMM.currentInstrument();
    }

    int draw(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }
    void leaveStep() { logic.step.leave(); }
    /// What the entry that was stepped to makes the active note.
    void takeEntry() {
        if (logic.step.frameOpen && logic.melody.has(logic.step.index))
            logic.activeNote = logic.melody.entry(logic.step.index).noteNumber();
    }

    /// Whether the edit frame shows the choices of its entry.
    bool operate(int operation) {
        const EditChoice choice{user.text("cmbDurata"), user.text("cmbPer"),
                                user.text("cmbAttributi")};
        StepMode& step = logic.step;
        switch (operation) {
            case 0:
            case 1:
            case 2: {
                const int button = draw(6);
                if (operation == 0) {
                    user.click(QStringLiteral("cmdAttrNota_%1").arg(button));
                    logic.settings.clickAttribute(static_cast<std::uint8_t>(button));
                }
                const int key = draw(60);
                user.click(QStringLiteral("lb_%1").arg(key));
                editor.chooseActiveNote(static_cast<pitch::NoteNumber>(36 + key));
                user.click("cmdInsNota");
                editor.insertNote();
                return false;
            }
            case 3:
            case 4:
            case 5: {
                const bool forward = operation != 3;
                user.click(forward ? "lblStep_1" : "lblStep_0");
                if (logic.melody.empty())
                    return false;
                step.step(forward ? StepMode::Direction::Forward : StepMode::Direction::Backward,
                          logic.range);
                step.frameOpen = true;
                takeEntry();
                return true;
            }
            case 6:
                user.click("cmdCancNota");
                if (step.frameOpen)
                    editor.deleteAtStep();
                return false;
            case 7:
                user.click("cmdInsertNote");
                if (step.frameOpen)
                    editor.insertAfter(choice);
                return false;
            case 8:
                // The player leaves another number, or none, until the next step.
                if (!step.frameOpen || !user.enabled("cmdModifica_0"))
                    return false;
                editor.modify(choice);
                user.click("cmdModifica_0");
                return operate(4);
            case 9:
                if (user.enabled("cmdCanc") && editor.deleteLast().stepEntryGone)
                    takeEntry();
                user.click("cmdCanc");
                return false;
            case 10:
                // While the melody plays nothing takes a bookmark away or another one up.
                if (!logic.melody.empty()) {
                    at(world.runtime.now(), [this] {
                        user.find<QListWidget>("lstBookMark").setCurrentRow(1);
                        for (const char* button : {"cmdPlayBm", "cmdDelBm", "lblStep_1"})
                            user.click(button);
                        EXPECT_FALSE(user.enabled("mnuAnnulla") || user.enabled("mnuRipeti"));
                    });
                }
                user.click("cmdPlay");
                leaveStep();
                return false;
            case 11: {
                const bool isStart = draw(2) == 0;
                auto& box = user.find<QLineEdit>(isStart ? "lblNini" : "lblNfine");
                const QString number = QString::number(draw(9));
                box.setFocus();
                box.setText(number);
                user.type(Qt::Key_Return);
                isStart ? editor.validateStart(number) : editor.validateEnd(number);
                return false;
            }
            case 12: {
                user.trigger("mnuApri");
                const int row = draw(2);
                user.find<QListWidget>("List1").setCurrentRow(row);
                user.click("cmdEseguiFile");
                library.activate(row);
                leaveStep();
                return false;
            }
            case 13:
                world.dialogs.inputs = twin.dialogs.inputs = {QStringLiteral("Sera")};
                world.dialogs.confirmations = twin.dialogs.confirmations = {true};
                user.find<QListWidget>("List1").clearSelection();
                user.trigger("mnuSalva");
                library.save(-1);
                return false;
            case 14: {
                const int row = draw(static_cast<int>(logic.bookmarks.items().size()) + 1) - 1;
                if (!user.shown("frBookMark"))
                    return false;
                user.find<QListWidget>("lstBookMark").setCurrentRow(row);
                const int button = draw(3);
                const bool plays = button == 0 && bookmarks.activate(row);
                button == 1 ? bookmarks.modify(row) : button == 2 && bookmarks.remove(row);
                user.click(std::array{"cmdPlayBm", "cmdModBm", "cmdDelBm"}.at(
                    static_cast<std::size_t>(button)));
                if (plays)
                    leaveStep();
                return false;
            }
            default: {
                const bool back = operation < 18;
                user.trigger(back ? "mnuAnnulla" : "mnuRipeti");
                if (!(back ? editor.canUndo() : editor.canRedo()))
                    return false;
                back ? editor.undo() : editor.redo();
                twin.funzioniMM.chooseInstrument(logic.instrument);
                takeEntry();
                return true;
            }
        }
    }

    QStringList shown() {
        QStringList bookmarks;
        const auto& list = user.find<QListWidget>("lstBookMark");
        for (int i = 0; i < list.count(); ++i)
            bookmarks << list.item(i)->text();
        QStringList attributes;
        for (int i = 0; i < 6; ++i)
            attributes << QString::number(
                user.find<PictureButton>(QStringLiteral("cmdAttrNota_%1").arg(i)).isChecked());
        return {user.text("lblNoteString"),
                user.text("lblNt"),
                user.text("lblNini"),
                user.text("lblNfine"),
                user.text("lblNome"),
                user.text("lblNe"),
                user.text("lblPnn"),
                bookmarks.join(u'|'),
                attributes.join(QString()),
                QString::number(user.shown("frmModifica")),
                QString::number(user.enabled("mnuAnnulla")),
                QString::number(user.enabled("mnuRipeti")),
                QString::fromUtf8(world.folders.at(library.MelodyFolder() + "Alba.mel") +
                                  world.folders.at(library.MelodyFolder() + "Sera.mel"))};
    }
    QStringList wanted() {
        const Melody& melody = logic.melody;
        const StepMode& step = logic.step;
        const auto number = [&melody](const QString& text) {
            return melody.empty() ? QString() : text;
        };
        const bool onEntry = step.frameOpen && melody.has(step.index);
        QString attributes = "000000";
        if (logic.settings.attribute() < 6)
            attributes[logic.settings.attribute()] = '1';
        return {melody.lastNames(40),
                number(QString::number(melody.EntryCount())),
                number(logic.range.startBox()),
                number(logic.range.endBox()),
                logic.name,
                step.frameOpen ? QString::number(step.index + 1) : QString(),
                onEntry ? pitch::NoteName(melody.entry(step.index).noteNumber()) : QString(),
                logic.bookmarks.items().join(u'|'),
                attributes,
                QString::number(step.frameOpen),
                QString::number(editor.canUndo()),
                QString::number(editor.canRedo()),
                QString::fromUtf8(twin.folders.at(library.MelodyFolder() + "Alba.mel") +
                                  twin.folders.at(library.MelodyFolder() + "Sera.mel"))};
    }
};

}  // namespace

TEST_F(ComposerWalk, ShowsWhatItsLogicHolds) {
    at(100ms, [&] {
        for (int i = 0; i < 600 && !HasFailure(); ++i) {
            const int operation = draw(20);
            const bool showsEntry = operate(operation);
            ASSERT_EQ(shown(), wanted()) << i << ": " << operation;
            const StepMode& step = logic.step;
            if (!showsEntry || !step.frameOpen || !logic.melody.has(step.index))
                continue;
            const StepEntry entry = StepEntry::of(logic.melody.entry(step.index));
            EXPECT_EQ(user.text("lblActualNote"), entry.noteName) << i << ": " << operation;
            EXPECT_EQ(user.text("cmbDurata"), entry.valueName) << i << ": " << operation;
            EXPECT_EQ(user.text("cmbAttributi"), entry.letter) << i << ": " << operation;
            EXPECT_EQ(user.enabled("cmdModifica_0"), entry.canModify) << i << ": " << operation;
            EXPECT_TRUE(user.find<QWidget>("Regolo").accessibleDescription().contains(
                QStringLiteral("voce %1:").arg(step.index + 1)))
                << i << ": " << operation;
        }
    });
    runUntil(1000h);
}
