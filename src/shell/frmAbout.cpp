#include "shell/frmAbout.h"

#include "platform/user_text.h"
#include "ui_frmAbout.h"
#include "widgets/appearance.h"

#include <QCoreApplication>

namespace {

constexpr double kTitleScale = 2.2;
constexpr int kIconSize = 64;

}  // namespace

frmAbout::frmAbout(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmAbout>()) {
    ui_->setupUi(this);
    ui_->imgIcona->setPixmap(windowIcon().pixmap(QSize(kIconSize, kIconSize), devicePixelRatioF()));
    appearance::enlargeText(*ui_->lblTitle, kTitleScale);
    ui_->lblVersion->setText(
        UserText::tr("Versione %1 - Ottobre 2004").arg(QCoreApplication::applicationVersion()));
    connect(ui_->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
}

frmAbout::~frmAbout() = default;
