#include "composer/panels/browser_panel.h"

#include "composer/library/melody_library.h"
#include "platform/user_text.h"
#include "ui_browser_panel.h"
#include "widgets/action_icon.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QToolTip>

#include <algorithm>

namespace {

constexpr int kFewestRows = 4;

/// Rows as wide as the list, however long the names are: they are elided, and a tooltip shows them
/// whole. The list measures only the first one of its rows, which must not decide for all.
class ElidedRows : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return {0, QStyledItemDelegate::sizeHint(option, index).height()};
    }

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override {
        const QSize wanted = QStyledItemDelegate::sizeHint(option, index);
        const bool elided = index.isValid() && wanted.width() > option.rect.width();
        if (event->type() != QEvent::ToolTip || !elided)
            return QStyledItemDelegate::helpEvent(event, view, option, index);
        QToolTip::showText(event->globalPos(), index.data().toString(), view);
        return true;
    }
};

/// The arrow keys go on from this row, but it is not selected.
void moveTo(QListWidget& list, int row) {
    list.setCurrentRow(std::min(row, list.count() - 1), QItemSelectionModel::NoUpdate);
}

}  // namespace

void PathLabel::showPath(const QString& path) {
    setText(path);
    setToolTip(path);
}

void PathLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect place = contentsRect();
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideMiddle, place.width());
    style()->drawItemText(&painter, place, static_cast<int>(alignment()), palette(), isEnabled(),
                          shown, foregroundRole());
}

BrowserPanel::BrowserPanel(QWidget* parent)
    : QGroupBox(parent), ui_(std::make_unique<Ui::BrowserPanel>()) {
    ui_->setupUi(this);
    setActionIcon(*ui_->cmdEseguiFile, ActionIcon::Play);
    setActionIcon(*ui_->cmdMkdir, ActionIcon::NewFolder);
    setActionIcon(*ui_->cmdDelete, ActionIcon::Delete);
    ui_->List1->setItemDelegate(new ElidedRows(ui_->List1));
    ui_->List1->setMinimumHeight(kFewestRows * fontMetrics().lineSpacing());
    // Another panel beside it leaves it fewer rows.
    connect(ui_->List1->verticalScrollBar(), &QScrollBar::rangeChanged, ui_->List1,
            [list = ui_->List1] { list->scrollTo(list->currentIndex()); });
    connect(ui_->List1, &QListWidget::itemDoubleClicked, this, &BrowserPanel::play);
    connect(ui_->cmdEseguiFile, &QPushButton::clicked, this, &BrowserPanel::play);
    connect(ui_->cmdMkdir, &QPushButton::clicked, this, &BrowserPanel::createFolderRequested);
    connect(ui_->cmdDelete, &QPushButton::clicked, this, [this] { Q_EMIT removeRequested(row()); });
    connect(ui_->cmdRename, &QPushButton::clicked, this, [this] { Q_EMIT renameRequested(row()); });
    connect(ui_->cmdHideFr2, &QToolButton::clicked, this, &BrowserPanel::hideRequested);
}

BrowserPanel::~BrowserPanel() = default;

void BrowserPanel::play() {
    Q_EMIT playRequested(row());
}

void BrowserPanel::showEntries(const MelodyLibrary& library) {
    QListWidget& list = *ui_->List1;
    const bool sameFolder = folder_ == library.MelodyFolder();
    const int current = sameFolder ? list.currentRow() : 0;
    const QString selected = sameFolder && row() >= 0 ? list.item(row())->text() : QString();
    folder_ = library.MelodyFolder();
    ui_->lblPercorso->showPath(library.pathLabel());

    QStringList texts;
    for (const LibraryEntry& entry : library.entries())
        texts << entry.text();
    list.clear();
    list.addItems(texts);
    markFolders(library);
    const auto found = selected.isEmpty() ? -1 : texts.indexOf(selected);
    if (found >= 0)
        select(static_cast<int>(found));
    else
        moveTo(list, current);
}

/// A screen reader says what the mark before a folder's name means.
void BrowserPanel::markFolders(const MelodyLibrary& library) {
    int place = 0;
    for (const LibraryEntry& entry : library.entries()) {
        if (entry.kind != LibraryEntry::Kind::Melody) {
            const bool isParent = entry.kind == LibraryEntry::Kind::Parent;
            ui_->List1->item(place)->setData(Qt::AccessibleTextRole,
                                             isParent ? UserText::tr("Cartella superiore")
                                                      : UserText::tr("Cartella ") + entry.name);
        }
        ++place;
    }
}

int BrowserPanel::row() const {
    const auto selected = ui_->List1->selectionModel()->selectedRows();
    return selected.isEmpty() ? -1 : selected.front().row();
}

void BrowserPanel::select(int row) {
    ui_->List1->setCurrentRow(row);
}

void BrowserPanel::focusList() {
    ui_->List1->setFocus();
}

/// The list leaves the Enter key to the frame around it. It means the row that the arrow keys have
/// come to, selected or not.
void BrowserPanel::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && ui_->List1->hasFocus()) {
        select(ui_->List1->currentRow());
        play();
    } else {
        QGroupBox::keyPressEvent(event);
    }
}
