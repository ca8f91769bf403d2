#pragma once

#include <QDialog>

#include <memory>

class Floppy;

namespace Ui {
class frmCopyFromA;
}

/// The modal window that copies melodies from the floppy disk into the folder of the library.
class frmCopyFromA : public QDialog {
public:
    /// The label names the folder that is copied to.
    frmCopyFromA(Floppy& floppy, const QString& destinationLabel, QWidget* parent);
    ~frmCopyFromA() override;

    void cmdCopia_Click();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void Form_Activate();
    void showSelection();

    Floppy& floppy_;
    std::unique_ptr<Ui::frmCopyFromA> ui_;
};
