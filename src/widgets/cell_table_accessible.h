#pragma once

/// Lets screen readers read a `CellTable` as a table: rows and columns, their headings, the cell at
/// a place and the place of a cell. To be called before the first is shown; calling it again does
/// nothing.
void installCellTableAccessible();
