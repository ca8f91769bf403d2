#include "composer/panels/entry_palette_panel.h"

#include "composer/panels/entry_pictures.h"
#include "platform/user_text.h"
#include "ui_entry_palette_panel.h"
#include "widgets/action_icon.h"
#include "widgets/appearance.h"
#include "widgets/panel_text.h"
#include "widgets/picture_button.h"

namespace {

constexpr double kActiveNoteTextScale = 1.4;
constexpr int kLabelFrame = 24;

using Draw = void (*)(QPainter&, const QRectF&, int);

/// The button of a control array, with a picture that a function of the index draws.
PictureButton* pictureButton(const char* array, std::size_t index, const char* toolTip, Draw draw,
                             QWidget* parent) {
    const int number = static_cast<int>(index);
    return new PictureButton(
        QStringLiteral("%1_%2").arg(QString::fromUtf8(array)).arg(number), UserText::tr(toolTip),
        [draw, number](QPainter& painter, const QRectF& rect) { draw(painter, rect, number); },
        parent);
}

}  // namespace

EntryPalettePanel::EntryPalettePanel(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::EntryPalettePanel>()) {
    ui_->setupUi(this);
    for (std::size_t i = 0; i < symbols_.size(); ++i) {
        symbols_[i] = pictureButton("cmdSimbNote", i, note_values::kAll[i].name,
                                    entry_pictures::drawSymbol, this);
        ui_->symbols->addWidget(symbols_[i]);
        connect(symbols_[i], &QToolButton::clicked, this,
                [this, i] { Q_EMIT symbolClicked(static_cast<std::uint8_t>(i)); });
    }
    for (std::size_t i = 0; i < attributes_.size(); ++i) {
        attributes_[i] = pictureButton("cmdAttrNota", i, kAttributeButtons[i].toolTip,
                                       entry_pictures::drawAttribute, this);
        ui_->attributes->addWidget(attributes_[i]);
        connect(attributes_[i], &QToolButton::clicked, this,
                [this, i] { Q_EMIT attributeClicked(static_cast<std::uint8_t>(i)); });
    }
    // The check box is higher than a caption; the rows of buttons stand level nevertheless.
    for (QLabel* caption : {ui_->lblSimboli, ui_->lblInserimento})
        caption->setMinimumHeight(ui_->ckConsAtt->sizeHint().height());
    appearance::enlargeText(*ui_->lblActNote, kActiveNoteTextScale);
    panel_text::reserve(*ui_->lblActNote, panel_text::widestNoteName(), kLabelFrame);
    setActionIcon(*ui_->cmdInsNota, ActionIcon::Note);
    setActionIcon(*ui_->cmdInsPausa, ActionIcon::Rest);
    setActionIcon(*ui_->cmdCanc, ActionIcon::Backspace);
    setActionIcon(*ui_->cmdReset, ActionIcon::Clear);
    for (QWidget* button :
         {static_cast<QWidget*>(ui_->cmdInsNota), static_cast<QWidget*>(ui_->cmdInsPausa),
          static_cast<QWidget*>(ui_->cmdCanc), static_cast<QWidget*>(ui_->cmdReset),
          static_cast<QWidget*>(ui_->lblActNote)})
        button->setSizePolicy(button->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
}

EntryPalettePanel::~EntryPalettePanel() = default;

void EntryPalettePanel::showSettings(const EntrySettings& settings) {
    for (std::size_t i = 0; i < symbols_.size(); ++i)
        symbols_[i]->setChecked(i == settings.symbol());
    for (std::size_t i = 0; i < attributes_.size(); ++i)
        attributes_[i]->setChecked(i == settings.attribute());
}

void EntryPalettePanel::showActiveNote(const QString& name) {
    ui_->lblActNote->setText(name);
    ui_->lblActNote->setAccessibleDescription(name);
}

QWidget* EntryPalettePanel::orderTabs(QWidget* before) {
    const auto next = [&before](QWidget* widget) {
        setTabOrder(before, widget);
        before = widget;
    };
    for (PictureButton* button : symbols_)
        next(button);
    next(ui_->ckConsAtt);
    for (PictureButton* button : attributes_)
        next(button);
    for (QWidget* widget :
         {static_cast<QWidget*>(ui_->ckInsDiretto), static_cast<QWidget*>(ui_->lblActNote),
          static_cast<QWidget*>(ui_->cmdInsNota), static_cast<QWidget*>(ui_->cmdInsPausa),
          static_cast<QWidget*>(ui_->cmdCanc), static_cast<QWidget*>(ui_->cmdReset)})
        next(widget);
    return before;
}
