#pragma once

#include "widgets/sheet.h"

class CellTable;

/// The page of the intervals: a row for each number of semitones, a column for each group.
class IntervalSheet : public Sheet {
    Q_OBJECT

public:
    explicit IntervalSheet(QWidget* parent = nullptr);

private:
    void addHeadings(CellTable& table);
    void addRow(CellTable& table, int semitones);
};
