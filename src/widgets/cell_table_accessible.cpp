#include "widgets/cell_table_accessible.h"

#include "widgets/cell_table.h"

#include <QAccessibleWidget>

namespace {

QAccessibleInterface* interfaceOf(QWidget* widget) {
    return QAccessible::queryAccessibleInterface(widget);
}

/// Nothing in it can be selected.
class TableAccessible : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    explicit TableAccessible(CellTable& table)
        : QAccessibleWidget(&table, QAccessible::Table), table_(table) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }

    int childCount() const override { return static_cast<int>(children().size()); }
    QAccessibleInterface* child(int index) const override {
        return interfaceOf(children().value(index));
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        return child ? static_cast<int>(children().indexOf(qobject_cast<QWidget*>(child->object())))
                     : -1;
    }

    int rowCount() const override { return table_.rowCount(); }
    int columnCount() const override { return table_.columnCount(); }
    QAccessibleInterface* cellAt(int row, int column) const override {
        return interfaceOf(table_.cell(row, column));
    }
    QString columnDescription(int column) const override {
        return describe(table_.heading(column));
    }
    QString rowDescription(int row) const override {
        return describe(table_.cell(row, table_.namingColumn()));
    }

    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    int selectedCellCount() const override { return 0; }
    QList<QAccessibleInterface*> selectedCells() const override { return {}; }
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override { return 0; }
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override { return {}; }
    bool isColumnSelected(int /*column*/) const override { return false; }
    bool isRowSelected(int /*row*/) const override { return false; }
    bool selectRow(int /*row*/) override { return false; }
    bool selectColumn(int /*column*/) override { return false; }
    bool unselectRow(int /*row*/) override { return false; }
    bool unselectColumn(int /*column*/) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent* /*event*/) override {}

private:
    /// The headings, then the cells row by row.
    QWidgetList children() const {
        QWidgetList found;
        for (int column = 0; column < columnCount(); ++column)
            found += table_.heading(column);
        for (int row = 0; row < rowCount(); ++row) {
            for (int column = 0; column < columnCount(); ++column)
                found += table_.cell(row, column);
        }
        return found;
    }

    static QString describe(QWidget* widget) {
        QAccessibleInterface* found = interfaceOf(widget);
        return found ? found->text(QAccessible::Name) : QString();
    }

    CellTable& table_;
};

/// A cell or heading; what it is made of is not read.
class CellAccessible : public QAccessibleWidget, public QAccessibleTableCellInterface {
public:
    CellAccessible(QWidget& cell, CellTable& table)
        : QAccessibleWidget(&cell, QAccessible::Cell), cell_(cell), table_(table) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TableCellInterface && rowIndex() >= 0
                   ? static_cast<QAccessibleTableCellInterface*>(this)
                   : QAccessibleWidget::interface_cast(type);
    }

    QAccessible::Role role() const override {
        return rowIndex() < 0 ? QAccessible::ColumnHeader : QAccessible::Cell;
    }
    QString text(QAccessible::Text kind) const override {
        if (kind != QAccessible::Name || !cell_.accessibleName().isEmpty())
            return QAccessibleWidget::text(kind);
        return cell_.property("text").toString();
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.focusable = rowIndex() >= 0;
        state.focused = table_.hasFocus() && &table_.cursorCell() == &cell_;
        return state;
    }
    int childCount() const override { return 0; }
    QAccessibleInterface* child(int /*index*/) const override { return nullptr; }

    int rowIndex() const override { return place().row; }
    int columnIndex() const override { return place().column; }
    int rowExtent() const override { return 1; }
    int columnExtent() const override { return 1; }
    bool isSelected() const override { return false; }
    QAccessibleInterface* table() const override { return interfaceOf(&table_); }
    QList<QAccessibleInterface*> columnHeaderCells() const override {
        return {interfaceOf(table_.heading(columnIndex()))};
    }
    QList<QAccessibleInterface*> rowHeaderCells() const override {
        return {interfaceOf(table_.cell(rowIndex(), table_.namingColumn()))};
    }

private:
    struct Place {
        int row;
        int column;
    };

    Place place() const {
        for (int row = 0; row < table_.rowCount(); ++row) {
            for (int column = 0; column < table_.columnCount(); ++column) {
                if (table_.cell(row, column) == &cell_)
                    return {row, column};
            }
        }
        return {-1, -1};
    }

    QWidget& cell_;
    CellTable& table_;
};

QAccessibleInterface* makeInterface(const QString& className, QObject* object) {
    if (className == QLatin1String(CellTable::staticMetaObject.className()))
        return new TableAccessible(*qobject_cast<CellTable*>(object));
    auto* cell = qobject_cast<QWidget*>(object);
    auto* table = cell ? qobject_cast<CellTable*>(cell->parentWidget()) : nullptr;
    return table ? new CellAccessible(*cell, *table) : nullptr;
}

}  // namespace

void installCellTableAccessible() {
    QAccessible::installFactory(makeInterface);
}
