#pragma once

#include "composer/melody/entry_settings.h"
#include "core/note_values.h"

#include <QWidget>

#include <array>
#include <memory>

class PictureButton;

namespace Ui {
class EntryPalettePanel;
}

/// The palette: the note symbols `cmdSimbNote`, the attributes `cmdAttrNota`, and the buttons that
/// put entries into the melody and take them out.
class EntryPalettePanel : public QWidget {
    Q_OBJECT

public:
    explicit EntryPalettePanel(QWidget* parent = nullptr);
    ~EntryPalettePanel() override;

    Ui::EntryPalettePanel& ui() { return *ui_; }

    void showSettings(const EntrySettings& settings);
    void showActiveNote(const QString& name);

    /// Puts the panel's controls into the window's order of Tab, behind `before`.
    QWidget* orderTabs(QWidget* before);

Q_SIGNALS:
    /// `index` as `note_values::kAll` and `kAttributeButtons` count.
    void symbolClicked(std::uint8_t index);
    void attributeClicked(std::uint8_t index);

private:
    std::unique_ptr<Ui::EntryPalettePanel> ui_;
    std::array<PictureButton*, note_values::kAll.size()> symbols_{};
    std::array<PictureButton*, kAttributeButtons.size()> attributes_{};
};
