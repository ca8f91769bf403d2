#pragma once

#include "composer/melody/entry_settings.h"
#include "core/note_values.h"

#include <QWidget>

#include <array>
#include <functional>
#include <memory>

class PictureButton;

namespace Ui {
class EntryPalettePanel;
}

/// The palette: the note symbols `cmdSimbNote`, the attributes `cmdAttrNota`, and the buttons that
/// put entries into the melody and take them out.
class EntryPalettePanel : public QWidget {
public:
    using ChoiceHandler = std::function<void(std::uint8_t index)>;

    explicit EntryPalettePanel(QWidget* parent = nullptr);
    ~EntryPalettePanel() override;

    Ui::EntryPalettePanel& ui() { return *ui_; }

    void onSymbol(const ChoiceHandler& handler);
    void onAttribute(const ChoiceHandler& handler);

    void showSettings(const EntrySettings& settings);
    void showActiveNote(const QString& name);

    /// Puts the panel's controls into the window's order of Tab, behind `before`.
    QWidget* orderTabs(QWidget* before);

private:
    std::unique_ptr<Ui::EntryPalettePanel> ui_;
    std::array<PictureButton*, note_values::kAll.size()> symbols_{};
    std::array<PictureButton*, kAttributeButtons.size()> attributes_{};
};
