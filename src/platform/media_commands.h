#pragma once

#include "platform/media.h"

/// Media that takes its text commands apart, for the systems to implement the verbs. Each verb
/// answers as `command` does.
class MediaCommands : public Media {
public:
    int command(const QString& text) final {
        const QString line = text.trimmed();
        const QString verb = line.section(QLatin1Char(' '), 0, 0);
        const QString rest = line.mid(verb.size() + 1);
        const QString aliasWord = QStringLiteral(" ALIAS ");
        // The path may contain blanks, and these words too.
        const qsizetype pathEnd = rest.lastIndexOf(aliasWord);
        if (verb == u"OPEN" && pathEnd > 0)
            return open(rest.left(pathEnd), rest.mid(pathEnd + aliasWord.size()));
        if (verb == u"PLAY" && !rest.isEmpty())
            return play(rest);
        if (verb == u"CLOSE" && !rest.isEmpty())
            return close(rest);
        return unknownCommand();
    }

protected:
    /// Opens a MIDI file under an alias.
    virtual int open(const QString& path, const QString& alias) = 0;

    /// Plays what is open under an alias from the beginning.
    virtual int play(const QString& alias) = 0;

    /// Ends the playing.
    virtual int close(const QString& alias) = 0;

    /// The code for a text that is no command.
    virtual int unknownCommand() const = 0;
};
