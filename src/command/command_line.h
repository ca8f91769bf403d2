#pragma once

#include "composer/score/bar_view.h"
#include "core/paper.h"

#include <QString>
#include <QStringList>

#include <optional>

/// What the program was called for, when it was called for something without a window.
struct CommandLine {
    enum class Action {
        Misused,
        Help,
        Version,
        Check,
        Render,
        ExportMidi,
        ExportPdf,
        ExportSystem,
        ExportMusicXml,
        ExportBraille,
        Import,
        ListDevices,
    };

    Action action = Action::Misused;
    QStringList files;
    QString output;
    std::optional<int> instrument;  ///< General MIDI program in place of the file's own
    score::Notation notation;       ///< of a melody that is written in bars
    std::optional<Paper> paper;     ///< in place of the usual one
    int system = 1;                 ///< of sheet music, from 1
    QString fault;                  ///< what is wrong with the arguments, for `Misused`

    /// Whether the name of the file to be written ends so.
    bool writes(const char* suffix) const;

    /// Whether the arguments, the program's name first, ask for anything but the window with at
    /// most one melody. Options of the windows' toolkit do not count.
    static bool isCommand(const QStringList& arguments);

    static CommandLine parse(const QStringList& arguments);
};
