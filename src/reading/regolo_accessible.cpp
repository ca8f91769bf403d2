#include "reading/regolo_accessible.h"

#include "reading/regolo.h"
#include "reading/regolo_marker.h"

#include <QAccessibleWidget>

namespace {

class RulerAccessible : public QAccessibleWidget {
public:
    explicit RulerAccessible(Regolo* ruler)
        : QAccessibleWidget(ruler, QAccessible::List), ruler_(ruler) {}

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Value ? staff_step::placeInWords(ruler_->cursorStep())
                                          : QAccessibleWidget::text(kind);
    }

private:
    Regolo* ruler_;
};

class MarkerAccessible : public QAccessibleWidget {
public:
    MarkerAccessible(RegoloMarker* marker, Regolo* ruler)
        : QAccessibleWidget(marker, QAccessible::ListItem), marker_(marker), ruler_(ruler) {}

    /// A step whose marker is hidden can still be pressed, so it stays in the list.
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.invisible = !ruler_->isVisible();
        state.disabled = !ruler_->isEnabled();
        state.focusable = ruler_->isEnabled();
        state.focused = ruler_->hasFocus() && ruler_->cursorStep() == marker_->step();
        state.selectable = true;
        state.selected = marker_->isHidden();
        return state;
    }

    QStringList actionNames() const override { return {pressAction()}; }

    void doAction(const QString& name) override {
        if (name == pressAction() && ruler_->isEnabled())
            ruler_->pressStep(marker_->step());
    }

private:
    RegoloMarker* marker_;
    Regolo* ruler_;
};

QAccessibleInterface* makeInterface(const QString& className, QObject* object) {
    if (className == QLatin1String(Regolo::staticMetaObject.className()))
        return new RulerAccessible(qobject_cast<Regolo*>(object));
    if (className != QLatin1String(RegoloMarker::staticMetaObject.className()))
        return nullptr;
    auto* marker = qobject_cast<RegoloMarker*>(object);
    auto* ruler = marker ? qobject_cast<Regolo*>(marker->parentWidget()) : nullptr;
    return ruler ? new MarkerAccessible(marker, ruler) : nullptr;
}

}  // namespace

void installRegoloAccessible() {
    QAccessible::installFactory(makeInterface);
}
