#include "composer/library/unsaved_melody.h"

#include "library/library_fixture.h"

#include <QMap>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <random>

using namespace std::chrono_literals;

namespace {

const QString kProgramFolder = QStringLiteral("C:\\Cantavista\\");

/// A composer without its window, over files that outlive it.
struct Composer : OpenLibrary {
    std::unique_ptr<UnsavedMelody> unsaved;

    explicit Composer(const MemoryFolders& files) {
        folders = files;
        unsaved = std::make_unique<UnsavedMelody>(world.services(), composition, editor, library);
        library.fill();
    }

    QByteArray bytes() const { return library.melodyBytes().value_or(QByteArray()); }

    /// The copies on the disk in the order in which they are offered.
    QList<QByteArray> copies() const {
        QMap<qint64, QByteArray> found;
        for (const QString& name :
             world.folders.files(kProgramFolder, QStringLiteral("Melodia non salvata*"))) {
            const QString path = kProgramFolder + name;
            found[-world.folders.lastChanged(path).toMSecsSinceEpoch()] = world.folders.at(path);
        }
        return found.values();
    }
};

/// What a user may do, at random, and which melodies must be on the disk afterwards.
class Model {
public:
    explicit Model(unsigned seed) : random_(seed) {
        MemoryFolders folders;
        for (const char* name : {"A", "B", "C"})
            folders.put(kRoot + name + ".mel", QByteArray("60;\r\n1;\r\nn;\r\n 60 \r\n 0 \r\n"));
        begin(folders);
    }

    void step() {
        using Act = void (Model::*)();
        constexpr std::array<Act, 10> kActs{
            &Model::open,     &Model::save,       &Model::goBack, &Model::end,  &Model::other,
            &Model::setTempo, &Model::typeInVain, &Model::type,   &Model::type, &Model::type};
        (this->*kActs[random_() % kActs.size()])();
        check();
    }

private:
    int draw(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
    int document() const { return composer_->composition.document; }

    /// The next run of the program, in which some copies are refused and then one is taken.
    void begin(const MemoryFolders& folders) {
        composer_ = std::make_unique<Composer>(folders);
        kept_ = {};
        saved_ = {{0, composer_->bytes()}};
        const auto offered = composer_->copies();
        const auto count = static_cast<int>(offered.size());
        const int refused = draw(count + 1);
        auto& dialogs = composer_->world.dialogs;
        dialogs.confirmations.assign(static_cast<std::size_t>(refused), false);
        dialogs.confirmations.push_back(true);
        composer_->unsaved->offer();
        const int asked = std::min(refused + 1, count);
        EXPECT_EQ(static_cast<int>(dialogs.lines.size()), asked);
        for (int i = 0; i < asked; ++i)
            EXPECT_TRUE(lost_.removeOne(offered[i])) << "nobody lost it";
        if (refused < count) {
            EXPECT_EQ(composer_->bytes(), offered[refused]);
        }
        check();
    }

    void type() {
        composer_->composition.activeNote = static_cast<pitch::NoteNumber>(36 + draw(60));
        composer_->editor.insertNote();
        composer_->unsaved->changed();
    }

    /// The disk is full for so long that a copy fails.
    void typeInVain() {
        auto& world = composer_->world;
        world.folders.writeFailure = {file_error::kDiskFull, {}};
        type();
        world.runtime.blockUntil(world.runtime.now() + 2s);
        world.folders.writeFailure = {};
    }

    void setTempo() {
        composer_->composition.tempo = 20 + draw(200);
        composer_->unsaved->changed();
    }

    /// Perhaps before the copy was due.
    void open() {
        if (draw(2) == 0) {
            type();
            kept_[document()] = composer_->bytes();
        }
        composer_->unsaved->keep();
        composer_->library.activate(draw(3));
        saved_[document()] = composer_->bytes();
    }

    void save() {
        composer_->world.dialogs.inputs = {QStringLiteral("D")};
        composer_->world.dialogs.confirmations = {true};
        if (composer_->library.save(-1)) {
            composer_->unsaved->forget();
            saved_[document()] = composer_->bytes();
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
        Composer other(composer_->world.folders);
        other.world.dialogs.confirmations.assign(static_cast<std::size_t>(lost_.size()), false);
        other.unsaved->offer();
        EXPECT_EQ(static_cast<qsizetype>(other.world.dialogs.lines.size()), lost_.size());
        composer_->world.folders.takeFiles(other.world.folders);
        lost_.clear();
    }

    /// The window is closed, with the answer that it asks for, or the program ends or is killed.
    void end() {
        const bool killed = draw(3) == 0;
        if (!killed && draw(2) == 0) {
            type();
            kept_[document()] = composer_->bytes();
        } else if (!killed) {
            composer_->unsaved->forget();
            kept_.erase(document());
        }
        lost_ = wantedCopies();
        const MemoryFolders& folders = composer_->world.folders;
        if (killed)
            return begin(folders.afterCrash());
        composer_->unsaved.reset();
        begin(folders);
    }

    QList<QByteArray> wantedCopies() const {
        QList<QByteArray> wanted = lost_;
        for (const auto& [document, bytes] : kept_)
            wanted << bytes;
        std::sort(wanted.begin(), wanted.end());
        return wanted;
    }

    /// Two seconds later every melody that is not saved has a copy, an emptied one as it was last.
    void check() {
        const QByteArray bytes = composer_->bytes();
        const bool empty = composer_->composition.melody.empty();
        const bool modified = composer_->editor.modified();
        EXPECT_TRUE(modified || empty || bytes == saved_[document()]) << "closing would not ask";
        if (!modified)
            kept_.erase(document());
        else if (!empty)
            kept_[document()] = bytes;
        auto& runtime = composer_->world.runtime;
        runtime.blockUntil(runtime.now() + 2s);
        auto copies = composer_->copies();
        std::sort(copies.begin(), copies.end());
        EXPECT_EQ(copies, wantedCopies());
    }

    std::mt19937 random_;
    std::unique_ptr<Composer> composer_;
    std::map<int, QByteArray> saved_;  ///< by document
    std::map<int, QByteArray> kept_;   ///< what has a copy, by document
    QList<QByteArray> lost_;           ///< in earlier runs, still to be offered
};

TEST(UnsavedMelodyModel, NothingIsEverLostWithoutAnAnswer) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        Model model(seed);
        for (int i = 0; i < 80 && !testing::Test::HasFailure(); ++i)
            model.step();
    }
}

}  // namespace
