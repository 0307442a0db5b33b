#include "app/frmProcessing.h"

#include <algorithm>
#include <utility>

namespace vantrel {

frmProcessing::frmProcessing(TransferMode mode, Configuration& record, RSComm& link, Dialogs& dialogs, TurnQueue& turns,
                             QWidget* parent, std::vector<std::size_t> indices)
    : frmProgress("frmProcessing", turns, parent), link_(link), turns_(turns), mode_(mode),
      whole_(indices.size() == ValueCount), transfer_(mode, record, link, dialogs, turns, *this) {
    transfer_.Only(std::move(indices));
}

frmProcessing::Result frmProcessing::RunModal() {
    transfer_.Load();
    const bool linkStood = !link_.LinkFailed();
    const bool ended = RunTask(Run());
    Result result;
    result.failed = !ended || (link_.LinkFailed() && !transfer_.GaveUp());
    result.cancelled = !result.failed && transfer_.Cancelled() && (transfer_.GaveUp() || !transfer_.Complete());
    result.complete = !result.failed && !result.cancelled;
    result.board = board_;
    result.flagLeft = mode_ == TransferMode::DownloadData && linkStood && !transfer_.FlagCleared();
    result.reconnected = transfer_.Reconnected();
    result.walked = transfer_.WalkedIndices();
    result.unconfirmed = transfer_.Unconfirmed();
    result.alsoReached = transfer_.MayHaveReached();
    for (const RepeatedWrite& one : transfer_.Repeated()) {
        // The one at which the link failed was not sent twice.
        if (!transfer_.HasWalked(one.index)) continue;
        result.repeated.push_back(one);
        std::erase_if(result.alsoReached,
                      [&](std::uint16_t byte) { return std::ranges::count(one.mayHaveReached, byte) > 0; });
    }
    return result;
}

Task frmProcessing::Run() {
    const int opened = link_.Opened();
    const bool dataJob = mode_ == TransferMode::UploadData || mode_ == TransferMode::DownloadData;
    if (whole_ && dataJob && !link_.LinkFailed()) {
        board_ = co_await ReadBoardIdentity(link_, turns_, [this] { return !transfer_.Cancelled(); });
    }
    co_await transfer_.Run();
    // The port was opened again: it may have been two boards.
    if (link_.Opened() != opened) board_.reset();
}

// The button stays enabled: a board that falls silent later is given up by another press.
void frmProcessing::CloseAsked() { transfer_.Cancel(); }

} // namespace vantrel
