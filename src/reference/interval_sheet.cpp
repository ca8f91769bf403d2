#include "reference/interval_sheet.h"

#include "core/intervals.h"
#include "platform/user_text.h"
#include "widgets/appearance.h"

#include <QGridLayout>
#include <QLabel>

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
QWidget* makeCell(int semitones, Group group, QWidget* parent) {
    auto* cell = new QWidget(parent);
    auto* names = new QHBoxLayout(cell);
    names->setContentsMargins(kColumnSpacing, kRowPadding, 0, kRowPadding);
    names->setSpacing(kNameSpacing);
    for (const Interval& interval : intervals::kAll) {
        if (interval.semitones != semitones || interval.group != group)
            continue;
        auto* name = new QLabel(intervals::nameOf(interval), cell);
        name->setAccessibleName(QStringLiteral("%1: %2").arg(
            intervals::inWords(interval), intervals::semitonesInWords(semitones)));
        appearance::enlargeText(*name, kNameScale, QFont::Normal);
        name->setMinimumWidth(
            name->fontMetrics().horizontalAdvance(QStringLiteral("0 ") + UserText::tr("Gius")));
        names->addWidget(name);
    }
    names->addStretch(1);
    return cell;
}

}  // namespace

IntervalSheet::IntervalSheet(QWidget* parent) : Sheet(parent) {
    auto* page = new QVBoxLayout;
    setPage(page);
    page->setSpacing(12);
    auto* table = new QGridLayout;
    table->setHorizontalSpacing(0);
    table->setVerticalSpacing(0);
    table->setRowMinimumHeight(0, kHeadingHeight);
    page->addLayout(table, 1);
    addHeadings(*table);
    for (int semitones = 0; semitones <= intervals::kLargest; ++semitones)
        addRow(*table, semitones);

    auto* key = new QLabel(intervals::abbreviationsInWords(), this);
    key->setIndent(kColumnSpacing);
    page->addWidget(key);
}

void IntervalSheet::addHeadings(QGridLayout& table) {
    const auto add = [this, &table](const QString& text, int column) {
        auto* heading = new QLabel(text, this);
        heading->setIndent(kColumnSpacing);
        heading->setContentsMargins(0, 0, kColumnSpacing / 2, 0);
        appearance::enlargeText(*heading, 1, QFont::Bold);
        table.addWidget(heading, 0, column, Qt::AlignLeft | Qt::AlignVCenter);
        table.setColumnStretch(column, column == 0 ? 0 : 1);
    };
    add(UserText::tr("Semit."), 0);
    int column = 0;
    for (const char* heading : kHeadings)
        add(UserText::tr(heading), ++column);
}

/// Every other row lies on a band of its own colour.
void IntervalSheet::addRow(QGridLayout& table, int semitones) {
    const int row = semitones + 1;
    table.setRowStretch(row, 1);
    if (semitones % 2 == 0) {
        auto* band = new QWidget(this);
        band->setAutoFillBackground(true);
        band->setBackgroundRole(QPalette::AlternateBase);
        table.addWidget(band, row, 0, 1, -1);
    }
    auto* size = new QLabel(QString::number(semitones), this);
    size->setIndent(kColumnSpacing);
    appearance::enlargeText(*size, kNameScale, QFont::Normal);
    table.addWidget(size, row, 0);
    for (const Group group : {Group::Consonant, Group::Dissonant, Group::ConsonantInMelody}) {
        QWidget* cell = makeCell(semitones, group, this);
        table.addWidget(cell, row, 1 + static_cast<int>(group));
    }
}
