#pragma once

#include "composer/staff/sheet_painter.h"

struct Composition;

/// The sheet of a composition, under a title.
MelodySheet sheetOf(const Composition& composition, const QString& title);
