#pragma once

#include "composer/exchange/melody_import.h"
#include "composer/export/melody_export.h"
#include "composer/library/bookmark_commands.h"
#include "composer/library/floppy.h"
#include "composer/library/melody_library.h"
#include "composer/library/unsaved_melody.h"
#include "composer/melody/composition.h"
#include "composer/melody/melody_editor.h"
#include "composer/playback/playback.h"
#include "composer/playback/range_arrows.h"
#include "core/services.h"

#include <utility>

/// The logic that the composer's window brings together: the composition with everything that
/// changes, plays and stores it.
struct ComposerModel {
    /// `loopRuntime` is the one of the loops of the player and the arrows.
    ComposerModel(const Services& services, Runtime& loopRuntime, Composition& theComposition,
                  PlaybackView& playbackView, RangeView& rangeView, Floppy::BusyPointer busyPointer)
        : composition(theComposition),
          editor(composition),
          playback(loopRuntime, services.funzioniMM, composition, playbackView),
          arrows(loopRuntime, services.funzioniMM, composition, rangeView),
          library(services, composition, editor),
          bookmarks(services.dialogs, composition, editor),
          exporter(services, composition),
          importer(services, composition, editor),
          floppy(services, composition, library, std::move(busyPointer)),
          unsaved(services, composition, editor, library) {}

    Composition& composition;
    MelodyEditor editor;
    Playback playback;
    RangeArrows arrows;
    MelodyLibrary library;
    BookmarkCommands bookmarks;
    MelodyExport exporter;
    MelodyImport importer;
    Floppy floppy;
    UnsavedMelody unsaved;
};
