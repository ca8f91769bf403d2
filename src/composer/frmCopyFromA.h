#pragma once

#include <QDialog>

#include <memory>

class Floppy;

namespace Ui {
class frmCopyFromA;
}

/// The modal window that copies melodies from the floppy disk into the folder of the library.
class frmCopyFromA : public QDialog {
    Q_OBJECT

public:
    /// The label names the folder that is copied to.
    frmCopyFromA(Floppy& floppy, const QString& destinationLabel, QWidget* parent);
    ~frmCopyFromA() override;

protected:
    void showEvent(QShowEvent* event) override;

private Q_SLOTS:
    void cmdCopia_Click();
    void showSelection();

private:
    void Form_Activate();

    Floppy& floppy_;
    std::unique_ptr<Ui::frmCopyFromA> ui_;
};
