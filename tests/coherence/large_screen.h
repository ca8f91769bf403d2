#pragma once

#include <QTemporaryFile>

/// Has the application that is made while this exists run without a display, on a screen that is
/// large enough for every window at twice its size; the platform's own is not.
class LargeScreen {
public:
    LargeScreen();

private:
    QTemporaryFile file_;
};
