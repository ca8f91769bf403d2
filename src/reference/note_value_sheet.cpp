#include "reference/note_value_sheet.h"

#include "core/note_values.h"
#include "platform/user_text.h"
#include "reference/engraved_pictures.h"
#include "reference/value_words.h"
#include "widgets/appearance.h"
#include "widgets/cell_table.h"

#include <QGridLayout>
#include <QLabel>

namespace {

enum Column { kNote, kName, kOtherName, kFraction, kRest };

constexpr double kNameScale = 1.15;
constexpr std::array<const char*, 5> kHeadings{
    QT_TRANSLATE_NOOP("UserText", "Nota"), QT_TRANSLATE_NOOP("UserText", "Nome"), "",
    QT_TRANSLATE_NOOP("UserText", "Valore"), QT_TRANSLATE_NOOP("UserText", "Pausa")};

QLabel* text(const char* words, QWidget* parent, double scale, QFont::Weight weight) {
    auto* label = new QLabel(*words ? UserText::tr(words) : QString(), parent);
    appearance::enlargeText(*label, scale, weight);
    return label;
}

Qt::Alignment placeIn(Column column) {
    const bool words = column == kName || column == kOtherName;
    return Qt::AlignVCenter | (words ? Qt::AlignLeft : Qt::AlignHCenter);
}

}  // namespace

NoteValueSheet::NoteValueSheet(QWidget* parent) : Sheet(parent) {
    auto* page = new QVBoxLayout;
    setPage(page);
    auto* table = new CellTable(static_cast<int>(kHeadings.size()), kName, this);
    table->setAccessibleName(UserText::tr("Tabella dei valori"));
    page->addWidget(table);
    table->grid().setHorizontalSpacing(24);
    table->grid().setVerticalSpacing(0);
    table->grid().setColumnStretch(kName, 1);
    table->grid().setColumnStretch(kOtherName, 1);

    for (std::size_t i = 0; i < kHeadings.size(); ++i) {
        const auto column = static_cast<Column>(i);
        QLabel* heading = text(kHeadings[i], table, 1, QFont::Normal);
        if (column == kOtherName)
            heading->setAccessibleName(UserText::tr("Altro nome"));
        table->addHeading(*heading, column, placeIn(column));
    }
    int row = 0;
    for (const note_values::NoteValue& value : note_values::kAll) {
        table->grid().setRowStretch(CellTable::gridRow(row), 1);
        auto* note = new ValuePicture(ValuePicture::Kind::Note, value.duration, table);
        note->setAccessibleName(noteSignInWords(value));
        auto* rest = new ValuePicture(ValuePicture::Kind::Rest, value.duration, table);
        rest->setAccessibleName(restSignInWords(value));
        const auto place = [table, row](QWidget* cell, Column column) {
            table->addCell(*cell, row, column, placeIn(column));
        };
        place(note, kNote);
        place(text(value.name, table, kNameScale, QFont::Bold), kName);
        place(text(value.otherName, table, 1, QFont::Normal), kOtherName);
        place(text(value.fraction, table, kNameScale, QFont::Normal), kFraction);
        place(rest, kRest);
        ++row;
    }
}
