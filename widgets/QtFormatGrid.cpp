// The grid on Qt's table view. The fixed row and column are its headers, so that they look and behave as headers do.
#include "widgets/QtFormatGrid.h"

#include "platform/QtScreen.h"
#include "widgets/QtIcons.h"

#include <QAbstractButton>
#include <QAbstractTableModel>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionHeader>
#include <QStylePainter>

#include <algorithm>
#include <numeric>
#include <string_view>
#include <utility>

namespace vantrel {

namespace {

/// What a grid is higher than the rows that it shows, for its border.
constexpr int BorderTwips = 25;
constexpr int CellMargin = 4; ///< Pixels, on either side of a cell's text.
constexpr int RowPadding = 6; ///< Pixels, above and below a row's text together.

struct FormatColumn {
    QString heading;
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter;
};

FormatColumn ParseColumn(std::string_view text) {
    FormatColumn column;
    if (text.starts_with('^')) column.alignment = Qt::AlignCenter;
    if (text.starts_with('^') || text.starts_with('<')) text.remove_prefix(1);
    column.heading = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    return column;
}

std::vector<FormatColumn> ParseFormat(std::string_view format) {
    std::vector<FormatColumn> columns;
    for (std::size_t begin = 0;;) {
        const std::size_t end = format.find('|', begin);
        columns.push_back(ParseColumn(format.substr(begin, end - begin)));
        if (end == std::string_view::npos) return columns;
        begin = end + 1;
    }
}

/// What would break a table of tabs and line ends becomes a blank.
QString OneCell(QString text) {
    for (QChar& character : text) {
        if (character.category() == QChar::Other_Control) character = QLatin1Char(' ');
    }
    return text;
}

} // namespace

/// Every cell, the fixed ones included; Qt gets row 0 and column 0 as headers.
class QtFormatGrid::Cells final : public QAbstractTableModel {
public:
    explicit Cells(QObject* parent) : QAbstractTableModel(parent) {}

    void Reset(std::vector<FormatColumn> columns, int rows) {
        beginResetModel();
        columns_ = std::move(columns);
        cells_.assign(static_cast<std::size_t>(rows), std::vector<Cell>(columns_.size()));
        for (std::size_t column = 0; column < columns_.size(); ++column)
            cells_.at(0).at(column).text = columns_[column].heading;
        endResetModel();
    }

    [[nodiscard]] int Rows() const { return static_cast<int>(cells_.size()); }
    [[nodiscard]] int Columns() const { return static_cast<int>(columns_.size()); }
    [[nodiscard]] QString Text(int row, int column) const { return At(row, column).text; }
    void SetText(int row, int column, const QString& text) {
        if (At(row, column).text == text) return;
        At(row, column).text = text;
        Changed(row, column);
    }
    void SetColor(int row, int column, const QColor& color) {
        if (At(row, column).color == color) return;
        At(row, column).color = color;
        Changed(row, column);
    }
    void SetGround(int row, int column, const QColor& color) {
        if (At(row, column).ground == color) return;
        At(row, column).ground = color;
        Changed(row, column);
    }
    void SetItalic(int row, int column, bool italic) {
        if (At(row, column).italic == italic) return;
        At(row, column).italic = italic;
        Changed(row, column);
    }
    void SetIcon(int row, int column, const QIcon& icon) {
        if (At(row, column).icon.cacheKey() == icon.cacheKey()) return;
        At(row, column).icon = icon;
        Changed(row, column);
    }
    void SetOnHint(std::function<QString(int, int)> onHint) { onHint_ = std::move(onHint); }
    [[nodiscard]] QVariant Role(int row, int column, int role) const {
        const Cell& cell = At(row, column);
        if (role == Qt::DecorationRole && !cell.icon.isNull()) return cell.icon;
        if (role == Qt::ToolTipRole && row > 0 && onHint_) return onHint_(row, column);
        if (role == Qt::DisplayRole) return cell.text;
        if (role == Qt::TextAlignmentRole) return columns_.at(static_cast<std::size_t>(column)).alignment.toInt();
        if (role == Qt::ForegroundRole && cell.color.isValid()) return cell.color;
        if (role == Qt::BackgroundRole && cell.ground.isValid()) return cell.ground;
        if (role != Qt::FontRole || !cell.italic) return {};
        QFont slanted;
        slanted.setItalic(true);
        return slanted;
    }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : std::max(Rows() - 1, 0);
    }
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : std::max(Columns() - 1, 0);
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        return index.isValid() ? Role(index.row() + 1, index.column() + 1, role) : QVariant();
    }
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        return orientation == Qt::Horizontal ? Role(0, section + 1, role) : Role(section + 1, 0, role);
    }

private:
    struct Cell {
        QString text;
        QColor color;
        QColor ground;
        QIcon icon;
        bool italic = false;
    };

    [[nodiscard]] const Cell& At(int row, int column) const {
        return cells_.at(static_cast<std::size_t>(row)).at(static_cast<std::size_t>(column));
    }
    Cell& At(int row, int column) {
        return cells_.at(static_cast<std::size_t>(row)).at(static_cast<std::size_t>(column));
    }
    void Changed(int row, int column) {
        if (row == 0 && column > 0) emit headerDataChanged(Qt::Horizontal, column - 1, column - 1);
        if (row > 0 && column == 0) emit headerDataChanged(Qt::Vertical, row - 1, row - 1);
        if (row > 0 && column > 0) emit dataChanged(index(row - 1, column - 1), index(row - 1, column - 1));
    }

    std::vector<FormatColumn> columns_;
    std::vector<std::vector<Cell>> cells_;
    std::function<QString(int, int)> onHint_;
};

QtFormatGrid::QtFormatGrid(QWidget* parent) : QTableView(parent), cells_(new Cells(this)) {
    setModel(cells_);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(ContiguousSelection);
    setTabKeyNavigation(false);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setHorizontalScrollMode(ScrollPerPixel);
    BuildHeaders();
    LayOut({});
}

// Every other row is a shade off the others. A host's own colour for that may be as strong as that of a selection.
void QtFormatGrid::initViewItemOption(QStyleOptionViewItem* option) const {
    QTableView::initViewItemOption(option);
    constexpr float shade = 0.05F;
    const QColor base = palette().color(QPalette::Base);
    const QColor text = palette().color(QPalette::WindowText);
    const auto between = [](float from, float to) { return from + shade * (to - from); };
    option->palette.setColor(QPalette::AlternateBase,
                             QColor::fromRgbF(between(base.redF(), text.redF()), between(base.greenF(), text.greenF()),
                                              between(base.blueF(), text.blueF())));
    if (textColor_.isValid()) option->palette.setColor(QPalette::Text, textColor_);
}

void QtFormatGrid::BuildHeaders() {
    for (QHeaderView* header : {horizontalHeader(), verticalHeader()}) {
        header->setSectionResizeMode(QHeaderView::Fixed);
        header->setMinimumSectionSize(1);
        header->setHighlightSections(false);
    }
    corner_ = findChild<QAbstractButton*>(QString(), Qt::FindDirectChildrenOnly);
    if (corner_) corner_->installEventFilter(this);
}

void QtFormatGrid::LayOut(const GridPlan& plan) {
    plan_ = plan;
    std::vector<FormatColumn> columns = ParseFormat(plan.format);
    plan_.columnWidths.resize(columns.size());
    verticalHeader()->setDefaultAlignment(columns.front().alignment);
    cells_->Reset(std::move(columns), plan.rows);
    FitFont();
}

void QtFormatGrid::FitFont() {
    setIconSize(LampSize(*this));
    rowHeight_ = std::max(fontMetrics().height() + RowPadding, horizontalHeader()->sizeHint().height());
    verticalHeader()->setDefaultSectionSize(rowHeight_);
    horizontalHeader()->setFixedHeight(rowHeight_);

    leastWidths_.clear();
    for (int column = 0; column < ColumnCount(); ++column) {
        // The heading of the fixed column stands in the corner, which its header does not know.
        const int needed = column == 0 ? std::max(verticalHeader()->sizeHint().width(), TextWidth(Text(0, 0)))
                                       : horizontalHeader()->sectionSizeHint(column - 1);
        const int planned = PixelsOfTwips(plan_.columnWidths.at(static_cast<std::size_t>(column)), *this);
        leastWidths_.push_back(std::max({planned, needed, WidthOfWidest(static_cast<std::size_t>(column))}));
    }
    verticalHeader()->setFixedWidth(leastWidths_.front());

    const int border = 2 * frameWidth();
    const auto widthOf = [this](int columns) {
        return std::accumulate(leastWidths_.begin(), leastWidths_.begin() + columns, 0);
    };
    const int inSight = plan_.columnsInSight > 0 ? plan_.columnsInSight : ColumnCount();
    const int scrollBar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, verticalScrollBar());
    // The bar that scrolls the columns behind takes no row its place.
    const int frame = std::max(border, PixelsOfTwips(BorderTwips, *this)) + (inSight < ColumnCount() ? scrollBar : 0);
    const int leastRows = plan_.leastRows > 0 ? plan_.leastRows : plan_.rowsShown;
    const int width = std::max(PixelsOfTwips(plan_.width, *this), widthOf(inSight) + scrollBar + border);
    wanted_ = {width, frame + plan_.rowsShown * rowHeight_};
    const bool narrows = plan_.leastColumns > 0 && plan_.leastColumns < ColumnCount();
    const int leastWidth = narrows ? widthOf(plan_.leastColumns) + scrollBar + border : width;
    setMinimumSize(std::min(leastWidth, width),
                   frame + leastRows * rowHeight_ + (narrows && inSight == ColumnCount() ? scrollBar : 0));
    updateGeometry();
    StretchColumns();
}

int QtFormatGrid::TextWidth(const QString& text) const {
    // Slanted, as what is on its way, and with the frame of an entry box around it.
    QFont slanted = font();
    slanted.setItalic(true);
    const int margin = 2 * (style()->pixelMetric(QStyle::PM_DefaultFrameWidth) + CellMargin);
    return std::max(fontMetrics().horizontalAdvance(text), QFontMetrics(slanted).horizontalAdvance(text)) + margin;
}

int QtFormatGrid::WidthOfWidest(std::size_t column) const {
    return column < plan_.widestTexts.size() ? TextWidth(QString::fromStdString(plan_.widestTexts[column])) : 0;
}

void QtFormatGrid::StretchColumns() {
    const int count = ColumnCount();
    // The view may resize itself while it is being laid out.
    if (static_cast<int>(leastWidths_.size()) != count) return;
    const int taken = std::accumulate(leastWidths_.begin() + 1, leastWidths_.end(), 0);
    const int spare = std::max(viewport()->width() - taken, 0);
    const int stretching = count - plan_.firstStretchingColumn;
    for (int column = 1; column < count; ++column) {
        int width = leastWidths_.at(static_cast<std::size_t>(column));
        // Shares between running totals, so that what is rounded off is not lost at the right edge.
        if (const int share = column - plan_.firstStretchingColumn; share >= 0)
            width += spare * (share + 1) / stretching - spare * share / stretching;
        setColumnWidth(column - 1, width);
    }
    TellCellsMoved();
}

void QtFormatGrid::TellCellsMoved() const {
    if (onCellsMoved_) onCellsMoved_();
}

int QtFormatGrid::RowCount() const { return cells_->Rows(); }

int QtFormatGrid::ColumnCount() const { return cells_->Columns(); }

QString QtFormatGrid::Text(int row, int column) const { return cells_->Text(row, column); }

void QtFormatGrid::SetText(int row, int column, const QString& text) {
    cells_->SetText(row, column, text);
    if (row == 0 && column == 0 && corner_) corner_->update();
}

Qt::Alignment QtFormatGrid::Alignment(int column) const {
    return Qt::Alignment(cells_->Role(0, column, Qt::TextAlignmentRole).toInt());
}

void QtFormatGrid::SetTextColor(int row, int column, const QColor& color) {
    cells_->SetColor(row, column, color);
    if (row == 0 && column == 0 && corner_) corner_->update();
}

void QtFormatGrid::SetLook(const QColor& text, bool headingsGrey) {
    textColor_ = text;
    for (QHeaderView* header : {horizontalHeader(), verticalHeader()})
        header->setEnabled(!headingsGrey);
    if (corner_) corner_->update();
    viewport()->update();
}

void QtFormatGrid::SetGround(int row, int column, const QColor& color) { cells_->SetGround(row, column, color); }

void QtFormatGrid::SetItalic(int row, int column, bool italic) { cells_->SetItalic(row, column, italic); }

void QtFormatGrid::SetIcon(int row, int column, const QIcon& icon) { cells_->SetIcon(row, column, icon); }

void QtFormatGrid::SetOnHint(std::function<QString(int row, int column)> onHint) {
    cells_->SetOnHint(std::move(onHint));
}

void QtFormatGrid::SetCurrentCell(int row, int column) {
    const QModelIndex cell = cells_->index(row - 1, column - 1);
    selectionModel()->setCurrentIndex(cell, QItemSelectionModel::ClearAndSelect);
    if (!cell.isValid()) selectionModel()->clear();
}

QRect QtFormatGrid::CellRect(int row, int column) const {
    return visualRect(cells_->index(row - 1, column - 1)).translated(viewport()->pos());
}

RowRange QtFormatGrid::VisibleRows() const {
    const QRect shown = viewport()->visibleRegion().boundingRect();
    if (shown.isEmpty() || window()->isMinimized()) return {};
    const int first = rowAt(shown.top());
    const int last = rowAt(shown.bottom());
    if (first < 0) return {};
    // Below the last row there is nothing.
    return {first + 1, last < 0 ? RowCount() - 1 : last + 1};
}

QString QtFormatGrid::SelectedText() const {
    QModelIndexList cells = selectedIndexes();
    std::sort(cells.begin(), cells.end());
    QString text;
    int row = cells.isEmpty() ? 0 : cells.front().row();
    for (const QModelIndex& cell : cells) {
        if (cell != cells.front()) text += QLatin1Char(cell.row() == row ? '\t' : '\n');
        text += OneCell(cell.data().toString());
        row = cell.row();
    }
    return text;
}

void QtFormatGrid::keyPressEvent(QKeyEvent* event) {
    if (event != QKeySequence::Copy) {
        QTableView::keyPressEvent(event);
        return;
    }
    // Copying nothing must not wipe out what the clipboard holds.
    if (!selectedIndexes().isEmpty()) QApplication::clipboard()->setText(SelectedText());
    event->accept();
}

void QtFormatGrid::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    StretchColumns();
}

void QtFormatGrid::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    TellCellsMoved();
}

void QtFormatGrid::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) FitFont();
}

bool QtFormatGrid::eventFilter(QObject* watched, QEvent* event) {
    if (watched != corner_ || event->type() != QEvent::Paint) return QTableView::eventFilter(watched, event);
    PaintCorner(*corner_);
    return true;
}

void QtFormatGrid::PaintCorner(QWidget& corner) const {
    QStylePainter painter(&corner);
    painter.setFont(horizontalHeader()->font());
    QStyleOptionHeader option;
    option.initFrom(horizontalHeader());
    option.rect = corner.rect();
    option.orientation = Qt::Horizontal;
    option.position = QStyleOptionHeader::Beginning;
    option.text = cells_->Text(0, 0);
    option.textAlignment = Alignment(0);
    if (const QVariant color = cells_->Role(0, 0, Qt::ForegroundRole); color.isValid())
        option.palette.setColor(QPalette::ButtonText, color.value<QColor>());
    painter.drawControl(QStyle::CE_Header, option);
}

} // namespace vantrel
