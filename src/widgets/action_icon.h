#pragma once

#include <QIcon>

class QAbstractButton;

/// The icons of buttons, drawn at every size in the colour of the button's text.
enum class ActionIcon {
    Play,
    Stop,
    Note,       ///< a crotchet
    Rest,       ///< a crotchet's rest
    Backspace,  ///< takes the last one away
    Clear,      ///< takes all away
    Insert,
    Duplicate,
    Edit,
    Delete,
    NewFolder,
    Update,
    Settings,
};

QIcon actionIcon(ActionIcon icon);

/// Puts an icon before a button's text; the style makes it as high as the text.
void setActionIcon(QAbstractButton& button, ActionIcon icon);
