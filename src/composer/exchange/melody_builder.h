#pragma once

#include "composer/exchange/imported_score.h"
#include "composer/melody/melody.h"

#include <QChar>

namespace imported {

/// The entries of a melody: one voice, ties merged, repeats written out. What cannot be one is
/// added to the score's faults; the entries are of no use then.
std::vector<MelodyEntry> entriesOf(Score& score, QChar decimalSeparator);

/// The fault of a bar, with its place.
QString faultIn(const Bar& bar, const QString& reason);

}  // namespace imported
