#include "shell/guide_panel.h"

#include "widgets/label_button.h"

#include <QAction>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QToolButton>

#include <algorithm>

GuidePanel::GuidePanel(QWidget* parent) : QWidget(parent), content_(new QWidget(this)) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    content_->setObjectName(QStringLiteral("guida"));
}

void GuidePanel::setRows(const QString& title, const std::vector<Row>& rows) {
    auto* grid = new QGridLayout(content_);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setVerticalSpacing(2);
    grid->setColumnStretch(0, 1);
    auto* heading = new QLabel(title, content_);
    heading->setObjectName(QStringLiteral("lblAltro"));
    grid->addWidget(heading, 0, 0, 1, 2);
    for (const Row& row : rows) {
        const int line = grid->rowCount();
        auto* button = new QToolButton(content_);
        button->setDefaultAction(row.item);
        button->setObjectName(QStringLiteral("guida_") + row.item->objectName());
        makeLabelButton(*button, palette().color(QPalette::Link));
        auto* keys = new QLabel(row.keys, content_);
        keys->setObjectName(QStringLiteral("tasti_") + row.item->objectName());
        grid->addWidget(button, line, 0, Qt::AlignLeft);
        grid->addWidget(keys, line, 1);
        lastControl_ = button;
    }
    updateGeometry();
    arrange();
}

void GuidePanel::setWanted(bool wanted) {
    wanted_ = wanted;
    arrange();
}

QSize GuidePanel::minimumSizeHint() const {
    return {std::max(0, content_->sizeHint().width()), 0};
}

void GuidePanel::resizeEvent(QResizeEvent* /*event*/) {
    arrange();
}

void GuidePanel::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange)
        arrange();
    QWidget::changeEvent(event);
}

void GuidePanel::arrange() {
    const QSize wanted = content_->sizeHint();
    content_->setGeometry(0, 0, width(), wanted.height());
    content_->setVisible(wanted_ && wanted.height() <= height() && wanted.width() <= width());
}
