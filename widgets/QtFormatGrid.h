// A grid whose headings come from a format string: heading row and first column fixed, cells of plain text. Knows Qt
// and nothing of what its cells mean.
#pragma once

#include <QColor>
#include <QIcon>
#include <QRect>
#include <QString>
#include <QTableView>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace vantrel {

/// What a grid is laid out from. Lengths are in twips of the screen's logical resolution; they are minima, and give way
/// to a font that needs more.
struct GridPlan {
    /// "|" separates columns; a column's text begins with "^" (centred) or "<" (left), which counts for its cells as
    /// well. Everything behind that letter is heading.
    std::string format;
    std::vector<int> columnWidths; ///< One a column.
    int rows = 1; ///< The heading row included.
    int rowsShown = 1; ///< So many show at once where there is room, the heading row included.
    int leastRows = 0; ///< And so many where there is little; 0: all of these.
    int leastColumns = 0; ///< So many, the fixed one included, where there is little room; 0: all of them.
    int width = 0; ///< Of the whole grid.
    std::vector<std::string> widestTexts{}; ///< What a column has room for; may be shorter than the columns.
    int firstStretchingColumn = 1; ///< Room to spare goes to this column and those behind it, in equal parts.
    int columnsInSight = 0; ///< Always, the fixed one included; those behind are scrolled where room is short. 0: all.
};

/// Rows that are on the screen; none when `last` is below `first`.
struct RowRange {
    int first = 1;
    int last = 0;
    [[nodiscard]] bool Contains(int row) const { return row >= first && row <= last; }
};

/// Rows and columns are counted from 0; row 0 and column 0 are the fixed ones. A row or column outside the plan is an
/// error of the caller's (std::out_of_range). Arrow keys move the current cell, Tab leaves the grid, Ctrl+C copies the
/// selected cells.
class QtFormatGrid final : public QTableView {
public:
    explicit QtFormatGrid(QWidget* parent = nullptr);

    /// Empties the grid and lays it out anew.
    void LayOut(const GridPlan& plan);

    [[nodiscard]] int RowCount() const;
    [[nodiscard]] int ColumnCount() const;
    [[nodiscard]] QString Text(int row, int column) const;
    void SetText(int row, int column, const QString& text);
    /// How the texts of a column stand, as its format says.
    [[nodiscard]] Qt::Alignment Alignment(int column) const;
    /// An invalid colour gives the cell back to the theme.
    void SetTextColor(int row, int column, const QColor& color);
    /// Of every cell of the body that has none of its own, and headings as of something disabled. Not by a palette: the
    /// toolkit keeps what it has drawn of headings, for each palette that there ever was.
    void SetLook(const QColor& text, bool headingsGrey);
    [[nodiscard]] const QColor& BodyColor() const { return textColor_; }
    /// The ground of a cell of the body; an invalid colour gives it back to the theme.
    void SetGround(int row, int column, const QColor& color);
    void SetItalic(int row, int column, bool italic);
    /// Before the text.
    void SetIcon(int row, int column, const QIcon& icon);
    /// Asked for the hint of a cell when the pointer rests on it.
    void SetOnHint(std::function<QString(int row, int column)> onHint);
    /// A row that is not shown takes no room.
    void ShowRow(int row, bool shown) { setRowHidden(row - 1, !shown); }

    /// 0 while no cell is the current one.
    [[nodiscard]] int CurrentRow() const { return currentIndex().row() + 1; }
    [[nodiscard]] int CurrentColumn() const { return currentIndex().column() + 1; }
    /// Makes a cell the current, only selected one and scrolls to it; without one (0, 0) the grid stays where it is.
    void SetCurrentCell(int row, int column);

    /// Where a cell stands, in the grid's own coordinates, without its grid lines; outside the grid when it is scrolled
    /// out. Not for fixed cells.
    [[nodiscard]] QRect CellRect(int row, int column) const;
    /// Called whenever cells may stand elsewhere than before: scrolled, or laid out anew.
    void SetOnCellsMoved(std::function<void()> onCellsMoved) { onCellsMoved_ = std::move(onCellsMoved); }
    /// Of the rows below the heading, those of which the user really sees a part: scrolled in, and not hidden with a
    /// tab, behind an edge or in a minimised window.
    [[nodiscard]] RowRange VisibleRows() const;
    /// One of them, and not one that is not shown.
    [[nodiscard]] bool RowInSight(int row) const { return VisibleRows().Contains(row) && !isRowHidden(row - 1); }
    /// Of every row, the heading row included; pixels.
    [[nodiscard]] int RowHeight() const { return rowHeight_; }
    /// The selected cells, tabs between columns and line ends between rows.
    [[nodiscard]] QString SelectedText() const;

    [[nodiscard]] QSize sizeHint() const override { return wanted_; }

    /// Typing in a grid means an entry, never a search.
    void keyboardSearch(const QString&) override {}

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void initViewItemOption(QStyleOptionViewItem* option) const override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    class Cells;

    void BuildHeaders();
    void FitFont();
    /// In a cell.
    [[nodiscard]] int TextWidth(const QString& text) const;
    [[nodiscard]] int WidthOfWidest(std::size_t column) const;
    void StretchColumns();
    void TellCellsMoved() const;
    void PaintCorner(QWidget& corner) const;

    Cells* cells_; ///< Qt's child of this grid.
    QWidget* corner_ = nullptr; ///< Where the fixed row and column meet; Qt's child.
    GridPlan plan_;
    std::function<void()> onCellsMoved_;
    int rowHeight_ = 0;
    QSize wanted_; ///< With all of the rows to be shown.
    QColor textColor_; ///< Invalid: the theme's.
    std::vector<int> leastWidths_; ///< Of the columns, in pixels.
};

} // namespace vantrel
