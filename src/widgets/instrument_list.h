#pragma once

#include <QFrame>

class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;

/// A list of all instruments by families that opens below a control, with a line to search them by
/// name, English or Italian, number or family. Enter or a click chooses one, Esc closes the list.
class InstrumentList : public QFrame {
    Q_OBJECT

public:
    explicit InstrumentList(QWidget* parent);

    /// Opens the list with every instrument, at the one that is chosen now.
    void open(const QWidget& control, int program);

Q_SIGNALS:
    void programChosen(int program);  ///< 0..127 of General MIDI

protected:
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    void fill();
    void showFound(const QString& words);
    void showNothingFound(bool nothing, const QString& words);
    void choose(const QListWidgetItem* item);

    QLineEdit* search_;
    QListWidget* list_;
    QLabel* nothingFound_;  ///< in the list's place
};
