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

/// Qt asks once for each class of the object that has meta data of its own; the ruler's classes
/// share those of QWidget.
QAccessibleInterface* makeInterface(const QString& className, QObject* object) {
    if (className != QLatin1String("QWidget"))
        return nullptr;
    if (auto* ruler = dynamic_cast<Regolo*>(object))
        return new RulerAccessible(ruler);
    auto* marker = dynamic_cast<RegoloMarker*>(object);
    auto* ruler = marker ? dynamic_cast<Regolo*>(marker->parentWidget()) : nullptr;
    return ruler ? new MarkerAccessible(marker, ruler) : nullptr;
}

}  // namespace

void installRegoloAccessible() {
    QAccessible::installFactory(makeInterface);
}
