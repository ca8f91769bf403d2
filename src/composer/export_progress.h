#pragma once

#include "platform/runtime.h"

#include <QProgressDialog>

#include <optional>

/// A box in front of the window while a long rendering goes on, from which it can be given up. A
/// short rendering is over before the box would come.
class ExportProgress {
public:
    ExportProgress(Runtime& runtime, QWidget& window);

    /// Shows which share is done, 0..1; answers whether to go on.
    bool show(double share);

private:
    Runtime& runtime_;
    QProgressDialog box_;
    std::optional<Instant> next_;  ///< when events run again
};
