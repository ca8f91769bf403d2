#include "coherence/window_walk.h"

#include "support/window_driver.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAccessible>
#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QStyle>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <typeinfo>

namespace window_walk {
namespace {

constexpr int kTabsAtMost = 300;
constexpr int kToolButtonFrame = 4;
constexpr int kLineEditFrame = 8;

QString nameOf(const QWidget& widget) {
    return QStringLiteral("%1 (%2)").arg(widget.objectName(), QLatin1String(typeid(widget).name()));
}

/// A part of a toolkit's widget, such as the viewport of a list or the cross in a line of text.
bool isInner(const QWidget& widget) {
    const QWidget* parent = widget.parentWidget();
    const auto ofToolkit = [](const QWidget& part) {
        return part.objectName().startsWith(QLatin1String("qt_"));
    };
    return ofToolkit(widget) || ofToolkit(*parent) || qobject_cast<const QLineEdit*>(parent) ||
           qobject_cast<const QHeaderView*>(&widget) ||
           (qobject_cast<const QAbstractScrollArea*>(parent) &&
            !qobject_cast<const QAbstractItemView*>(&widget));
}

/// The window's widgets, on show or not, but for the toolkit's inner parts.
std::vector<QWidget*> allWidgets(const QWidget& window) {
    std::vector<QWidget*> found;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (widget->window() == &window && !isInner(*widget))
            found.push_back(widget);
    }
    return found;
}

std::vector<QWidget*> visibleWidgets(const QWidget& window) {
    std::vector<QWidget*> found = allWidgets(window);
    std::erase_if(found, [](const QWidget* widget) { return !widget->isVisible(); });
    return found;
}

/// Whether the class is the program's own: one without the toolkit's prefix, or one without a meta
/// object, which has the class name of its base.
bool isOwn(const QWidget& widget) {
    const QByteArray className = widget.metaObject()->className();
    return !className.startsWith('Q') || !QByteArray(typeid(widget).name()).endsWith(className);
}

bool isControl(const QWidget& widget) {
    return qobject_cast<const QAbstractButton*>(&widget) ||
           qobject_cast<const QComboBox*>(&widget) || qobject_cast<const QLineEdit*>(&widget) ||
           qobject_cast<const QAbstractSlider*>(&widget) ||
           qobject_cast<const QAbstractItemView*>(&widget);
}

bool hasVisibleChildren(const QWidget& widget) {
    for (const QObject* child : widget.children()) {
        const auto* part = qobject_cast<const QWidget*>(child);
        if (part && part->isVisible())
            return true;
    }
    return false;
}

/// Controls, whatever takes the focus, pictures, and what the program paints itself. Of what is
/// hidden, controls: a picture may be named as it is shown.
bool meansSomething(const QWidget& widget) {
    if (!widget.isVisible())
        return isControl(widget);
    const auto* label = qobject_cast<const QLabel*>(&widget);
    if (label && !isOwn(widget))
        return !label->pixmap(Qt::ReturnByValue).isNull();
    return isControl(widget) || widget.focusPolicy() != Qt::NoFocus ||
           (isOwn(widget) && !hasVisibleChildren(widget));
}

/// A control without a name of its own is given that of the frame around it, which tells nothing.
bool hasName(const QWidget& widget, const QAccessibleInterface& face) {
    const auto* frame = qobject_cast<const QGroupBox*>(widget.parentWidget());
    const QString name = face.text(QAccessible::Name).trimmed();
    const bool own = !widget.accessibleName().isEmpty();
    return !name.isEmpty() && (own || !frame || name != frame->title().trimmed());
}

/// A picture's parts that are hidden are no use to a reader of the screen.
int hiddenParts(const QAccessibleInterface& picture) {
    int hidden = 0;
    for (int i = 0; i < picture.childCount(); ++i)
        hidden += picture.child(i)->state().invisible ? 1 : 0;
    return hidden;
}

using Owners = std::map<QString, std::set<QString>>;

void addKey(Owners& owners, const QKeySequence& key, const QString& owner) {
    if (!key.isEmpty())
        owners[key.toString()].insert(owner);
}

QStringList shared(const Owners& owners, const QString& place) {
    QStringList faults;
    for (const auto& [key, names] : owners) {
        if (names.size() > 1)
            faults << QStringLiteral("%1%2: %3")
                          .arg(place, key,
                               QStringList(names.begin(), names.end()).join(QStringLiteral(", ")));
    }
    return faults;
}

bool reached(const QWidget& control, const std::set<const QWidget*>& visited) {
    for (const QWidget* widget = &control; widget; widget = widget->parentWidget()) {
        if (visited.count(widget) || (widget->focusProxy() && visited.count(widget->focusProxy())))
            return !widget->isWindow();
    }
    const auto* radio = qobject_cast<const QAbstractButton*>(&control);
    if (!radio || !radio->autoExclusive())
        return false;
    // The arrow keys go through a group of which the Tab key visits one.
    for (const QWidget* other : visited) {
        const auto* button = qobject_cast<const QAbstractButton*>(other);
        if (button && button->autoExclusive() && button->parent() == radio->parent())
            return true;
    }
    return false;
}

QSize contentsOf(const QPushButton& button) {
    QStyleOptionButton option;
    option.initFrom(&button);
    QSize size = button.style()->subElementRect(QStyle::SE_PushButtonContents, &option).size();
    if (button.menu())
        size.rwidth() -= button.style()->pixelMetric(QStyle::PM_MenuButtonIndicator, &option);
    if (!button.icon().isNull())
        size.rwidth() -= button.iconSize().width() + kToolButtonFrame;
    return size;
}

QSize contentsOf(const QAbstractButton& button) {
    if (const auto* push = qobject_cast<const QPushButton*>(&button))
        return contentsOf(*push);
    QStyleOptionButton option;
    option.initFrom(&button);
    if (button.inherits("QCheckBox"))
        return button.style()->subElementRect(QStyle::SE_CheckBoxContents, &option).size();
    if (button.inherits("QRadioButton"))
        return button.style()->subElementRect(QStyle::SE_RadioButtonContents, &option).size();
    return button.size() - QSize(kToolButtonFrame, kToolButtonFrame);
}

bool holds(const QSize& room, const QSize& text) {
    return room.width() >= text.width() && room.height() >= text.height();
}

bool fits(const QLabel& label) {
    if (isOwn(label) && label.toolTip() == label.text())
        return true;  // elides a long text, which its tooltip shows
    if (label.wordWrap())
        return label.heightForWidth(label.width()) <= label.height();
    return holds(label.size(), label.sizeHint());
}

bool fits(const QAbstractButton& button) {
    const QFontMetrics metrics(button.font());
    return button.text().isEmpty() ||
           holds(contentsOf(button),
                 {metrics.size(Qt::TextShowMnemonic, button.text()).width(), metrics.ascent()});
}

bool fits(const QComboBox& list) {
    QStyleOptionComboBox option;
    option.initFrom(&list);
    const QRect room = list.style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                    QStyle::SC_ComboBoxEditField, &list);
    for (int i = 0; i < list.count(); ++i) {
        const int width = QFontMetrics(list.font()).horizontalAdvance(list.itemText(i));
        if (width > room.width())
            return false;
    }
    return room.height() >= QFontMetrics(list.font()).ascent();
}

/// What a user types may scroll; what the program shows is to be seen whole.
bool fits(const QLineEdit& box) {
    const QFontMetrics metrics(box.font());
    const int width = box.isReadOnly() ? metrics.horizontalAdvance(box.text()) : 0;
    return holds(box.size() - QSize(kLineEditFrame, 0), {width, metrics.height()});
}

bool textFits(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
        return fits(*label);
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
        return fits(*button);
    if (const auto* list = qobject_cast<const QComboBox*>(&widget))
        return fits(*list);
    if (const auto* box = qobject_cast<const QLineEdit*>(&widget))
        return fits(*box);
    if (const auto* group = qobject_cast<const QGroupBox*>(&widget))
        return QFontMetrics(group->font()).horizontalAdvance(group->title()) <= group->width();
    return true;
}

/// Whether a widget may lie outside its window, because it can be scrolled into view.
bool canBeScrolled(const QWidget& widget) {
    for (const QWidget* parent = widget.parentWidget(); parent; parent = parent->parentWidget()) {
        if (qobject_cast<const QScrollArea*>(parent))
            return true;
    }
    return false;
}

bool overlap(const QWidget& one, const QWidget& other) {
    const auto stands = [](const QWidget& widget) {
        return isControl(widget) || (qobject_cast<const QLabel*>(&widget) && !isOwn(widget));
    };
    return one.parentWidget() == other.parentWidget() && stands(one) && stands(other) &&
           one.geometry().intersects(other.geometry());
}

}  // namespace

QStringList unnamed(const QWidget& window) {
    QStringList faults;
    for (QWidget* widget : allWidgets(window)) {
        const QAccessibleInterface* face = QAccessible::queryAccessibleInterface(widget);
        if (meansSomething(*widget) && !hasName(*widget, *face))
            faults << nameOf(*widget);
        if (widget->isVisible() && face->role() == QAccessible::Graphic && hiddenParts(*face) > 0)
            faults << nameOf(*widget) + QStringLiteral(" offers hidden parts");
    }
    return faults;
}

void Coverage::add(const QWidget& window) {
    const QString place = QLatin1String(typeid(window).name()) + QLatin1Char('/');
    classes_ << QLatin1String(typeid(window).name());
    for (const QWidget* widget : allWidgets(window)) {
        if (isControl(*widget))
            (widget->isVisible() ? shown_ : hidden_).insert(place + nameOf(*widget));
        if (widget->isVisible())
            classes_ << QLatin1String(typeid(*widget).name());
    }
}

QStringList Coverage::neverShown() const {
    QStringList faults;
    std::ranges::set_difference(hidden_, shown_, std::back_inserter(faults));
    return faults;
}

bool Coverage::hasShown(const QString& name) const {
    // As the compiler writes it: with its length before it.
    const QString written = QString::number(name.size()) + name;
    return std::ranges::any_of(classes_,
                               [&written](const QString& one) { return one.contains(written); });
}

QStringList sharedKeys(const QWidget& window) {
    Owners keys;
    QStringList faults;
    for (const QAction* action : window.findChildren<QAction*>())
        addKey(keys, action->shortcut(), action->text() + action->objectName());
    for (const QMenuBar* bar : window.findChildren<QMenuBar*>()) {
        for (const QAction* menu : bar->actions())
            addKey(keys, QKeySequence::mnemonic(menu->text()), menu->text());
    }
    for (const QMenu* menu : window.findChildren<QMenu*>()) {
        Owners items;
        for (const QAction* action : menu->actions())
            addKey(items, QKeySequence::mnemonic(action->text()), action->text());
        faults << shared(items, menu->title() + QStringLiteral(" > "));
    }
    for (const QWidget* widget : visibleWidgets(window)) {
        if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
            addKey(keys, button->shortcut(), nameOf(*widget));
        const auto* label = qobject_cast<const QLabel*>(widget);
        if (label && label->buddy())
            addKey(keys, QKeySequence::mnemonic(label->text()), nameOf(*widget));
        if (const auto* group = qobject_cast<const QGroupBox*>(widget))
            addKey(keys, QKeySequence::mnemonic(group->title()), nameOf(*widget));
    }
    return faults << shared(keys, {});
}

QStringList unreachable(QWidget& window) {
    const WindowDriver user(window);
    std::set<const QWidget*> visited;
    for (int i = 0; i < kTabsAtMost; ++i) {
        user.type(Qt::Key_Tab);
        visited.insert(window.focusWidget());
    }
    QStringList faults;
    for (const QWidget* widget : visibleWidgets(window)) {
        const QAccessibleInterface* face =
            QAccessible::queryAccessibleInterface(const_cast<QWidget*>(widget));
        const bool acts = isControl(*widget) || face->role() == QAccessible::Button;
        if (acts && widget->isEnabled() && !reached(*widget, visited))
            faults << nameOf(*widget);
    }
    return faults;
}

QStringList clipped(const QWidget& window) {
    QStringList faults;
    const std::vector<QWidget*> widgets = visibleWidgets(window);
    for (std::size_t i = 0; i < widgets.size(); ++i) {
        const QWidget& widget = *widgets[i];
        if (!textFits(widget))
            faults << QStringLiteral("%1: the text has no room in %2 x %3")
                          .arg(nameOf(widget))
                          .arg(widget.width())
                          .arg(widget.height());
        const QRect place(widget.mapTo(&window, QPoint()), widget.size());
        if (!canBeScrolled(widget) && !window.rect().contains(place))
            faults << nameOf(widget) + QStringLiteral(" stands out of the window");
        for (std::size_t j = 0; j < i; ++j) {
            if (overlap(widget, *widgets[j]))
                faults << nameOf(widget) + QStringLiteral(" covers ") + nameOf(*widgets[j]);
        }
    }
    return faults;
}

}  // namespace window_walk
