#pragma once

#include "composer/notation/staff_entry.h"

#include <QString>

/// An entry of the melody as screen readers say it.
namespace staff_entry {

/// "Mi 4, 1/8, staccato"; a tie is "2/4 + 1/8", a dotted value "1/4 col punto".
QString inWords(const Entry& entry);

}  // namespace staff_entry
