#pragma once

#include "platform/desktop/held_input.h"
#include "platform/dialogs.h"

/// The boxes of the desktop's toolkit, over the active window. None takes input that was meant for
/// what is below it.
class QtDialogs : public Dialogs {
public:
    void message(const QString& text) override;
    bool confirm(const QString& text) override;
    bool offer(const QString& text) override;
    QString input(const QString& prompt, const QString& title, const QString& proposed) override;
    QString saveFile(const QString& title, const QString& proposed, const FileKind& kind) override;

private:
    HeldInput heldInput_;
    QString lastFolder_;  ///< that a file was saved to
};
