#pragma once

#include <QObject>

#include <cstdint>

class QMenuBar;

/// The menu of what the palette does, whose shortcuts let a melody be written by keyboard alone,
/// wherever the focus is. None of them is a key of the computer keyboard's piano.
class EntryMenu : public QObject {
    Q_OBJECT

public:
    /// Adds the menu to a window's menu bar, before the third menu that stands there.
    explicit EntryMenu(QMenuBar& bar);

Q_SIGNALS:
    void noteChosen();
    void restChosen();
    void deletionChosen();
    void repetitionChosen();  ///< of what stands from the entry of the edit frame on

    /// `index` as `note_values::kAll` and `kAttributeButtons` count.
    void symbolChosen(std::uint8_t index);
    void attributeChosen(std::uint8_t index);
};
