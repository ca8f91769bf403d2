#pragma once

#include "composer/score/bar_view.h"
#include "composer/staff/sheet_music.h"
#include "composer/staff/sheet_painter.h"

struct Composition;
struct SheetFile;
struct SheetRequest;

/// The sheet of a composition under a title, written in a notation.
MelodySheet sheetOf(const Composition& composition, const QString& title,
                    const score::Notation& notation);

/// A file of it.
SheetFile sheetFileOf(const Composition& composition, const SheetRequest& request);
