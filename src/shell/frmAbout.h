#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class frmAbout;
}

/// The About box.
class frmAbout : public QDialog {
    Q_OBJECT

public:
    explicit frmAbout(QWidget* parent);
    ~frmAbout() override;

private:
    std::unique_ptr<Ui::frmAbout> ui_;
};
