#pragma once

#include "widgets/sheet.h"

/// The page of the note values: each note with its names, its value and its rest.
class NoteValueSheet : public Sheet {
    Q_OBJECT

public:
    explicit NoteValueSheet(QWidget* parent = nullptr);
};
