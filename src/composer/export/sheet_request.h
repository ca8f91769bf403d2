#pragma once

#include "composer/score/bar_view.h"
#include "core/paper.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// A file of sheet music that is wanted of a melody.
struct SheetRequest {
    enum class Form {
        Pdf,  ///< all pages
        Svg,  ///< one system
        Png,  ///< one system
    };

    Form form = Form::Pdf;
    QString title;
    score::Notation notation;
    std::optional<Paper> paper = {};  ///< where it is not chosen, the usual one
    int system = 1;                   ///< from 1, of a form that shows one
};

/// The file, or why there is none.
struct SheetFile {
    QByteArray bytes;
    QString fault;
};
