#include "composer/melody_sheet.h"

#include "composer/engraved_melody.h"
#include "composer/melody/composition.h"

MelodySheet sheetOf(const Composition& composition, const QString& title) {
    return {title, composition.tempo, engravedSource(composition.melody)};
}
