#pragma once

#include "platform/dialogs.h"

/// The boxes of the desktop's toolkit, over the active window.
class QtDialogs : public Dialogs {
public:
    void message(const QString& text) override;
    bool confirm(const QString& text) override;
    bool offer(const QString& text) override;
    QString input(const QString& prompt, const QString& title, const QString& proposed) override;
    QString saveFile(const QString& title, const QString& proposed, const FileKind& kind) override;

private:
    QString lastFolder_;  ///< that a file was saved to
};
