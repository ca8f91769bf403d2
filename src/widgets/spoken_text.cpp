#include "widgets/spoken_text.h"

#include <QAccessible>
#include <QApplication>

#if QT_VERSION < QT_VERSION_CHECK(6, 8, 0)
#include <QList>
#endif

namespace spoken_text {

#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)

void say(const QString& text) {
    QObject* speaker = QApplication::activeWindow();
    QAccessibleAnnouncementEvent event(speaker ? speaker : qApp, text);
    QAccessible::updateAccessibility(&event);
}

#else

namespace {

/// How many texts stay on the bus: a screen reader asks for them some time after it was told.
constexpr int kKept = 32;

/// An object that exists on the accessibility bus alone.
class BusObject : public QAccessibleInterface {
public:
    BusObject(QAccessible::Role role, QAccessibleInterface* parent, QString name)
        : role_(role), parent_(parent), name_(std::move(name)) {}

    bool isValid() const override { return true; }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* parent() const override { return parent_; }
    QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? name_ : QString();
    }
    void setText(QAccessible::Text /*kind*/, const QString& /*text*/) override {}
    QRect rect() const override { return {}; }
    QAccessible::Role role() const override { return role_; }
    QAccessible::State state() const override { return {}; }

private:
    QAccessible::Role role_;
    QAccessibleInterface* parent_;
    QString name_;
};

/// The parent of every text. What appears in a status bar is said without the word "notification"
/// before it.
QAccessibleInterface* statusBar() {
    static const QAccessible::Id id = QAccessible::registerAccessibleInterface(new BusObject(
        QAccessible::StatusBar, QAccessible::queryAccessibleInterface(qApp), QString()));
    return QAccessible::accessibleInterface(id);
}

void notify(QAccessible::Id id, QAccessible::Event type) {
    QAccessibleEvent event(QAccessible::accessibleInterface(id), type);
    QAccessible::updateAccessibility(&event);
}

}  // namespace

/// The bridge hands on neither alerts nor what else the toolkit has for messages, but it does tell
/// that an object has appeared, and a notification that appears is said. Each text is an object of
/// its own: a screen reader reads the name later, when another text may have been given.
void say(const QString& text) {
    static QList<QAccessible::Id> kept;
    kept += QAccessible::registerAccessibleInterface(
        new BusObject(QAccessible::Notification, statusBar(), text));
    notify(kept.back(), QAccessible::ObjectShow);
    if (kept.size() <= kKept)
        return;
    const QAccessible::Id oldest = kept.takeFirst();
    notify(oldest, QAccessible::ObjectDestroyed);
    QAccessible::deleteAccessibleInterface(oldest);
}

#endif

}  // namespace spoken_text
