#pragma once

#include "composer/library/melody_library.h"
#include "composer/melody/composition.h"
#include "composer/melody/melody_editor.h"
#include "support/test_world.h"

#include <string>
#include <utility>
#include <vector>

using Lines = std::vector<std::string>;

const QString kRoot = QStringLiteral("C:\\Cantavista\\Melodie\\");

/// A library over folders in memory, and the boxes in which it speaks.
struct OpenLibrary {
    TestWorld world;
    MemoryFolders& folders = world.folders;
    Composition composition;
    MelodyEditor editor{composition};
    MelodyLibrary library{world.services(), composition, editor};

    Lines takeLines() { return std::exchange(world.dialogs.lines, {}); }
};
