#include "widgets/number_label.h"

#include "widgets/label_button.h"

#include <QIntValidator>
#include <QKeyEvent>
#include <QLineEdit>

namespace {

constexpr int kFrame = 16;  ///< beside the number, in pixels

bool isEnter(int key) {
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

}  // namespace

NumberLabel::NumberLabel(QWidget* parent) : QToolButton(parent), line_(new QLineEdit(this)) {
    makeLabelButton(*this, palette().color(QPalette::WindowText));
    line_->setAlignment(Qt::AlignCenter);
    line_->setValidator(new QIntValidator(0, 999, line_));
    line_->installEventFilter(this);
    line_->hide();
    connect(this, &QToolButton::clicked, this, [this] { openLine(text()); });
    connect(line_, &QLineEdit::editingFinished, this, [this] { closeLine(true); });
}

void NumberLabel::describeLine(const QString& name, int digits) {
    line_->setObjectName(objectName() + QLatin1String("_line"));
    line_->setAccessibleName(name);
    line_->setMaxLength(digits);
}

QSize NumberLabel::sizeHint() const {
    return {fontMetrics().horizontalAdvance(QStringLiteral("000")) + 2 * kFrame,
            fontMetrics().height() + kFrame / 2};
}

void NumberLabel::keyPressEvent(QKeyEvent* event) {
    const QString typed = event->text();
    if (isEnter(event->key()))
        openLine(text());
    else if (typed.size() == 1 && typed.front().isDigit())
        openLine(typed);
    else
        QToolButton::keyPressEvent(event);
}

void NumberLabel::resizeEvent(QResizeEvent* event) {
    QToolButton::resizeEvent(event);
    line_->setGeometry(rect());
}

/// The line would hand Enter on to the label, which would open it again.
bool NumberLabel::eventFilter(QObject* /*target*/, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<QKeyEvent*>(event)->key();
    const bool enter = isEnter(key);
    if (enter || key == Qt::Key_Escape)
        closeLine(enter);
    return enter || key == Qt::Key_Escape;
}

/// The number as it stands is selected, so that typing replaces it; a digit goes on.
void NumberLabel::openLine(const QString& text) {
    line_->setText(text);
    line_->show();
    line_->setFocus();
    if (text == this->text())
        line_->selectAll();
}

/// Hiding a line that has the focus finishes its editing again.
void NumberLabel::closeLine(bool take) {
    if (line_->isHidden())
        return;
    const QString typed = line_->text();
    const bool focused = line_->hasFocus();
    line_->hide();
    if (focused)
        setFocus();
    if (take && !typed.isEmpty() && typed != text())
        Q_EMIT numberTyped(typed.toInt());
}
