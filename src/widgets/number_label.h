#pragma once

#include <QToolButton>

class QLineEdit;

/// A number that looks like a label and can be typed: a click on it, Enter, Space or a digit opens
/// a line over it. Enter or leaving the line takes the number, Esc leaves it as it was, and so does
/// leaving an empty line.
class NumberLabel : public QToolButton {
    Q_OBJECT

public:
    explicit NumberLabel(QWidget* parent = nullptr);

    /// What a screen reader calls the line, and the most digits that it takes.
    void describeLine(const QString& name, int digits);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

    /// Whether the key, typed at the label, is the first digit of a number.
    static bool isDigit(const QKeyEvent& key);

Q_SIGNALS:
    void numberTyped(int number);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    bool endsByKey(QKeyEvent& key);
    void openLine(const QString& text);
    void closeLine(bool take);

    QLineEdit* line_;
};
