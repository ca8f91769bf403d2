#pragma once

#include "composer/score/bar_view.h"

#include <QDialog>

#include <memory>

namespace Ui {
class frmBattute;
}

/// The modal window that asks in which metre and key a melody is written.
class frmBattute : public QDialog {
    Q_OBJECT

public:
    enum class WithoutBars { Offered, NotOffered };

    /// Proposes a notation.
    frmBattute(const score::Notation& proposed, WithoutBars withoutBars, QWidget* parent);
    ~frmBattute() override;

    score::Notation chosen() const;

private:
    std::unique_ptr<Ui::frmBattute> ui_;
};
