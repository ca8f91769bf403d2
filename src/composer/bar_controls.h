#pragma once

#include "composer/score/bar_view.h"

#include <QObject>

class ComposerKeyboard;
class ComposerMenu;
class ComposerView;
class QWidget;
struct Composition;
struct ComposerState;
class Dialogs;

/// The menu item by which the staff shows the melody in bars and in a key. The melody stays as it
/// is.
class BarControls : public QObject {
    Q_OBJECT

public:
    BarControls(QWidget& window, Dialogs& dialogs, const Composition& composition,
                ComposerState& state, ComposerView& view, ComposerKeyboard& keyboard,
                ComposerMenu& menu);

private Q_SLOTS:
    void mnuBattute_Click();

private:
    void tellWhatHasNoBars();

    QWidget& window_;
    Dialogs& dialogs_;
    const Composition& composition_;
    ComposerState& state_;
    ComposerView& view_;
    ComposerKeyboard& keyboard_;
};
