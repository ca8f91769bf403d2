#include "composer/composer_window.h"
#include "composer/melody/rhythm.h"
#include "widgets/picture_button.h"

#include <QLineEdit>

#include <gmock/gmock.h>

#include <algorithm>
#include <random>
#include <utility>

using namespace std::chrono_literals;

namespace {

/// The melody, its undo and step mode in their plainest form: whole copies, entries with a name.
struct StepModel {
    struct Entry {
        int id;
        QString note;
        double quarters;

        bool operator==(const Entry&) const = default;
    };
    struct State {
        std::vector<Entry> entries;
        int place = 0;
    };

    std::vector<Entry> entries;
    int place = 0;  ///< of the edit frame
    bool framed = false;
    bool stepping = false;  ///< not after a number was typed: the frame stays
    bool entryGone = false;
    std::vector<std::pair<State, State>> done;
    std::vector<std::pair<State, State>> undone;

    void change(std::vector<Entry> to, int toPlace) {
        done.push_back({{entries, place}, {to, toPlace}});
        undone.clear();
        entries = std::move(to);
        place = toPlace;
    }

    void append(const QString& note, bool tie) {
        auto to = entries;
        if (tie && !to.empty())
            to.back() = {to.back().id, note, to.back().quarters + 1};
        else
            to.push_back({++lastId, note, 1});
        change(to, place);
    }

    /// Where the frame's entry is among these; if it is not there, the one before it.
    int follow(const std::vector<Entry>& to) {
        if (place < 0)
            return place;
        const int id = entries[static_cast<std::size_t>(place)].id;
        const auto found =
            std::find_if(to.begin(), to.end(), [id](const Entry& e) { return e.id == id; });
        entryGone = found == to.end();
        return entryGone ? place - 1 : static_cast<int>(found - to.begin());
    }

    void travel(bool back) {
        auto& from = back ? done : undone;
        if (from.empty())
            return;
        const auto [before, after] = from.back();
        (back ? undone : done).push_back(from.back());
        from.pop_back();
        const State& left = back ? after : before;
        const State& reached = back ? before : after;
        int next = framed ? follow(reached.entries) : 0;
        if (framed && place == left.place && left.place != reached.place)
            next = reached.place;
        entries = reached.entries;
        place = std::max(0, std::min(next, static_cast<int>(entries.size()) - 1));
        framed = framed && !entries.empty();
        stepping = stepping && framed;
    }

    int lastId = 0;
};

using StepModeModel = ComposerWindowTest;

}  // namespace

TEST_F(StepModeModel, EveryControlNamesTheEntryOfTheEditFrame) {
    StepModel model;
    std::mt19937 random(2);
    const auto draw = [&random](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    const auto step = [&](bool forward) {
        const int count = static_cast<int>(model.entries.size());
        if (count == 0)
            return;
        if (!std::exchange(model.stepping, true))
            model.place = -1;
        if (forward)
            model.place = model.place == count - 1 ? 0 : model.place + 1;
        else
            model.place = model.place > 0 ? model.place - 1 : count - 1;
        model.framed = true;
    };
    // Whether the operation leaves the frame's choices as they were.
    const auto operate = [&](int operation) {
        const bool tie = operation == 1;
        auto to = model.entries;
        switch (operation) {
            case 0:
            case 1: {
                // Undo may have brought the tie's button back.
                if (user.find<PictureButton>("cmdAttrNota_2").isChecked() != tie)
                    user.click("cmdAttrNota_2");
                user.click(QStringLiteral("lb_%1").arg(12 + draw(12)));
                const QString note = user.text("lblActNote");
                user.click("cmdInsNota");
                if (!note.isEmpty() && note != QStringLiteral("P"))
                    model.append(note, tie);
                return true;
            }
            case 2:
            case 3:
            case 4:
                user.click(operation == 4 ? "lblStep_0" : "lblStep_1");
                step(operation != 4);
                return false;
            case 5: {
                if (!model.framed)
                    return true;
                user.click("cmdCancNota");
                if (model.entries.size() == 1) {
                    model.change({}, model.place);
                    model.framed = model.stepping = false;
                } else if (model.place >= 0) {
                    to.erase(to.begin() + model.place);
                    model.change(to, model.place - 1);
                }
                return true;
            }
            case 6:
                if (!model.framed || user.text("cmbDurata") == QStringLiteral("na"))
                    return true;
                user.click("cmdInsertNote");
                to.insert(to.begin() + model.place + 1,
                          {++model.lastId, user.text("lblActualNote"),
                           rhythm::ValueNameToDuration(user.text("cmbDurata"), u"1")});
                model.change(to, model.place + 1);
                return true;
            case 7:
                if (!user.enabled("cmdCanc") || model.entries.size() < 2)
                    return true;
                user.click("cmdCanc");
                to.pop_back();
                model.entryGone = false;
                model.change(to, model.framed ? model.follow(to) : model.place);
                return !model.entryGone;
            case 8:
                user.click("cmdPlay");
                model.framed = model.stepping = false;
                return true;
            case 16:
                if (!model.framed)
                    return true;
                user.find<QLineEdit>("lblNini").setFocus();
                user.find<QLineEdit>("lblNini").setText(QStringLiteral("1"));
                user.type(Qt::Key_Return);
                if (std::exchange(model.stepping, false))
                    model.place = 0;
                return true;
            default: {
                const bool back = operation < 13;
                if (!user.enabled(back ? "mnuAnnulla" : "mnuRipeti"))
                    return true;
                const bool disabled = !user.enabled("cmdCanc");
                model.entryGone = false;
                user.trigger(back ? "mnuAnnulla" : "mnuRipeti");
                model.travel(back);
                EXPECT_EQ(!user.enabled("cmdCanc"), disabled && model.framed && !model.entryGone);
                return !model.framed;
            }
        }
    };
    at(100ms, [&] {
        for (int i = 0; i < 1500 && !HasFailure(); ++i) {
            const int operation = draw(17);
            const bool keepsChoices = operate(operation);
            QString names;
            for (const StepModel::Entry& entry : model.entries)
                names += entry.note + QLatin1Char(';');
            EXPECT_EQ(user.text("lblNoteString"), names.right(40)) << i << ": " << operation;
            EXPECT_EQ(user.shown("frmModifica"), model.framed) << i << ": " << operation;
            EXPECT_EQ(user.text("lblNe"),
                      model.framed ? QString::number(model.place + 1) : QString())
                << i << ": " << operation;
            if (!model.framed || model.place < 0)
                continue;
            const auto& [id, note, quarters] = model.entries[static_cast<std::size_t>(model.place)];
            const QString value = rhythm::DurationToValueName(quarters);
            const QString staff = user.find<QWidget>("Regolo").accessibleDescription();
            EXPECT_TRUE(staff.contains(QStringLiteral("voce %1:").arg(model.place + 1))) << i;
            EXPECT_EQ(user.text("lblPnn"), note) << i << ": " << operation;
            if (keepsChoices)
                continue;
            EXPECT_EQ(user.text("lblActNote"), note) << i << ": " << operation;
            EXPECT_EQ(user.text("lblActualNote"), note) << i << ": " << operation;
            EXPECT_EQ(user.text("cmbDurata"), value) << i << ": " << operation;
            EXPECT_EQ(user.enabled("cmdModifica_0"), value != QStringLiteral("na")) << i;
        }
    });
    runUntil(10h);
}
