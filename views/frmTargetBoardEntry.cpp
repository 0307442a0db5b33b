// The entry of set-up words in the target board view: what is written of it, and the pages that wait for it.
#include "link/TargetAddress.h"
#include "views/frmTargetBoard.h"

#include <QSignalBlocker>
#include <QTabBar>

#include <algorithm>

namespace vantrel {

TaskOf<bool> frmTargetBoard::Take(QtEntryField& field) {
    const auto found = std::find_if(Setup.begin(), Setup.end(),
                                    [&](const SetupControls& controls) { return controls.entry == &field; });
    const auto index = static_cast<std::size_t>(found - Setup.begin());
    if (field.Entered() && field.isEnabled()) {
        const auto value = field.Entry();
        if (!value) {
            dialogs_.Show(SetupRefusal(index));
            field.Refuse();
            co_return false;
        }
        co_await Write(index, *value);
    }
    field.Shut();
    co_return true;
}

Task frmTargetBoard::Write(std::size_t index, std::string value) {
    const Writing writing(*this);
    Setup.at(index).entry->Send();
    const WriteOutcome outcome = co_await passes_.WriteSetup(index, value);
    const std::string reached = HalfSentLine(passes_.MayHaveReached());
    if (outcome == WriteOutcome::Written && reached.empty()) co_return;
    if (outcome == WriteOutcome::Written) {
        Tell(SetupSentTwice(index, value), reached);
    } else if (outcome == WriteOutcome::LinkFailed) {
        Tell(SetupCutOff(index, value), reached);
    } else if (outcome == WriteOutcome::NotConfirmed) {
        // The box shows what the board holds, behind the message too.
        Setup.at(index).entry->Shut();
        Tell(SetupNotConfirmed(index, value, Setup.at(index).entry->Given()), reached);
    }
}

void frmTargetBoard::Tell(MessageBox box, const std::string& reached) {
    box.text += reached;
    dialogs_.Show(box);
}

void frmTargetBoard::PageChanged(int index) {
    if (!ViewActive || !EntryOpen()) {
        ShowPage(index);
        return;
    }
    // Stays before the entry until it is taken.
    const QSignalBlocker quiet(tabTargetBoard);
    tabTargetBoard->setCurrentIndex(page_);
    AfterEntries([this, index] { ShowPage(index); });
}

void frmTargetBoard::ShowPage(int index) {
    page_ = index;
    const QSignalBlocker quiet(tabTargetBoard);
    tabTargetBoard->setCurrentIndex(index);
    // Not into the first box of the page: nobody has asked to edit it.
    tabTargetBoard->tabBar()->setFocus();
}

} // namespace vantrel
