#pragma once

#include "composer/playback/melody_player.h"

/// A player's view that shows nothing, so that a figure is the player's own.
class NoView : public PlayerView {
public:
    void showPlaying(bool) override {}
    void enableCanc(bool) override {}
    void showEntryNumber(const QString&) override {}
    void showEntryName(const QString&) override {}
    void markKey(pitch::NoteIndex, bool) override {}
    void focusPlay() override {}
};
