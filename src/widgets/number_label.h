#pragma once

#include <QToolButton>

#include <functional>

class QLineEdit;
class QScrollBar;

/// A number that looks like a label and can be typed: a click on it, Enter, Space or a digit opens
/// a line over it. Enter or leaving the line takes the number, Esc leaves it as it was, and so does
/// leaving an empty line.
class NumberLabel : public QToolButton {
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)

public:
    explicit NumberLabel(QWidget* parent = nullptr);

    /// The number. It changes in silence: a screen reader cannot bear another name of what has the
    /// focus.
    QString text() const { return number_; }
    void setText(const QString& number);

    /// What a screen reader is told when it asks for the name and the description.
    using Words = std::function<QString()>;
    void describe(Words name, Words description);
    QString name() const { return name_(); }
    QString description() const { return description_(); }

    /// What a screen reader calls the line, and the most digits that it takes.
    void describeLine(const QString& name, int digits);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

    /// The wheel turns a bar as it does over the bar itself, but not while the line is open.
    void turnBar(QScrollBar& bar) { bar_ = &bar; }

    /// Whether the key, typed at the label, is the first digit of a number.
    static bool isDigit(const QKeyEvent& key);

Q_SIGNALS:
    void numberTyped(int number);
    void lineClosed();  ///< by a key, so that the label has the focus

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void initStyleOption(QStyleOptionToolButton* option) const override;
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    bool endsByKey(QKeyEvent& key);
    void openLine(const QString& text);
    void closeLine(bool take);

    QString number_;
    Words name_ = [this] { return number_; };
    Words description_ = [] { return QString(); };
    QLineEdit* line_;
    QScrollBar* bar_ = nullptr;
};
