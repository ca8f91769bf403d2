#include "reference/key_sheet.h"

#include "core/key_signatures.h"
#include "platform/user_text.h"
#include "reference/engraved_pictures.h"
#include "reference/key_words.h"
#include "widgets/announcement.h"
#include "widgets/appearance.h"
#include "widgets/degree_label.h"
#include "widgets/key_button.h"
#include "widgets/parts_accessible.h"

#include <QGridLayout>
#include <QLabel>
#include <QMouseEvent>

namespace {

using key_signatures::KeySignature;

constexpr std::array<const char*, 7> kDegrees{
    QT_TRANSLATE_NOOP("UserText", " I      Tonica"),
    QT_TRANSLATE_NOOP("UserText", " II     Sopratonica"),
    QT_TRANSLATE_NOOP("UserText", " III    Mediante"),
    QT_TRANSLATE_NOOP("UserText", " IV    Sottodominante"),
    QT_TRANSLATE_NOOP("UserText", " V     Dominante"),
    QT_TRANSLATE_NOOP("UserText", " VI    Sopradominante"),
    QT_TRANSLATE_NOOP("UserText", " VII   Sensibile")};

constexpr double kNameScale = 1.5;
constexpr double kDegreeScale = 1.4;
constexpr int kColumnGap = 24;
constexpr int kRowGap = 8;
constexpr int kButtonGap = 13;

/// The keys with sharps stand in one column below the key without any, those with flats in the
/// next, each on the row of its number of signs; the degrees follow below.
constexpr int kSharpColumn = 0;
constexpr int kFlatColumn = 3;
constexpr int kGapColumn = 2;
constexpr int kGapRow = 8;
constexpr int kDegreesRow = 9;

const KeySignature& keyOf(int index) {
    return key_signatures::kAll[static_cast<std::size_t>(index - 1)];
}

/// What a button opens.
QString nameOf(int index) {
    return index == KeyPage::kDegrees ? UserText::tr("Elenco dei gradi")
                                      : key_signatures::majorName(keyOf(index));
}

QString describe(const KeySignature& key) {
    return QStringLiteral("%1. %2, %3")
        .arg(signsInWords(key), key_signatures::majorName(key), key_signatures::minorName(key));
}

/// What a button shows.
QString describe(int index) {
    if (index != KeyPage::kDegrees)
        return describe(keyOf(index));
    QStringList degrees;
    for (const char* degree : kDegrees)
        degrees += UserText::tr(degree).simplified();
    return degrees.join(QStringLiteral(", "));
}

QLabel* makeCentred(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setAlignment(Qt::AlignCenter);
    return label;
}

}  // namespace

KeySheet::KeySheet(QWidget* parent) : Sheet(parent) {
    installPartsAccessible<KeySheet, QAccessible::Grouping>();
    installPartsAccessible<KeyPicture, QAccessible::Graphic>();
    auto* page = new QHBoxLayout;
    setPage(page);
    page->setSpacing(kColumnGap);

    auto* buttons = new QGridLayout;
    buttons->setHorizontalSpacing(kRowGap);
    buttons->setVerticalSpacing(kButtonGap);
    buttons->setColumnMinimumWidth(kGapColumn, kRowGap);
    buttons->setRowMinimumHeight(kGapRow, kRowGap);
    for (int row = 0; row <= kDegreesRow; ++row)
        buttons->setRowStretch(row, row == kGapRow ? 0 : 1);
    for (int index = 1; index <= KeyPage::kButtons; ++index)
        addButton(*buttons, index);
    ton_[KeyPage::kDegrees]->setToolTip(UserText::tr("Gradi"));
    page->addLayout(buttons);

    auto* pictures = new QGridLayout;
    for (int index = 1; index <= KeyPage::kButtons; ++index) {
        QWidget* shown = index == KeyPage::kDegrees ? makeDegrees() : makePicture(index);
        appearance::keepPlace(*shown);
        shown_[static_cast<std::size_t>(index)] = shown;
        pictures->addWidget(shown, 0, 0);
    }
    hint_ = makeHint();
    pictures->addWidget(hint_, 0, 0);
    page->addLayout(pictures, 1);
    render();
}

void KeySheet::addButton(QGridLayout& buttons, int index) {
    auto* button = new KeyButton(this);
    button->setObjectName(QStringLiteral("Ton_%1").arg(index));
    connect(button, &QPushButton::clicked, this, [this, index] { Ton_Click(index); });
    ton_[static_cast<std::size_t>(index)] = button;

    // As the label, which a screen reader would say beside any other name.
    button->setAccessibleName(nameOf(index));
    auto* label = new QLabel(nameOf(index), this);
    label->setBuddy(button);
    label->installEventFilter(this);
    label->setCursor(Qt::PointingHandCursor);

    const bool degrees = index == KeyPage::kDegrees;
    const int row = degrees ? kDegreesRow : keyOf(index).count();
    const int column = !degrees && keyOf(index).fifths < 0 ? kFlatColumn : kSharpColumn;
    buttons.addWidget(button, row, column);
    buttons.addWidget(label, row, column + 1);
}

QWidget* KeySheet::makePicture(int index) {
    const KeySignature& key = keyOf(index);
    auto* picture = new KeyPicture(this);
    picture->setObjectName(QStringLiteral("Img_%1").arg(index));
    picture->setAccessibleName(describe(key));
    auto* column = new QVBoxLayout(picture);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kRowGap);
    auto* staff = new SignatureStaff(key, picture);
    column->addWidget(staff, 1);
    for (const QString& name : {key_signatures::majorName(key), key_signatures::minorName(key)}) {
        QLabel* label = makeCentred(name, picture);
        appearance::enlargeText(*label, kNameScale, QFont::Normal);
        column->addWidget(label);
    }
    column->addWidget(makeCentred(signsInWords(key), picture));
    return picture;
}

QWidget* KeySheet::makeDegrees() {
    auto* frame = new QFrame(this);
    frame->setObjectName(QStringLiteral("Gradi"));
    frame->setAccessibleName(UserText::tr("Gradi della scala"));
    auto* column = new QVBoxLayout(frame);
    column->setSpacing(0);
    column->addStretch(1);
    for (const char* degree : kDegrees) {
        auto* label = new DegreeLabel(frame);
        label->setText(UserText::tr(degree));
        appearance::enlargeText(*label, kDegreeScale, QFont::Normal);
        column->addWidget(label, 0, Qt::AlignLeft);
    }
    column->addStretch(1);
    return frame;
}

/// Stands where nothing is shown yet.
QWidget* KeySheet::makeHint() {
    QLabel* hint = makeCentred(
        UserText::tr("Premi + accanto a una tonalità\nper vedere le sue alterazioni in chiave"),
        this);
    hint->setAccessibleName(hint->text().simplified());
    QPalette palette = hint->palette();
    palette.setColor(QPalette::WindowText, palette.color(QPalette::PlaceholderText));
    hint->setPalette(palette);
    return hint;
}

void KeySheet::Ton_Click(int index) {
    page_.click(index);
    render();
    announce(page_.isShown(index) ? describe(index) : UserText::tr("Nessuna tonalità mostrata"));
}

void KeySheet::render() {
    for (int index = 1; index <= KeyPage::kButtons; ++index) {
        const bool shown = page_.isShown(index);
        KeyButton& button = *ton_[static_cast<std::size_t>(index)];
        button.showOpen(shown);
        button.setAccessibleDescription(shown ? UserText::tr("visibile")
                                              : UserText::tr("non visibile"));
        shown_[static_cast<std::size_t>(index)]->setVisible(shown);
    }
    hint_->setVisible(page_.isEmpty());
}

bool KeySheet::eventFilter(QObject* target, QEvent* event) {
    const auto* label = qobject_cast<QLabel*>(target);
    if (label && event->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        static_cast<QPushButton*>(label->buddy())->click();
        return true;
    }
    return Sheet::eventFilter(target, event);
}
