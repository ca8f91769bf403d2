#pragma once

#include <QString>

/// The boxes that stop the program for a word with the user. All are modal.
class Dialogs {
public:
    virtual ~Dialogs() = default;

    /// A message with only an OK button and the application's default title.
    virtual void message(const QString& text) = 0;

    /// A question with Yes and No; true for Yes.
    virtual bool confirm(const QString& text) = 0;

    /// Asks for a line of text. A cancelled box answers with the empty text.
    virtual QString input(const QString& prompt, const QString& title,
                          const QString& proposed = {}) = 0;
};
