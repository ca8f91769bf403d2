#include "shell/frmAbout.h"

#include "ui_frmAbout.h"

#include <QCoreApplication>

namespace {

constexpr double kTitleScale = 2.2;

}  // namespace

frmAbout::frmAbout(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmAbout>()) {
    ui_->setupUi(this);
    QFont font = ui_->lblTitle->font();
    font.setPointSizeF(font.pointSizeF() * kTitleScale);
    font.setBold(true);
    ui_->lblTitle->setFont(font);
    ui_->lblVersion->setText(
        QStringLiteral("Versione %1 - Ottobre 2004").arg(QCoreApplication::applicationVersion()));
    connect(ui_->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
}

frmAbout::~frmAbout() = default;
