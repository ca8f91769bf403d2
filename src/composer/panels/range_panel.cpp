#include "composer/panels/range_panel.h"

#include "composer/melody/composition.h"
#include "platform/user_text.h"
#include "ui_range_panel.h"
#include "widgets/appearance.h"
#include "widgets/label_button.h"
#include "widgets/panel_text.h"

#include <QMouseEvent>

#include <array>
#include <utility>

namespace {

constexpr int kHintLines = 2;  ///< of the hint below the transposition

std::array<QToolButton*, 4> arrowsOf(const Ui::RangePanel& ui) {
    return {ui.lblid_0, ui.lblid_1, ui.lblid_2, ui.lblid_3};
}

}  // namespace

RangePanel::RangePanel(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui::RangePanel>()) {
    ui_->setupUi(this);
    for (QLineEdit* box : {ui_->lblNini, ui_->lblNfine})
        panel_text::fix(*box, panel_text::widestEntryNumber());
    appearance::enlargeText(*ui_->lblSemitoni, 1.2);
    panel_text::reserve(*ui_->lblSemitoni, QString::number(-Composition::kLargestTransposition));
    makeLabelButton(*ui_->lblSemitoni, palette().color(QPalette::Link));
    keepRoomForHint();
    showTransposition(0, {});
    const auto arrows = arrowsOf(*ui_);
    for (std::size_t i = 0; i < arrows.size(); ++i) {
        arrows[i]->installEventFilter(this);
        connect(arrows[i], &QToolButton::pressed, this, [this, i] {
            const auto arrow = static_cast<PlayRange::Arrow>(i);
            if (std::exchange(held_, false))
                Q_EMIT arrowDown(arrow);
            else
                Q_EMIT arrowStepped(arrow);
        });
        connect(arrows[i], &QToolButton::released, this, &RangePanel::arrowUp);
    }
}

RangePanel::~RangePanel() = default;

void RangePanel::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        keepRoomForHint();
}

/// Below the arrows, which no hint moves: between two clicks the arrow would be gone.
void RangePanel::keepRoomForHint() {
    ui_->lblSpiegaTrasposizione->setMinimumHeight(kHintLines * fontMetrics().lineSpacing());
}

/// A button's signal does not say what pressed it, and which keys press one is up to the desktop. A
/// key that a screen reader looks at first comes from there, and its release too late: held, it
/// would step twice.
bool RangePanel::eventFilter(QObject* /*target*/, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick)
        held_ = static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton;
    else if (event->type() == QEvent::KeyPress)
        held_ = event->spontaneous();
    else if (event->type() == QEvent::KeyRelease || event->type() == QEvent::FocusOut)
        held_ = false;
    return false;
}

void RangePanel::showRange(const PlayRange& range) {
    ui_->lblNini->setText(range.startBox());
    ui_->lblNfine->setText(range.endBox());
}

void RangePanel::clearRange() {
    ui_->lblNini->clear();
    ui_->lblNfine->clear();
}

void RangePanel::showTransposition(int semitones, const QString& hint) {
    ui_->lblSemitoni->setText(QString::number(semitones));
    ui_->lblSemitoni->setAccessibleName(UserText::tr("Traspone di %1 semitoni").arg(semitones));
    ui_->lblSpiegaTrasposizione->setText(hint);
}
