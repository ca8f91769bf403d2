#pragma once

#include "platform/dialogs.h"

class HeldInput;
class QFileDialog;
class QWidget;
class Runtime;

/// The boxes of the desktop's toolkit, over the active window. None takes input that was meant for
/// what is below it. The end of the program closes a box as its user might, without an answer; from
/// then on no box comes up.
class QtDialogs : public Dialogs {
public:
    QtDialogs(const Runtime& runtime, HeldInput& heldInput)
        : runtime_(runtime), heldInput_(heldInput) {}

    /// The window that a box belongs to. One that is still opening is not active yet, but no other
    /// could be used.
    static QWidget* windowInFront();

    void message(const QString& text) override;
    bool confirm(const QString& text) override;
    bool offer(const QString& text) override;
    Closing confirmClosing(const QString& text) override;
    QString input(const QString& prompt, const QString& title, const QString& proposed) override;
    QString saveFile(const QString& title, const QString& proposed, const FileKind& kind) override;
    QString openFile(const QString& title, const QString& kind,
                     const QStringList& suffixes) override;

private:
    const QString& lastFolder();
    QString fileOf(QFileDialog& box);

    const Runtime& runtime_;
    HeldInput& heldInput_;
    QString lastFolder_;  ///< of the file that was chosen last
};
