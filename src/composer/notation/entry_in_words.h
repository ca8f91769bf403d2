#pragma once

#include "composer/notation/staff_entry.h"

#include <QString>

/// An entry of the melody as screen readers say it.
namespace staff_entry {

/// "Mi 4, croma, staccato"; the duration also as "minima col punto", "minima legata a croma" or
/// "terzina di croma".
QString inWords(const Entry& entry);

}  // namespace staff_entry
