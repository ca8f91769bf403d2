#include "coherence/stage.h"
#include "composer/frmComposer.h"
#include "composer/frmCopyFromA.h"
#include "composer/library/floppy.h"
#include "composer/library/melody_library.h"
#include "composer/melody/composition.h"
#include "composer/melody/melody_editor.h"

#include <QDir>
#include <QListWidget>

using namespace std::chrono_literals;

namespace {

const QString kRoot = QStringLiteral("C:\\Cantavista\\Melodie\\");

void putExamples(MemoryFolders& folders, const QString& folder) {
    const QDir examples(QStringLiteral(MELODY_EXAMPLES));
    for (const QString& name : examples.entryList({QStringLiteral("*.mel")}, QDir::Files)) {
        QFile file(examples.filePath(name));
        if (file.open(QIODevice::ReadOnly))
            folders.put(folder + name, file.readAll());
    }
}

/// The composer over the example melodies, one of which is open and plays.
struct Composer {
    TestWorld world;
    std::unique_ptr<frmComposer> window;

    Composer() {
        world.openOutput();
        putExamples(world.folders, kRoot + QStringLiteral("Esempi\\"));
        window = std::make_unique<frmComposer>(world.services(), nullptr);
        window->resize(1180, 720);
        world.runtime.at(1ms, [] {});
    }

    WindowDriver user() const { return WindowDriver(*window); }

    void activate(const QString& name) const {
        auto& list = *user().find<QWidget>("Fr2").findChild<QListWidget*>("List1");
        list.setCurrentItem(list.findItems(name, Qt::MatchEndsWith).value(0));
        user().click("cmdEseguiFile");
    }

    /// Opens an example, which then plays, and looks a while later.
    void look(const std::function<void()>& prepare, const Look& look) {
        lookWhileOpen(
            world, *window,
            [this, &prepare] {
                user().trigger("mnuApri");
                activate(QStringLiteral("Esempi"));
                world.runtime.at(world.runtime.now() + 2500ms, prepare);
                activate(QStringLiteral("Amazing Grace"));
            },
            look, [this] { world.dialogs.confirmations.push_back(true); });
    }
};

}  // namespace

void showComposerPlaying(const Look& look) {
    Composer composer;
    composer.look(
        [&composer] {
            composer.user().click("cmdHideFr2");
            composer.user().click("cmdHideBm");
        },
        look);
}

void showComposerLibrary(const Look& look) {
    Composer composer;
    composer.look([] {}, look);
}

void showComposerAllPanels(const Look& look) {
    Composer composer;
    composer.look(
        [&composer] {
            composer.user().click("cmdPlay");
            for (const auto later : {50ms, 1550ms}) {
                composer.world.runtime.at(composer.world.runtime.now() + later,
                                          [&composer] { composer.user().click("lblStep_1"); });
            }
            // A raised note becomes the active one.
            composer.world.runtime.at(composer.world.runtime.now() + 2500ms,
                                      [&composer] { composer.user().click("lb_30"); });
        },
        look);
}

void showCopyFromFloppy(const Look& look) {
    TestWorld world;
    const Services services = world.services();
    Composition composition;
    MelodyEditor editor(composition);
    MelodyLibrary library(services, composition, editor);
    Floppy floppy(services, composition, library, [](bool) {});
    putExamples(world.folders, QStringLiteral("A:\\"));
    world.folders.put(kRoot + QStringLiteral("Mia.mel"), "");
    frmCopyFromA window(floppy, QStringLiteral("..\\Melodie\\"), nullptr);
    lookWhileOpen(
        world, window,
        [&window] {
            auto& list = WindowDriver(window).find<QListWidget>("List1");
            list.item(1)->setSelected(true);
            list.item(3)->setSelected(true);
        },
        look);
}
