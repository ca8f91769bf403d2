#pragma once

#include <QString>
#include <QStringList>

/// A kind of file, as a user knows it.
struct FileKind {
    QString name;    ///< "File MIDI"
    QString suffix;  ///< "mid"
};

/// What a user does with a window that holds something unsaved.
enum class Closing { Stay, Save, Discard };

/// The boxes that stop the program for a word with the user. All are modal.
class Dialogs {
public:
    virtual ~Dialogs() = default;

    /// A message with only an OK button and the application's default title.
    virtual void message(const QString& text) = 0;

    /// A question with Yes and No; true for Yes.
    virtual bool confirm(const QString& text) = 0;

    /// The same for something that a No would lose: Yes is proposed, and a box that is closed
    /// without an answer means Yes.
    virtual bool offer(const QString& text) { return confirm(text); }

    /// The same for a window that is to be closed: Yes discards, No stays, and a third button
    /// saves. A box that is closed without an answer means that the window stays.
    virtual Closing confirmClosing(const QString& text) {
        return confirm(text) ? Closing::Discard : Closing::Stay;
    }

    /// Asks for a line of text. A cancelled box answers with the empty text.
    virtual QString input(const QString& prompt, const QString& title,
                          const QString& proposed = {}) = 0;

    /// Asks where to save a file and whether it may take another one's place; proposes a name that
    /// has no suffix yet. The path as the program writes paths; a cancelled box answers with the
    /// empty text.
    virtual QString saveFile(const QString& /*title*/, const QString& /*proposed*/,
                             const FileKind& /*kind*/) {
        return {};
    }

    /// Asks for a file to read, among those with these suffixes; `kind` is what a user calls them.
    /// The answer is as that of `saveFile`.
    virtual QString openFile(const QString& /*title*/, const QString& /*kind*/,
                             const QStringList& /*suffixes*/) {
        return {};
    }
};
