#pragma once

#include "composer/notation/system_layout.h"

class Melody;
struct MelodyEntry;

/// An entry as it is engraved.
staff_entry::Entry staffEntryOf(const MelodyEntry& entry);

/// The entries of a melody as they are engraved, without bars unless they are asked for. The melody
/// must outlive what it is used for.
notation::Source engravedSource(const Melody& melody,
                                const score::Notation& notation = score::kWithoutBars);
