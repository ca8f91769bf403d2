#pragma once

#include <QString>

#include <optional>

/// A command to the media player, taken apart.
struct MediaCommand {
    enum class Verb { Open, Play, Close };

    Verb verb;
    QString alias;
    QString path;  ///< for Open

    /// Nothing if the text is no command. Words count in any case; a path may contain blanks and
    /// may stand in quotation marks.
    static std::optional<MediaCommand> parse(const QString& text);
};
