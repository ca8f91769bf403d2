#include "composer/frmBattute.h"

#include "core/key_signatures.h"
#include "ui_frmBattute.h"

using key_signatures::KeySignature;

namespace {

constexpr int kNoBars = -1;

}  // namespace

/// The data of an item is the place of the metre in its list; of a key, that of its signature, and
/// for a minor key as many further.
frmBattute::frmBattute(const score::Notation& proposed, WithoutBars withoutBars, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmBattute>()) {
    ui_->setupUi(this);
    if (withoutBars == WithoutBars::Offered)
        ui_->cmbTempoBattuta->addItem(tr("Nessuno"), kNoBars);
    int index = 0;
    for (const score::Metre& metre : score::kMetres) {
        ui_->cmbTempoBattuta->addItem(QStringLiteral("%1/%2").arg(metre.beats).arg(metre.beatValue),
                                      index++);
        if (metre == proposed.metre)
            ui_->cmbTempoBattuta->setCurrentIndex(ui_->cmbTempoBattuta->count() - 1);
    }
    index = 0;
    for (const bool minor : {false, true}) {
        for (const KeySignature& key : key_signatures::kAll) {
            ui_->cmbTonalita->addItem(
                minor ? key_signatures::minorName(key) : key_signatures::majorName(key), index++);
            if (score::Key{key.fifths, minor} == proposed.key)
                ui_->cmbTonalita->setCurrentIndex(ui_->cmbTonalita->count() - 1);
        }
    }
    connect(ui_->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui_->cmdAnnulla, &QPushButton::clicked, this, &QDialog::reject);
}

frmBattute::~frmBattute() = default;

score::Notation frmBattute::chosen() const {
    score::Notation notation;
    const int metre = ui_->cmbTempoBattuta->currentData().toInt();
    notation.metre = metre == kNoBars
                         ? std::nullopt
                         : std::optional(score::kMetres[static_cast<std::size_t>(metre)]);
    const auto key = static_cast<std::size_t>(ui_->cmbTonalita->currentData().toInt());
    constexpr std::size_t kKeys = key_signatures::kAll.size();
    notation.key = {key_signatures::kAll[key % kKeys].fifths, key >= kKeys};
    return notation;
}
