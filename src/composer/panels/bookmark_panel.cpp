#include "composer/panels/bookmark_panel.h"

#include "ui_bookmark_panel.h"
#include "widgets/action_icon.h"

#include <QKeyEvent>

namespace {

constexpr int kFewestRows = 4;

}  // namespace

BookmarkPanel::BookmarkPanel(QWidget* parent)
    : QGroupBox(parent), ui_(std::make_unique<Ui::BookmarkPanel>()) {
    using Direction = BookmarkCommands::Direction;
    ui_->setupUi(this);
    setActionIcon(*ui_->cmdPlayBm, ActionIcon::Play);
    setActionIcon(*ui_->cmdRenameBm, ActionIcon::Edit);
    setActionIcon(*ui_->cmdModBm, ActionIcon::Update);
    setActionIcon(*ui_->cmdDelBm, ActionIcon::Delete);
    ui_->lstBookMark->setMinimumHeight(kFewestRows * fontMetrics().lineSpacing());
    connect(ui_->lstBookMark, &QListWidget::itemDoubleClicked, this, &BookmarkPanel::play);
    connect(ui_->cmdPlayBm, &QPushButton::clicked, this, &BookmarkPanel::play);
    connect(ui_->cmdAddBm, &QPushButton::clicked, this, &BookmarkPanel::addRequested);
    connect(ui_->cmdRenameBm, &QPushButton::clicked, this,
            [this] { Q_EMIT renameRequested(row()); });
    connect(ui_->cmdModBm, &QPushButton::clicked, this, [this] { Q_EMIT modifyRequested(row()); });
    connect(ui_->cmdMbUd_0, &QToolButton::clicked, this,
            [this] { Q_EMIT moveRequested(row(), Direction::Up); });
    connect(ui_->cmdMbUd_1, &QToolButton::clicked, this,
            [this] { Q_EMIT moveRequested(row(), Direction::Down); });
    connect(ui_->cmdDelBm, &QPushButton::clicked, this, [this] { Q_EMIT removeRequested(row()); });
    connect(ui_->cmdHideBm, &QToolButton::clicked, this, &BookmarkPanel::hideRequested);
}

BookmarkPanel::~BookmarkPanel() = default;

void BookmarkPanel::play() {
    Q_EMIT playRequested(row());
}

void BookmarkPanel::showBookmarks(const QStringList& items) {
    if (items == shown_)
        return;
    const int selected = rowAfter(items);
    shown_ = items;
    ui_->lstBookMark->clear();
    ui_->lstBookMark->addItems(items);
    select(selected);
}

/// Which of the new items the selected one has become, or -1.
int BookmarkPanel::rowAfter(const QStringList& items) const {
    const int before = row();
    if (before < 0 || items.size() == shown_.size())
        return before;
    return static_cast<int>(items.indexOf(shown_[before]));
}

int BookmarkPanel::row() const {
    const auto selected = ui_->lstBookMark->selectionModel()->selectedRows();
    return selected.isEmpty() ? -1 : selected.front().row();
}

void BookmarkPanel::select(int row) {
    ui_->lstBookMark->setCurrentRow(row);
}

/// The list leaves the Enter key to the frame around it.
void BookmarkPanel::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && ui_->lstBookMark->hasFocus())
        play();
    else
        QGroupBox::keyPressEvent(event);
}
