#pragma once

#include <QWidget>

#include <vector>

class QGridLayout;

/// A table of labels and pictures under a row of headings, each cell a widget of its own. With the
/// focus it has a cursor, which the arrow keys, Home and End move and screen readers follow.
///
/// A cell or heading is read by its accessible name, or else by its text. Those of a cell's parts
/// are not read: the cell names them.
class CellTable : public QWidget {
    Q_OBJECT

public:
    /// Of the column `namingColumn` a row's cell names the row, as a heading names a column.
    CellTable(int columns, int namingColumn, QWidget* parent);

    /// Puts the heading in the first row of the grid.
    void addHeading(QWidget& heading, int column, Qt::Alignment alignment);
    /// Puts the cell in the row below, counted from 0. Every row needs all of its cells.
    void addCell(QWidget& cell, int row, int column, Qt::Alignment alignment = {});
    /// Paints behind a row in the palette's colour for every other row.
    void addBand(int row);

    QGridLayout& grid() { return *grid_; }

    int rowCount() const { return static_cast<int>(cells_.size()); }
    int columnCount() const { return static_cast<int>(headings_.size()); }
    int namingColumn() const { return namingColumn_; }
    QWidget* heading(int column) const;
    QWidget* cell(int row, int column) const;
    QWidget& cursorCell() const { return *cell(row_, column_); }

    static int gridRow(int row) { return row + 1; }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void moveCursor(int row, int column);
    void placeFrame();

    QGridLayout* grid_;
    std::vector<QWidget*> headings_;
    std::vector<std::vector<QWidget*>> cells_;
    int namingColumn_;
    int row_ = 0;  ///< of the cursor
    int column_;   ///< of the cursor
    QWidget* frame_;
};
