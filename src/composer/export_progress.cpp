#include "composer/export_progress.h"

#include "platform/user_text.h"

namespace {

using namespace std::chrono_literals;

constexpr Instant kDelayUntilShown = 300ms;
constexpr Instant kUpdateInterval = 40ms;
constexpr int kSteps = 1000;

}  // namespace

ExportProgress::ExportProgress(Runtime& runtime, QWidget& window)
    : runtime_(runtime),
      box_(UserText::tr("Esportazione in corso…"), UserText::tr("Annulla"), 0, kSteps, &window) {
    box_.setObjectName(QStringLiteral("boxEsporta"));
    box_.setWindowTitle(UserText::tr("Esporta audio"));
    box_.setWindowModality(Qt::WindowModal);
    box_.setAutoReset(false);
    box_.setAutoClose(false);
    // Stops the box's own timer: `show` decides when it appears, so that no event runs before.
    box_.reset();
}

bool ExportProgress::show(double share) {
    if (!next_)
        next_ = runtime_.now() + kDelayUntilShown;
    if (runtime_.now() < *next_)
        return true;
    if (box_.isHidden() && !box_.wasCanceled())
        box_.show();
    box_.setValue(static_cast<int>(share * kSteps));
    runtime_.yield();
    next_ = runtime_.now() + kUpdateInterval;
    return !box_.wasCanceled() && !runtime_.ending();
}
