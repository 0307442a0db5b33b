// The sequence editor's undo and redo: every change of the record is a step, and goes the way of an entry when it is
// taken back.
#include "document/frmMain.h"

#include <QKeySequence>

#include <algorithm>
#include <utility>

namespace vantrel {

/// Keeps a step on the stack. What it means is done before the stack moves: a user may decline to send it.
class frmMain::Step final : public QUndoCommand {
public:
    explicit Step(EditStep kept) : step(std::move(kept)) { setText(QString::fromStdString(step.name)); }

    const EditStep step;
};

void frmMain::BuildUndo() {
    QAction* undo = AddCommand("mnuEditUndo", tr("&Undo"), QKeySequence::Undo, &frmMain::Undo);
    QAction* redo = AddCommand("mnuEditRedo", tr("&Redo"), {}, &frmMain::Redo);
    redo->setShortcuts({QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)});
    undo->setEnabled(false);
    redo->setEnabled(false);
    connect(&undo_, &QUndoStack::canUndoChanged, undo, &QAction::setEnabled);
    connect(&undo_, &QUndoStack::canRedoChanged, redo, &QAction::setEnabled);
    const auto named = [](QAction* action, const QString& verb, const QString& step) {
        action->setText(step.isEmpty() ? verb : verb + QLatin1Char(' ') + step);
    };
    connect(&undo_, &QUndoStack::undoTextChanged, undo, [=](const QString& step) { named(undo, tr("&Undo"), step); });
    connect(&undo_, &QUndoStack::redoTextChanged, redo, [=](const QString& step) { named(redo, tr("&Redo"), step); });
}

void frmMain::Remember(EditStep step) {
    std::erase_if(step.edits, [](const Edit& edit) {
        return std::visit([](const auto& one) { return one.before == one.after; }, edit);
    });
    if (!step.edits.empty()) undo_.push(new Step(std::move(step)));
}

void frmMain::Undo() {
    if (!FinishEntry() || !undo_.canUndo()) return;
    const auto* last = dynamic_cast<const Step*>(undo_.command(undo_.index() - 1));
    EditStep back = TurnedAround(last->step);
    back.name.insert(0, "Undo ");
    if (Perform(back)) undo_.undo();
}

void frmMain::Redo() {
    if (!FinishEntry() || !undo_.canRedo()) return;
    const auto* next = dynamic_cast<const Step*>(undo_.command(undo_.index()));
    EditStep again = next->step;
    again.name.insert(0, "Redo ");
    if (Perform(again)) undo_.redo();
}

bool frmMain::Make(const EditStep& step) {
    if (step.edits.empty() || !FinishEntry() || !Perform(step)) return false;
    Remember(step);
    return true;
}

bool frmMain::Take(const EditStep& step) {
    if (step.edits.empty() || !FinishEntry()) return false;
    for (const Edit& edit : step.edits)
        Store(document_.CurrentConfiguration, edit);
    document_.ReloadDisplay = true;
    RefillIfAsked();
    Remember(step);
    return true;
}

bool frmMain::Perform(const EditStep& step) {
    std::vector<std::size_t> values;
    for (const Edit& edit : step.edits) {
        if (const auto* value = std::get_if<ValueEdit>(&edit)) values.push_back(value->index);
    }
    const bool several = link_.OnlineMode() && values.size() > 1;
    if (several && (!MaySend(step.name, values.size()) || (maySendBlock_ && !maySendBlock_()))) return false;
    for (const Edit& edit : step.edits) {
        if (several) {
            Store(document_.CurrentConfiguration, edit);
        } else {
            edits_.Apply(edit);
        }
    }
    document_.ReloadDisplay = true;
    RefillIfAsked();
    if (several && sendBlock_) {
        std::ranges::sort(values);
        sendBlock_(values);
    }
    return true;
}

bool frmMain::MaySend(const std::string& name, std::size_t values) {
    return dialogs_.Show({.title = EntryRefusalTitle,
                          .text = name + ": " + std::to_string(values) +
                                  " values will be stored and sent to the board.\n\nDo You Wish to Continue?",
                          .icon = MessageIcon::Question,
                          .buttons = MessageButtons::YesNo}) == MessageAnswer::Yes;
}

} // namespace vantrel
