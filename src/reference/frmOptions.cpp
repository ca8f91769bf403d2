#include "reference/frmOptions.h"

#include "platform/user_text.h"
#include "ui_frmOptions.h"
#include "widgets/announcement.h"
#include "widgets/appearance.h"
#include "widgets/room_scale.h"

namespace {

/// Sheets are also read from afar, as from the instrument.
constexpr double kLargestType = 3;

}  // namespace

frmOptions::frmOptions(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmOptions>()) {
    ui_->setupUi(this);
    Form_Load();
    for (int index = 0; index < kPages; ++index) {
        connect(&cmdSel(index), &QPushButton::clicked, this,
                [this, index] { cmdSel_Click(index); });
    }
    connect(ui_->cmdOk, &QPushButton::clicked, this, &frmOptions::cmdOk_Click);
    new RoomScale(*this, sizeHint(), kLargestType);
}

frmOptions::~frmOptions() = default;

Sheet& frmOptions::Frame1(int page) const {
    const std::array<Sheet*, kPages> frames{ui_->Frame1_1, ui_->Frame1_2, ui_->Frame1_3};
    return *frames[static_cast<std::size_t>(page - 1)];
}

QPushButton& frmOptions::cmdSel(int index) const {
    const std::array<QPushButton*, kPages> buttons{ui_->cmdSel_0, ui_->cmdSel_1, ui_->cmdSel_2};
    return *buttons[static_cast<std::size_t>(index)];
}

/// The pages keep their place while they are hidden, so that the window is as large as the largest.
void frmOptions::Form_Load() {
    for (int page = 1; page <= kPages; ++page) {
        appearance::keepPlace(Frame1(page));
        Frame1(page).hide();
    }
}

void frmOptions::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (page_ == 0)
        Form_Activate();
}

void frmOptions::Form_Activate() {
    page_ = 1;
    showPage(page_, true);
    cmdSel(0).setFocus();
}

void frmOptions::cmdSel_Click(int index) {
    const int chosen = index + 1;
    if (chosen == page_)
        return;
    showPage(page_, false);
    showPage(chosen, true);
    page_ = chosen;
    announce(UserText::tr("Pagina mostrata: %1").arg(Frame1(page_).title().trimmed()));
}

/// The button of the page that is shown has the colour of the accent.
void frmOptions::showPage(int page, bool shown) {
    Frame1(page).setVisible(shown);
    QPushButton& button = cmdSel(page - 1);
    QPalette colours;
    if (shown) {
        colours.setColor(QPalette::Button, palette().color(QPalette::Highlight));
        colours.setColor(QPalette::ButtonText, palette().color(QPalette::HighlightedText));
    }
    button.setPalette(colours);
    button.setAccessibleDescription(shown ? UserText::tr("Pagina mostrata") : QString());
}

void frmOptions::cmdOk_Click() {
    accept();
}
