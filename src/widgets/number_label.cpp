#include "widgets/number_label.h"

#include "widgets/label_button.h"

#include <QAccessibleWidget>
#include <QCoreApplication>
#include <QIntValidator>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QStyleOptionToolButton>

#include <limits>
#include <utility>

namespace {

constexpr int kFrame = 8;  ///< beside the number, in pixels

bool isEnter(int key) {
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

class LabelAccessible : public QAccessibleWidget {
public:
    explicit LabelAccessible(NumberLabel* label)
        : QAccessibleWidget(label, QAccessible::Button), label_(label) {}

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name          ? label_->name()
               : kind == QAccessible::Description ? label_->description()
                                                  : QAccessibleWidget::text(kind);
    }

    QStringList actionNames() const override {
        return QStringList{pressAction()} + QAccessibleWidget::actionNames();
    }

    void doAction(const QString& name) override {
        if (name == pressAction())
            label_->animateClick();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    NumberLabel* label_;
};

QAccessibleInterface* makeInterface(const QString& className, QObject* object) {
    if (className != QLatin1String(NumberLabel::staticMetaObject.className()))
        return nullptr;
    return new LabelAccessible(qobject_cast<NumberLabel*>(object));
}

/// Whether the line gets the focus back: its window is left, or a menu opens over it.
bool comesBack(const QFocusEvent& focus) {
    return focus.reason() == Qt::ActiveWindowFocusReason || focus.reason() == Qt::PopupFocusReason;
}

}  // namespace

NumberLabel::NumberLabel(QWidget* parent) : QToolButton(parent), line_(new QLineEdit(this)) {
    QAccessible::installFactory(makeInterface);
    makeLabelButton(*this, palette().color(QPalette::WindowText));
    line_->setAlignment(Qt::AlignCenter);
    line_->setMaxLength(1);
    line_->setValidator(new QIntValidator(0, std::numeric_limits<int>::max(), line_));
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

void NumberLabel::describe(Words name, Words description) {
    name_ = std::move(name);
    description_ = std::move(description);
}

void NumberLabel::setText(const QString& number) {
    number_ = number;
    update();
}

void NumberLabel::initStyleOption(QStyleOptionToolButton* option) const {
    QToolButton::initStyleOption(option);
    option->text = number_;
}

QSize NumberLabel::sizeHint() const {
    const QString widest(line_->maxLength(), QLatin1Char('0'));
    return {fontMetrics().horizontalAdvance(widest) + 2 * kFrame,
            fontMetrics().height() + kFrame / 2};
}

bool NumberLabel::isDigit(const QKeyEvent& key) {
    return key.text().size() == 1 && key.text().front().isDigit();
}

void NumberLabel::wheelEvent(QWheelEvent* event) {
    if (bar_ && line_->isHidden())
        QCoreApplication::sendEvent(bar_, event);
    else
        event->ignore();
}

void NumberLabel::keyPressEvent(QKeyEvent* event) {
    if (isEnter(event->key()))
        openLine(text());
    else if (isDigit(*event))
        openLine(event->text());
    else
        QToolButton::keyPressEvent(event);
}

void NumberLabel::resizeEvent(QResizeEvent* event) {
    QToolButton::resizeEvent(event);
    line_->setGeometry(rect());
}

/// An empty line does not finish its editing when it is left.
bool NumberLabel::eventFilter(QObject* /*target*/, QEvent* event) {
    if (event->type() == QEvent::KeyPress)
        return endsByKey(*static_cast<QKeyEvent*>(event));
    if (event->type() == QEvent::FocusOut && !line_->hasAcceptableInput() &&
        !comesBack(*static_cast<QFocusEvent*>(event)))
        closeLine(false);
    return false;
}

/// The line would hand Enter on to the label, which would open it again, and Tab leaves it from the
/// label's place in the order.
bool NumberLabel::endsByKey(QKeyEvent& key) {
    const bool tab = key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab;
    if (!tab && !isEnter(key.key()) && key.key() != Qt::Key_Escape)
        return false;
    closeLine(key.key() != Qt::Key_Escape);
    if (tab)
        QCoreApplication::sendEvent(this, &key);
    return true;
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
    if (focused)
        Q_EMIT lineClosed();
}
