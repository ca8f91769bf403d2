#include "widgets/cell_table.h"

#include "widgets/announcement.h"
#include "widgets/cell_table_accessible.h"
#include "widgets/pixel_grid.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

namespace {

constexpr double kFrameLine = 2;
constexpr int kFrameRoom = 3;  ///< around the cell

/// The frame around the cursor's cell, over cells and bands.
class CellFrame : public QWidget {
public:
    explicit CellFrame(QWidget* parent) : QWidget(parent) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        hide();
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(
            QPen(palette().color(QPalette::Highlight), pixel_grid::thickness(painter, kFrameLine)));
        painter.drawRect(pixel_grid::inside(painter, rect(), kFrameLine));
    }
};

template <typename T>
T* at(const std::vector<T*>& all, int index) {
    return index >= 0 && index < static_cast<int>(all.size()) ? all[static_cast<std::size_t>(index)]
                                                              : nullptr;
}

}  // namespace

CellTable::CellTable(int columns, int namingColumn, QWidget* parent)
    : QWidget(parent),
      grid_(new QGridLayout(this)),
      headings_(static_cast<std::size_t>(columns)),
      namingColumn_(namingColumn),
      column_(namingColumn),
      frame_(new CellFrame(this)) {
    installCellTableAccessible();
    setFocusPolicy(Qt::TabFocus);
    grid_->setContentsMargins(0, 0, 0, 0);
}

void CellTable::addHeading(QWidget& heading, int column, Qt::Alignment alignment) {
    headings_[static_cast<std::size_t>(column)] = &heading;
    grid_->addWidget(&heading, 0, column, alignment);
}

void CellTable::addCell(QWidget& cell, int row, int column, Qt::Alignment alignment) {
    const auto rows = static_cast<std::size_t>(row) + 1;
    if (cells_.size() < rows)
        cells_.resize(rows, std::vector<QWidget*>(headings_.size()));
    cells_[rows - 1][static_cast<std::size_t>(column)] = &cell;
    grid_->addWidget(&cell, gridRow(row), column, alignment);
}

void CellTable::addBand(int row) {
    auto* band = new QWidget(this);
    band->setAutoFillBackground(true);
    band->setBackgroundRole(QPalette::AlternateBase);
    grid_->addWidget(band, gridRow(row), 0, 1, -1);
}

QWidget* CellTable::heading(int column) const {
    return at(headings_, column);
}

QWidget* CellTable::cell(int row, int column) const {
    return row >= 0 && row < rowCount() ? at(cells_[static_cast<std::size_t>(row)], column)
                                        : nullptr;
}

void CellTable::keyPressEvent(QKeyEvent* event) {
    const bool whole = event->modifiers().testFlag(Qt::ControlModifier);
    switch (event->key()) {
        case Qt::Key_Up:
            return moveCursor(row_ - 1, column_);
        case Qt::Key_Down:
            return moveCursor(row_ + 1, column_);
        case Qt::Key_Left:
            return moveCursor(row_, column_ - 1);
        case Qt::Key_Right:
            return moveCursor(row_, column_ + 1);
        case Qt::Key_Home:
            return moveCursor(whole ? 0 : row_, 0);
        case Qt::Key_End:
            return moveCursor(whole ? rowCount() - 1 : row_, columnCount() - 1);
        default:
            QWidget::keyPressEvent(event);
    }
}

void CellTable::focusInEvent(QFocusEvent* /*event*/) {
    placeFrame();
    announceCursorOnFocus(*this, [this]() -> QWidget& { return cursorCell(); });
}

void CellTable::focusOutEvent(QFocusEvent* /*event*/) {
    placeFrame();
}

void CellTable::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    QMetaObject::invokeMethod(this, &CellTable::placeFrame, Qt::QueuedConnection);
}

void CellTable::moveCursor(int row, int column) {
    row_ = std::clamp(row, 0, rowCount() - 1);
    column_ = std::clamp(column, 0, columnCount() - 1);
    placeFrame();
    announceCursor(*this, cursorCell());
}

void CellTable::placeFrame() {
    frame_->setVisible(hasFocus());
    if (!hasFocus())
        return;
    const QRect around =
        cursorCell().geometry().adjusted(-kFrameRoom, -kFrameRoom, kFrameRoom, kFrameRoom);
    frame_->setGeometry(around & rect());
    frame_->raise();
}
