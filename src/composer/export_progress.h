#pragma once

#include "platform/runtime.h"

#include <QProgressDialog>

#include <optional>

/// The progress of a long export, in a box in front of the window with a button to cancel it. A
/// short export ends before the box appears.
class ExportProgress {
public:
    ExportProgress(Runtime& runtime, QWidget& window);

    /// Shows which share is done, 0..1; answers whether to go on.
    bool show(double share);

private:
    Runtime& runtime_;
    QProgressDialog box_;
    std::optional<Instant> next_;  ///< when the box is updated and events run again
};
