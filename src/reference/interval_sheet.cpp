#include "reference/interval_sheet.h"

#include "core/intervals.h"
#include "platform/user_text.h"
#include "widgets/appearance.h"
#include "widgets/cell_table.h"

#include <QGridLayout>
#include <QLabel>
#include <QStringList>

namespace {

using intervals::Group;
using intervals::Interval;

/// A column for each group.
constexpr std::array<const char*, 3> kHeadings{
    QT_TRANSLATE_NOOP("UserText", "Intervalli consonanti"),
    QT_TRANSLATE_NOOP("UserText", "Intervalli dissonanti"),
    QT_TRANSLATE_NOOP("UserText", "Consonanti se l'intervallo è melodico")};

constexpr int kNameSpacing = 20;
constexpr int kColumnSpacing = 16;
constexpr int kHeadingHeight = 28;
constexpr int kRowPadding = 3;  ///< above and below a row's text
constexpr double kNameScale = 1.15;

/// The names of one group and size, side by side.
QWidget& makeCell(int semitones, Group group, CellTable& parent) {
    auto* cell = new QWidget(&parent);
    auto* names = new QHBoxLayout(cell);
    names->setContentsMargins(kColumnSpacing, kRowPadding, 0, kRowPadding);
    names->setSpacing(kNameSpacing);
    QStringList words;
    for (const Interval& interval : intervals::kAll) {
        if (interval.semitones != semitones || interval.group != group)
            continue;
        auto* name = new QLabel(intervals::nameOf(interval), cell);
        words += intervals::inWords(interval);
        appearance::enlargeText(*name, kNameScale, QFont::Normal);
        name->setMinimumWidth(
            name->fontMetrics().horizontalAdvance(QStringLiteral("0 ") + UserText::tr("Gius")));
        names->addWidget(name);
    }
    names->addStretch(1);
    cell->setAccessibleName(words.join(UserText::tr(", ")));
    return *cell;
}

}  // namespace

IntervalSheet::IntervalSheet(QWidget* parent) : Sheet(parent) {
    auto* page = new QVBoxLayout;
    setPage(page);
    page->setSpacing(12);
    auto* table = new CellTable(1 + static_cast<int>(kHeadings.size()), 0, this);
    table->setAccessibleName(UserText::tr("Tabella degli intervalli"));
    table->grid().setHorizontalSpacing(0);
    table->grid().setVerticalSpacing(0);
    table->grid().setRowMinimumHeight(0, kHeadingHeight);
    page->addWidget(table, 1);
    addHeadings(*table);
    for (int semitones = 0; semitones <= intervals::kLargest; ++semitones)
        addRow(*table, semitones);

    auto* key = new QLabel(intervals::abbreviationsInWords(), this);
    key->setIndent(kColumnSpacing);
    page->addWidget(key);
}

void IntervalSheet::addHeadings(CellTable& table) {
    const auto add = [&table](const QString& text, int column) {
        auto* heading = new QLabel(text, &table);
        heading->setIndent(kColumnSpacing);
        heading->setContentsMargins(0, 0, kColumnSpacing / 2, 0);
        appearance::enlargeText(*heading, 1, QFont::Bold);
        table.addHeading(*heading, column, Qt::AlignLeft | Qt::AlignVCenter);
        table.grid().setColumnStretch(column, column == 0 ? 0 : 1);
        return heading;
    };
    add(UserText::tr("Semit."), 0)->setAccessibleName(UserText::tr("Semitoni"));
    int column = 0;
    for (const char* heading : kHeadings)
        add(UserText::tr(heading), ++column);
}

/// Every other row lies on a band of its own colour.
void IntervalSheet::addRow(CellTable& table, int semitones) {
    table.grid().setRowStretch(CellTable::gridRow(semitones), 1);
    if (semitones % 2 == 0)
        table.addBand(semitones);
    auto* size = new QLabel(QString::number(semitones), &table);
    size->setAccessibleName(intervals::semitonesInWords(semitones));
    size->setIndent(kColumnSpacing);
    appearance::enlargeText(*size, kNameScale, QFont::Normal);
    table.addCell(*size, semitones, 0);
    for (const Group group : {Group::Consonant, Group::Dissonant, Group::ConsonantInMelody})
        table.addCell(makeCell(semitones, group, table), semitones, 1 + static_cast<int>(group));
}
