#include "composer/frmCopyFromA.h"

#include "composer/library/floppy.h"
#include "ui_frmCopyFromA.h"

#include <vector>

frmCopyFromA::frmCopyFromA(Floppy& floppy, const QString& destinationLabel, QWidget* parent)
    : QDialog(parent), floppy_(floppy), ui_(std::make_unique<Ui::frmCopyFromA>()) {
    ui_->setupUi(this);
    ui_->lblCurrPath->showPath(destinationLabel);
    connect(ui_->cmdCopia, &QPushButton::clicked, this, &frmCopyFromA::cmdCopia_Click);
    connect(ui_->List1, &QListWidget::itemDoubleClicked, this, &frmCopyFromA::cmdCopia_Click);
    connect(ui_->List1, &QListWidget::itemSelectionChanged, this, &frmCopyFromA::showSelection);
    connect(ui_->cmdChiudi, &QPushButton::clicked, this, &QDialog::reject);
}

frmCopyFromA::~frmCopyFromA() = default;

void frmCopyFromA::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    Form_Activate();
}

void frmCopyFromA::Form_Activate() {
    ui_->cmdChiudi->setFocus();
    floppy_.list();
    QStringList names;
    for (const LibraryEntry& melody : floppy_.melodies())
        names << melody.name;
    ui_->List1->clear();
    ui_->List1->addItems(names);
    showSelection();
}

void frmCopyFromA::showSelection() {
    ui_->cmdCopia->setEnabled(ui_->List1->selectionModel()->hasSelection());
    ui_->lblEsito->clear();
}

/// A disk that fails half-way has no message of its own, so the window says how far it came.
void frmCopyFromA::cmdCopia_Click() {
    std::vector<int> rows;
    for (const QModelIndex& index : ui_->List1->selectionModel()->selectedRows())
        rows.push_back(index.row());
    if (rows.empty())
        return;
    const auto wanted = static_cast<int>(rows.size());
    const int copied = floppy_.copy(std::move(rows));
    ui_->lblEsito->setText(tr("Melodie copiate: %1 di %2").arg(copied).arg(wanted));
}
