// The sequence editor's blocks of cells, as in a spreadsheet: copy, paste, clear, fill, and whole sequences moved.
#include "document/frmMain.h"

#include <QApplication>
#include <QClipboard>
#include <QKeySequence>

#include <algorithm>
#include <variant>

namespace vantrel {

QAction* frmMain::AddCommand(const char* name, const QString& caption, const QKeySequence& keys,
                             void (frmMain::*command)()) {
    auto* action = new QAction(caption, this);
    action->setObjectName(QString::fromLatin1(name));
    action->setMenuRole(QAction::NoRole);
    action->setShortcut(keys);
    connect(action, &QAction::triggered, this, [this, command] { (this->*command)(); });
    commands_.push_back(action);
    return action;
}

void frmMain::BuildBlockCommands() {
    const auto add = [this](const char* name, const char* caption, const QKeySequence& keys,
                            void (frmMain::*command)()) {
        QAction* action = AddCommand(name, QString::fromLatin1(caption), keys, command);
        // In the grid alone: everywhere else these keys are those of a text.
        action->setShortcutContext(Qt::WidgetShortcut);
        for (const EditorTab tab : {EditorTab::Configuration, EditorTab::Descriptions})
            fgComm.at(IndexOf(tab)).addAction(action);
        blockCommands_.push_back(action);
    };
    const auto separate = [this] {
        commands_.push_back(nullptr);
        for (const EditorTab tab : {EditorTab::Configuration, EditorTab::Descriptions}) {
            auto* separator = new QAction(this);
            separator->setSeparator(true);
            fgComm.at(IndexOf(tab)).addAction(separator);
        }
    };
    separate();
    add("mnuEditCut", "Cu&t", QKeySequence::Cut, &frmMain::Cut);
    add("mnuEditCopy", "&Copy", QKeySequence::Copy, &frmMain::Copy);
    add("mnuEditPaste", "&Paste", QKeySequence::Paste, &frmMain::Paste);
    add("mnuEditClear", "C&lear", QKeySequence::Delete, &frmMain::Clear);
    separate();
    add("mnuEditFillDown", "Fill &Down", QKeySequence(Qt::CTRL | Qt::Key_D), &frmMain::FillDown);
    add("mnuEditFillSeries", "Fill &Series", {}, &frmMain::FillSeries);
    separate();
    add("mnuEditDuplicate", "Duplicate Se&quence", {}, &frmMain::DuplicateSequence);
    add("mnuEditMoveUp", "Mo&ve Sequence Up", QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Up),
        &frmMain::MoveSequenceUp);
    add("mnuEditMoveDown", "Move Sequence Dow&n", QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Down),
        &frmMain::MoveSequenceDown);
    for (const EditorTab tab : {EditorTab::Configuration, EditorTab::Descriptions}) {
        QtFormatGrid& grid = fgComm.at(IndexOf(tab));
        grid.setContextMenuPolicy(Qt::ActionsContextMenu);
        connect(grid.selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { ShowBlockCommands(); });
    }
}

std::optional<CellBlock> frmMain::SelectedBlock() const {
    if (CurrentTab == EditorTab::CommStatus) return std::nullopt;
    const QModelIndexList cells = VisibleGrid().selectionModel()->selectedIndexes();
    if (cells.isEmpty()) return std::nullopt;
    const auto [top, bottom] = std::ranges::minmax(cells, {}, &QModelIndex::row);
    const auto [left, right] = std::ranges::minmax(cells, {}, &QModelIndex::column);
    CellBlock block{static_cast<std::size_t>(top.row()), static_cast<std::size_t>(bottom.row()),
                    static_cast<std::size_t>(left.column()), static_cast<std::size_t>(right.column())};
    // On the other tab the node numbers are only shown.
    if (CurrentTab == EditorTab::Descriptions) block.firstColumn = block.lastColumn = DescriptionColumn;
    return block;
}

void frmMain::ShowBlockCommands() {
    const bool any = SelectedBlock().has_value();
    for (QAction* action : blockCommands_)
        action->setEnabled(any);
}

std::optional<CellBlock> frmMain::BlockToChange() {
    // What is still in the box belongs to the cells before they are changed.
    if (!FinishEntry()) return std::nullopt;
    // Whatever comes of it, the next command finds its keys in the grid.
    if (CurrentTab != EditorTab::CommStatus) VisibleGrid().setFocus();
    return SelectedBlock();
}

bool frmMain::MakeBlock(const char* name, const BlockAnswer& answer) {
    if (const auto* after = std::get_if<Configuration>(&answer)) {
        const EditStep step{name, EditsBetween(document_.CurrentConfiguration, *after)};
        return step.edits.empty() || Make(step);
    }
    ShowBlockRefusal(RefusalText(std::get<std::vector<RefusedCell>>(answer)));
    return false;
}

void frmMain::ShowBlockRefusal(const std::string& text) {
    dialogs_.Show(
        {.title = EntryRefusalTitle, .text = text, .icon = MessageIcon::Exclamation, .buttons = MessageButtons::Ok});
}

void frmMain::Cut() {
    const auto block = BlockToChange();
    if (!block) return;
    Copy();
    MakeBlock("Cut", ClearedCells(document_.CurrentConfiguration, *block));
}

void frmMain::Copy() {
    FinishFill();
    const auto block = SelectedBlock();
    if (block)
        QApplication::clipboard()->setText(QString::fromStdString(CopiedCells(document_.CurrentConfiguration, *block)));
}

void frmMain::Paste() {
    const std::string text = QApplication::clipboard()->text().toStdString();
    if (text.empty()) return;
    const auto block = BlockToChange();
    if (!block) return;
    const std::size_t last = CurrentTab == EditorTab::Descriptions ? DescriptionColumn : FieldCount - 1;
    MakeBlock("Paste", PastedCells(document_.CurrentConfiguration, *block, text, last));
}

void frmMain::Clear() {
    if (const auto block = BlockToChange()) MakeBlock("Clear", ClearedCells(document_.CurrentConfiguration, *block));
}

void frmMain::FillDown() {
    if (const auto block = BlockToChange()) MakeBlock("Fill Down", FilledDown(document_.CurrentConfiguration, *block));
}

void frmMain::FillSeries() {
    const auto block = BlockToChange();
    if (!block) return;
    if (block->lastSequence - block->firstSequence < 2)
        return ShowBlockRefusal("Select three rows or more: the first two give the step.");
    MakeBlock("Fill Series", FilledSeries(document_.CurrentConfiguration, *block));
}

void frmMain::DuplicateSequence() {
    const auto block = BlockToChange();
    if (!block) return;
    const Configuration& record = document_.CurrentConfiguration;
    const auto to = EmptySequence(record, block->firstSequence);
    if (!to) return ShowBlockRefusal("Every sequence holds something already. Clear one first.");
    if (MakeBlock("Duplicate Sequence", CopiedSequence(record, block->firstSequence, *to)))
        VisibleGrid().SetCurrentCell(static_cast<int>(*to) + 1, FirstColumn());
}

void frmMain::MoveSequence(int rows) {
    const auto block = BlockToChange();
    if (!block) return;
    const auto to = static_cast<int>(block->firstSequence) + rows;
    if (to < 0 || to >= static_cast<int>(SequenceCount)) return;
    const int column = VisibleGrid().CurrentColumn();
    const char* name = rows < 0 ? "Move Sequence Up" : "Move Sequence Down";
    const bool made = MakeBlock(
        name, SwappedSequences(document_.CurrentConfiguration, block->firstSequence, static_cast<std::size_t>(to)));
    if (made) VisibleGrid().SetCurrentCell(to + 1, column);
}

} // namespace vantrel
