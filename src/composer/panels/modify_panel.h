#pragma once

#include "composer/melody/melody_editor.h"
#include "composer/playback/playback.h"

#include <QGroupBox>

#include <memory>

namespace Ui {
class ModifyPanel;
}

/// The edit frame `frmModifica`: the tools for the entry that was stepped to.
class ModifyPanel : public QGroupBox {
    Q_OBJECT

public:
    explicit ModifyPanel(QWidget* parent = nullptr);
    ~ModifyPanel() override;

    Ui::ModifyPanel& ui() { return *ui_; }

    void resetMultiplier();
    void showEntry(const StepEntry& entry);
    void showActiveNote(const QString& name);

    EditChoice choice() const;

private:
    std::unique_ptr<Ui::ModifyPanel> ui_;
};
