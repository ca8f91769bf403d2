#include "reference/note_value_sheet.h"

#include "core/note_values.h"
#include "platform/user_text.h"
#include "reference/engraved_pictures.h"
#include "widgets/appearance.h"

#include <QGridLayout>
#include <QLabel>

namespace {

enum Column { kNote, kName, kOtherName, kFraction, kRest };

constexpr double kNameScale = 1.15;
constexpr std::array<const char*, 5> kHeadings{
    QT_TRANSLATE_NOOP("UserText", "Nota"), QT_TRANSLATE_NOOP("UserText", "Nome"), "",
    QT_TRANSLATE_NOOP("UserText", "Valore"), QT_TRANSLATE_NOOP("UserText", "Pausa")};

QLabel* text(const char* words, QWidget* parent, double scale, QFont::Weight weight) {
    auto* label = new QLabel(UserText::tr(words), parent);
    appearance::enlargeText(*label, scale, weight);
    return label;
}

Qt::Alignment placeIn(Column column) {
    const bool words = column == kName || column == kOtherName;
    return Qt::AlignVCenter | (words ? Qt::AlignLeft : Qt::AlignHCenter);
}

}  // namespace

NoteValueSheet::NoteValueSheet(QWidget* parent) : Sheet(parent) {
    auto* table = new QGridLayout;
    setPage(table);
    table->setHorizontalSpacing(24);
    table->setVerticalSpacing(0);
    table->setColumnStretch(kName, 1);
    table->setColumnStretch(kOtherName, 1);
    const auto place = [table](QWidget* widget, int row, Column column) {
        table->addWidget(widget, row, column, placeIn(column));
    };

    for (std::size_t i = 0; i < kHeadings.size(); ++i) {
        if (*kHeadings[i] != '\0')
            place(text(kHeadings[i], this, 1, QFont::Normal), 0, static_cast<Column>(i));
    }
    int row = 0;
    for (const note_values::NoteValue& value : note_values::kAll) {
        table->setRowStretch(++row, 1);
        auto* note = new ValuePicture(ValuePicture::Kind::Note, value.duration, this);
        note->setAccessibleName(UserText::tr(value.name));
        auto* rest = new ValuePicture(ValuePicture::Kind::Rest, value.duration, this);
        rest->setAccessibleName(note_values::restName(value));
        place(note, row, kNote);
        place(text(value.name, this, kNameScale, QFont::Bold), row, kName);
        place(text(value.otherName, this, 1, QFont::Normal), row, kOtherName);
        place(text(value.fraction, this, kNameScale, QFont::Normal), row, kFraction);
        place(rest, row, kRest);
    }
}
