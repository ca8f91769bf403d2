#include "widgets/panel_text.h"

#include <QEvent>
#include <QLabel>

#include <algorithm>
#include <utility>

namespace panel_text {
namespace {

constexpr int kLabelFrame = 2;  ///< the toolkit rounds up what a label needs

/// The width of a widget's texts, which is another with another type.
class TextRoom : public QObject {
public:
    TextRoom(QWidget& widget, QStringList texts, int frame, bool exact)
        : QObject(&widget),
          widget_(widget),
          texts_(std::move(texts)),
          frame_(frame),
          exact_(exact) {
        widget.installEventFilter(this);
        keep();
    }

protected:
    bool eventFilter(QObject* /*target*/, QEvent* event) override {
        if (event->type() == QEvent::FontChange)
            keep();
        return false;
    }

private:
    void keep() {
        int widest = 0;
        for (const QString& text : texts_)
            widest = std::max(widest, widget_.fontMetrics().horizontalAdvance(text));
        widget_.setMinimumWidth(widest + frame_);
        if (exact_)
            widget_.setMaximumWidth(widest + frame_);
    }

    QWidget& widget_;
    QStringList texts_;
    int frame_;
    bool exact_;
};

}  // namespace

void reserve(QWidget& widget, const QString& widest, int frame) {
    new TextRoom(widget, {widest}, frame, false);
}

void fix(QWidget& widget, const QString& widest, int frame) {
    new TextRoom(widget, {widest}, frame, true);
}

void reserveWidest(QLabel& label, const QStringList& texts) {
    new TextRoom(label, texts, kLabelFrame, false);
}

}  // namespace panel_text
