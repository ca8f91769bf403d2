#include "composer/library/unsaved_melody.h"

#include "library/library_fixture.h"

#include <map>
#include <memory>
#include <random>
#include <set>

using namespace std::chrono_literals;

namespace {

const QString kProgramFolder = QStringLiteral("C:\\Cantavista\\");

/// A composer without its window, over files that outlive it.
struct Composer {
    TestWorld world;
    Composition composition;
    MelodyEditor editor{composition};
    MelodyLibrary library{world.services(), composition, editor};
    std::unique_ptr<UnsavedMelody> unsaved;

    explicit Composer(const MemoryFolders& folders) {
        world.folders = folders;
        unsaved = std::make_unique<UnsavedMelody>(world.services(), composition, editor, library);
        library.fill();
    }

    QByteArray bytes() const { return library.melodyBytes().value_or(QByteArray()); }
    bool empty() const { return composition.melody.empty(); }
    void wait() { world.runtime.blockUntil(world.runtime.now() + 2s); }

    /// The copies on the disk in the order in which they are offered.
    std::vector<QByteArray> copies() const {
        std::multimap<QDateTime, QByteArray> found;
        for (const QString& name :
             world.folders.files(kProgramFolder, QStringLiteral("Melodia non salvata*")))
            found.emplace(world.folders.lastChanged(kProgramFolder + name),
                          world.folders.at(kProgramFolder + name));
        std::vector<QByteArray> newestFirst;
        for (auto copy = found.rbegin(); copy != found.rend(); ++copy)
            newestFirst.push_back(copy->second);
        return newestFirst;
    }
};

/// A melody that exists, as plainly as that can be said.
struct Known {
    std::set<QByteArray> states;  ///< that it had since it was saved or taken up
    QByteArray last;
    std::optional<QByteArray> saved;
};

/// What a user may do, at random, and what must be there afterwards.
class Model {
public:
    explicit Model(unsigned seed) : random_(seed) {
        MemoryFolders folders;
        for (const char* name : {"A", "B", "C"})
            folders.put(kRoot + name + ".mel", QByteArray("60;\r\n1;\r\nn;\r\n 60 \r\n 0 \r\n"));
        begin(folders);
    }

    void step() {
        switch (draw(10)) {
            case 0:
                open();
                break;
            case 1:
                save();
                break;
            case 2:
                goBack();
                break;
            case 3:
                end();
                break;
            case 4:
                other();
                break;
            case 5:
                setTempo();
                break;
            default:
                type();
        }
        check();
    }

private:
    int draw(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }

    /// The next run of the program, with an answer to every question.
    void begin(const MemoryFolders& folders) {
        composer_ = std::make_unique<Composer>(folders);
        known_ = {};
        known_[0] = {{}, {}, composer_->bytes()};
        const auto offered = composer_->copies();
        ASSERT_EQ(offered.size(), lost_.size()) << "a copy is missing, or there is one too many";
        auto& answers = composer_->world.dialogs.confirmations;
        while (answers.size() < offered.size() && (answers.empty() || !answers.back()))
            answers.push_back(draw(3) == 0);
        const std::size_t asked = answers.size();
        const bool taken = asked > 0 && answers.back();
        composer_->unsaved->offer();
        EXPECT_EQ(composer_->world.dialogs.lines.size(), asked);
        for (std::size_t i = 0; i < asked; ++i)
            takeLost(offered[i]);
        if (taken) {
            EXPECT_EQ(composer_->bytes(), offered[asked - 1]);
            known_[composer_->composition.document] = {{composer_->bytes()}, {}, {}};
        }
        check();
    }

    void takeLost(const QByteArray& bytes) {
        const auto found = std::find_if(lost_.begin(), lost_.end(), [&bytes](const Known& melody) {
            return melody.states.contains(bytes);
        });
        ASSERT_NE(found, lost_.end()) << "nobody lost " << bytes.toStdString();
        lost_.erase(found);
    }

    Known& current() { return known_[composer_->composition.document]; }

    void type() {
        composer_->composition.activeNote = static_cast<pitch::NoteNumber>(36 + draw(60));
        composer_->editor.insertNote();
        composer_->unsaved->changed();
    }

    void setTempo() {
        composer_->composition.tempo = 20 + draw(200);
        composer_->unsaved->changed();
    }

    /// Perhaps before the copy was due.
    void open() {
        if (draw(2) == 0) {
            type();
            current().states.insert(composer_->bytes());
            current().last = composer_->bytes();
        }
        composer_->unsaved->keep();
        composer_->library.activate(draw(3));
        current() = {{}, {}, composer_->bytes()};
    }

    void save() {
        auto& dialogs = composer_->world.dialogs;
        dialogs.inputs = {QStringLiteral("D")};
        dialogs.confirmations = {true};
        if (composer_->library.save(-1)) {
            composer_->unsaved->forget();
            current() = {{}, {}, composer_->bytes()};
        }
    }

    void goBack() {
        for (int times = draw(4); times > 0; --times) {
            draw(3) == 0 ? composer_->editor.redo() : composer_->editor.undo();
            composer_->unsaved->changed();
        }
    }

    /// Another program finds only what nobody has.
    void other() {
        const auto before = composer_->copies().size();
        TestWorld world;
        world.folders = composer_->world.folders;
        world.dialogs.confirmations.assign(lost_.size(), false);
        Composition composition;
        MelodyEditor editor(composition);
        const MelodyLibrary library(world.services(), composition, editor);
        UnsavedMelody(world.services(), composition, editor, library).offer();
        EXPECT_EQ(world.dialogs.lines.size(), lost_.size());
        composer_->world.folders.takeFiles(world.folders);
        EXPECT_EQ(composer_->copies().size(), before - lost_.size());
        lost_.clear();
    }

    /// The window is closed, with the answer that it asks for, or the program is killed.
    void end() {
        const bool killed = draw(2) == 0;
        const bool asks = composer_->editor.modified();
        if (!killed && asks && draw(2) == 0)
            return;  // "No": the window stays
        const int here = composer_->composition.document;
        if (!killed) {
            composer_->unsaved->forget();
            known_.erase(here);
        }
        for (const auto& [document, melody] : known_) {
            if (needsCopy(document) || (mayHaveCopy(document) && hasCopy(melody)))
                lost_.push_back(melody);
        }
        MemoryFolders left = composer_->world.folders.afterCrash();
        if (!killed) {
            composer_->unsaved.reset();
            left = composer_->world.folders;
        }
        begin(left);
    }

    bool needsCopy(int document) { return !known_[document].last.isEmpty(); }
    bool mayHaveCopy(int document) { return !known_[document].states.empty(); }
    bool hasCopy(const Known& melody) const {
        const auto copies = composer_->copies();
        return std::any_of(copies.begin(), copies.end(),
                           [&melody](const auto& copy) { return melody.states.contains(copy); });
    }

    /// Two seconds later every melody that is not saved has a copy.
    void check() {
        Known& here = current();
        const QByteArray bytes = composer_->bytes();
        if (!composer_->empty()) {
            const bool differs = bytes != here.saved;
            here.states.insert(bytes);
            here.last = differs ? bytes : QByteArray();
            if (differs) {
                EXPECT_TRUE(composer_->editor.modified()) << "closing would not ask";
            }
        } else {
            here.last.clear();
        }
        composer_->wait();
        const auto copies = composer_->copies();
        const auto isThere = [&copies](const Known& melody, bool exactly) {
            return std::any_of(copies.begin(), copies.end(), [&](const QByteArray& copy) {
                return exactly ? copy == melody.last : melody.states.contains(copy);
            });
        };
        if (!here.last.isEmpty()) {
            EXPECT_TRUE(isThere(here, true)) << "no copy of " << bytes.toStdString();
        }
        for (const auto& [document, melody] : known_) {
            if (!melody.last.isEmpty()) {
                EXPECT_TRUE(isThere(melody, false)) << melody.last.toStdString();
            }
        }
        for (const Known& melody : lost_)
            EXPECT_TRUE(isThere(melody, false)) << melody.last.toStdString();
    }

    std::mt19937 random_;
    std::unique_ptr<Composer> composer_;
    std::map<int, Known> known_;  ///< by document
    std::vector<Known> lost_;     ///< of earlier runs, still to be offered
};

TEST(UnsavedMelodyModel, NothingIsEverLostWithoutAnAnswer) {
    for (unsigned seed = 1; seed <= 60 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        Model model(seed);
        for (int i = 0; i < 80 && !testing::Test::HasFailure(); ++i)
            model.step();
    }
}

}  // namespace
